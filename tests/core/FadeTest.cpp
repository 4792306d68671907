#include "core/Fade.h"

#include <gtest/gtest.h>

namespace orvantesco {
namespace {

TEST(Fade, LeavesTheSignalAloneUntilItIsAskedFor) {
  Fade fade;
  fade.setRate(48000.0);
  for (int i = 0; i < 10; ++i) EXPECT_EQ(fade.nextGain(), 1.0);
}

TEST(Fade, StartsAtSilenceAndRisesOnASquareLawOver100Ms) {
  for (const double rate : {44100.0, 48000.0, 96000.0}) {
    Fade fade;
    fade.setRate(rate);
    fade.request();
    EXPECT_EQ(fade.nextGain(), 0.0);
    const double step = 32.0 / (rate * 0.1);
    double position = 0.0;
    while (position < 1.0) {
      position += step;
      ASSERT_NEAR(fade.nextGain(), position * position, 1e-12);
    }
    EXPECT_GE(position, 1.0) << "the last step is taken as it falls, not clamped";
    EXPECT_NEAR(position, 1.0, step + 1e-9);
    EXPECT_EQ(fade.nextGain(), 1.0);
  }
}

TEST(Fade, StartsAnewWhenAskedForInTheMiddle) {
  Fade fade;
  fade.setRate(48000.0);
  fade.request();
  for (int i = 0; i < 50; ++i) fade.nextGain();
  fade.request();
  EXPECT_EQ(fade.nextGain(), 0.0);
  EXPECT_LT(fade.nextGain(), 0.001);
}

}  // namespace
}  // namespace orvantesco
