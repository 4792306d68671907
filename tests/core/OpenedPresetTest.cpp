// A preset, its file and its label stay together, whatever comes between reading and applying.

#include <gtest/gtest.h>

#include <filesystem>

#include "params/ParamIndex.h"
#include "presets/PresetMessages.h"
#include "support/EngineRig.h"
#include "support/FolderRig.h"
#include "support/RecordingEditor.h"
#include "support/StateBytes.h"

namespace orvantesco {
namespace {

std::string presetWith(int version, int feedback) {
  return "Orvantesco V. 1.2.0r14 PresetFile!\nPresetVersion: " + std::to_string(version) +
         "\n\nEParams:\nFeedback1 " + std::to_string(feedback) + "\n";
}

StateBytes stateNamed(const std::string& name) {
  StateBytes state;
  state.name = name;
  state.folder = "U:" + name;
  state.values = defaultValues();
  return state;
}

class OpenedPresets : public ::testing::Test {
 protected:
  OpenedPresets() {
    rig.effect.setEditor(&editor);
    rig.effect.settings().setPresetRoot(folder.file("Presets"));
  }
  std::string write(const std::string& name, const std::string& text) {
    folder.write("Presets/User Presets/" + name, text);
    return "/User Presets/" + name;
  }
  std::string content(const std::string& path) const { return folder.read("Presets" + path); }
  double feedback() { return rig.effect.GetParam(kFeedback)->value(); }
  std::string label() {
    return rig.effect.settings().presetName() + " in " + rig.effect.settings().presetFolderLabel();
  }

  FolderRig folder;
  RecordingEditor editor;
  EngineRig rig;
};

TEST_F(OpenedPresets, ARestoreBetweenReadingAndApplyingLeavesNoForeignLabel) {
  ASSERT_TRUE(rig.effect.readPresetFile(write("Slap.txt", presetWith(14, 11))));
  EXPECT_EQ(label(), "Slap in U:User Presets") << "shown as soon as it is read";
  rig.effect.UnserializeState(stateNamed("Project").chunk(), 0);
  rig.effect.applyLoadedPreset();
  EXPECT_EQ(feedback(), 11.0);
  EXPECT_EQ(label(), "Slap in U:User Presets");
  EXPECT_EQ(editor.linesOf("showPresetName").back(), "showPresetName Slap");
}

TEST_F(OpenedPresets, AFileThatIsRefusedIsNotWrittenOverByThePresetBefore) {
  const std::string old = write("Old.txt", presetWith(13, 11));
  const std::string foreign = write("Foreign.txt", "RIFF....");
  ASSERT_TRUE(rig.effect.readPresetFile(old));
  EXPECT_FALSE(rig.effect.readPresetFile(foreign));
  EXPECT_EQ(rig.effect.settings().presetName(), "WRONG FILE");
  rig.effect.applyLoadedPreset();
  EXPECT_EQ(content(foreign), "RIFF....");
  EXPECT_NE(content(old).find("PresetVersion: 14"), std::string::npos);
  EXPECT_EQ(label(), "Old in U:User Presets") << "of the values that are there now";
}

TEST_F(OpenedPresets, WithoutAFileThatWasReadNothingIsApplied) {
  rig.set(kFeedback, 44.0);
  rig.effect.applyLoadedPreset();
  EXPECT_EQ(feedback(), 44.0);
}

TEST_F(OpenedPresets, AnOldFileThatHasChangedSinceItWasReadIsNotRewritten) {
  const std::string old = write("Old.txt", presetWith(13, 11));
  ASSERT_TRUE(rig.effect.readPresetFile(old));
  write("Old.txt", presetWith(13, 22));
  rig.effect.applyLoadedPreset();
  EXPECT_EQ(feedback(), 11.0);
  EXPECT_EQ(content(old), presetWith(13, 22));
  EXPECT_FALSE(editor.saw("showMessage " + std::string(textOf(PresetMessage::cannotWrite))));
}

TEST_F(OpenedPresets, AnOldFileThatIsGoneIsNotMadeAnew) {
  const std::string old = write("Old.txt", presetWith(13, 11));
  ASSERT_TRUE(rig.effect.readPresetFile(old));
  std::filesystem::remove(folder.file("Presets" + old));
  rig.effect.applyLoadedPreset();
  EXPECT_TRUE(folder.files().empty());
  EXPECT_FALSE(editor.saw("showMessage " + std::string(textOf(PresetMessage::cannotWrite))));
}

/// Tells whether labels are shown while a preset loads.
class LabelWatch : public EditorPort {
 public:
  explicit LabelWatch(Orvantesco& of) : effect(of) {}
  void showPresetName(std::string_view) noexcept override { name = effect.presetIsLoading(); }
  void showPresetFolder(std::string_view) noexcept override { folder = effect.presetIsLoading(); }

  bool name = false;
  bool folder = false;

 private:
  Orvantesco& effect;
};

TEST_F(OpenedPresets, APresetFromAnywhereBringsItsLabelWithItsValues) {
  LabelWatch watch(rig.effect);
  rig.effect.setEditor(&watch);
  rig.effect.settings().applyPreset(Preset{}, "/Factory Presets/Echo/Slap.txt");
  rig.effect.setEditor(&editor);
  EXPECT_EQ(label(), "Slap in F:Echo");
  EXPECT_TRUE(watch.name);
  EXPECT_TRUE(watch.folder);
}

}  // namespace
}  // namespace orvantesco
