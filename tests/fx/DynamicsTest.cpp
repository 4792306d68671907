#include "fx/Dynamics.h"

#include <gtest/gtest.h>

#include <limits>
#include <numbers>

#include "fx/FxTestSupport.h"

namespace orvantesco {
namespace {

using testing_support::kRates;
using testing_support::ScopedRate;

/// The detector laid open.
struct OpenDynamics : Dynamics {
  using Dynamics::attackFactor;
  using Dynamics::attackStep;
  using Dynamics::meanSquare;
  using Dynamics::nextLevel;
  using Dynamics::releaseFactor;
  using Dynamics::releaseStep;
  using Dynamics::rms;
};

struct Constant {
  double values[kVectorLength];
  explicit Constant(double value) { std::fill_n(values, kVectorLength, value); }
};

TEST(Dynamics, derivesItsFactorsFromTimesInSamples) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    for (double ms : {0.0, 0.001, 1.0, 20.0, 10000.0}) {
      OpenDynamics dynamics;
      dynamics.setAttackTime(ms);
      dynamics.setReleaseTime(ms);
      const double n = std::max(1.0, ms * 0.001 * rate);
      const double decay = std::pow(std::exp(-2.0 * std::numbers::pi / n), 32.0);
      EXPECT_NEAR(dynamics.releaseFactor / decay, 1.0, 1e-12);
      EXPECT_NEAR(dynamics.attackFactor * decay, 1.0, 1e-12);
      EXPECT_DOUBLE_EQ(dynamics.attackStep, 1.0 / n);
      EXPECT_DOUBLE_EQ(dynamics.releaseStep, 1.0 / n);
    }
  }
}

TEST(Dynamics, tracksTheMeanSquare) {
  OpenDynamics dynamics;
  auto signal = testing_support::noise(500, 4);
  double expected = 0.0;
  double worst = 0.0;
  for (size_t at = 0; at < signal.size(); at += kVectorLength) {
    double sum = 0.0;
    for (size_t i = 0; i < kVectorLength; ++i) sum += signal[at + i] * signal[at + i];
    expected = 0.015 * (sum / 32.0) + 0.985 * expected + 1e-9;
    worst = std::max(worst, std::fabs(dynamics.rms(&signal[at]) - std::sqrt(expected - 1e-9)));
  }
  EXPECT_LT(worst, 1e-12);
}

TEST(Dynamics, silenceSettlesAtTheFixedPointOfTheUpdate) {
  OpenDynamics dynamics;
  const Constant loud(0.9);
  const Constant silence(0.0);
  for (int i = 0; i < 100; ++i) dynamics.rms(loud.values);
  for (int i = 0; i < 5000; ++i) dynamics.rms(silence.values);
  EXPECT_NEAR(dynamics.meanSquare, 1e-9 / 0.015, 1e-15);
}

TEST(Dynamics, riseStopsAtTheTargetAndNoFallPassesTheFloor) {
  OpenDynamics dynamics;
  dynamics.setAttackTime(50.0);
  dynamics.setReleaseTime(50.0);
  EXPECT_DOUBLE_EQ(dynamics.nextLevel(0.1, 0.9), 0.1 * dynamics.attackFactor);
  EXPECT_EQ(dynamics.nextLevel(0.5, 0.500001), 0.500001);
  EXPECT_DOUBLE_EQ(dynamics.nextLevel(0.5, 0.1), 0.5 * dynamics.releaseFactor);
  EXPECT_EQ(dynamics.nextLevel(0.0, 1.0), 0.001867442732) << "no factor leads up from 0";
  EXPECT_EQ(dynamics.nextLevel(0.0018, 0.0), 0.001867442732);
}

TEST(Dynamics, getsOverWhatIsNoNumber) {
  OpenDynamics dynamics;
  for (double bad : {std::numeric_limits<double>::quiet_NaN(), 1e200}) {
    EXPECT_TRUE(std::isfinite(dynamics.rms(Constant(bad).values)));
  }
  double level = 0.0;
  for (int i = 0; i < 2000; ++i) level = dynamics.rms(Constant(0.5).values);
  EXPECT_NEAR(level, 0.5, 1e-6);
}

TEST(Dynamics, resetStartsFromSilence) {
  OpenDynamics dynamics;
  dynamics.rms(Constant(1.0).values);
  dynamics.reset();
  EXPECT_EQ(dynamics.meanSquare, 0.0);
}

}  // namespace
}  // namespace orvantesco
