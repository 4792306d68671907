#include "presets/PresetSaving.h"

#include <filesystem>

#include "params/PlainText.h"

namespace orvantesco {
namespace {

namespace fs = std::filesystem;

/// With "." and ".." resolved by the text alone.
std::string plainPath(std::string_view path) {
  return fs::path(path).lexically_normal().generic_string();
}

/// With all links followed; what is not there yet is taken by its text.
std::string truePath(std::string_view path) {
  std::error_code fault;
  const fs::path followed = fs::weakly_canonical(fs::path(path), fault);
  return fault || path.empty() ? plainPath(path) : followed.generic_string();
}

/// Whether a path lies in a folder, which has no "/" at its end.
bool liesIn(const std::string& path, const std::string& folder) {
  return lowered(path).starts_with(lowered(folder) + "/");
}

bool isReallyIn(std::string_view path, const std::string& folder) {
  return liesIn(truePath(path), truePath(folder));
}

/// Links in the library belong to it, wherever they lead. A text that leaves a link by ".." tells
/// of another place than the one that the system goes to, and says nothing.
bool isNamedIn(std::string_view path, const std::string& folder) {
  const std::string plain = plainPath(path);
  return liesIn(plain, plainPath(folder)) && truePath(plain) == truePath(path);
}

}  // namespace

PresetSavePlace savePlaceOf(std::string_view fullPath, const PresetFolders& folders) {
  const auto liesBelow = [&](const std::string& folder) {
    return isNamedIn(fullPath, folder) || isReallyIn(fullPath, folder);
  };
  if (liesBelow(folders.factoryPresetPath())) return PresetSavePlace::factoryTree;
  if (liesBelow(folders.userPresetPath())) return PresetSavePlace::userTree;
  return PresetSavePlace::elsewhere;
}

std::string relativePresetPath(std::string_view fullPath, const PresetFolders& folders) {
  const std::string& root = folders.presetRootPath;
  if (isNamedIn(fullPath, root)) return plainPath(fullPath).substr(plainPath(root).size());
  if (isReallyIn(fullPath, root)) return truePath(fullPath).substr(truePath(root).size());
  return {};
}

std::string_view withoutExtension(std::string_view path) noexcept {
  const std::size_t point = path.rfind('.');
  const std::size_t slash = path.rfind('/');
  const bool isInName = point != path.npos && (slash == path.npos || point > slash);
  return isInName ? path.substr(0, point) : path;
}

}  // namespace orvantesco
