#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "core/PresetConnection.h"
#include "params/ParamIndex.h"
#include "presets/StateChunk.h"
#include "support/EngineRig.h"
#include "support/PresetTree.h"
#include "support/RecordingEditor.h"

namespace orvantesco {

inline std::string presetWith(int version, const std::string& values) {
  return "Orvantesco V. 1.2.0r14 PresetFile!\nPresetVersion: " + std::to_string(version) +
         "\n\nEParams:\n" + values;
}

/// A person who names a file.
class NamingPrompts : public PresetPrompts {
 public:
  std::optional<std::string> askForFile(const PresetSaveQuestion&) override { return file; }
  std::optional<std::string> file;
};

/// An instance of the effect whose editor shows the library.
struct LibraryInstance {
  explicit LibraryInstance(PresetLibrary& library) : presets(rig.effect, library, prompts) {
    rig.effect.setEditor(&editor);
    presets.browser().buildPresetMenu();
  }
  double feedback() { return rig.effect.GetParam(kFeedback)->value(); }
  void setFeedback(double percent) { rig.set(kFeedback, percent); }
  void step(bool forward = true) { presets.browser().stepPreset(forward); }
  void saveAs(const std::string& path) {
    prompts.file = path;
    presets.browser().savePresetAs();
  }
  StateChunk state() {
    StateChunk chunk;
    EXPECT_TRUE(rig.effect.SerializeState(chunk));
    return chunk;
  }
  std::string label() {
    return rig.effect.settings().presetName() + " " + rig.effect.settings().presetFolderLabel();
  }
  std::string selected() { return presets.browser().menu().selectedPath(); }
  bool wasTold(PresetMessage message) const {
    return editor.saw("showMessage " + std::string(textOf(message)));
  }

  RecordingEditor editor;
  NamingPrompts prompts;
  EngineRig rig;
  PresetConnection presets;
};

/// A library of three presets, each with a feedback of its own.
class LibraryRig : public ::testing::Test {
 protected:
  LibraryRig() {
    tree.addFile("/User Presets/A.txt", presetWith(14, "Feedback1 11\n"));
    tree.addFile("/User Presets/Deep/B.txt", presetWith(14, "Feedback1 22\n"));
    tree.addFile("/Factory Presets/C.txt", presetWith(14, "Feedback1 33\n"));
  }

  /// What a host keeps of an instance that has loaded B.
  StateChunk stateOfB() {
    LibraryInstance one(library);
    one.step();
    one.step();
    return one.state();
  }

  PresetTree tree;
  PresetLibrary library{tree.folders()};
};

}  // namespace orvantesco
