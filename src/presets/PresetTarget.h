#pragma once

#include <string>

#include "presets/PresetMessages.h"

namespace orvantesco {

/// What the preset library asks of the effect whose presets it loads and saves. Called on the
/// thread of the library's action, which holds no lock.
class PresetTarget {
 public:
  virtual ~PresetTarget() = default;

  virtual bool presetIsLoading() const = 0;

  /// Reads a file below the library's root, applies it and selects it in the menu, the last two as
  /// one; false where it is no preset, which the target then shows, and nothing but the selection
  /// changes.
  virtual bool loadPresetFile(const std::string& relativePath) = 0;

  /// Writes the present settings whole or not at all; true means failure.
  virtual bool writePresetFile(const std::string& fullPath) = 0;

  /// Shows the name and the folder of what was written last, and selects it in the menu, unless
  /// other settings have come since. The path is that of the file below the library's root. False
  /// where the menu does not list it.
  virtual bool showSavedPreset(const std::string& relativePath) = 0;

  virtual void showMessage(PresetMessage message) = 0;
};

}  // namespace orvantesco
