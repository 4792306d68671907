#include "presets/PresetInstall.h"

#include <filesystem>

#include "presets/FactoryPresets.h"
#include "presets/FileContent.h"

namespace orvantesco {
namespace {

namespace fs = std::filesystem;

bool makeFolder(const std::string& path, PresetInstallReport& report) {
  std::error_code fault;
  fs::create_directories(path, fault);
  if (!fault) return true;
  report.faults.push_back(path + ": " + fault.message());
  return false;
}

void install(const FactoryPreset& preset, const std::string& path, PresetInstallReport& report) {
  const NewFileResult result = writeNewFile(path, preset.text);
  if (!result.fault.empty()) {
    report.faults.push_back(path + ": " + result.fault);
  } else {
    ++(result.isWritten ? report.written : report.kept);
  }
}

}  // namespace

PresetInstallReport installPresets(const PresetFolders& folders, const std::stop_token& stop) {
  PresetInstallReport report;
  if (folders.presetRootPath.empty()) {
    report.faults.emplace_back("presets: there is no folder for the data of applications");
    return report;
  }
  makeFolder(folders.userPresetPath(), report);
  if (!makeFolder(folders.factoryPresetPath(), report)) return report;
  std::string_view folder;
  bool isMade = true;
  for (const FactoryPreset& preset : factoryPresets()) {
    if (stop.stop_requested()) break;
    if (preset.folder != folder) {
      folder = preset.folder;
      isMade = makeFolder(folders.factoryPresetPath() + "/" + std::string(folder), report);
    }
    if (isMade) install(preset, folders.presetRootPath + preset.relativePath(), report);
  }
  return report;
}

}  // namespace orvantesco
