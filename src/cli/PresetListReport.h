#pragma once

#include <string>
#include <vector>

#include "presets/PresetCatalogue.h"
#include "presets/PresetFolders.h"

namespace orvantesco::cli {

/// A preset of the library as a list shows it.
struct ListedPreset {
  std::string folder;  ///< below the root, as "Factory Presets/Echo"
  std::string name;
  std::string path;  ///< of the file; empty where the program carries it and no file is there
};

/// The presets of both trees in the order of the menu, then the shipped ones that have no file.
std::vector<ListedPreset> listedPresets(const PresetCatalogue& catalogue,
                                        const PresetFolders& folders);

/// One JSON document with a line break at its end. What is no UTF-8 in a name is replaced; a
/// preset without a file has null for its path.
std::string presetListJson(const std::vector<ListedPreset>& presets, const PresetFolders& folders);

/// The same for reading: a line for each preset.
std::string presetListTable(const std::vector<ListedPreset>& presets);

}  // namespace orvantesco::cli
