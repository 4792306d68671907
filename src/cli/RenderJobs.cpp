#include "cli/RenderJobs.h"

#include <fmt/format.h>

#include <filesystem>
#include <map>

#include "cli/AudioFormat.h"
#include "cli/Failure.h"
#include "cli/PresetSource.h"

namespace orvantesco::cli {
namespace {

namespace fs = std::filesystem;

/// The input's own name; where its container cannot be written, WAV takes its place.
std::string outputFor(const std::string& input, const std::string& folder) {
  fs::path name = fs::path(input).filename();
  if (!containerOf(input)) name.replace_extension(".wav");
  return (fs::path(folder) / name).string();
}

void refuseEqualOutputs(const std::vector<RenderJob>& jobs) {
  std::map<std::string, std::string> inputOf;
  for (const RenderJob& job : jobs) {
    const auto [first, isNew] = inputOf.emplace(job.output, job.input);
    if (isNew) continue;
    throw badCall(
        fmt::format("{}: would be written for both {} and {}, expected inputs of "
                    "different names",
                    job.output, first->second, job.input));
  }
}

bool areSameFile(const std::string& first, const std::string& second) {
  if (first.empty() || second.empty()) return false;
  std::error_code ignored;
  return fs::equivalent(first, second, ignored) && !ignored;
}

}  // namespace

std::vector<RenderJob> pairInputsWithOutputs(const std::vector<std::string>& inputs,
                                             const OutputPlace& place) {
  if (place.file.empty() == place.folder.empty()) {
    throw badCall("render: expected either -o FILE or --output-dir DIR");
  }
  if (inputs.size() > 1 && place.folder.empty()) {
    throw badCall("render: -o takes one input, expected --output-dir DIR for several");
  }
  std::vector<RenderJob> jobs;
  jobs.reserve(inputs.size());
  for (const std::string& input : inputs) {
    jobs.push_back({input, place.folder.empty() ? place.file : outputFor(input, place.folder)});
  }
  refuseEqualOutputs(jobs);
  return jobs;
}

void protectInputs(const std::string& output, const std::vector<std::string>& inputs) {
  for (const std::string& input : inputs) {
    if (!areSameFile(output, input)) continue;
    throw badCall(fmt::format(
        "{}: is read by this call and would be overwritten, expected another output", output));
  }
}

void protectInputs(const RenderCall& call) {
  const RenderSettings& settings = call.settings;
  std::vector<std::string> read{settings.automationFile, settings.sideChainFile, settings.stateFile,
                                fileOfPreset(settings.preset)};
  for (const RenderJob& job : call.jobs) read.push_back(job.input);
  for (const RenderJob& job : call.jobs) protectInputs(job.output, read);
}

void makeOutputFolder(const std::string& folder) {
  std::error_code error;
  fs::create_directories(folder, error);
  if (error) throw workFailed(fmt::format("{}: cannot be made: {}", folder, error.message()));
  if (!fs::is_directory(folder)) throw workFailed(fmt::format("{}: is no folder", folder));
}

}  // namespace orvantesco::cli
