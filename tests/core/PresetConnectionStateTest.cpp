// What a host's state knows of the preset library, and what it brings back.

#include <gtest/gtest.h>

#include <filesystem>

#include "core/LibraryRig.h"
#include "support/StateBytes.h"

namespace orvantesco {
namespace {

using PresetConnectionState = LibraryRig;

TEST_F(PresetConnectionState, AStateThatComesBeforeTheFirstScanKeepsItsPreset) {
  const StateChunk chunk = stateOfB();
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

TEST_F(PresetConnectionState, TheSavedPlaceFollowsTheMenu) {
  LibraryInstance one(library);
  one.step();
  tree.addFile("/User Presets/0 first.txt");
  const int before = one.rig.effect.settings().presetSelection().itemIndex;
  one.presets.browser().buildPresetMenu();
  EXPECT_EQ(one.rig.effect.settings().presetSelection().itemIndex, before + 1);
}

TEST_F(PresetConnectionState, AStateBringsTheSelectionBackAndStepsGoOnFromIt) {
  LibraryInstance other(library);
  other.rig.effect.UnserializeState(stateOfB(), 0);
  EXPECT_EQ(other.selected(), "/User Presets/Deep/B");
  other.step();
  EXPECT_EQ(other.feedback(), 33.0);
}

TEST_F(PresetConnectionState, AStateWhoseFolderIsGoneLeavesTheSelection) {
  const StateChunk chunk = stateOfB();
  std::filesystem::remove_all(tree.full("/User Presets/Deep"));
  LibraryInstance other(library);
  other.step();
  other.rig.effect.UnserializeState(chunk, 0);
  EXPECT_EQ(other.selected(), "/User Presets/A");
}

TEST_F(PresetConnectionState, TheEndOfAConnectionLeavesTheEffectWithoutAMenu) {
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

}  // namespace
}  // namespace orvantesco
