#pragma once

#include "presets/HostState.h"

namespace orvantesco {

/// What the engine asks of the menu of the preset library when a host's state is saved or restored:
/// the menu alone knows what is selected. Called on the thread of that save or restore, which may
/// hold the locks of the effect: an implementation never calls the effect from here.
class PresetMenuPort {
 public:
  virtual ~PresetMenuPort() = default;

  /// Makes a preset the selected one, where its folder is in the menu, or nothing, where it names
  /// no folder; false leaves the selection.
  virtual bool select(const PresetSelection& selection) = 0;

  /// What is selected.
  virtual PresetSelection selection() const = 0;
};

}  // namespace orvantesco
