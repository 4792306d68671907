// The preset library with an engine behind it.

#include "core/PresetConnection.h"

#include <gtest/gtest.h>

#include <utility>

#include "core/LibraryRig.h"
#include "support/OrdinaryUser.h"

namespace orvantesco {
namespace {

using PresetConnectionTest = LibraryRig;

TEST_F(PresetConnectionTest, StepsLoadIntoTheEngineAndShowNameAndFolder) {
  LibraryInstance one(library);
  const std::vector<std::pair<double, std::string>> expected{
      {11.0, "A U:User Presets"}, {22.0, "B U:Deep"}, {33.0, "C F:Factory Presets"}};
  for (const auto& [feedback, labels] : expected) {
    one.step();
    EXPECT_EQ(one.feedback(), feedback);
    EXPECT_EQ(one.label(), labels);
  }
}

TEST_F(PresetConnectionTest, AForeignFileChangesNothingButTheLabel) {
  tree.addFile("/User Presets/0.wav", "RIFF");
  LibraryInstance one(library);
  one.setFeedback(44.0);
  one.step();
  EXPECT_EQ(one.rig.effect.settings().presetName(), "WRONG FILE");
  EXPECT_EQ(one.feedback(), 44.0);
  one.step();
  EXPECT_EQ(one.feedback(), 11.0) << "and the next step goes on";
}

TEST_F(PresetConnectionTest, AnExtensionInOtherLettersLoadsToo) {
  tree.addFile("/User Presets/0.TXT", presetWith(14, "Feedback1 77\n"));
  LibraryInstance one(library);
  one.step();
  EXPECT_EQ(one.rig.effect.settings().presetName(), "0");
  EXPECT_EQ(one.feedback(), 77.0);
}

TEST_F(PresetConnectionTest, WhatIsSavedLoadsInAnotherInstance) {
  LibraryInstance one(library);
  LibraryInstance other(library);
  one.setFeedback(55.5);
  one.saveAs(tree.full("/User Presets/Deep/a.b.txt"));
  EXPECT_EQ(one.label(), "a.b U:Deep");
  EXPECT_EQ(one.rig.effect.settings().presetSelection().folderPath, "/User Presets/Deep/");
  other.step();
  other.step();
  EXPECT_EQ(other.feedback(), 55.5);
}

TEST_F(PresetConnectionTest, FailuresOfSavingAreToldInTheEditor) {
  LibraryInstance one(library);
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
  LibraryInstance one(library);
  one.presets.browser().loadPresetByPath("/User Presets/0/Old.txt");
  EXPECT_TRUE(tree.content("/User Presets/0/Old.txt").find("Level1 -6.0206") != std::string::npos);
  EXPECT_EQ(tree.content("/../Preset Backups/User Presets/0/Old.txt"), old);
}

TEST_F(PresetConnectionTest, AnOldPresetThatCannotBeKeptStaysAndLoadsAllTheSame) {
  const std::string old = presetWith(3, "Feedback1 66\n");
  tree.addFile("/User Presets/0/Old.txt", old);
  tree.setRights("/User Presets/0", 0555);
  tree.setRights("/..", 0555);
  LibraryInstance one(library);
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
  LibraryInstance one(library);
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

TEST_F(PresetConnectionTest, AMissingRootIsTold) {
  PresetTree missing;
  PresetLibrary nowhere(missing.folders());
  ::testing::internal::CaptureStderr();
  LibraryInstance one(nowhere);
  ::testing::internal::GetCapturedStderr();
  EXPECT_TRUE(one.wasTold(PresetMessage::noPresetsFolder));
}

}  // namespace
}  // namespace orvantesco
