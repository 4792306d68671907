// The preset library with an engine behind it.

#include "core/PresetConnection.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <thread>
#include <utility>

#include "params/ParamIndex.h"
#include "presets/StateChunk.h"
#include "support/EngineRig.h"
#include "support/OrdinaryUser.h"
#include "support/PresetTree.h"
#include "support/RecordingEditor.h"
#include "support/StateBytes.h"

namespace orvantesco {
namespace {

std::string presetWith(int version, const std::string& values) {
  return "Orvantesco V. 1.2.0r14 PresetFile!\nPresetVersion: " + std::to_string(version) +
         "\n\nEParams:\n" + values;
}

class TellingPrompts : public PresetPrompts {
 public:
  std::optional<std::string> askForFile(const PresetSaveQuestion&) override { return file; }
  std::optional<std::string> file;
};

/// An instance of the effect whose editor shows the library.
struct Instance {
  explicit Instance(PresetLibrary& library) : presets(rig.effect, library, prompts) {
    rig.effect.setEditor(&editor);
    presets.browser().buildPresetMenu();
  }
  double feedback() { return rig.effect.GetParam(kFeedback)->value(); }
  void setFeedback(double percent) {
    rig.effect.GetParam(kFeedback)->setValue(percent);
    rig.effect.OnParamChange(kFeedback);
  }
  void saveAs(const std::string& path) {
    prompts.file = path;
    presets.browser().savePresetAs();
  }
  bool wasTold(PresetMessage message) const {
    return editor.saw("showMessage " + std::string(textOf(message)));
  }

  RecordingEditor editor;
  TellingPrompts prompts;
  EngineRig rig;
  PresetConnection presets;
};

class PresetConnectionTest : public ::testing::Test {
 protected:
  PresetConnectionTest() {
    tree.addFile("/User Presets/A.txt", presetWith(14, "Feedback1 11\n"));
    tree.addFile("/User Presets/Deep/B.txt", presetWith(14, "Feedback1 22\n"));
    tree.addFile("/Factory Presets/C.txt", presetWith(14, "Feedback1 33\n"));
  }

  PresetTree tree;
  PresetLibrary library{tree.folders()};
};

TEST_F(PresetConnectionTest, StepsLoadIntoTheEngineAndShowNameAndFolder) {
  Instance one(library);
  const std::vector<std::pair<double, std::string>> expected{
      {11.0, "A U:User Presets"}, {22.0, "B U:Deep"}, {33.0, "C F:Factory Presets"}};
  for (const auto& [feedback, labels] : expected) {
    one.presets.browser().stepPreset(true);
    EXPECT_EQ(one.feedback(), feedback);
    EXPECT_EQ(one.rig.effect.settings().presetName() + " " +
                  one.rig.effect.settings().presetFolderLabel(),
              labels);
  }
}

TEST_F(PresetConnectionTest, AForeignFileChangesNothingButTheLabel) {
  tree.addFile("/User Presets/0.wav", "RIFF");
  Instance one(library);
  one.setFeedback(44.0);
  one.presets.browser().stepPreset(true);
  EXPECT_EQ(one.rig.effect.settings().presetName(), "WRONG FILE");
  EXPECT_EQ(one.feedback(), 44.0);
  one.presets.browser().stepPreset(true);
  EXPECT_EQ(one.feedback(), 11.0) << "and the next step goes on";
}

TEST_F(PresetConnectionTest, AnExtensionInOtherLettersLoadsToo) {
  tree.addFile("/User Presets/0.TXT", presetWith(14, "Feedback1 77\n"));
  Instance one(library);
  one.presets.browser().stepPreset(true);
  EXPECT_EQ(one.rig.effect.settings().presetName(), "0");
  EXPECT_EQ(one.feedback(), 77.0);
}

TEST_F(PresetConnectionTest, WhatIsSavedLoadsInAnotherInstance) {
  Instance one(library);
  Instance other(library);
  one.setFeedback(55.5);
  one.saveAs(tree.full("/User Presets/Deep/a.b.txt"));
  EXPECT_EQ(one.rig.effect.settings().presetName(), "a.b");
  EXPECT_EQ(one.rig.effect.settings().presetFolderLabel(), "U:Deep");
  EXPECT_EQ(one.rig.effect.settings().presetSelection().folderPath, "/User Presets/Deep/");
  other.presets.browser().stepPreset(true);
  other.presets.browser().stepPreset(true);
  EXPECT_EQ(other.feedback(), 55.5);
}

TEST_F(PresetConnectionTest, FailuresOfSavingAreToldInTheEditor) {
  Instance one(library);
  one.saveAs(tree.full("/Factory Presets/C.txt"));
  EXPECT_TRUE(one.wasTold(PresetMessage::factoryFolder));
  one.saveAs(tree.full("/User Presets/Gone/C.txt"));
  EXPECT_TRUE(one.wasTold(PresetMessage::cannotWrite));
  one.saveAs(tree.full("/Elsewhere.txt"));
  EXPECT_TRUE(one.wasTold(PresetMessage::notInUserFolder));
}

TEST_F(PresetConnectionTest, AnOldPresetIsRewrittenOnceItsFileIsKept) {
  const std::string old = presetWith(3, "Level1 0.5\n");
  tree.addFile("/User Presets/0/Old.txt", old);
  Instance one(library);
  one.presets.browser().loadPresetByPath("/User Presets/0/Old.txt");
  EXPECT_TRUE(tree.content("/User Presets/0/Old.txt").find("Level1 -6.0206") != std::string::npos);
  EXPECT_EQ(tree.content("/../Preset Backups/User Presets/0/Old.txt"), old);
}

TEST_F(PresetConnectionTest, AnOldPresetThatCannotBeKeptStaysAndLoadsAllTheSame) {
  const std::string old = presetWith(3, "Feedback1 66\n");
  tree.addFile("/User Presets/0/Old.txt", old);
  tree.setRights("/User Presets/0", 0555);
  tree.setRights("/..", 0555);
  Instance one(library);
  const OrdinaryUser user;
  one.presets.browser().loadPresetByPath("/User Presets/0/Old.txt");
  EXPECT_EQ(one.feedback(), 66.0);
  EXPECT_EQ(tree.content("/User Presets/0/Old.txt"), old);
  EXPECT_TRUE(one.wasTold(PresetMessage::cannotWrite));
}

TEST_F(PresetConnectionTest, AnOldPresetThatIsKeptButCannotBeRewrittenIsTold) {
  const std::string old = presetWith(3, "Feedback1 66\n");
  tree.addFile("/User Presets/0/Old.txt", old);
  tree.addFolder("/../Preset Backups");
  tree.setRights("/../Preset Backups", 0777);
  tree.setRights("/User Presets/0", 0555);
  Instance one(library);
  {
    const OrdinaryUser user;
    one.presets.browser().loadPresetByPath("/User Presets/0/Old.txt");
  }
  EXPECT_EQ(one.feedback(), 66.0);
  EXPECT_EQ(tree.content("/User Presets/0/Old.txt"), old);
  EXPECT_EQ(tree.content("/../Preset Backups/User Presets/0/Old.txt"), old);
  EXPECT_TRUE(one.wasTold(PresetMessage::cannotWrite));
  EXPECT_FALSE(one.rig.effect.presetIsLoading());
}

TEST_F(PresetConnectionTest, AStateThatComesBeforeTheFirstScanKeepsItsPreset) {
  StateChunk chunk;
  {
    Instance one(library);
    one.presets.browser().stepPreset(true);
    one.presets.browser().stepPreset(true);
    ASSERT_TRUE(one.rig.effect.SerializeState(chunk));
  }
  EngineRig rig;
  rig.effect.UnserializeState(chunk, 0);
  PresetPrompts nobody;
  PresetConnection presets(rig.effect, library, nobody);
  StateChunk early;
  ASSERT_TRUE(rig.effect.SerializeState(early));
  EXPECT_EQ(StateBytes::bytesOf(early), StateBytes::bytesOf(chunk)) << "before the scan";
  presets.browser().buildPresetMenu();
  EXPECT_EQ(presets.browser().menu().selectedPath(), "/User Presets/Deep/B");
}

TEST_F(PresetConnectionTest, TheSavedPlaceFollowsTheMenu) {
  Instance one(library);
  one.presets.browser().stepPreset(true);
  tree.addFile("/User Presets/0 first.txt");
  const int before = one.rig.effect.settings().presetSelection().itemIndex;
  one.presets.browser().buildPresetMenu();
  EXPECT_EQ(one.rig.effect.settings().presetSelection().itemIndex, before + 1);
}

TEST_F(PresetConnectionTest, AStateBringsTheSelectionBackAndStepsGoOnFromIt) {
  StateChunk chunk;
  {
    Instance one(library);
    one.presets.browser().stepPreset(true);
    one.presets.browser().stepPreset(true);
    ASSERT_TRUE(one.rig.effect.SerializeState(chunk));
  }
  Instance other(library);
  other.rig.effect.UnserializeState(chunk, 0);
  EXPECT_EQ(other.presets.browser().menu().selectedPath(), "/User Presets/Deep/B");
  other.presets.browser().stepPreset(true);
  EXPECT_EQ(other.feedback(), 33.0);
}

TEST_F(PresetConnectionTest, AStateWhoseFolderIsGoneLeavesTheSelection) {
  StateChunk chunk;
  {
    Instance one(library);
    one.presets.browser().stepPreset(false);
    one.presets.browser().stepPreset(false);
    ASSERT_TRUE(one.rig.effect.SerializeState(chunk));
  }
  std::filesystem::remove_all(tree.full("/User Presets/Deep"));
  Instance other(library);
  other.presets.browser().stepPreset(true);
  other.rig.effect.UnserializeState(chunk, 0);
  EXPECT_EQ(other.presets.browser().menu().selectedPath(), "/User Presets/A");
}

TEST_F(PresetConnectionTest, AMissingRootIsTold) {
  PresetTree missing;
  PresetLibrary nowhere(missing.folders());
  ::testing::internal::CaptureStderr();
  Instance one(nowhere);
  ::testing::internal::GetCapturedStderr();
  EXPECT_TRUE(one.wasTold(PresetMessage::noPresetsFolder));
}

TEST_F(PresetConnectionTest, TheEndOfAConnectionLeavesTheEffectWithoutAMenu) {
  EngineRig rig;
  PresetPrompts nobody;
  {
    PresetConnection presets(rig.effect, library, nobody);
    presets.browser().buildPresetMenu();
    presets.browser().savePresetAs();
    presets.browser().choosePresetFromMenu();
  }
  StateChunk chunk;
  ASSERT_TRUE(rig.effect.SerializeState(chunk));
  EXPECT_GT(rig.effect.UnserializeState(chunk, 0), 0);
}

/// Steps on and counts how often what is in the engine is not what was selected.
int strayedSteps(Instance& instance, int steps) {
  const std::map<std::string, double> feedbackOf{
      {"/User Presets/A", 11.0}, {"/User Presets/Deep/B", 22.0}, {"/Factory Presets/C", 33.0}};
  int strayed = 0;
  for (int i = 0; i < steps; ++i) {
    instance.presets.browser().stepPreset(i % 4 != 3);
    const std::string path = instance.presets.browser().menu().selectedPath();
    const auto known = feedbackOf.find(path);
    const bool isRight =
        known != feedbackOf.end() && instance.feedback() == known->second &&
        instance.rig.effect.settings().presetName() == path.substr(path.size() - 1);
    if (!isRight) ++strayed;
  }
  return strayed;
}

TEST_F(PresetConnectionTest, TwoInstancesThatLoadAtOnceDoNotDisturbEachOther) {
  Instance one(library);
  Instance other(library);
  one.presets.browser().stepPreset(true);  // so that they load different presets
  int strayedOther = 0;
  std::thread editor([&] { strayedOther = strayedSteps(other, 30); });
  EXPECT_EQ(strayedSteps(one, 30), 0);
  editor.join();
  EXPECT_EQ(strayedOther, 0);
}

/// Lets another thread work between the reading of a preset and its application, which shows the
/// name once more.
class BetweenReadAndApply : public EditorPort {
 public:
  explicit BetweenReadAndApply(std::function<void()> work) : other(std::move(work)) {}
  void showPresetName(std::string_view) noexcept override {
    if (!std::exchange(hasWorked, true)) std::thread(other).join();
  }

 private:
  bool hasWorked = false;
  std::function<void()> other;
};

TEST_F(PresetConnectionTest, WhatAnInstanceHasReadIsItsOwn) {
  Instance one(library);
  Instance other(library);
  one.presets.browser().stepPreset(true);
  BetweenReadAndApply pause([&] { other.presets.browser().stepPreset(true); });
  one.rig.effect.setEditor(&pause);
  one.presets.browser().stepPreset(true);
  EXPECT_EQ(one.feedback(), 22.0);
  EXPECT_EQ(other.feedback(), 11.0);
}

TEST_F(PresetConnectionTest, AnInstanceSavesWhileItsHostRestores) {
  Instance one(library);
  StateChunk chunk;
  one.setFeedback(44.0);
  ASSERT_TRUE(one.rig.effect.SerializeState(chunk));
  std::atomic<bool> stop{false};
  std::thread host([&] {
    while (!stop) one.rig.effect.UnserializeState(chunk, 0);
  });
  std::vector<std::string> texts;
  for (int i = 0; i < 10; ++i) {
    one.presets.browser().stepPreset(true);
    one.saveAs(tree.full("/User Presets/Saved.txt"));
    texts.push_back(tree.content("/User Presets/Saved.txt"));
  }
  stop = true;
  host.join();
  EXPECT_FALSE(one.wasTold(PresetMessage::cannotWrite));
  const std::set<std::string> known{"Feedback1 11\n", "Feedback1 22\n", "Feedback1 33\n",
                                    "Feedback1 44\n"};
  for (const std::string& text : texts) {
    const std::string values = text.substr(text.find("EParams:\n") + 9);
    EXPECT_TRUE(known.contains(values)) << "of the state or of a preset: " << values;
  }
}

}  // namespace
}  // namespace orvantesco
