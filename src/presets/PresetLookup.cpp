#include "presets/PresetLookup.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <utility>

#include "params/PlainText.h"
#include "presets/PresetSaving.h"
#include "presets/PresetScan.h"

namespace orvantesco {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kExtension = ".txt";

bool isFile(const std::string& path) {
  std::error_code ignored;
  const auto kind = fs::status(path, ignored).type();
  return kind != fs::file_type::not_found && kind != fs::file_type::directory &&
         kind != fs::file_type::none;
}

/// Paths below the root that a name may mean, the user's tree first.
std::vector<std::string> meanings(std::string_view name) {
  while (name.starts_with('/')) name.remove_prefix(1);
  const std::string path = "/" + std::string(name);
  if (path.starts_with(kUserTree) || path.starts_with(kFactoryTree)) return {path};
  return {kUserTree + std::string(name), kFactoryTree + std::string(name)};
}

std::optional<FoundPreset> fileOf(const std::string& meaning, const PresetFolders& folders) {
  if (folders.presetRootPath.empty()) return {};
  for (const std::string& path : {meaning + std::string(kExtension), meaning}) {
    const std::string fullPath = folders.presetRootPath + path;
    if (isFile(fullPath)) return FoundPreset{path, fullPath, nullptr};
  }
  return {};
}

std::optional<FoundPreset> carried(const std::string& meaning) {
  if (!meaning.starts_with(kFactoryTree)) return {};
  for (const FactoryPreset& preset : factoryPresets()) {
    const std::string path = preset.relativePath();
    if (path == meaning || path == meaning + std::string(kExtension)) {
      return FoundPreset{path, {}, &preset};
    }
  }
  return {};
}

/// "Echo/Slap" for "/User Presets/Echo/Slap".
std::string shortName(const std::string& relativePath) {
  return relativePath.substr(relativePath.find('/', 1) + 1);
}

}  // namespace

std::optional<FoundPreset> findPreset(const std::string& name, const PresetFolders& folders) {
  if (name.empty()) return {};
  if (isFile(name)) {
    const std::string relative = relativePresetPath(fs::absolute(name).string(), folders);
    return FoundPreset{relative.empty() ? name : relative, name, nullptr};
  }
  const std::vector<std::string> paths = meanings(name);
  for (const std::string& path : paths) {
    if (auto found = fileOf(path, folders)) return found;
  }
  for (const std::string& path : paths) {
    if (auto found = carried(path)) return found;
  }
  return {};
}

PresetResult readFound(const FoundPreset& found) {
  return found.embedded == nullptr ? readPreset(found.path) : parsePreset(found.embedded->text);
}

std::vector<std::string> presetsLike(std::string_view name, const PresetFolders& folders) {
  constexpr std::size_t most = 3;
  const std::string wanted = lowered(name);
  std::set<std::pair<int, std::string>> byDistance;
  const auto add = [&](const std::string& known) {
    byDistance.emplace(editDistance(wanted, lowered(known)), known);
  };
  for (const PresetEntry& entry : scanPresets(folders.presetRootPath).presetOrder) {
    add(shortName(entry.relativePath));
  }
  for (const FactoryPreset& preset : factoryPresets()) {
    add(shortName(std::string(withoutExtension(preset.relativePath()))));
  }
  std::vector<std::string> closest;
  for (const auto& [distance, known] : byDistance) {
    if (closest.size() < most) closest.push_back(known);
  }
  return closest;
}

}  // namespace orvantesco
