#include "fx/IppFixBiquad.h"

#include <gtest/gtest.h>

#include <limits>

#include "fx/BiquadModel.h"

namespace orvantesco {
namespace {

using testing_support::designByPoles;
using testing_support::kRates;
using testing_support::largestDifference;
using testing_support::noise;
using testing_support::PlainRecursion;
using testing_support::ScopedRate;
using testing_support::Signal;

Signal filtered(IppFixBiquad& filter, Signal signal) {
  for (size_t at = 0; at < signal.size(); at += 32) filter.filterInPlace(&signal[at], 32);
  return signal;
}

Signal modelled(PlainRecursion recursion, Signal signal) {
  for (double& sample : signal) sample = recursion.tick(sample);
  return signal;
}

double responseDb(IppFixBiquad& filter, double fraction) {
  const Signal answer = filtered(filter, testing_support::impulse(400));
  std::complex<double> sum = 0.0;
  for (size_t n = 0; n < answer.size(); ++n) {
    sum += answer[n] * std::polar(1.0, -2.0 * std::numbers::pi * fraction * static_cast<double>(n));
  }
  return 20.0 * std::log10(std::abs(sum));
}

double warped(double fraction, double corner) {
  return std::tan(std::numbers::pi * fraction) / std::tan(std::numbers::pi * corner);
}

TEST(IppFixBiquad, isItsModelAsTheInputFilter) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    IppFixBiquad filter;
    filter.redesign(0, 12, 15000.0 / sampleRate);
    PlainRecursion model;
    designByPoles(12, 15000.0 / rate, 0.0, false, model);
    const Signal in = noise(200);
    // Twelve poles in one polynomial magnify the last bit of a tap, at low corners the more.
    EXPECT_LT(largestDifference(filtered(filter, in), modelled(model, in)), 1e-10) << rate;
  }
}

TEST(IppFixBiquad, isItsModelInEveryDesign) {
  for (auto [design, ripple, isHighpass] :
       {std::tuple(0, 0.0, false), std::tuple(3, 0.0, true), std::tuple(14, 0.5, false),
        std::tuple(17, 0.5, true), std::tuple(5, 0.0, false)}) {
    for (int order : {1, 2, 5, 8}) {
      IppFixBiquad filter;
      EXPECT_TRUE(filter.redesign(design, order, 0.2));
      PlainRecursion model;
      designByPoles(order, 0.2, ripple, isHighpass, model);
      const Signal in = noise(100);
      EXPECT_LT(largestDifference(filtered(filter, in), modelled(model, in)), 1e-12)
          << design << " of order " << order;
    }
  }
}

TEST(IppFixBiquad, startsAsALowpassJustBelowHalfTheRate) {
  IppFixBiquad filter;
  EXPECT_NEAR(responseDb(filter, 0.49), -3.01, 0.01);
  filter.reset();
  EXPECT_NEAR(responseDb(filter, 0.25), 0.0, 0.01);
}

TEST(IppFixBiquad, theInputFilterIsMaximallyFlatAndSteep) {
  const double corner = 15000.0 / 44100.0;
  for (double hz : {5000.0, 15000.0, 17000.0}) {
    IppFixBiquad filter;
    filter.redesign(0, 12, corner);
    const double w = warped(hz / 44100.0, corner);
    EXPECT_NEAR(responseDb(filter, hz / 44100.0), -10.0 * std::log10(1.0 + std::pow(w, 24)), 1e-3);
  }
}

TEST(IppFixBiquad, slopesBySixDecibelAnOctaveAndOrder) {
  for (int order : {2, 4}) {
    IppFixBiquad filter;
    filter.redesign(3, order, 0.1);
    const double lower = responseDb(filter, 0.005);
    filter.reset();
    EXPECT_NEAR(responseDb(filter, 0.01) - lower, 6.02 * order, 0.1);
  }
}

TEST(IppFixBiquad, ordersAreHeldAndImpossibleCornersRefused) {
  IppFixBiquad tooHigh, twelfth;
  EXPECT_TRUE(tooHigh.redesign(0, 40, 0.2));
  twelfth.redesign(0, 12, 0.2);
  const Signal in = noise(4);
  EXPECT_EQ(filtered(tooHigh, in), filtered(twelfth, in));
  IppFixBiquad refused, untouched;
  EXPECT_TRUE(refused.redesign(0, -3, 0.2) && untouched.redesign(0, 1, 0.2));
  for (double corner : {0.0, 0.5, -0.1, 3.0, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_FALSE(refused.redesign(0, 6, corner));
  }
  EXPECT_EQ(filtered(refused, in), filtered(untouched, in));
}

TEST(IppFixBiquad, aPairIsTwoFiltersBitForBit) {
  IppFixBiquad left, right, leftAlone, rightAlone;
  for (IppFixBiquad* filter : {&left, &right, &leftAlone, &rightAlone}) {
    filter->redesign(0, 12, 15000.0 / 44100.0);
  }
  Signal l = noise(50, 1), r = noise(50, 2);
  const Signal expectedL = filtered(leftAlone, l), expectedR = filtered(rightAlone, r);
  for (size_t at = 0; at < l.size(); at += 32) {
    IppFixBiquad::filterPairInPlace(left, &l[at], right, &r[at]);
  }
  EXPECT_TRUE(l == expectedL);
  EXPECT_TRUE(r == expectedR);
}

TEST(IppFixBiquad, piecesOfAnyLengthGiveTheSameBits) {
  IppFixBiquad whole, cut;
  Signal expected = noise(8), actual = noise(8);
  whole.filterInPlace(expected.data(), static_cast<int>(expected.size()));
  int at = 0;
  for (int piece : {1, 5, 32, 100, 0, -4, 118}) {
    cut.filterInPlace(actual.data() + at, piece);
    at += std::max(piece, 0);
  }
  EXPECT_TRUE(expected == actual);
}

TEST(IppFixBiquad, aRedesignOfTheSameOrderRunsOn) {
  IppFixBiquad filter;
  filter.redesign(0, 4, 0.05);
  filtered(filter, noise(10));
  filter.redesign(0, 4, 0.06);
  EXPECT_NE(filtered(filter, Signal(32, 0.0)), Signal(32, 0.0));
  filter.redesign(0, 5, 0.06);
  EXPECT_EQ(filtered(filter, Signal(32, 0.0)), Signal(32, 0.0));
}

TEST(IppFixBiquad, afterARateChangeAndRedesignItIsAsNewlyBuilt) {
  IppFixBiquad kept;
  kept.redesign(0, 12, 15000.0 / 44100.0);
  filtered(kept, noise(10));
  ScopedRate scope(96000.0);
  kept.rateChanged();
  kept.redesign(0, 12, 15000.0 / sampleRate);
  kept.reset();
  IppFixBiquad fresh;
  fresh.redesign(0, 12, 15000.0 / sampleRate);
  EXPECT_TRUE(filtered(kept, noise(10)) == filtered(fresh, noise(10)));
}

TEST(IppFixBiquad, recoversFromBadInput) {
  for (double value : {std::numeric_limits<double>::quiet_NaN(), HUGE_VAL, 1e13}) {
    IppFixBiquad left, right, fresh;
    for (IppFixBiquad* filter : {&left, &right, &fresh}) filter->redesign(0, 12, 0.3);
    Signal bad(32, value), good = noise(1);
    IppFixBiquad::filterPairInPlace(left, bad.data(), right, good.data());
    EXPECT_EQ(bad, Signal(32, 0.0));
    EXPECT_NE(good, Signal(32, 0.0));
    EXPECT_TRUE(filtered(left, noise(10)) == filtered(fresh, noise(10)));
    Signal alone(5, value);
    left.filterInPlace(alone.data(), 5);
    EXPECT_EQ(alone, Signal(5, 0.0));
  }
}

}  // namespace
}  // namespace orvantesco
