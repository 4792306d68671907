#include "core/TapPlan.h"

#include <gtest/gtest.h>

#include <vector>

namespace orvantesco {
namespace {

constexpr double kFar = 1e9;

/// Sixteen taps with every step at its top, as a fresh instance has them.
void fillRows(TapControls& taps) {
  for (std::size_t t = 0; t < TapControls::kSteps; ++t) {
    taps.timeStep[t] = 1.0;
    taps.levelStep[t] = 1.0;
    taps.panStep[t] = 0.0;
  }
}

std::vector<double> delaysOf(const TapPlan& plan) {
  std::vector<double> delays;
  for (int t = 0; t < plan.count; ++t) {
    delays.push_back(plan.taps[static_cast<std::size_t>(t)].delay);
  }
  return delays;
}

TEST(TapPlan, SpacesTapsEvenlyByDefault) {
  TapControls taps;
  fillRows(taps);
  taps.lastTap = 3;
  taps.feedbackTap = 3;
  EXPECT_EQ(delaysOf(planTaps(taps, 100.0, 1.0, kFar)),
            (std::vector<double>{100.0, 200.0, 300.0, 400.0}));
}

TEST(TapPlan, SwingsEvenGapsTo4ThirdsAndOddOnesTo2Thirds) {
  TapControls taps;
  fillRows(taps);
  taps.lastTap = 3;
  taps.feedbackTap = 3;
  taps.swing = 100.0 / 3.0 * 0.01;
  const TapPlan plan = planTaps(taps, 300.0, 1.0, kFar);
  EXPECT_NEAR(plan.taps[0].delay, 400.0, 1e-9);
  EXPECT_NEAR(plan.taps[1].delay, 600.0, 1e-9);
  EXPECT_NEAR(plan.taps[2].delay, 1000.0, 1e-9);
}

TEST(TapPlan, StepsStretchTheGapBeforeTheirTapAndMoveAllLaterOnes) {
  TapControls taps;
  fillRows(taps);
  taps.lastTap = 2;
  taps.feedbackTap = 2;
  taps.timeStep[1] = 0.5;
  EXPECT_EQ(delaysOf(planTaps(taps, 100.0, 1.0, kFar)), (std::vector<double>{100.0, 150.0, 250.0}));
  taps.timeStepInverse = 1.0;
  EXPECT_EQ(delaysOf(planTaps(taps, 100.0, 1.0, kFar)), (std::vector<double>{100.0, 200.0, 300.0}))
      << "with a row amount of 0 the row plays no part";
}

TEST(TapPlan, WalksOnToAFeedbackTapBehindTheLastOne) {
  TapControls taps;
  fillRows(taps);
  taps.lastTap = 0;
  taps.feedbackTap = 15;
  const TapPlan plan = planTaps(taps, 10.0, 1.0, kFar);
  EXPECT_EQ(plan.count, 16);
  EXPECT_TRUE(plan.taps[0].soundsL);
  for (std::size_t t = 1; t < 15; ++t) EXPECT_FALSE(plan.taps[t].readL || plan.taps[t].readR);
  EXPECT_TRUE(plan.taps[15].readL);
  EXPECT_FALSE(plan.taps[15].soundsL);
  EXPECT_EQ(plan.taps[15].delay, 160.0);
}

TEST(TapPlan, EndsAtTheLastTapWhenTheFeedbackTapLiesBelow) {
  TapControls taps;
  fillRows(taps);
  taps.lastTap = 5;
  taps.feedbackTap = 2;
  EXPECT_EQ(planTaps(taps, 10.0, 1.0, kFar).count, 6);
}

TEST(TapPlan, ReadsTheLastAndTheFeedbackTapEvenIfAllAreOff) {
  TapControls taps;
  fillRows(taps);
  taps.lastTap = 4;
  taps.feedbackTap = 2;
  taps.tapMask[0] = 0;
  taps.tapMask[1] = 0;
  const TapPlan plan = planTaps(taps, 10.0, 1.0, kFar);
  for (std::size_t t = 0; t < 5; ++t) {
    EXPECT_FALSE(plan.taps[t].soundsL || plan.taps[t].soundsR);
    EXPECT_EQ(plan.taps[t].readL, t == 2 || t == 4);
  }
}

TEST(TapPlan, PositiveStepsLeanLeft) {
  TapControls taps;
  fillRows(taps);
  taps.panStep[0] = 0.75;
  taps.panWidth = 0.5;
  const TapPlan plan = planTaps(taps, 10.0, 0.8, kFar);
  EXPECT_NEAR(plan.taps[0].gainA, 0.8, 1e-15);
  EXPECT_NEAR(plan.taps[0].gainB, 0.625 * 0.8, 1e-15);
}

TEST(TapPlan, LevelRowAmountOfZeroSoundsEveryTapAtFullLevel) {
  TapControls taps;
  fillRows(taps);
  taps.levelStep[0] = 0.25;
  EXPECT_NEAR(planTaps(taps, 10.0, 1.0, kFar).taps[0].gainA, 0.25, 1e-15);
  taps.levelStepInverse = 1.0;
  EXPECT_NEAR(planTaps(taps, 10.0, 1.0, kFar).taps[0].gainA, 1.0, 1e-15);
}

TEST(TapPlan, OneSidedPanModesSilenceTheOtherSidesTaps) {
  TapControls taps;
  fillRows(taps);
  taps.panMode = 2;
  EXPECT_TRUE(planTaps(taps, 10.0, 1.0, kFar).taps[0].soundsL);
  EXPECT_FALSE(planTaps(taps, 10.0, 1.0, kFar).taps[0].soundsR);
  taps.panMode = 3;
  EXPECT_FALSE(planTaps(taps, 10.0, 1.0, kFar).taps[0].soundsL);
  EXPECT_TRUE(planTaps(taps, 10.0, 1.0, kFar).taps[0].soundsR);
}

TEST(TapPlan, SkipsTapsBeyondTheLine) {
  TapControls taps;
  fillRows(taps);
  taps.lastTap = 3;
  taps.feedbackTap = 3;
  const TapPlan plan = planTaps(taps, 100.0, 1.0, 250.0);
  EXPECT_TRUE(plan.taps[1].readL);
  EXPECT_FALSE(plan.taps[2].readL);
  EXPECT_FALSE(plan.taps[3].readL);
}

TEST(SwellPlan, HasNoEchoAtZeroAndSixteenAtFull) {
  EXPECT_EQ(planSwell(0.0).count, 0);
  const TapEchoes full = planSwell(1.0);
  EXPECT_EQ(full.count, 16);
  EXPECT_NEAR(full.list[0].back, 64.0 * (0.45 / 16) * (0.45 / 16) * 500.0, 1e-9);
  EXPECT_NEAR(full.list[15].back, 6480.0, 1e-9);
  EXPECT_NEAR(full.list[15].gain, 0.0, 1e-12);
}

TEST(SwellPlan, ReachesLessFarAtHalf) {
  const TapEchoes half = planSwell(0.5);
  EXPECT_EQ(half.count, 8);
  EXPECT_NEAR(half.list[7].back, 6480.0 * 0.55, 1e-9);
}

}  // namespace
}  // namespace orvantesco
