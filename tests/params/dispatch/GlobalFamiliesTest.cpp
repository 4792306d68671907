#include "params/dispatch/DispatchRig.h"

namespace orvantesco {
namespace {

using GlobalFamiliesTest = DispatchRig;

TEST_F(GlobalFamiliesTest, LevelsAndWidth) {
  set(kWetLevel, 40.0);
  set(kDryLevel, 30.0);
  set(kOutputLevel, -6.0);
  set(kGlobalWidth, 150.0);
  set(kMasterFxLevel, 200.0);
  EXPECT_DOUBLE_EQ(probe.globals().wetLevel, 0.4);
  EXPECT_DOUBLE_EQ(probe.globals().dryLevel, 0.3);
  EXPECT_NEAR(probe.globals().outputLevel, 0.501187234, 1e-9);
  EXPECT_DOUBLE_EQ(probe.globals().globalWidth, 150.0);
  EXPECT_DOUBLE_EQ(probe.globals().masterFxLevel, 2.0);
}

TEST_F(GlobalFamiliesTest, TheDryMuteHoldsTheDrySignalDown) {
  set(kDryLevel, 60.0);
  rig.effect.settings().setDryMute(true);
  EXPECT_EQ(probe.globals().dryLevel, 0.0);
  set(kDryLevel, 80.0);
  EXPECT_EQ(probe.globals().dryLevel, 0.0);
  rig.effect.settings().setDryMute(false);
  EXPECT_DOUBLE_EQ(probe.globals().dryLevel, 0.8);
}

TEST_F(GlobalFamiliesTest, ScaleFeedbackAndMainModulator) {
  set(kDelayTimeScale, -100.0);
  EXPECT_DOUBLE_EQ(probe.globals().timeScale, 0.5);
  set(kDelayTimeScale, 50.0);
  EXPECT_DOUBLE_EQ(probe.globals().timeScale, std::sqrt(2.0));
  set(kFeedbackMaster, -50.0);
  EXPECT_DOUBLE_EQ(probe.globals().feedbackMaster, -0.5);
  set(kMainModDepth, 70.0);
  EXPECT_DOUBLE_EQ(probe.globals().mainModDepth, 70.0);
  EXPECT_EQ(probe.globalRequests(), 0u);
  set(kMainModRate, 30.0);
  EXPECT_NEAR(probe.globals().mainModRate, 67.21, 1e-12);
  EXPECT_EQ(probe.globalRequests(), kTakeMainModRate);
}

TEST_F(GlobalFamiliesTest, TheLimiterTakesAModeOnlyWhenItChanges) {
  set(kLimiterOn, 2);
  EXPECT_EQ(probe.globals().limiterMode, 2);
  EXPECT_EQ(probe.globalRequests(), kTakeLimiter);
  EXPECT_TRUE(editor.saw("enableKnob 1064 yes"));
  set(kLimiterOn, 2);
  EXPECT_EQ(probe.globalRequests(), 0u);
  set(kLimiterOn, 0);
  EXPECT_TRUE(editor.saw("enableKnob 1064 no"));
  set(kLimiterLevel, 12.0);
  EXPECT_DOUBLE_EQ(probe.globals().limiterBoostDb, 12.0);
  EXPECT_TRUE(probe.globalRequests() & kTakeLimiter);
}

TEST_F(GlobalFamiliesTest, ChoosingAMasterEffectClearsTheSendsAndResetsIt) {
  set(kMasterFx, 3);
  EXPECT_EQ(probe.globals().masterFxType, 41);
  EXPECT_EQ(probe.globalRequests(), kClearMasterSend | kResetMasterEffect | kTakeMasterFxParams);
  EXPECT_TRUE(editor.saw("showMasterEffect 3 41"));
  set(kMasterFx, 0);
  EXPECT_EQ(probe.globals().masterFxType, 38);
  EXPECT_EQ(probe.globalRequests(), kClearMasterSend);
}

TEST_F(GlobalFamiliesTest, APersonsChoiceOfMasterEffectTakesItsDefaults) {
  editor.committed[kMasterEffectSelector] = true;
  set(kMasterFx, 2);
  const std::vector<double> defaults{0.4, 0.1, 0.2, 0.5};
  for (int knob = 0; knob < 4; ++knob) {
    const double expected = defaults[static_cast<std::size_t>(knob)];
    EXPECT_NEAR(valueOf(kMasterFxParam + knob), 100.0 * expected, 1e-12);
    EXPECT_NEAR(probe.globals().masterFxParam[static_cast<std::size_t>(knob)], expected, 1e-12);
  }
  EXPECT_FALSE(editor.committed[kMasterEffectSelector]);
}

TEST_F(GlobalFamiliesTest, AutomationAndBulkOperationsKeepTheFourKnobs) {
  for (int knob = 0; knob < 4; ++knob) set(kMasterFxParam + knob, 77.0);
  set(kMasterFx, 2);
  editor.committed[kMasterEffectSelector] = true;
  {
    const auto bulk = probe.loadingPreset();
    set(kMasterFx, 4);
  }
  for (int knob = 0; knob < 4; ++knob) EXPECT_DOUBLE_EQ(valueOf(kMasterFxParam + knob), 77.0);
}

TEST_F(GlobalFamiliesTest, TheMasterBypassGreysTheKnobsOut) {
  set(kMasterFxBypass, 1);
  EXPECT_TRUE(probe.globals().masterFxBypass);
  EXPECT_EQ(probe.globalRequests(), kTakeMasterBypass);
  for (int knob = 0; knob < 4; ++knob) {
    EXPECT_TRUE(editor.saw("enableKnob " + std::to_string(kMasterFxParam + knob) + " no"));
  }
  set(kMasterFxBypass, 0);
  EXPECT_TRUE(editor.saw("enableKnob 1054 yes"));
}

TEST_F(GlobalFamiliesTest, AMasterKnobAloneIsHandedToTheEffect) {
  unsigned all = 0;
  for (int knob = 0; knob < 4; ++knob) {
    set(kMasterFxParam + knob, 35.0);
    EXPECT_DOUBLE_EQ(probe.globals().masterFxParam[static_cast<std::size_t>(knob)], 0.35);
    const unsigned posted = probe.globalRequests();
    EXPECT_EQ(posted, kTakeMasterFxParam << knob);
    all |= posted;
  }
  EXPECT_EQ(all, kTakeMasterFxParams);
}

}  // namespace
}  // namespace orvantesco
