#include "cli/RenderCommand.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <nlohmann/json.hpp>

#include "cli/AudioReader.h"
#include "cli/Message.h"
#include "cli/RenderJobs.h"
#include "cli/Renderer.h"
#include "cli/WorkerPool.h"

namespace orvantesco::cli {
namespace {

using Json = nlohmann::ordered_json;

constexpr const char* example =
    "Example:\n"
    "  orvantesco render voice.wav -o echo.wav --tempo 96 --set \"Timebase 1=1/8d\" \\\n"
    "      --set \"Feedback 1=55\"\n";

/// File names may hold bytes that are no text; JSON may not.
std::string textOf(const Json& json) {
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

Json renderOne(const RenderSettings& settings, const RenderJob& job, bool quiet) {
  Renderer renderer(settings, job);
  for (const std::string& line : renderer.missingEffects()) printWarning(line);
  RenderStats stats;
  {
    ProgressBar progress(job.input, !quiet);
    stats = renderer.run(progress);
  }
  for (const std::string& line : renderer.warnings()) printWarning(line);
  return toJson(stats);
}

ExitCode renderSingle(const RenderCall& call) {
  const Json stats = renderOne(call.settings, call.jobs.front(), call.quiet);
  if (call.stats) printResult(textOf(stats));
  return ExitCode::done;
}

/// A wrong call is found once, before any work, and not by each worker.
ExitCode rehearse(const RenderCall& call) {
  const auto check = [&call](std::size_t) {
    RenderEngine engine({AudioReader::lowestRateHz, 2, false}, call.settings);
    engine.apply(call.settings);
    const std::string& automation = call.settings.automationFile;
    if (!automation.empty()) {
      readAutomationFile(automation, engine.bank(), AudioReader::lowestRateHz);
    }
    return std::string();
  };
  return WorkerPool(1).run(1, check, [](std::size_t) {}).front().exitCode;
}

ExitCode worstOf(const RenderCall& call, const std::vector<WorkerResult>& results) {
  auto worst = ExitCode::done;
  for (std::size_t i = 0; i < results.size(); ++i) {
    worst = std::max(worst, results[i].exitCode);
    if (results[i].signal == 0) continue;
    printError(fmt::format("{}: its worker process was ended by signal {}", call.jobs[i].input,
                           results[i].signal));
  }
  return worst;
}

std::vector<WorkerResult> renderInWorkers(const RenderCall& call) {
  const std::size_t count = call.jobs.size();
  ProgressBar progress(fmt::format("{} files", count), !call.quiet);
  const auto task = [&call](std::size_t number) {
    return textOf(renderOne(call.settings, call.jobs[number], true));
  };
  const auto show = [&progress, count](std::size_t finished) {
    progress.show(static_cast<double>(finished) / static_cast<double>(count));
  };
  return WorkerPool(call.workers).run(count, task, show);
}

ExitCode renderSeveral(const RenderCall& call) {
  if (const ExitCode code = rehearse(call); code != ExitCode::done) return code;
  const std::vector<WorkerResult> results = renderInWorkers(call);
  Json all = Json::array();
  for (const WorkerResult& result : results) {
    if (result.exitCode == ExitCode::done) all.push_back(Json::parse(result.output));
  }
  if (call.stats) printResult(textOf(all));
  return worstOf(call, results);
}

}  // namespace

RenderCommand::RenderCommand(CLI::App& program)
    : command(program.add_subcommand("render", "Play files through the delay")) {
  command->footer(example);
  arguments.addTo(*command);
}

bool RenderCommand::wasCalled() const { return command->parsed(); }

ExitCode RenderCommand::run() const {
  const RenderCall call = arguments.toCall();
  if (!call.outputFolder.empty()) makeOutputFolder(call.outputFolder);
  return call.jobs.size() == 1 ? renderSingle(call) : renderSeveral(call);
}

}  // namespace orvantesco::cli
