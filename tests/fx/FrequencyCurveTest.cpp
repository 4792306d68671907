#include "fx/FrequencyCurve.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace orvantesco {
namespace {

TEST(FrequencyCurve, isFourHundredToThePowerOverTheKnob) {
  double worst = 0.0;
  for (int i = 0; i <= 1000; ++i) {
    const double exact = 50.0 * std::pow(400.0, i * 0.001);
    worst = std::max(worst, std::fabs(curveFrequencyHz(i * 0.001) / exact - 1.0));
  }
  EXPECT_LT(worst, 2e-5);
  EXPECT_DOUBLE_EQ(curveFrequencyHz(0.0), 50.0);
}

TEST(FrequencyCurve, keepsItsPolynomialToTheLastBit) {
  const float t = 0.3F * 8.643856F;
  const float f = t - 2.0F;
  const float p = (((0.0136991F * f + 0.0517387F) * f + 0.2415636F) * f + 0.6929986F) * f + 1.0F;
  EXPECT_EQ(curveFrequencyHz(0.3), static_cast<double>(p) * 4.0 * 50.0);
}

TEST(FrequencyCurve, whatIsNoNumberIsTheLowestKnob) {
  EXPECT_EQ(curveFrequencyHz(std::numeric_limits<double>::quiet_NaN()), 50.0);
}

TEST(FrequencyCurve, staysPositiveAndFiniteEverywhere) {
  for (double control : {-1e9, -2.0, -1.0, -0.01, 3.0, 1e9, 1e300}) {
    const double hz = curveFrequencyHz(control);
    EXPECT_TRUE(std::isfinite(hz) && hz > 0.0) << control;
  }
  EXPECT_LT(curveFrequencyHz(-1.0), 50.0);
}

}  // namespace
}  // namespace orvantesco
