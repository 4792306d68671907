#include "cli/ScopeCommand.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>

#include "cli/OptionValue.h"
#include "cli/RenderJobs.h"
#include "cli/ScopePicture.h"
#include "cli/ScopeTable.h"

namespace orvantesco::cli {
namespace {

constexpr const char* example =
    "Example:\n"
    "  orvantesco scope -o swing.png --seconds 8 --tempo 96 --set \"LFO On 1=ON\" \\\n"
    "      --set \"LFO Sync 1=STRAIGHT\" --set \"LFO Wave 1=THE RIDE\"\n";

constexpr ExpectedNumber secondsRange{"--seconds", 0.001, 86400.0, "seconds from 0.001 to 86400"};
constexpr ExpectedNumber everyRange{"--every", 1.0, 1e6, "a whole number of samples from 1"};

bool isPicture(const std::string& path) {
  return std::filesystem::path(path).extension() == ".png";
}

void checkExtension(const std::string& path) {
  if (isPicture(path) || std::filesystem::path(path).extension() == ".csv") return;
  throw badCall(fmt::format("{}: expected a name that ends in .csv or .png", path));
}

std::unique_ptr<ScopeSheet> makeSheet(const std::string& path, double seconds) {
  if (isPicture(path)) return std::make_unique<ScopePicture>(path, seconds);
  return std::make_unique<ScopeTable>(path);
}

}  // namespace

ScopeCommand::ScopeCommand(CLI::App& program)
    : command(program.add_subcommand("scope", "Show what the modulators do over time")) {
  command->footer(example);
  command->add_option("INPUT", input, "audio file that the envelopes hear; silence without")
      ->type_name("");
  command->add_option("-o", output, "output: .csv or .png")->required()->type_name("FILE");
  command->add_option("--seconds", seconds, "length; that of INPUT, or 4, without");
  command->add_option("--every", every, "samples from one line of a .csv to the next")
      ->capture_default_str();
  playing.addPlaying(*command);
}

bool ScopeCommand::wasCalled() const { return command->parsed(); }

ScopeCall ScopeCommand::toCall() const {
  ScopeCall call;
  call.settings = playing.settings();
  call.input = input;
  call.output = output;
  if (!seconds.empty()) call.seconds = numberFor(secondsRange, seconds);
  call.every = static_cast<int>(wholeFor(everyRange, every));
  checkExtension(output);
  if (isPicture(output)) call.every = 1;
  RenderCall files;
  files.settings = call.settings;
  files.jobs.push_back({input, output});
  protectInputs(files);
  return call;
}

ExitCode ScopeCommand::run() const {
  const ScopeCall call = toCall();
  ScopeRun scope(call);
  scope.run(*makeSheet(call.output, scope.lengthSeconds()));
  return ExitCode::done;
}

}  // namespace orvantesco::cli
