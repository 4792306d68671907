#pragma once

#include <cstdint>
#include <string>

#include "core/Orvantesco.h"
#include "host/binding/PluginPresets.h"
#include "presets/PresetPrompts.h"

namespace orvantesco {

/// Presets that a host's browser loads into the effect. Main thread; audio may run.
class ClapPresets {
 public:
  explicit ClapPresets(Orvantesco& owner);
  ClapPresets(const ClapPresets&) = delete;
  ClapPresets& operator=(const ClapPresets&) = delete;

  /// Lets the user's preset library be made ready beside everything else. Once.
  void prepareLibrary() { library.start(); }

  /// Loads a preset of a kind of `ClapPresetLocation`: a file by its path, or one that the program
  /// carries by its key "FOLDER/NAME". Returns why there is none, empty where it is loaded.
  std::string load(std::uint32_t kind, const char* location, const char* key);

 private:
  std::string loadCarried(const std::string& key);

  Orvantesco& effect;
  PresetPrompts nobody;  ///< no person answers before there is an editor
  PluginPresets library;
};

}  // namespace orvantesco
