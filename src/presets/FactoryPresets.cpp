#include "presets/FactoryPresets.h"

#include <algorithm>

#include "presets/PresetFolders.h"

namespace orvantesco {

std::string FactoryPreset::relativePath() const {
  std::string path = kFactoryTree;
  return path.append(folder).append("/").append(name).append(".txt");
}

const FactoryPreset* findFactoryPreset(std::string_view folder, std::string_view name) noexcept {
  const std::span<const FactoryPreset> presets = factoryPresets();
  const auto found = std::find_if(presets.begin(), presets.end(), [&](const FactoryPreset& preset) {
    return preset.folder == folder && preset.name == name;
  });
  return found == presets.end() ? nullptr : &*found;
}

}  // namespace orvantesco
