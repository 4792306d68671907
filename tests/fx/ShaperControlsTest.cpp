#include "fx/ShaperControls.h"

#include <gtest/gtest.h>

#include <cmath>

namespace orvantesco {
namespace {

TEST(ShaperControls, saturationEndsAtSeventeenfoldGainAndAQuarter) {
  ShaperControls controls;
  controls.setSteady(1.0);
  controls.deriveSaturate();
  EXPECT_EQ(controls.gainVector()[31], 17.0);
  EXPECT_EQ(controls.trimVector()[31], 0.25);
  controls.setSteady(0.0);
  controls.deriveSaturate();
  EXPECT_EQ(controls.gainVector()[0], 1.0);
  EXPECT_EQ(controls.trimVector()[0], 1.0);
}

TEST(ShaperControls, theRectifierStartsAtGainAndTrimOne) {
  ShaperControls controls;
  controls.setSteady(0.0);
  controls.deriveRectify();
  EXPECT_EQ(controls.gainVector()[31], 1.0);
  EXPECT_EQ(controls.trimVector()[31], 1.0);
  controls.setSteady(1.0);
  controls.deriveRectify();
  EXPECT_EQ(controls.gainVector()[31], 50.0);
  EXPECT_DOUBLE_EQ(controls.trimVector()[31], 1.0 / 3.0);
}

TEST(ShaperControls, theTrimOfDestroyConvergesOnTheGoldenRatioWhateverTheAmount) {
  for (double amount : {0.0, 0.5, 1.0}) {
    ShaperControls controls;
    controls.setSteady(amount);
    controls.deriveDestroy();
    EXPECT_DOUBLE_EQ(controls.trimVector()[0], 0.5) << "1 at first";
    controls.deriveDestroy();
    EXPECT_DOUBLE_EQ(controls.trimVector()[0], 2.0 / 3.0);
    for (int i = 0; i < 60; ++i) controls.deriveDestroy();
    EXPECT_NEAR(controls.trimVector()[31], (std::sqrt(5.0) - 1.0) / 2.0, 1e-12);
    EXPECT_DOUBLE_EQ(controls.thresholdVector()[31], 1.0 / (4.0 * (amount - 1.5)));
  }
}

TEST(ShaperControls, noiseFoldsBeyondOneAndAQuarterAtFiftyfoldGainOrMore) {
  ShaperControls controls;
  for (auto [amount, gain] : {std::pair(0.0, 51.0), std::pair(1.0, 151.0)}) {
    controls.setSteady(amount);
    controls.deriveNoise();
    EXPECT_DOUBLE_EQ(controls.gainVector()[7], gain);
    EXPECT_DOUBLE_EQ(controls.thresholdVector()[7], 1.25);
  }
}

TEST(ShaperControls, aModulatedAmountIsHeldWithinItsRangeSampleBySample) {
  double source[kVectorLength];
  for (int i = 0; i < kVectorLength; ++i) source[i] = i - 16;
  ShaperControls controls;
  controls.modulate(source, 0.5, 0.5);
  EXPECT_FALSE(controls.holds(0.0));
  controls.deriveLofi();
  EXPECT_EQ(controls.gainVector()[0], 1.0);
  EXPECT_EQ(controls.gainVector()[16], 1.625);
  EXPECT_EQ(controls.gainVector()[31], 2.25);
}

TEST(ShaperControls, aSteadyAmountHoldsUntilItMoves) {
  ShaperControls controls;
  EXPECT_FALSE(controls.holds(1.0)) << "nothing is derived yet";
  controls.setSteady(0.3);
  EXPECT_TRUE(controls.holds(0.3));
  EXPECT_FALSE(controls.holds(0.4));
}

}  // namespace
}  // namespace orvantesco
