// The state block that a host keeps: bytes in, engine, bytes out.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "core/HostStateRig.h"
#include "support/LongTests.h"

namespace orvantesco {
namespace {

using HostStateBlock = HostStateRig;

TEST_F(HostStateBlock, AFreshEffectSavesItsDefaultsToTheByte) {
  StateBytes fresh;
  fresh.taps.fill(0xFFFF);
  fresh.stepFx.fill(0xFFFF);
  fresh.values = defaultValues();
  const Bytes expected = fresh.bytes();
  EXPECT_EQ(saved(rig), expected);
  EXPECT_EQ(expected.size(), 4u + 4 + 4 + 8 + 4 + 4 + 4 + 4 + 4 + 20 * 4 + 1 + 1095 * 8);
}

TEST_F(HostStateBlock, WhatAnotherProgramWroteReadsBackToTheByte) {
  const StateBytes state = moved();
  EXPECT_EQ(restore(state), static_cast<int>(state.bytes().size()));
  EXPECT_EQ(saved(rig), state.bytes());
}

TEST_F(HostStateBlock, RandomStatesReadBackToTheByteInAnEffectThatWasAnywhere) {
  std::mt19937 draw(20);
  const int states = timesOrLong(1000, 10000);
  for (int i = 0; i < states; ++i) {
    const StateBytes state = randomState(draw);
    restore(state);
    ASSERT_EQ(differences(saved(rig), state.bytes()), "") << "state " << i;
  }
}

TEST_F(HostStateBlock, EveryFieldReachesTheEngine) {
  restore(moved());
  EXPECT_EQ(rig.effect.tapMasks(2).left, 5);
  EXPECT_EQ(rig.effect.tapMasks(2).right, 6);
  EXPECT_EQ(probe.taps(3).stepFxMask, 12);
  EXPECT_EQ(probe.taps(0).stepModMask[1], 17);
  EXPECT_DOUBLE_EQ(probe.slot(2).feedback, 0.33);
  EXPECT_EQ(probe.globals().dryLevel, 0.0) << "the dry lock holds";
  EXPECT_NEAR(probe.globals().inputAttenuation, std::pow(10.0, -7.0 / 20.0), 1e-9);
  EXPECT_EQ(rig.effect.touchedParameter(), kFeedback);
  EXPECT_EQ(rig.effect.settings().presetName(), "Slap");
  EXPECT_EQ(rig.effect.settings().presetFolderLabel(), "F:Echo");
  EXPECT_EQ(rig.effect.settings().presetSelection().itemIndex, 3);
}

TEST_F(HostStateBlock, TheEditorFollowsARestore) {
  restore(moved());
  for (const char* line : {"showPresetName Slap", "showPresetFolder F:Echo", "showColourSet 7",
                           "showPage 12", "refreshStepGrids", "showDryLock yes",
                           "showAttenuation 0.25", "runDisplayTimers", "refreshSlot 3"}) {
    EXPECT_TRUE(editor.saw(line)) << line;
  }
  EXPECT_EQ(editor.linesOf("setKnobValue").size(), 1095u);
}

TEST_F(HostStateBlock, AnAttenuationIsWholeDecibels) {
  const auto gainAt = [this](double position) {
    rig.effect.settings().setAttenuation(position);
    return 20.0 * std::log10(probe.globals().inputAttenuation);
  };
  EXPECT_EQ(gainAt(1.0), 0.0);
  EXPECT_NEAR(gainAt(0.999999), -1.0, 1e-9);
  EXPECT_NEAR(gainAt(0.5), -4.0, 1e-9);
  EXPECT_NEAR(gainAt(0.25), -7.0, 1e-9);
  EXPECT_NEAR(gainAt(0.0), -12.0, 1e-9);
}

TEST_F(HostStateBlock, AnEmptyNameLeavesTheLabelAsItWas) {
  restore(moved());
  editor.clear();
  StateBytes state = moved();
  state.name.clear();
  state.folder.clear();
  restore(state);
  EXPECT_EQ(rig.effect.settings().presetName(), "Slap");
  EXPECT_EQ(rig.effect.settings().presetFolderLabel(), "F:Echo");
  EXPECT_TRUE(editor.linesOf("showPresetName").empty());
}

TEST_F(HostStateBlock, NothingSelectedIsSavedAsMinusOne) {
  StateBytes state = moved();
  state.folderPath.clear();
  state.item = -1;
  restore(state);
  EXPECT_EQ(saved(rig), state.bytes());
}

TEST_F(HostStateBlock, ARateIsHeldToTheRangeOfItsOwnMode) {
  StateBytes notes = moved();
  notes.values[kLfoSync] = 1.0;
  notes.values[kLfoRate] = 0.0;
  StateBytes hertz = moved();
  hertz.values[kLfoRate] = 440.0;
  for (int round = 0; round < 2; ++round) {
    restore(notes);
    EXPECT_EQ(value(kLfoRate), 0.0);
    restore(hertz);
    EXPECT_EQ(value(kLfoRate), 440.0);
  }
}

TEST_F(HostStateBlock, LinkedTimesStayAsTheyWereSaved) {
  StateBytes state = moved();
  state.values[kDelayLRLink] = 1.0;
  state.values[kDelayTimeL] = 100.0;
  state.values[kDelayTimeR] = 700.0;
  state.touched = kDelayTimeL;
  restore(state);
  EXPECT_EQ(saved(rig), state.bytes());
}

TEST_F(HostStateBlock, ARestoreLeavesNothingOfTheSignalBefore) {
  rig.set(kDryLevel, 0.0);
  StereoBuffer audio = noise(48000);
  rig.render(audio);
  StateBytes state = moved();
  state.values[kDelayTimeL] = 10.0;
  restore(state);
  StereoBuffer after(48000);
  rig.render(after);
  double peak = 0.0;
  for (const double sample : after.left) peak = std::max(peak, std::abs(sample));
  EXPECT_LT(peak, 1e-9);
}

}  // namespace
}  // namespace orvantesco
