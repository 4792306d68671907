#include "params/dispatch/DispatchRig.h"

namespace orvantesco {
namespace {

class TapFamiliesTest : public DispatchRig {
 protected:
  static constexpr int kPost = 8;  ///< POST position of the first slot
};

TEST_F(TapFamiliesTest, TheFeedbackTapFollowsTheLengthWhereItStandsOnIt) {
  set(kDelayTaps, 11);
  EXPECT_EQ(probe.taps(0).lastTap, 11);
  EXPECT_EQ(probe.taps(0).feedbackTap, 11);
  set(kDelayTapFb, 4);
  EXPECT_EQ(probe.taps(0).feedbackTap, 3);
  set(kDelayTaps, 15);
  EXPECT_EQ(probe.taps(0).feedbackTap, 3);
  set(kDelayTapFb, 0);
  EXPECT_EQ(probe.taps(0).feedbackTap, 15);
  EXPECT_TRUE(editor.saw("refreshLanes 0"));
}

TEST_F(TapFamiliesTest, ATimebaseIsAFactorInQuarterNotes) {
  const std::vector<double> factors{0.0,   0.5,    0.25,      0.125,     0.0625,    0.75,
                                    0.375, 0.1875, 1.0 / 3.0, 1.0 / 6.0, 1.0 / 12.0};
  for (std::size_t entry = 0; entry < factors.size(); ++entry) {
    set(kTapTimebase + 1, static_cast<double>(entry));
    EXPECT_DOUBLE_EQ(probe.taps(1).beatFactor, factors[entry]);
    EXPECT_EQ(probe.slotRequests(1), kResetDelays);
    EXPECT_EQ(probe.globalRequests(), kStartFade);
  }
}

TEST_F(TapFamiliesTest, ATimebaseOfNotesMovesTheKnobsPictureNotItsValue) {
  rig.effect.touchParameter(kTapTimebase);
  set(kTapTimebase, 2);  // a sixteenth at 120: 125 ms, a quarter of the travel in time
  EXPECT_TRUE(editor.saw("showKnobPosition 744 0.5"));
  EXPECT_DOUBLE_EQ(valueOf(kDelayTapsTime), 50.0);
  EXPECT_EQ(rig.effect.touchedParameter(), -1);
}

TEST_F(TapFamiliesTest, ARestoreLeavesTheKnobAlone) {
  rig.effect.touchParameter(kWidth);
  const auto bulk = probe.restoringState();
  set(kTapTimebase, 2);
  EXPECT_TRUE(editor.linesOf("showKnobPosition").empty());
  EXPECT_EQ(rig.effect.touchedParameter(), kWidth);
}

TEST_F(TapFamiliesTest, Spacing) {
  set(kDelayTapsTime, 125.0);
  set(kDelayTapsSwell, 40.0);
  set(kDelayTapsSwing, 100.0);
  set(kDelayTapDiOut, 1);
  set(kTapPanMode, 3);
  EXPECT_DOUBLE_EQ(probe.taps(0).interval, 0.125);
  EXPECT_DOUBLE_EQ(probe.taps(0).swell, 0.4);
  EXPECT_DOUBLE_EQ(probe.taps(0).swing, 1.0 / 3.0);
  EXPECT_TRUE(probe.taps(0).allTapsOut);
  EXPECT_EQ(probe.taps(0).panMode, 3);
}

TEST_F(TapFamiliesTest, ModulationOfTheSpacingIsHalved) {
  set(kDelayTapsTimeModDepth, 50.0);
  EXPECT_DOUBLE_EQ(probe.delay(0).tapsTimeModDepth, 0.0625);
  set(kDelayTapsTimeModSource, 10);
  EXPECT_EQ(probe.delay(0).tapsTimeSource, probe.outputs().envelope[1].data());
  EXPECT_TRUE(probe.slotRequests(0) & kTakeDelaySources);
  EXPECT_TRUE(editor.saw("setRing 744 Envelope yes"));
}

TEST_F(TapFamiliesTest, AmountsOfTheRows) {
  set(kTapTimeStepDepth + 3, 40.0);
  set(kTapLevelStepDepth + 3, 30.0);
  set(kTapPanWidth + 3, 20.0);
  set(kTapFxP1StepDepth + 3, 10.0);
  set(kTapFxP2StepDepth + 3, 90.0);
  EXPECT_DOUBLE_EQ(probe.taps(3).timeStepInverse, 0.6);
  EXPECT_DOUBLE_EQ(probe.taps(3).levelStepInverse, 0.7);
  EXPECT_DOUBLE_EQ(probe.taps(3).panWidth, 0.2);
  EXPECT_DOUBLE_EQ(probe.taps(3).fxDepth[0], 0.1);
  EXPECT_DOUBLE_EQ(probe.taps(3).fxDepth[1], 0.9);
}

TEST_F(TapFamiliesTest, StepsGoToTheirRows) {
  for (int step = 0; step < 16; ++step) {
    set(tapStepIndex(kTapStepTime, 1, step), step);
    set(tapStepIndex(kTapStepLevel, 1, step), 20.0 + step);
    set(tapStepIndex(kTapStepPan, 1, step), -step);
    set(tapStepIndex(kTapStepFxP1, 1, step), 40.0 + step);
    set(tapStepIndex(kTapStepFxP2, 1, step), 60.0 + step);
  }
  const TapControls& taps = probe.taps(1);
  for (std::size_t step = 0; step < 16; ++step) {
    const auto s = static_cast<double>(step);
    EXPECT_DOUBLE_EQ(taps.timeStep[step], s * 0.01);
    EXPECT_DOUBLE_EQ(taps.levelStep[step], (20.0 + s) * 0.01);
    EXPECT_DOUBLE_EQ(taps.panStep[step], -s * 0.01);
    EXPECT_DOUBLE_EQ(taps.fxStep[0][step], 40.0 + s);
    EXPECT_DOUBLE_EQ(taps.fxStep[1][step], 60.0 + s);
  }
}

TEST_F(TapFamiliesTest, ARowIsNotSelectedUntilItsFirstWrite) {
  // The construction has dispatched every parameter once, so both rows now stand on "OFF".
  EXPECT_EQ(TapControls{}.fxParam[0], -1);
  EXPECT_EQ(probe.taps(0).fxParam[0], 0);
  EXPECT_EQ(probe.taps(0).fxParam[1], 0);
}

TEST_F(TapFamiliesTest, SelectionsAreStoredInEveryMode) {
  set(kTapFxParam1, 4);
  EXPECT_EQ(probe.taps(0).fxParam[0], 4);
  EXPECT_EQ(probe.effectRequests(kPost), kTakeAllEffectParams | kTakeAllEffectSources);
  EXPECT_TRUE(editor.saw("refreshLanes 0"));
}

TEST_F(TapFamiliesTest, TwoRowsNeverDriveOneParameter) {
  set(kTapFxParam1 + 2, 3);
  set(kTapFxParam2 + 2, 3);
  EXPECT_EQ(probe.taps(2).fxParam[0], 0);
  EXPECT_EQ(probe.taps(2).fxParam[1], 3);
  EXPECT_DOUBLE_EQ(valueOf(kTapFxParam1 + 2), 0.0);
  EXPECT_TRUE(editor.saw("setKnobValue 370 0"));
  set(kTapFxParam1 + 2, 3);
  EXPECT_EQ(probe.taps(2).fxParam[1], 0);
  set(kTapFxParam2 + 2, 0);
  EXPECT_EQ(probe.taps(2).fxParam[0], 3);
}

TEST_F(TapFamiliesTest, APresetThatSwapsTheRowsKeepsBoth) {
  set(kTapFxParam1, 1);
  set(kTapFxParam2, 2);
  const auto bulk = probe.loadingPreset();
  rig.effect.GetParam(kTapFxParam1)->setValue(2);
  rig.effect.GetParam(kTapFxParam2)->setValue(1);
  rig.effect.OnParamChange(kTapFxParam1);
  rig.effect.OnParamChange(kTapFxParam2);
  EXPECT_EQ(probe.taps(0).fxParam[0], 2);
  EXPECT_EQ(probe.taps(0).fxParam[1], 1);
}

TEST_F(TapFamiliesTest, StepsAndDepthsOfADrivenParameterReachTheEffect) {
  set(tapStepIndex(kTapStepFxP2, 0, 5), 30.0);
  EXPECT_EQ(probe.effectRequests(kPost), 0u);
  set(kTapFxParam2, 4);
  probe.settle();
  set(tapStepIndex(kTapStepFxP2, 0, 5), 31.0);
  EXPECT_EQ(probe.effectRequests(kPost), kTakeEffectParam << 3);
  set(kTapFxP2StepDepth, 50.0);
  EXPECT_EQ(probe.effectRequests(kPost), kTakeEffectParam << 3);
  set(kTapFxP1StepDepth, 50.0);
  EXPECT_EQ(probe.effectRequests(kPost), 0u);
}

TEST_F(TapFamiliesTest, AStepShowsWhatItMakesOfTheDrivenParameter) {
  chooseEffect(kPost, 1);  // FREQ SHIFT: FB is unipolar, SPREAD is bipolar
  set(kTapFxParam1, 3);
  set(kTapFxParam2, 4);
  set(fxParamIndex(2, FxParamKind::value, kPost), 20.0);
  set(fxParamIndex(3, FxParamKind::value, kPost), 80.0);
  set(kTapFxP1StepDepth, 25.0);
  set(kTapFxP2StepDepth, 25.0);
  move(tapStepIndex(kTapStepFxP1, 0, 6), 60.0);
  EXPECT_EQ(readout(), "FRQ SHIFT FB STEP 7|30.00| %");  // 0.6 · 0.25 + 0.2 · 0.75
  move(tapStepIndex(kTapStepFxP2, 0, 15), 60.0);
  EXPECT_EQ(readout(), "FRQ SHIFT SPREAD STEP 16|50.00| %");  // 0.1 · 0.25 + 0.3 · 0.75 + 0.5
}

TEST_F(TapFamiliesTest, AStepOfASelectionShowsItsLabel) {
  chooseEffect(kPost, 12);
  set(kTapFxParam1, 1);
  move(tapStepIndex(kTapStepFxP1, 0, 0), 100.0);
  EXPECT_EQ(readout(), "SHAPE MODE STEP 1|ASYM2|");
}

TEST_F(TapFamiliesTest, GridsBelongToTheEditor) {
  for (const int family :
       {kTapFxParam1Steps, kTapFxParam2Steps, kTapTimeSteps, kTapLevelSteps, kTapPanSteps}) {
    editor.clear();
    set(family + 1, 7);
    EXPECT_TRUE(editor.saw("setLaneGrid " + std::to_string(family + 1) + " 7"));
    EXPECT_EQ(editor.lines().size(), 1u);
  }
}

}  // namespace
}  // namespace orvantesco
