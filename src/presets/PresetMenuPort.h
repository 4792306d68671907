#pragma once

#include <string>

#include "presets/HostState.h"

namespace orvantesco {

/// What the engine asks of the menu of the preset library when a host's state is saved or restored
/// and when a preset is loaded: the menu alone knows what is selected. Called on the thread of that
/// save, restore or load, which may hold the locks of the effect: an implementation never calls the
/// effect from here.
class PresetMenuPort {
 public:
  virtual ~PresetMenuPort() = default;

  /// Makes a preset the selected one, where its folder is in the menu, or nothing, where it names
  /// no folder; false leaves the selection.
  virtual bool select(const PresetSelection& selection) = 0;

  /// Makes a file the selected one, given by its path below the library's root; false, and no
  /// change, where the menu does not list it.
  virtual bool selectFile(const std::string& relativePath) = 0;

  /// What is selected.
  virtual PresetSelection selection() const = 0;
};

}  // namespace orvantesco
