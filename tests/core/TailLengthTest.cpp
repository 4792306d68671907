#include "core/TailLength.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace orvantesco {
namespace {

TailLoops alone(double seconds, double gain) {
  TailLoops loops;
  loops.seconds[0] = seconds;
  loops.gain[0][0] = gain;
  return loops;
}

TEST(TailLength, OfASingleLoopIsItsTurnsToTheThreshold) {
  for (const double gain : {0.1, 0.5, 0.9, 0.999}) {
    const double turns = 90.0 / (-20.0 * std::log10(gain));
    EXPECT_NEAR(loopDecaySeconds(alone(0.3, gain), 90.0), 0.3 * turns, 1e-3 * turns) << gain;
  }
}

TEST(TailLength, IsNothingWhereNothingGoesRoundOrNothingIsLeftToFade) {
  EXPECT_NEAR(loopDecaySeconds(alone(0.3, 0.0), 90.0), 0.0, 1e-4);
  EXPECT_EQ(loopDecaySeconds(alone(0.3, 0.5), -10.0), 0.0);
}

TEST(TailLength, HasNoEndFromAGainOfOneOn) {
  EXPECT_TRUE(loopsFade(alone(0.3, 0.9999)));
  for (const double gain : {1.0, 1.5, std::numeric_limits<double>::infinity()}) {
    EXPECT_FALSE(loopsFade(alone(0.3, gain))) << gain;
    EXPECT_TRUE(std::isinf(loopDecaySeconds(alone(0.3, gain), 90.0))) << gain;
  }
}

TEST(TailLength, OfACircleIsThatOfTheGainsMultiplied) {
  // Twice round, 0.1 s and 0.3 s, for a gain of 0.5 * 0.8.
  TailLoops loops;
  loops.seconds = {0.1, 0.3, 0.0, 0.0};
  loops.gain[0][1] = 0.5;
  loops.gain[1][0] = 0.8;
  const double turns = 60.0 / (-20.0 * std::log10(0.4));
  EXPECT_NEAR(loopDecaySeconds(loops, 60.0), 0.4 * turns, 1e-3 * turns);
  loops.gain[1][0] = 2.0;
  EXPECT_FALSE(loopsFade(loops));
}

TEST(TailLength, OfLoopsSideBySideIsTheSlowestOnes) {
  TailLoops loops = alone(0.1, 0.9);
  loops.seconds[1] = 1.0;
  loops.gain[1][1] = 0.5;
  EXPECT_NEAR(loopDecaySeconds(loops, 90.0), loopDecaySeconds(alone(1.0, 0.5), 90.0), 1e-3);
}

TEST(TailLength, OfARowWithoutACircleIsNothing) {
  TailLoops loops;
  loops.seconds = {0.5, 0.5, 0.5, 0.5};
  loops.gain[1][0] = loops.gain[2][1] = loops.gain[3][2] = 5.0;
  EXPECT_TRUE(loopsFade(loops));
  EXPECT_LT(loopDecaySeconds(loops, 90.0), 1e-3);
}

}  // namespace
}  // namespace orvantesco
