#pragma once

#include <gtest/gtest.h>

#include <string>

#include "params/ParamIndex.h"
#include "presets/PresetWriter.h"
#include "support/EngineRig.h"
#include "support/FolderRig.h"
#include "support/OrvantescoProbe.h"
#include "support/RecordingEditor.h"

namespace orvantesco {

/// The text of a preset file.
inline std::string fileOf(int version, const std::string& rest) {
  return "Orvantesco V. 1.2.0r14 PresetFile!\nPresetVersion: " + std::to_string(version) + "\n\n" +
         rest;
}

/// An effect that loads the files of a library.
class PresetLoadRig : public ::testing::Test {
 protected:
  PresetLoadRig() {
    rig.effect.setEditor(&editor);
    rig.effect.settings().setPresetRoot(folder.file("Presets"));
  }

  /// Reads and applies a file below "User Presets".
  bool load(const std::string& name) {
    const bool isPreset = rig.effect.readPresetFile("/User Presets/" + name);
    if (isPreset) rig.effect.applyLoadedPreset();
    return isPreset;
  }
  bool loadText(const std::string& text) {
    folder.write("Presets/User Presets/a.txt", text);
    return load("a.txt");
  }
  double value(int index) { return rig.effect.GetParam(index)->value(); }
  std::string savedText() { return presetText(rig.effect.settings().currentPreset()); }

  FolderRig folder;
  RecordingEditor editor;
  EngineRig rig;
  OrvantescoProbe probe{rig.effect};
};

}  // namespace orvantesco
