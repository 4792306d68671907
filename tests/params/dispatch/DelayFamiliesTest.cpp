#include "params/dispatch/DispatchRig.h"

namespace orvantesco {
namespace {

using DelayFamiliesTest = DispatchRig;

TEST_F(DelayFamiliesTest, AModeIsStoredAndHandedToTheDelays) {
  for (int mode = 0; mode < 4; ++mode) {
    set(kDelayMode + 1, mode);
    EXPECT_EQ(static_cast<int>(probe.delay(1).mode.get()), mode);
    EXPECT_TRUE(probe.slotRequests(1) & kTakeDelayMode);
  }
  EXPECT_TRUE(editor.saw("refreshSlot 1"));
}

TEST_F(DelayFamiliesTest, ForwardTakesTheRouteAnewAndTappedTheTapCount) {
  rig.effect.GetParam(kDelayRoute)->setValue(6);
  set(kDelayMode, 0);
  EXPECT_EQ(probe.delay(0).route, DelayRoute::Mix);
  rig.effect.GetParam(kDelayTaps)->setValue(3);
  set(kDelayMode, 3);
  EXPECT_EQ(probe.taps(0).lastTap, 3);
}

TEST_F(DelayFamiliesTest, EnteringAndLeavingTappedHandsThePostEffectOver) {
  set(kDelayMode + 2, 3);
  EXPECT_EQ(probe.effectRequests(10), kTakeAllEffectParams | kTakeAllEffectSources);
  set(kDelayMode + 2, 1);
  EXPECT_EQ(probe.effectRequests(10), kTakeAllEffectParams | kTakeAllEffectSources);
}

TEST_F(DelayFamiliesTest, LeavingTappedTurnsToTheDelayPage) {
  set(kDelayMode, 3);
  EXPECT_FALSE(editor.saw("showPage 2"));
  set(kDelayMode, 0);
  EXPECT_TRUE(editor.saw("showPage 2"));
  editor.clear();
  set(kDelayMode, 1);
  EXPECT_FALSE(editor.saw("showPage 2"));
  set(kDelayMode, 3);
  const auto bulk = probe.restoringState();
  set(kDelayMode, 0);
  EXPECT_FALSE(editor.saw("showPage 2"));
}

TEST_F(DelayFamiliesTest, OnlyTheDualRouteCanBalanceItsFeedback) {
  for (int route = 0; route < 9; ++route) {
    editor.clear();
    set(kDelayRoute + 3, route);
    EXPECT_EQ(static_cast<int>(probe.delay(3).route.get()), route);
    EXPECT_TRUE(editor.saw(route == 0 ? "enableKnob 327 yes" : "enableKnob 327 no"));
  }
  set(kFbProportional + 3, 1);
  EXPECT_TRUE(probe.delay(3).feedbackProportional);
}

TEST_F(DelayFamiliesTest, FiltersFadesAndSpreadKeepTheBanksUnits) {
  set(kDelayLopass, 1234.5);
  set(kDelayHipass, 66.5);
  set(kReverseXFade, 77.0);
  EXPECT_EQ(probe.slotRequests(0), kTakeDelaySettings);
  set(kDelaySpread, -12.5);
  EXPECT_DOUBLE_EQ(probe.delay(0).lopassHz, 1234.5);
  EXPECT_DOUBLE_EQ(probe.delay(0).hipassHz, 66.5);
  EXPECT_DOUBLE_EQ(probe.delay(0).reverseFadeMs, 77.0);
  EXPECT_DOUBLE_EQ(probe.delay(0).spreadMs, -12.5);
}

TEST_F(DelayFamiliesTest, ModulationOfTime) {
  set(kDelayModDepth + 1, 50.0);
  EXPECT_DOUBLE_EQ(probe.delay(1).modDepth, 0.125);
  set(kDelayModSource + 1, 11);
  EXPECT_EQ(probe.delay(1).timeSource, probe.outputs().logic[0].data());
  EXPECT_TRUE(probe.slotRequests(1) & kTakeDelaySources);
  EXPECT_TRUE(editor.saw("setRing 765 Logic yes"));
  EXPECT_TRUE(editor.saw("enableKnob 769 yes"));
}

TEST_F(DelayFamiliesTest, TheReverseReaderFollowsATriggerFlag) {
  const std::vector<const unsigned char*> flags{&probe.triggers().off, &probe.triggers().barPulse,
                                                &probe.triggers().envPulse[0],
                                                &probe.triggers().envPulse[1]};
  for (std::size_t entry = 0; entry < flags.size(); ++entry) {
    set(kReverseDelayTrigger, static_cast<double>(entry));
    EXPECT_EQ(probe.delay(0).reverseTrigger, flags[entry]);
  }
}

TEST_F(DelayFamiliesTest, Grains) {
  set(kGrainSize, 250.0);
  set(kGrainSpeed, -1.0);
  set(kGrainPosition, 40.0);
  set(kGrainFade, 12.0);
  EXPECT_EQ(probe.slotRequests(0), kTakeDelaySettings);
  EXPECT_DOUBLE_EQ(probe.delay(0).grainSizeMs, 250.0);
  EXPECT_DOUBLE_EQ(probe.delay(0).grainSpeed, -0.5);
  EXPECT_DOUBLE_EQ(probe.delay(0).grainPosition, 0.4);
  EXPECT_DOUBLE_EQ(probe.delay(0).grainFadeMs, 12.0);
}

TEST_F(DelayFamiliesTest, ModulationOfGrains) {
  const DelayControls& delay = probe.delay(2);
  set(kGrainSizeModDepth + 2, 50.0);
  set(kGrainSpeedModDepth + 2, -50.0);
  set(kGrainPositionModDepth + 2, 100.0);
  EXPECT_DOUBLE_EQ(delay.grainSizeDepth, 0.125);
  EXPECT_DOUBLE_EQ(delay.grainSpeedDepth, -0.125);
  EXPECT_DOUBLE_EQ(delay.grainPositionDepth, 1.0);
  set(kGrainSizeModSource + 2, 1);
  set(kGrainSpeedModSource + 2, 2);
  set(kGrainPositionModSource + 2, 3);
  EXPECT_EQ(delay.grainSizeSource, probe.outputs().lfo[0].data());
  EXPECT_EQ(delay.grainSpeedSource, probe.outputs().lfo[1].data());
  EXPECT_EQ(delay.grainPositionSource, probe.outputs().lfo[2].data());
  EXPECT_TRUE(probe.slotRequests(2) & kTakeDelaySources);
  EXPECT_TRUE(editor.saw("setRing 786 Lfo yes"));
  EXPECT_TRUE(editor.saw("setRing 798 Lfo yes"));
  EXPECT_TRUE(editor.saw("setRing 810 Lfo yes"));
}

TEST_F(DelayFamiliesTest, FourFamiliesOfTheBankDriveNothing) {
  for (const int base :
       {kDelayTimeLModDepth, kDelayTimeLModSource, kDelayTimeRModDepth, kDelayTimeRModSource}) {
    for (int slot = 0; slot < 4; ++slot) {
      move(base + slot, 5.0);
      EXPECT_EQ(probe.slotRequests(slot), 0u) << base;
    }
  }
  EXPECT_TRUE(editor.lines().empty());
}

}  // namespace
}  // namespace orvantesco
