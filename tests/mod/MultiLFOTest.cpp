#include "mod/MultiLFO.h"

#include <gtest/gtest.h>

#include <limits>

#include "mod/ModTestSupport.h"

namespace orvantesco {
namespace {

TEST(MultiLFO, takesEulerStepsOfTheRoesslerSystem) {
  for (double rate : {0.01, 67.21, 224.01, 5000.0}) {
    MultiLFO lfo;
    lfo.setRate(rate);
    const double step = std::fmin(rate / 44100.0 * 2.9, 0.08);
    double x = 0.0;
    double y = 1.0;
    double z = 1.0;
    double worst = 0.0;
    for (int i = 0; i < 3000; ++i) {
      const double nextX = x - (z + y) * step;
      const double nextY = y + (0.15 * y + x) * step;
      const double nextZ = z + ((x - 10.0) * z + 0.2) * step;
      x = nextX;
      y = nextY;
      z = nextZ;
      lfo.process();
      const double scaledX = x * 0.05107000097632408;
      const double scaledY = y * 0.06790000200271606;
      const auto& out = lfo.mainMod();
      worst = std::fmax(worst, std::fabs(out[0] - scaledX));
      worst = std::fmax(worst, std::fabs(out[1] - scaledY));
      worst = std::fmax(worst, std::fabs(out[2] + scaledX));
      worst = std::fmax(worst, std::fabs(out[3] + scaledY));
    }
    EXPECT_LT(worst, 1e-12) << rate;
  }
}

TEST(MultiLFO, staysOnItsAttractorAtEveryRate) {
  for (double rate : {0.01, 224.01, 1217.0, 1e9}) {
    MultiLFO lfo;
    lfo.setRate(rate);
    double largest = 0.0;
    for (int i = 0; i < 300000; ++i) {
      lfo.process();
      for (double value : lfo.mainMod()) {
        largest = std::fabs(value) <= largest ? largest : std::fabs(value);
      }
    }
    EXPECT_LT(largest, 2.0) << rate;
    EXPECT_GT(largest, rate < 1.0 ? 0.05 : 0.5) << rate;
  }
}

TEST(MultiLFO, comesBackFromARateThatWentBackward) {
  MultiLFO lfo;
  lfo.setRate(-1e6);
  for (int i = 0; i < 1000; ++i) lfo.process();
  lfo.setRate(std::numeric_limits<double>::quiet_NaN());
  lfo.setRate(224.0);
  double largest = 0.0;
  for (int i = 0; i < 100000; ++i) {
    lfo.process();
    largest = std::fmax(largest, std::fabs(lfo.mainMod()[0]));
  }
  EXPECT_LT(std::fabs(lfo.mainMod()[0]), 2.0);
  EXPECT_GT(largest, 0.5);
}

TEST(MultiLFO, givesPeriodicShapesToo) {
  using Wave = MultiLFO::Wave;
  for (Wave wave : {Wave::Sine, Wave::Saw, Wave::FallingSaw, Wave::Square, Wave::Triangle}) {
    MultiLFO lfo;
    lfo.setWave(wave);
    lfo.setRate(441.0);
    double phase = 0.0;
    for (int i = 0; i < 1000; ++i) {
      phase += phase < 1.0 ? 0.01 : -2.0;
      lfo.process();
      double expected = phase;
      if (wave == Wave::Sine) expected = std::sin(std::numbers::pi * phase);
      if (wave == Wave::FallingSaw) expected = -phase;
      if (wave == Wave::Square) expected = phase >= 0.0 ? 1.0 : -1.0;
      if (wave == Wave::Triangle) expected = 1.0 - std::fabs(2.0 * phase);
      ASSERT_NEAR(lfo.mainMod()[0], expected, 1e-12);
      ASSERT_EQ(lfo.mainMod()[0], lfo.mainMod()[1]);
    }
  }
}

}  // namespace
}  // namespace orvantesco
