#pragma once

#include "presets/HostState.h"

namespace orvantesco {

/// What the engine asks of the menu of the preset library when a host's state names a preset.
/// Called on the thread of the restore.
class PresetMenuPort {
 public:
  virtual ~PresetMenuPort() = default;

  /// Makes a preset the selected one, where its folder is in the menu; false leaves the selection.
  virtual bool select(const PresetSelection& selection) = 0;
};

}  // namespace orvantesco
