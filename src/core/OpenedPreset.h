#pragma once

#include <string>

#include "presets/Preset.h"

namespace orvantesco {

/// What an editor shows of a preset's place.
struct PresetLabel {
  std::string name;
  std::string folder;  ///< with "U:" or "F:" before it
};

/// A preset file as it was read, with what belongs to it: none of this is ever that of another.
struct OpenedPreset {
  std::string fullPath;
  std::string text;  ///< the bytes of the file
  PresetLabel label;
  Preset preset;
};

}  // namespace orvantesco
