#pragma once

#include <string>
#include <string_view>

#include "presets/PresetFolders.h"

namespace orvantesco {

/// What a dialog that asks for the file of a preset offers.
struct PresetSaveQuestion {
  std::string name = "New Preset";
  std::string folder;  ///< where it starts: the user's tree
  std::string extension = "txt";
};

/// Where a file lies that a preset is to be saved as.
enum class PresetSavePlace {
  userTree,
  factoryTree,  ///< nothing is written there
  elsewhere,    ///< can be written, but no menu will show it
};

/// Compares in lower case, so that no spelling of a path leads into the shipped tree on a disk
/// that does not tell letters' cases apart. The folder that a path leads to counts, whatever links
/// it takes; a link within a tree belongs to that tree too.
PresetSavePlace savePlaceOf(std::string_view fullPath, const PresetFolders& folders);

/// The path of a file below the root, with its extension; empty for a file elsewhere.
std::string relativePresetPath(std::string_view fullPath, const PresetFolders& folders);

/// Without the last point of the file's name and what follows it.
std::string_view withoutExtension(std::string_view path) noexcept;

}  // namespace orvantesco
