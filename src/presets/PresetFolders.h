#pragma once

#include <string>

namespace orvantesco {

/// The two trees of the preset library, by their names below the root.
inline constexpr const char* kUserTree = "/User Presets/";
inline constexpr const char* kFactoryTree = "/Factory Presets/";

/// Where presets lie. Paths relative to the root begin with "/", use "/" whatever the system
/// does, and end in "/" for a folder.
struct PresetFolders {
  std::string presetRootPath;  ///< holds both trees; no "/" at its end, empty for no library

  std::string userPresetPath() const;     ///< the user's tree, without "/" at its end
  std::string factoryPresetPath() const;  ///< the tree that is shipped, the same
};

/// The folder for the data of applications: `$XDG_DATA_HOME`, or, where that is no absolute path,
/// `.local/share` in the user's home. Empty where the user has none. Not while another thread
/// changes the environment.
std::string commonDataFolder();

/// The library below a folder for the data of applications; no library for an empty text.
PresetFolders presetFoldersIn(const std::string& dataFolder);

/// The library of the user who runs the program.
PresetFolders presetFolders();

}  // namespace orvantesco
