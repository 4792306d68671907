#include "fx/DCRemover.h"

#include <gtest/gtest.h>

#include <limits>

#include "fx/FxTestSupport.h"

namespace orvantesco {
namespace {

using testing_support::kRates;
using testing_support::largestDifference;
using testing_support::noise;
using testing_support::ScopedRate;
using testing_support::Signal;

Signal removed(DCRemover& remover, Signal signal, int piece = 32) {
  const int size = static_cast<int>(signal.size());
  for (int at = 0; at < size; at += piece) {
    remover.process(signal.data() + at, std::min(piece, size - at));
  }
  return signal;
}

Signal modelled(const Signal& in) {
  Signal out(in.size());
  double xPrevious = 0.0, yPrevious = 0.0;
  for (size_t i = 0; i < in.size(); ++i) {
    out[i] = 0.9999 * yPrevious + in[i] - xPrevious;
    xPrevious = in[i];
    yPrevious = out[i];
  }
  return out;
}

TEST(DCRemover, isItsModelAtEveryRate) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    DCRemover remover;
    Signal in = noise(2000);
    for (double& sample : in) sample = sample * 0.5 + 0.5;
    EXPECT_LT(largestDifference(removed(remover, in), modelled(in)), 1e-12);
  }
}

TEST(DCRemover, worksOnAnyNumberOfSamples) {
  const Signal in = noise(30);
  for (int piece : {1, 3, 7, 31, 33, 500}) {
    DCRemover remover;
    EXPECT_LT(largestDifference(removed(remover, in, piece), modelled(in)), 1e-12) << piece;
  }
  DCRemover remover;
  double untouched = 0.5;
  remover.process(&untouched, 0);
  EXPECT_EQ(untouched, 0.5);
}

TEST(DCRemover, aConstantDiesAwayByItsPole) {
  DCRemover remover;
  const Signal out = removed(remover, Signal(3200, 1.0));
  EXPECT_EQ(out[0], 1.0);
  EXPECT_NEAR(out[3199], std::pow(0.9999, 3199), 1e-12);
}

TEST(DCRemover, runsAsABlockToo) {
  DCRemover block, plain;
  const Signal in = noise(10);
  EXPECT_TRUE(testing_support::run(block, in) == removed(plain, in));
}

TEST(DCRemover, aPairIsTwoOfThemBitForBit) {
  DCRemover left, right, leftAlone, rightAlone;
  Signal l = noise(20, 1), r = noise(20, 2);
  const Signal expectedL = removed(leftAlone, l), expectedR = removed(rightAlone, r);
  for (size_t at = 0; at < l.size(); at += 32) {
    DCRemover::processPair(left, &l[at], right, &r[at]);
  }
  EXPECT_TRUE(l == expectedL && r == expectedR);
}

TEST(DCRemover, resetForgetsBothMemories) {
  DCRemover remover, fresh;
  removed(remover, noise(3));
  remover.reset();
  EXPECT_TRUE(removed(remover, noise(3, 4)) == removed(fresh, noise(3, 4)));
}

TEST(DCRemover, afterARateChangeItIsAsNewlyBuilt) {
  DCRemover kept, fresh;
  removed(kept, noise(3));
  ScopedRate scope(96000.0);
  kept.rateChanged();
  kept.reset();
  EXPECT_TRUE(removed(kept, noise(3, 4)) == removed(fresh, noise(3, 4)));
}

TEST(DCRemover, recoversFromBadInput) {
  for (double value : {std::numeric_limits<double>::quiet_NaN(), HUGE_VAL, -2e8}) {
    DCRemover hurt, other, fresh;
    Signal bad(32, 0.5), good = noise(1);
    bad[31] = value;
    DCRemover::processPair(hurt, bad.data(), other, good.data());
    EXPECT_EQ(bad, Signal(32, 0.0));
    EXPECT_NE(good, Signal(32, 0.0));
    EXPECT_TRUE(removed(hurt, noise(3)) == removed(fresh, noise(3)));
  }
}

TEST(DCRemover, survivesAMillionfoldInput) {
  DCRemover remover;
  removed(remover, Signal(32, 1e6));
  const Signal tail = removed(remover, Signal(32 * 10000, 0.0));
  EXPECT_LT(std::fabs(tail.back()), 1e-3);
}

}  // namespace
}  // namespace orvantesco
