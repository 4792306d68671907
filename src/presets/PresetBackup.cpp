#include "presets/PresetBackup.h"

#include <filesystem>

#include "presets/FileContent.h"
#include "presets/PresetReader.h"
#include "presets/PresetSaving.h"

namespace orvantesco {
namespace {

namespace fs = std::filesystem;

constexpr int kMostCopies = 1000;

std::string numbered(const std::string& path, int copy) {
  return copy == 0 ? path : path + "." + std::to_string(copy + 1);
}

}  // namespace

std::string presetBackupPath(const std::string& path, const std::string& root) {
  // A backup beside a file of the library would be one more preset of its menu.
  const std::string relative = root.empty() ? "" : relativePresetPath(path, {root});
  if (relative.empty()) return path + ".bak";
  std::error_code ignored;
  const fs::path beside = fs::weakly_canonical(root, ignored).parent_path();
  return (beside / "Preset Backups").string() + relative;
}

std::string keepPresetBackup(const std::string& path, const std::string& root) {
  const auto content = readFile(path, kLargestPresetBytes);
  if (const auto* error = std::get_if<FileError>(&content)) return error->message;
  const std::string place = presetBackupPath(path, root);
  std::error_code error;
  const fs::path folder = fs::path(place).parent_path();
  if (!folder.empty()) fs::create_directories(folder, error);
  if (error) return error.message();
  for (int copy = 0; copy < kMostCopies; ++copy) {
    const std::string name = numbered(place, copy);
    if (!fs::exists(name, error)) return writeFile(name, std::get<std::string>(content));
    const auto kept = readFile(name, kLargestPresetBytes);
    const auto* same = std::get_if<std::string>(&kept);
    if (same != nullptr && *same == std::get<std::string>(content)) return {};
  }
  return "there are too many backups of it";
}

}  // namespace orvantesco
