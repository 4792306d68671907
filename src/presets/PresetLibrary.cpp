#include "presets/PresetLibrary.h"

#include <utility>

#include "presets/PresetScan.h"

namespace orvantesco {

PresetLibrary::PresetLibrary(PresetFolders where)
    : presetFolders(std::move(where)), found(std::make_shared<const PresetCatalogue>()) {}

std::shared_ptr<const PresetCatalogue> PresetLibrary::scan() {
  // Without the lock: a slow disk holds up nobody who only reads.
  auto fresh = std::make_shared<const PresetCatalogue>(scanPresets(presetFolders.presetRootPath));
  const std::lock_guard lock(mutex);
  found = fresh;
  return fresh;
}

std::shared_ptr<const PresetCatalogue> PresetLibrary::catalogue() {
  const std::lock_guard lock(mutex);
  return found;
}

PresetLibrary& userPresetLibrary() {
  static PresetLibrary library(presetFolders());
  return library;
}

}  // namespace orvantesco
