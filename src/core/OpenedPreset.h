#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "presets/Preset.h"

namespace orvantesco {

/// What an editor shows of a preset's place.
struct PresetLabel {
  std::string name;
  std::string folder;  ///< with "U:" or "F:" before it
};

/// Of a file, given by its path from the presets' root.
PresetLabel presetLabelOf(const std::string& relativePath);

/// A preset file as it was read, with what belongs to it: none of this is ever that of another.
struct OpenedPreset {
  std::string root;          ///< of the presets, when it was read
  std::string relativePath;  ///< of the file, from the root
  std::string text;          ///< the bytes of the file
  PresetLabel label;
  Preset preset;

  std::string fullPath() const { return root + relativePath; }
};

/// What came of the attempt to open one.
struct PresetOpening {
  std::optional<OpenedPreset> preset;
  std::string_view refusal;  ///< what the editor shows in place of a name where there is none
};

// Control threads, under no lock: a disk may take its time.

PresetOpening openPreset(const std::string& root, const std::string& relativePath);

/// Writes the present form of a preset over its old file, once that one is kept among the backups.
/// What somebody has written there since it was read is not what was loaded, and stays. False
/// where the file could not be kept or written.
bool rewritePreset(const OpenedPreset& old, const Preset& present);

}  // namespace orvantesco
