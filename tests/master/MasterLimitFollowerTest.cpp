#include "master/MasterLimitFollower.h"

#include <gtest/gtest.h>

#include "master/GainFade.h"
#include "master/LimiterModel.h"

namespace orvantesco {
namespace {

using testing_support::kNaN;
using testing_support::kRates;
using testing_support::largestDifference;
using testing_support::PlainFollower;
using testing_support::ScopedRate;
using testing_support::Signal;

Signal followed(MasterLimitFollower& follower, Signal signal, const FollowerRates& rates) {
  for (size_t at = 0; at < signal.size(); at += kVectorLength) follower.run(&signal[at], rates);
  return signal;
}

/// Peaks over a floor, some silent samples, and a stretch below 0.
Signal peaks(double floor) {
  Signal signal = testing_support::noise(100, 8);
  for (size_t i = 0; i < signal.size(); ++i) {
    signal[i] = floor + 30.0 * std::pow(signal[i], 9.0);
    if (floor == 0.0 && i % 700 > 660) signal[i] = i % 2 == 0 ? 0.0 : 1e-15;
  }
  return signal;
}

TEST(MasterLimitFollower, IsItsModelAtEverySpeedOfRiseAndFall) {
  const FollowerRates allRates[] = {{0.0, 0.9999, 0.99}, {0.999, 0.9999, 0.998}, {0.9, 0.99, 0.0},
                                    {0.95, 0.0, 0.99},   {0.99, 0.9, 0.98},      {0.0, 0.0, 0.97}};
  for (const FollowerRates& rates : allRates) {
    for (double floor : {0.0, 1.0, -1.0}) {
      MasterLimitFollower follower(1.0);
      PlainFollower model{1.0, 1.0};
      const Signal in = peaks(floor);
      Signal expected;
      for (double x : in) expected.push_back(model.tick(x, rates.rise, rates.fall, rates.hold));
      EXPECT_LT(largestDifference(followed(follower, in, rates), expected), 1e-12)
          << rates.rise << " " << rates.fall << " " << rates.hold << " from " << floor;
    }
  }
}

TEST(MasterLimitFollower, SilenceLeavesItWhereItWas) {
  const FollowerRates rates{0.9, 0.99, 0.98};
  MasterLimitFollower interrupted, straight;
  const Signal before = peaks(2.0);
  followed(interrupted, before, rates);
  followed(straight, before, rates);
  for (double silence : {0.0, 1e-15, -1e-15}) {
    const Signal quiet(640, silence);
    EXPECT_EQ(followed(interrupted, quiet, rates), quiet) << "the samples pass";
  }
  EXPECT_EQ(followed(interrupted, before, rates), followed(straight, before, rates));
}

TEST(MasterLimitFollower, PassesOverWhatIsNoNumber) {
  const FollowerRates rates{0.9, 0.99, 0.98};
  MasterLimitFollower interrupted, straight;
  followed(interrupted, Signal(32, kNaN), rates);
  EXPECT_EQ(followed(interrupted, peaks(1.0), rates), followed(straight, peaks(1.0), rates));
  EXPECT_TRUE(interrupted.isSaneState());
  followed(interrupted, Signal(32, 1e9), rates);
  EXPECT_FALSE(interrupted.isSaneState());
}

TEST(MasterLimitFollower, ResetPutsItToItsRest) {
  const FollowerRates rates{0.999, 0.999, 0.999};
  MasterLimitFollower used(1.0), fresh(1.0);
  followed(used, peaks(5.0), rates);
  used.reset();
  EXPECT_EQ(followed(used, peaks(1.0), rates), followed(fresh, peaks(1.0), rates));
}

TEST(GainFade, IsTheSquareOfARampOf50MsDownAndUp) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    GainFade fade;
    EXPECT_FALSE(fade.isActive());
    EXPECT_EQ(fade.next(), 1.0);
    fade.start();
    const double step = 32.0 / (rate * 0.05);
    double worst = 0.0;
    int vectors = 0;
    for (; !fade.takeDone(); ++vectors) {
      const double ramp = std::max(0.0, 1.0 - (vectors + 1) * step);
      worst = std::max(worst, std::fabs(fade.next() - ramp * ramp));
    }
    EXPECT_NEAR(vectors * 32.0 / rate, 0.05, 32.0 / rate);
    EXPECT_FALSE(fade.takeDone()) << "said once";
    for (vectors = 0; fade.isActive(); ++vectors) {
      const double ramp = std::min(1.0, (vectors + 1) * step);
      worst = std::max(worst, std::fabs(fade.next() - ramp * ramp));
    }
    EXPECT_NEAR(vectors * 32.0 / rate, 0.05, 32.0 / rate);
    EXPECT_LT(worst, 1e-12);
    EXPECT_EQ(fade.next(), 1.0);
  }
}

TEST(GainFade, GoesDownAgainFromWhereverItIs) {
  GainFade fade;
  fade.start();
  while (!fade.takeDone()) fade.next();
  double before = 0.0;
  for (int i = 0; i < 20; ++i) before = fade.next();
  fade.start();
  const double after = fade.next();
  EXPECT_LT(after, before);
  EXPECT_GT(after, 0.8 * before);
  fade.rest();
  EXPECT_FALSE(fade.isActive());
  EXPECT_EQ(fade.next(), 1.0);
}

}  // namespace
}  // namespace orvantesco
