#include "fx/RingMod.h"

#include <gtest/gtest.h>

#include <limits>

#include "fx/ShifterModel.h"

namespace orvantesco {
namespace {

using testing_support::amplitudeAt;
using testing_support::constant;
using testing_support::follow;
using testing_support::Follower;
using testing_support::kPi;
using testing_support::kRates;
using testing_support::largestDifference;
using testing_support::noise;
using testing_support::PlainSmoother;
using testing_support::Real;
using testing_support::Recipe;
using testing_support::runModel;
using testing_support::ScopedRate;
using testing_support::Signal;

/// One channel of the ring modulator without a partner, sample by sample.
class RingModel {
 public:
  explicit RingModel(const Recipe& recipeToFollow) : recipe(recipeToFollow) {}

  void vector(int v, const double* in, double* out) {
    const Real inc = frequencies.tick(2.0 * frequencyAt(v) / sampleRate);
    lfoPhase += 32.0L / sampleRate.get();
    if (lfoPhase >= 2.0L) lfoPhase -= 2.0L;
    const Real swing = 0.75L * std::sin(kPi * lfoPhase) * recipe.params[2](v);
    const Real offset = wander.tick(static_cast<double>(swing)) * recipe.sign();
    const Real a = 0.9L * limited(recipe.params[1](v) + recipe.modulation(1, v));
    for (int i = 0; i < kVectorLength; ++i) {
      phase += inc;
      if (phase >= 2.0L) phase -= 2.0L;
      const Real x = (phase + offset) * kPi;
      const Real pulse = std::sin(x) / ((1.0L + a * a) - 2.0L * a * std::cos(x));
      out[i] = static_cast<double>(in[i] * pulse * std::sqrt(1.0L - a * a));
    }
  }

 private:
  static double limited(double x) { return std::min(std::max(x, 0.0), 1.0); }

  double frequencyAt(int v) const {
    const double raw = recipe.params[3](v);
    const double spread = std::fabs(raw) * raw * recipe.sign();
    const double pushed = recipe.modulation(0, v) + recipe.modulation(3, v) * recipe.sign();
    const double r = limited(spread + recipe.params[0](v) + pushed);
    return std::pow(0.5 * r, 4.0) * 4999.9 + 0.1;
  }

  const Recipe recipe;
  PlainSmoother frequencies{5.0};
  PlainSmoother wander = PlainSmoother::perVector(5.0);
  Real phase = 0.0L, lfoPhase = 0.0L;
};

Recipe recipe(double knob, double shape, double width = 0.0, double spread = 0.0) {
  Recipe result;
  const double values[] = {knob, shape, width, spread, 1.0};
  for (int k = 0; k < Recipe::kParams; ++k) result.params[k] = constant(values[k]);
  return result;
}

Signal modulated(const Recipe& settings, const Signal& in) {
  RingMod modulator(settings.isRight);
  return follow(modulator, settings, in);
}

double besideModel(const Recipe& settings, const Signal& in) {
  return largestDifference(modulated(settings, in), runModel(RingModel(settings), in));
}

TEST(RingMod, isItsModelAtEveryRateAndShape) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    for (double shape : {0.0, 0.5, 1.0}) {
      for (double knob : {0.0, 0.6, 1.0}) {
        EXPECT_LT(besideModel(recipe(knob, shape, 1.0), noise(300)), 1e-12) << knob << " " << shape;
      }
    }
  }
}

TEST(RingMod, isItsModelUnderModulationAndSweepsOfEveryControl) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    for (bool isRight : {false, true}) {
      Recipe moving = recipe(0.6, 0.5, 0.7, -0.5);
      moving.isRight = isRight;
      moving.params[2] = [](int v) { return v % 100 / 100.0; };
      moving.params[3] = [](int v) { return v < 200 ? -0.5 : 0.8; };
      moving.sources[0] = [](int v) { return std::sin(0.05 * v); };
      moving.sources[1] = [](int v) { return 3.0 * std::sin(0.031 * v); };
      moving.sources[3] = [](int v) { return v % 40 < 20 ? 0.5 : -0.5; };
      EXPECT_LT(besideModel(moving, noise(400)), 1e-12) << rate;
    }
  }
}

/// What the modulator itself does: a constant input shows it.
Signal modulatorOf(const Recipe& settings, int vectors) {
  return modulated(settings, Signal(static_cast<size_t>(vectors) * kVectorLength, 1.0));
}

TEST(RingMod, theTopOfTheKnobSoundsAt312HzWhereItShows5000) {
  const double topHz = 4999.9 / 16.0 + 0.1;
  const Signal out = modulatorOf(recipe(1.0, 0.0), 4000);
  EXPECT_NEAR(amplitudeAt(out, topHz, 65536), 1.0, 0.01);
  EXPECT_LT(amplitudeAt(out, 5000.0, 65536), 1e-6);
}

TEST(RingMod, shapeTurnsTheSineIntoAPulseOfPartialsThatDecayByIt) {
  const double hz = 4999.9 / 16.0 + 0.1;
  for (double shape : {0.0, 0.5, 1.0}) {
    const Signal out = modulatorOf(recipe(1.0, shape), 4000);
    const double a = 0.9 * shape;
    for (int partial = 1; partial <= 5; ++partial) {
      const double expected = std::sqrt(1.0 - a * a) * std::pow(a, partial - 1);
      EXPECT_NEAR(amplitudeAt(out, partial * hz, 65536), expected, 0.01) << shape << partial;
    }
  }
}

TEST(RingMod, aModulatorOfTheWidthIsNotHeard) {
  Recipe pushed = recipe(0.5, 0.3, 0.4);
  pushed.sources[2] = constant(1.0);
  const Signal in = noise(200);
  EXPECT_EQ(modulated(pushed, in), modulated(recipe(0.5, 0.3, 0.4), in));
  EXPECT_NE(modulated(recipe(0.5, 0.3, 0.9), in), modulated(recipe(0.5, 0.3, 0.4), in));
}

/// The smoothers' offset of 1e-15 is mirrored in the two channels; nothing else tells them apart.
constexpr double kTogether = 1e-14;

/// A left and a right instance that knows it, run as a pair.
struct Pair {
  RingMod left{false};
  RingMod right{true, &left};

  void setParam(int k, double value) {
    left.setParam(k, value);
    right.setParam(k, value);
  }
  /// Largest difference of the two modulators.
  double difference(int vectors) {
    const Signal ones(static_cast<size_t>(vectors) * kVectorLength, 1.0);
    Signal l = ones, r = ones;
    for (size_t at = 0; at < ones.size(); at += kVectorLength) {
      left.process(&l[at], nullptr);
      right.process(&r[at], nullptr);
    }
    return largestDifference(l, r);
  }
};

TEST(RingMod, theRightChannelFollowsTheLeftExactlyWithoutSpread) {
  Pair pair;
  pair.setParam(0, 0.8);
  EXPECT_LT(pair.difference(500), kTogether);
  pair.setParam(0, 0.3);
  EXPECT_LT(pair.difference(500), kTogether);
}

TEST(RingMod, theChannelsMeetAgainWithinOneVectorWhenSpreadGoes) {
  Pair pair;
  pair.setParam(0, 0.8);
  pair.setParam(3, 0.4);
  EXPECT_GT(pair.difference(500), 0.5);
  pair.setParam(3, 0.0);
  pair.difference(1);
  EXPECT_LT(pair.difference(1000), kTogether);
}

TEST(RingMod, theWayOntoTheLeftChannelHasNoStep) {
  Pair pair;
  pair.setParam(0, 0.2);
  pair.setParam(3, 0.4);
  pair.difference(500);
  Signal before(kVectorLength, 1.0), meeting = before, left = before;
  pair.left.process(left.data(), nullptr);
  pair.right.process(before.data(), nullptr);
  pair.setParam(3, 0.0);
  pair.left.process(left.data(), nullptr);
  pair.right.process(meeting.data(), nullptr);
  double largest = std::fabs(meeting[0] - before.back());
  for (size_t i = 1; i < meeting.size(); ++i) {
    largest = std::max(largest, std::fabs(meeting[i] - meeting[i - 1]));
  }
  EXPECT_LT(largest, 2.0 * static_cast<double>(kPi) / kVectorLength);
}

TEST(RingMod, aModulatedSpreadMovesTheChannelsApartToo) {
  Pair pair;
  pair.setParam(0, 0.8);
  const double source[kVectorLength] = {1.0}, depth = 0.2;
  for (RingMod* channel : {&pair.left, &pair.right}) {
    channel->setModSource(3, source);
    channel->setModDepth(3, &depth);
  }
  EXPECT_GT(pair.difference(500), 0.5);
  for (RingMod* channel : {&pair.left, &pair.right}) channel->setModSource(3, nullptr);
  pair.difference(1);
  EXPECT_LT(pair.difference(500), kTogether);
}

TEST(RingMod, aPartnerThatStoodStillIsCaughtUpWith) {
  Pair pair;
  pair.setParam(0, 0.8);
  pair.setParam(2, 1.0);
  Signal ones(100 * kVectorLength, 1.0);
  const Signal alone = testing_support::run(pair.right, ones);
  RingMod lone(true);
  lone.setParam(0, 0.8);
  lone.setParam(2, 1.0);
  EXPECT_EQ(alone, testing_support::run(lone, ones)) << "a right channel runs on without its left";
  testing_support::run(pair.left, noise(7));
  pair.setParam(2, 0.0);
  pair.difference(100);  // the wander, too, comes to rest
  EXPECT_LT(pair.difference(500), kTogether);
}

TEST(RingMod, widthWandersTheChannelsApartTwiceInTwoSecondsAndTogether) {
  Pair pair;
  pair.setParam(0, 0.5);
  pair.setParam(2, 1.0);
  const int second = 44100 / kVectorLength;
  std::vector<double> apart;
  for (int vector = 0; vector < 4 * second; ++vector) apart.push_back(pair.difference(1));
  const auto around = [&](double seconds) {
    const auto at = static_cast<size_t>(seconds * second);
    return *std::max_element(apart.begin() + static_cast<long>(at),
                             apart.begin() + static_cast<long>(at) + 60);
  };
  // Half a cycle a second: no offset at whole seconds, the largest half a second beside them.
  EXPECT_GT(around(0.5), 1.0);
  EXPECT_GT(around(1.5), 1.0);
  EXPECT_LT(*std::min_element(apart.begin() + 990 * second / 1000, apart.begin() + second + 20),
            0.1);
}

TEST(RingMod, resetKeepsTheChannelsTogether) {
  Pair pair;
  pair.setParam(0, 0.7);
  pair.difference(33);
  pair.left.setBypass(false);
  pair.right.setBypass(false);
  EXPECT_LT(pair.difference(100), kTogether);
}

TEST(RingMod, afterARateChangeItIsAsNewlyBuilt) {
  const double source[kVectorLength] = {0.25};
  const auto build = [&source] {
    auto modulator = std::make_unique<RingMod>(true);
    const double values[] = {0.7, 0.6, 0.5, 0.4, 1.0};
    for (int k = 0; k < 5; ++k) modulator->setParam(k, values[k]);
    modulator->setModSource(0, source);
    modulator->setModDepth(0, source);
    return modulator;
  };
  const auto kept = build();
  testing_support::run(*kept, noise(101));
  ScopedRate scope(96000.0);
  kept->rateChanged();
  kept->reset();
  const Signal in = noise(100, 9);
  EXPECT_TRUE(testing_support::run(*kept, in) == testing_support::run(*build(), in));
}

TEST(RingMod, aSourceThatGoesLeavesTheKnob) {
  RingMod modulator(false);
  Recipe settings = recipe(0.8, 0.2);
  for (int k : {0, 1, 3}) settings.sources[k] = constant(0.4);
  follow(modulator, settings, noise(100));
  for (int k : {0, 1, 3}) modulator.setModSource(k, nullptr);
  const Signal out = testing_support::run(modulator, Signal(4000 * 32, 1.0));
  const double hz = std::pow(0.4, 4.0) * 4999.9 + 0.1, a = 0.9 * 0.2;
  EXPECT_NEAR(amplitudeAt(out, hz, 65536), std::sqrt(1.0 - a * a), 0.01);
}

TEST(RingMod, badInputSilencesItsVectorAndLeavesNothing) {
  for (double bad : {std::numeric_limits<double>::quiet_NaN(), HUGE_VAL, -1e13}) {
    RingMod hurt(false), fresh(false);
    Signal in = noise(60);
    const Signal expected = follow(fresh, recipe(0.8, 0.7), in);
    in[7] = bad;
    const Signal out = follow(hurt, recipe(0.8, 0.7), in);
    EXPECT_TRUE(std::all_of(out.begin(), out.begin() + 32, [](double x) { return x == 0.0; }));
    EXPECT_TRUE(std::equal(out.begin() + 32, out.end(), expected.begin() + 32)) << bad;
  }
}

TEST(RingMod, survivesAMillionfoldInputAndWildModulation) {
  Signal loud = noise(100);
  for (double& sample : loud) sample *= 1e6;
  Recipe wild = recipe(1.0, 1.0, 1.0, 1.0);
  for (int k : {0, 1, 3}) {
    wild.sources[k] = [](int v) { return v % 3 == 0 ? std::nan("") : v % 3 == 1 ? 1e300 : -1e300; };
  }
  RingMod modulator(false);
  EXPECT_TRUE(testing_support::allFinite(follow(modulator, wild, loud)));
  testing_support::expectItSoundsOnItsOwn(modulator);
}

TEST(RingMod, worksInPlaceAndOnTheFirstOfTwoChannels) {
  const Signal in = noise(50), other = noise(50, 2);
  const Recipe settings = recipe(0.8, 0.6, 0.5);
  const Signal expected = modulated(settings, in);
  RingMod first(false), second(false);
  Signal inPlace = in, left = in, right = other;
  Follower follower(first, settings);
  for (size_t at = 0; at < in.size(); at += kVectorLength) follower.processInPlace(&inPlace[at]);
  EXPECT_EQ(inPlace, expected);
  for (int k = 0; k < 5; ++k) second.setParam(k, settings.params[k](0));
  for (size_t at = 0; at < in.size(); at += kVectorLength) {
    second.process(&left[at], &right[at], nullptr, nullptr);
  }
  EXPECT_EQ(left, expected);
  EXPECT_EQ(right, other);
}

}  // namespace
}  // namespace orvantesco
