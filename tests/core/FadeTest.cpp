#include "core/Fade.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

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
    std::vector<double> gains;
    for (double gain = fade.nextGain(); gain != 1.0 && gains.size() < 10000;
         gain = fade.nextGain()) {
      gains.push_back(gain);
    }
    ASSERT_EQ(gains.size(), static_cast<std::size_t>(std::ceil(1.0 / step - 1e-9)));
    for (std::size_t k = 0; k < gains.size(); ++k) {
      const double position = static_cast<double>(k + 1) * step;
      EXPECT_NEAR(gains[k], position * position, 1e-12);
    }
    EXPECT_GE(gains.back(), 1.0 - 1e-12) << "the last step is taken as it falls, not clamped";
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
