#include "cli/PresetSource.h"

#include <fmt/format.h>

#include "cli/Failure.h"
#include "presets/PresetLookup.h"

namespace orvantesco::cli {
namespace {

PresetSource sourceOf(const std::string& path, const PresetResult& result) {
  if (const auto* error = std::get_if<PresetError>(&result)) {
    throw workFailed(fmt::format("{}: {}", path, error->message));
  }
  return {path, std::get<PresetReading>(result)};
}

/// Errors name the file, the source its place in the library.
PresetSource sourceOf(const FoundPreset& found) {
  const bool isFile = found.embedded == nullptr;
  PresetSource source = sourceOf(isFile ? found.path : found.relativePath, readFound(found));
  source.path = found.relativePath;
  return source;
}

}  // namespace

PresetSource readPresetFile(const std::string& path) { return sourceOf(path, readPreset(path)); }

PresetSource readPresetArgument(const std::string& argument) {
  const PresetFolders folders = presetFolders();
  const auto found = findPreset(argument, folders);
  if (!found) {
    const auto close = presetsLike(argument, folders);
    const std::string hint =
        close.empty() ? "" : fmt::format("; the closest are {}", fmt::join(close, ", "));
    throw workFailed(fmt::format("--preset: '{}' is neither a file nor a preset of the library{}",
                                 argument, hint));
  }
  return sourceOf(*found);
}

std::string fileOfPreset(const std::string& argument) {
  if (argument.empty()) return {};
  const auto found = findPreset(argument, presetFolders());
  return found ? found->path : std::string();
}

std::vector<std::string> problemLines(const PresetSource& source) {
  std::vector<std::string> lines;
  for (const PresetProblem& problem : source.reading.problems) {
    const std::string place = problem.line > 0 ? fmt::format(":{}", problem.line) : "";
    lines.push_back(fmt::format("{}{}: {}", source.path, place, problem.message));
  }
  return lines;
}

}  // namespace orvantesco::cli
