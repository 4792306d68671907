#include "presets/PresetBackup.h"

#include <filesystem>

#include "presets/FileContent.h"

namespace orvantesco {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargestPreset = 16 * 1024 * 1024;
constexpr int kMostCopies = 1000;

/// The path below the root, empty for a file elsewhere.
fs::path belowRoot(const std::string& path, const std::string& root) {
  if (root.empty()) return {};
  std::error_code ignored;
  const fs::path relative =
      fs::weakly_canonical(path, ignored).lexically_relative(fs::weakly_canonical(root, ignored));
  const bool isBelow = !relative.empty() && *relative.begin() != ".." && *relative.begin() != ".";
  return isBelow ? relative : fs::path();
}

std::string numbered(const std::string& path, int copy) {
  return copy == 0 ? path : path + "." + std::to_string(copy + 1);
}

}  // namespace

std::string presetBackupPath(const std::string& path, const std::string& root) {
  const fs::path relative = belowRoot(path, root);
  if (relative.empty()) return path + ".bak";
  std::error_code ignored;
  const fs::path beside = fs::weakly_canonical(root, ignored).parent_path();
  return (beside / "Preset Backups" / relative).string();
}

std::string keepPresetBackup(const std::string& path, const std::string& root) {
  const auto content = readFile(path, kLargestPreset);
  if (const auto* error = std::get_if<FileError>(&content)) return error->message;
  const std::string place = presetBackupPath(path, root);
  std::error_code error;
  const fs::path folder = fs::path(place).parent_path();
  if (!folder.empty()) fs::create_directories(folder, error);
  if (error) return error.message();
  for (int copy = 0; copy < kMostCopies; ++copy) {
    const std::string name = numbered(place, copy);
    if (!fs::exists(name, error)) return writeFile(name, std::get<std::string>(content));
    const auto kept = readFile(name, kLargestPreset);
    const auto* same = std::get_if<std::string>(&kept);
    if (same != nullptr && *same == std::get<std::string>(content)) return {};
  }
  return "there are too many backups of it";
}

}  // namespace orvantesco
