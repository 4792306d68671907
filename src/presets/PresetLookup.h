#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "presets/FactoryPresets.h"
#include "presets/PresetFolders.h"
#include "presets/PresetReader.h"

namespace orvantesco {

/// A preset that was found by its name.
struct FoundPreset {
  std::string relativePath;  ///< below the root, with extension; of a file elsewhere its path
  std::string path;          ///< of the file; empty where the program itself carries it
  const FactoryPreset* embedded = nullptr;  ///< null where there is a file
};

/// Looks for a preset: a file of that name or path, then "Echo/Slap" for the file Slap.txt of the
/// folder Echo in the user's tree, in the shipped tree, and among the presets that the program
/// carries. A name without a folder lies directly in a tree. "User Presets/Echo/Slap" and
/// "Factory Presets/Echo/Slap" mean one tree only; a last ".txt" may be there or not. Control
/// threads.
std::optional<FoundPreset> findPreset(const std::string& name, const PresetFolders& folders);

/// Reads a preset where it was found. Control threads.
PresetResult readFound(const FoundPreset& found);

/// Names of the library that resemble one that it does not have, the closest first, three at most.
std::vector<std::string> presetsLike(std::string_view name, const PresetFolders& folders);

}  // namespace orvantesco
