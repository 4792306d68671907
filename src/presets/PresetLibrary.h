#pragma once

#include <atomic>
#include <memory>
#include <mutex>

#include "presets/PresetCatalogue.h"
#include "presets/PresetFolders.h"

namespace orvantesco {

/// The files of one preset library, for all instances of the effect that show it. Any control
/// thread; what it hands out does not change any more.
class PresetLibrary {
 public:
  explicit PresetLibrary(PresetFolders where);
  PresetLibrary(const PresetLibrary&) = delete;
  PresetLibrary& operator=(const PresetLibrary&) = delete;

  const PresetFolders& folders() const noexcept { return presetFolders; }

  /// Changes when the files have changed, or when one turned out not to be there. Whoever has built
  /// a menu for another generation scans again.
  int presetLibraryGeneration() const noexcept { return generation.load(); }

  /// Returns the new one.
  int raiseGeneration() noexcept { return ++generation; }

  /// Looks at the disk.
  std::shared_ptr<const PresetCatalogue> scan();

  /// What the last scan found; of no scan, an empty catalogue.
  std::shared_ptr<const PresetCatalogue> catalogue();

 private:
  const PresetFolders presetFolders;
  std::atomic<int> generation{0};
  std::mutex mutex;
  std::shared_ptr<const PresetCatalogue> found;
};

/// The library of the user who runs the program, shared by all instances in the process.
PresetLibrary& userPresetLibrary();

}  // namespace orvantesco
