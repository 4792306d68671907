#include "fx/Smoother.h"

#include <gtest/gtest.h>

#include <limits>
#include <numbers>

#include "fx/FxTestSupport.h"

namespace orvantesco {
namespace {

using testing_support::kRates;
using testing_support::ScopedRate;

double coefficient(double ms, double rate) {
  return std::exp(-2.0 * std::numbers::pi / (ms * 0.001 * rate));
}

TEST(Smoother, tickIsTheOnePoleOfItsTime) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    Smoother smoother(50.0);
    const double a = coefficient(50.0, rate);
    double y = 0.0;
    double worst = 0.0;
    for (int i = 0; i < 10000; ++i) {
      const double x = i < 5000 ? 1.0 : -0.25;
      y = x * (1.0 - a) + a * y + 1e-15;
      worst = std::max(worst, std::fabs(smoother.tick(x) - (y - 1e-15)));
    }
    EXPECT_LT(worst, 1e-14);
  }
}

TEST(Smoother, unstatedTimeIsFiveMilliseconds) {
  Smoother unstated;
  Smoother stated(5.0);
  EXPECT_EQ(unstated.tick(1.0), stated.tick(1.0));
  EXPECT_NEAR(Smoother().tick(1.0), 1.0 - coefficient(5.0, 44100.0), 1e-15);
}

TEST(Smoother, afterItsTimeAStepIsWithinAFifthOfAPercent) {
  Smoother smoother(20.0);
  double y = 0.0;
  for (int i = 0; i < 882; ++i) y = smoother.tick(1.0);
  EXPECT_NEAR(1.0 - y, std::exp(-2.0 * std::numbers::pi), 1e-9);
}

TEST(Smoother, blockTimeCountsBlocksOf32) {
  Smoother block;
  block.setBlockTime(64.0);
  Smoother sample(2.0);
  EXPECT_EQ(block.tick(1.0), sample.tick(1.0));
}

TEST(Smoother, tickVectorIsThirtyTwoTicks) {
  for (double rate : kRates) {
    for (double ms : {0.0, 0.1, 5.0, 3000.0}) {
      ScopedRate scope(rate);
      Smoother vector(ms);
      Smoother ticked(ms);
      auto signal = testing_support::noise(40, 3);
      double worst = 0.0;
      for (size_t at = 0; at < signal.size(); at += kVectorLength) {
        double expected[kVectorLength];
        for (size_t i = 0; i < kVectorLength; ++i) expected[i] = ticked.tick(signal[at + i]);
        vector.tickVector(&signal[at]);
        for (size_t i = 0; i < kVectorLength; ++i) {
          worst = std::max(worst, std::fabs(signal[at + i] - expected[i]));
        }
      }
      EXPECT_LT(worst, 1e-14) << ms << " ms at " << rate;
    }
  }
}

TEST(Smoother, tickVectorDropsItsStateAtWhatIsNoNumber) {
  Smoother smoother(50.0);
  double vector[kVectorLength];
  std::fill_n(vector, kVectorLength, 1.0);
  vector[7] = std::numeric_limits<double>::quiet_NaN();
  smoother.tickVector(vector);
  EXPECT_EQ(vector[7], 0.0);
  EXPECT_TRUE(std::all_of(vector, vector + kVectorLength, [](double v) { return v < 1.0; }));
}

TEST(Smoother, rampIsNTicks) {
  for (double rate : kRates) {
    for (double ms : {0.5, 5.0, 200.0, 2000.0}) {
      ScopedRate scope(rate);
      Smoother ramped(ms);
      Smoother ticked(ms);
      double worst = 0.0;
      const double targets[] = {1.0, 1.0, 0.3, -0.7, 0.0, 0.0, 1.0};
      const int lengths[] = {32, 32, 5, 32, 1, 32, 31};
      for (int block = 0; block < 7; ++block) {
        const double* values = ramped.ramp(targets[block], lengths[block]);
        for (int i = 0; i < lengths[block]; ++i) {
          worst = std::max(worst, std::fabs(values[i] - ticked.tick(targets[block])));
        }
        EXPECT_EQ(ramped.state(), values[lengths[block] - 1]);
      }
      EXPECT_LT(worst, 1e-12) << ms << " ms at " << rate;
    }
  }
}

TEST(Smoother, atRestTheRampIsTheTargetItself) {
  Smoother smoother(200.0);
  int blocks = 0;
  while (!smoother.isSettled(0.7) && blocks < 5000) {
    smoother.ramp(0.7);
    ++blocks;
  }
  EXPECT_LT(blocks, 2000);
  const double* values = smoother.ramp(0.7);
  EXPECT_TRUE(std::all_of(values, values + kVectorLength, [](double v) { return v == 0.7; }));
  EXPECT_EQ(smoother.state(), 0.7);
}

TEST(Smoother, leavesRestForANewTargetAndReturns) {
  Smoother smoother(1.0);
  smoother.snap(0.5);
  smoother.ramp(0.5);
  const double a = coefficient(1.0, 44100.0);
  EXPECT_NEAR(smoother.ramp(1.0)[0], a * 0.5 + (1.0 - a), 1e-15);
  smoother.snap(0.5);
  const double* values = smoother.ramp(0.5);
  EXPECT_TRUE(std::all_of(values, values + kVectorLength, [](double v) { return v == 0.5; }));
}

TEST(Smoother, aWiderRestToleranceArrivesEarlierAndWithAllValues) {
  Smoother smoother(5.0);
  smoother.setRestTolerance(1e-9);
  smoother.snap(1000.0 * (1.0 + 0.9e-9));
  const double* values = smoother.ramp(1000.0);
  EXPECT_TRUE(std::all_of(values, values + kVectorLength, [](double v) { return v == 1000.0; }));
  smoother.snap(1000.0 * (1.0 + 1.2e-9));
  EXPECT_NE(smoother.ramp(1000.0)[0], 1000.0);
}

TEST(Smoother, floatRampRoundsEveryOperation) {
  Smoother smoother(5.0);
  const double a = coefficient(5.0, 44100.0);
  volatile float y = 0.0F;
  bool same = true;
  for (float x : {1.0F, 0.3F, 0.3F, -2.5F}) {
    const float* values = smoother.rampFloat(x);
    double power = 1.0;
    double sum = 0.0;
    volatile float last = 0.0F;
    for (int i = 0; i < kVectorLength; ++i) {
      sum += power;
      power *= a;
      volatile float fromState = static_cast<float>(power) * y;
      volatile float drive = static_cast<float>(1.0 - a) * x;
      volatile float fromTarget = drive * static_cast<float>(sum);
      last = fromState + fromTarget;
      same = same && values[i] == last;
    }
    y = last;
    EXPECT_EQ(smoother.state(), static_cast<double>(y));
  }
  EXPECT_TRUE(same);
}

TEST(Smoother, afterARateChangeItIsAsNewlyBuilt) {
  Smoother kept(30.0);
  for (int i = 0; i < 100; ++i) kept.ramp(0.8);
  ScopedRate scope(96000.0);
  kept.rateChanged();
  Smoother fresh(30.0);
  EXPECT_EQ(kept.state(), fresh.state());
  EXPECT_EQ(kept.tick(1.0), fresh.tick(1.0));
  EXPECT_EQ(kept.ramp(0.2)[31], fresh.ramp(0.2)[31]);
}

TEST(Smoother, aNewTimeKeepsTheState) {
  Smoother smoother(30.0);
  smoother.snap(0.4);
  smoother.setTime(60.0);
  EXPECT_EQ(smoother.state(), 0.4);
}

TEST(Smoother, noTimeFollowsAtOnce) {
  for (double ms : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
    Smoother smoother(ms);
    EXPECT_DOUBLE_EQ(smoother.tick(0.6), 0.6);
    EXPECT_DOUBLE_EQ(smoother.ramp(-0.2)[0], -0.2);
  }
}

TEST(Smoother, keepsNoRunawayTarget) {
  const double bad[] = {std::numeric_limits<double>::quiet_NaN(),
                        std::numeric_limits<double>::infinity(), -1.1e8};
  for (double x : bad) {
    Smoother smoother(5.0);
    smoother.snap(1.0);
    EXPECT_EQ(smoother.tick(x), 0.0);
    smoother.snap(1.0);
    EXPECT_EQ(smoother.ramp(x)[31], 0.0);
    smoother.snap(1.0);
    EXPECT_EQ(smoother.rampFloat(static_cast<float>(x))[31], 0.0F);
    EXPECT_EQ(smoother.state(), 0.0);
    smoother.snap(x);
    EXPECT_EQ(smoother.state(), 0.0);
    EXPECT_GT(smoother.tick(1.0), 0.0);
  }
}

TEST(Smoother, decaysToRestWithoutDenormals) {
  Smoother smoother(5.0);
  smoother.snap(1.0);
  bool denormal = false;
  for (int i = 0; i < 20000; ++i) {
    smoother.tick(0.0);
    denormal = denormal || std::fpclassify(smoother.state()) == FP_SUBNORMAL;
  }
  EXPECT_FALSE(denormal);
  EXPECT_LT(smoother.state(), 1e-12);
}

}  // namespace
}  // namespace orvantesco
