#include "presets/PresetSaving.h"

#include <filesystem>

#include "params/PlainText.h"

namespace orvantesco {
namespace {

std::string plainPath(std::string_view path) {
  return std::filesystem::path(path).lexically_normal().generic_string();
}

/// Whether a path lies in a folder, which has no "/" at its end.
bool liesIn(const std::string& path, const std::string& folder) {
  return lowered(path).starts_with(lowered(plainPath(folder)) + "/");
}

}  // namespace

PresetSavePlace savePlaceOf(std::string_view fullPath, const PresetFolders& folders) {
  const std::string path = plainPath(fullPath);
  if (liesIn(path, folders.factoryPresetPath())) return PresetSavePlace::factoryTree;
  if (liesIn(path, folders.userPresetPath())) return PresetSavePlace::userTree;
  return PresetSavePlace::elsewhere;
}

std::string relativePresetPath(std::string_view fullPath, const PresetFolders& folders) {
  const std::string path = plainPath(fullPath);
  if (!liesIn(path, folders.presetRootPath)) return {};
  return path.substr(plainPath(folders.presetRootPath).size());
}

std::string_view withoutExtension(std::string_view path) noexcept {
  const std::size_t point = path.rfind('.');
  const std::size_t slash = path.rfind('/');
  const bool isInName = point != path.npos && (slash == path.npos || point > slash);
  return isInName ? path.substr(0, point) : path;
}

}  // namespace orvantesco
