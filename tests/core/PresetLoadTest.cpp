// Presets on their way into the engine, and what is seen and heard of it.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "core/PresetLoadRig.h"
#include "support/StateBytes.h"

namespace orvantesco {
namespace {

using PresetLoad = PresetLoadRig;

TEST_F(PresetLoad, ParametersThatAreNotListedGetTheirDefaults) {
  std::mt19937 draw(4);
  const StateBytes before = randomState(draw);
  rig.effect.UnserializeState(before.chunk(), 0);
  ASSERT_TRUE(loadText(fileOf(14, "DelayTaps 1 2 3 4 5 6 7 8 StepFX 1 1 1 1 EParams:\n")));
  const std::vector<double> defaults = defaultValues();
  for (int i = 0; i < kNumParams; ++i) {
    EXPECT_EQ(value(i), defaults[static_cast<std::size_t>(i)]) << i;
  }
  EXPECT_EQ(rig.effect.tapMasks(3).right, 8);
  EXPECT_EQ(probe.taps(2).stepFxMask, 1);
  EXPECT_EQ(probe.taps(1).stepModMask[1], 0);
}

TEST_F(PresetLoad, ListedParametersReachTheEngineHeldInTheirRanges) {
  ASSERT_TRUE(loadText(fileOf(14,
                              "EParams:\nFeedback1 25\nFeedback2 1e9\nFeedback3 -4\n"
                              "NoSuchName 4\nFX1PR 5\nLFOSync1 1\nLFORate1 3\n")));
  EXPECT_DOUBLE_EQ(probe.slot(0).feedback, 0.25);
  EXPECT_EQ(value(kFeedback + 1), 160.0);
  EXPECT_EQ(value(kFeedback + 2), 0.0);
  EXPECT_NE(probe.position(0).type, 0);
  EXPECT_EQ(value(kLfoRate), 3.0);
}

TEST_F(PresetLoad, WhatAFileDoesNotSayOfTapsAndPageStays) {
  rig.effect.setTapMasks(1, {0x1234, 0x4321});
  ASSERT_TRUE(loadText(fileOf(14, "LastPage 12 EParams:\n")));
  ASSERT_TRUE(loadText(fileOf(14, "EParams:\n")));
  EXPECT_EQ(rig.effect.tapMasks(1).left, 0x1234);
  EXPECT_EQ(rig.effect.settings().currentPreset().lastPage, 12);
}

TEST_F(PresetLoad, TheEditorFollowsALoad) {
  ASSERT_TRUE(loadText(fileOf(14, "LastPage 6 EParams:\n")));
  for (const char* line :
       {"showPage 6", "refreshStepGrids", "closeStepViews", "runDisplayTimers", "refreshSlot 0",
        "refreshSlot 3", "refreshLanes 0", "refreshLanes 1", "refreshLanes 2", "refreshLanes 3"}) {
    EXPECT_TRUE(editor.saw(line)) << line;
  }
  EXPECT_EQ(rig.effect.touchedParameter(), -1);
}

TEST_F(PresetLoad, ALoadLeavesNoHintAndNoReadOutBehind) {
  rig.effect.touchParameter(kFeedback);
  editor.clear();
  ASSERT_TRUE(loadText(fileOf(14, "EParams:\nFeedback1 25\n")));
  EXPECT_TRUE(editor.linesOf("showReadout").empty()) << "nobody's hand lies on a knob";
  EXPECT_EQ(editor.linesOf("closeStepViews").size(), 1u) << "passing hints go with the step views";
  const auto lines = editor.lines();
  const auto at = [&lines](const char* line) {
    return std::find(lines.begin(), lines.end(), line) - lines.begin();
  };
  EXPECT_LT(at("closeStepViews"), at("runDisplayTimers"));
  for (int slot = 0; slot < numSlots; ++slot) {
    // The values of the taps arrive before it: what shows them is drawn anew behind them all.
    const auto last = [&lines](const std::string& line) {
      return std::find(lines.rbegin(), lines.rend(), line) - lines.rbegin();
    };
    EXPECT_LT(last("refreshLanes " + std::to_string(slot)), last("runDisplayTimers")) << slot;
    EXPECT_LT(last("refreshSlot " + std::to_string(slot)), last("runDisplayTimers")) << slot;
  }
  for (const std::string& flash : editor.linesOf("flashKnobValue")) {
    EXPECT_TRUE(flash.ends_with(" 0")) << flash << ": values go off the knobs at once";
  }
}

TEST_F(PresetLoad, EachParameterSeesTheEarlierOnesAtTheirFinalValues) {
  rig.set(kTapFxParam1, 2);
  rig.set(kTapFxParam2, 3);
  ASSERT_TRUE(loadText(fileOf(14, "EParams:\nTapFXParam11 3\nTapFXParam21 2\n")));
  EXPECT_EQ(value(kTapFxParam1), 3.0);
  EXPECT_EQ(value(kTapFxParam2), 2.0);
  EXPECT_EQ(probe.taps(0).fxParam[0], 3);
  EXPECT_EQ(probe.taps(1).fxParam[0], 0);
}

TEST_F(PresetLoad, AnOldTappedMixIsQuietenedInEverySlotThatHasIt) {
  const std::string text =
      "EParams:\nFeedback1 80\nDelayMode1 3\nDelayRoute1 6\nDelayMode2 3\nDelayRoute2 5\n"
      "DelayMode4 3\nDelayRoute4 6\n";
  ASSERT_TRUE(loadText(fileOf(13, text)));
  EXPECT_DOUBLE_EQ(value(kFeedback), 80.0 * 0.7);
  EXPECT_DOUBLE_EQ(probe.slot(0).feedback, 0.56);
  EXPECT_EQ(value(kFeedback + 1), 50.0);
  EXPECT_DOUBLE_EQ(value(kFeedback + 3), 50.0 * 0.7);
  ASSERT_TRUE(loadText(fileOf(14, text)));
  EXPECT_EQ(value(kFeedback), 80.0);
}

TEST_F(PresetLoad, ALevelOfNothingIsSilence) {
  ASSERT_TRUE(loadText(fileOf(3, "EParams:\nLevel1 0\nLevel2 -1\nLevel3 2\n")));
  EXPECT_EQ(value(kLevel), rig.effect.GetParam(kLevel)->min());
  EXPECT_EQ(value(kLevel + 1), rig.effect.GetParam(kLevel)->min());
  EXPECT_NEAR(value(kLevel + 2), 6.0206, 1e-4);
}

TEST_F(PresetLoad, ALoadIsHeardBehindAFadeWithNothingOfTheSignalBefore) {
  rig.warmUp();
  StereoBuffer before = noise(24000);
  rig.render(before);
  ASSERT_TRUE(loadText(fileOf(14, "EParams:\nDryLevel 0\nDelayTimeL1 1\nDelayTimeR1 1\n")));
  StereoBuffer silence(24000);
  rig.render(silence);
  double peak = 0.0;
  for (const double sample : silence.left) peak = std::max(peak, std::abs(sample));
  EXPECT_LT(peak, 1e-9);

  ASSERT_TRUE(loadText(fileOf(14, "EParams:\nWetLevel 0\nDryLevel 100\n")));
  StereoBuffer steady(24000);
  std::fill(steady.left.begin(), steady.left.end(), 1.0);
  rig.render(steady);
  EXPECT_LT(std::abs(steady.left[150]), 0.1) << "the fade begins at silence";
  EXPECT_NEAR(steady.left[20000], 1.0, 0.01);
}

TEST_F(PresetLoad, ShowingAPageDuringALoadDoesNotMakeItTheCurrentOne) {
  const auto loading = probe.loadingPreset();
  rig.effect.settings().setCurrentPage(7);
  EXPECT_EQ(rig.effect.settings().currentPreset().lastPage, 2);
}

}  // namespace
}  // namespace orvantesco
