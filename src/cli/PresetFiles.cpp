#include "cli/PresetFiles.h"

#include <fmt/format.h>

#include "cli/Message.h"
#include "cli/PresetSource.h"
#include "cli/RenderEngine.h"
#include "presets/FileContent.h"
#include "presets/PresetBackup.h"
#include "presets/PresetCheck.h"
#include "presets/PresetFolders.h"
#include "presets/PresetMigration.h"
#include "presets/PresetWriter.h"

namespace orvantesco::cli {
namespace {

/// True where the file is good.
bool checkPreset(const std::string& path, const ParamBank& bank) {
  const PresetResult result = readPreset(path);
  if (const auto* error = std::get_if<PresetError>(&result)) {
    printResult(fmt::format("{}: {}\n", path, error->message));
    return false;
  }
  PresetSource source{path, std::get<PresetReading>(result)};
  source.reading.problems = presetProblems(source.reading, bank);
  for (const std::string& line : problemLines(source)) printResult(line + "\n");
  const bool isGood = source.reading.problems.empty();
  if (isGood)
    printResult(fmt::format("{}: good, version {}\n", path, source.reading.preset.version));
  return isGood;
}

/// The preset as this program would save it once it is loaded.
std::string upgradedText(const std::string& path) {
  RenderSettings settings;
  settings.preset = path;
  RenderEngine engine({44100.0, 2, false}, settings);
  engine.apply(settings);
  for (const std::string& line : engine.presetWarnings()) printWarning(line);
  return presetText(engine.preset());
}

void upgradePreset(const std::string& path) {
  const int version = readPresetFile(path).reading.preset.version;
  if (version < 0) {
    throw workFailed(
        fmt::format("{}: its version cannot be read, expected 0 to {}", path, kPresetVersion));
  }
  if (version >= kPresetVersion) {
    printResult(fmt::format("{}: is of version {} already\n", path, version));
    return;
  }
  const std::string text = upgradedText(path);
  const std::string root = presetFolders().presetRootPath;
  std::string fault = keepPresetBackup(path, root);
  if (fault.empty()) fault = writeFile(path, text);
  if (!fault.empty()) throw workFailed(fmt::format("{}: cannot be rewritten: {}", path, fault));
  printResult(fmt::format("{}: version {} is now {}\n", path, version, kPresetVersion));
}

}  // namespace

ExitCode checkPresets(const std::vector<std::string>& paths) {
  ParamBank bank;
  bank.buildParameterBank();
  auto code = ExitCode::done;
  for (const std::string& path : paths) {
    if (!checkPreset(path, bank)) code = ExitCode::workFailed;
  }
  return code;
}

ExitCode upgradePresets(const std::vector<std::string>& paths) {
  auto code = ExitCode::done;
  for (const std::string& path : paths) {
    try {
      upgradePreset(path);
    } catch (const Failure& failure) {
      printError(failure.what());
      code = ExitCode::workFailed;
    }
  }
  return code;
}

}  // namespace orvantesco::cli
