#include "fx/HilbertShifter.h"

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
using testing_support::PlainSection;
using testing_support::PlainSmoother;
using testing_support::Real;
using testing_support::Recipe;
using testing_support::runModel;
using testing_support::ScopedRate;
using testing_support::Signal;
using testing_support::tone;

/// The shifter, sample by sample.
class ShifterModel {
 public:
  explicit ShifterModel(const Recipe& recipeToFollow) : recipe(recipeToFollow) {
    const double a[] = {0.150069, 0.453848, 0.708102, 0.858996,
                        0.935362, 0.971513, 0.988669, 0.998062};
    const double b[] = {0.0406273, 0.298439, 0.593846, 0.795335,
                        0.90407,   0.956837, 0.981597, 0.993872};
    for (int k = 0; k < 8; ++k) {
      chains[0][k] = {a[k], 0.0, -1.0, 1.0, 0.0, -a[k]};
      chains[1][k] = {b[k], 0.0, -1.0, 1.0, 0.0, -b[k]};
    }
  }

  void vector(int v, const double* in, double* out) {
    const double inc = increments.tick(target(v));
    const double gain = -0.7 * limited(recipe.params[2](v) + recipe.modulation(2, v), 0.0);
    follow(cutoffs.tick(inc + 0.002));
    for (int i = 0; i < kVectorLength; ++i) {
      Real x = in[i] + back[i] * gains.tick(gain);
      for (PlainSection& section : highpass) x = section.step(x);
      Real a = x, b = x;
      for (PlainSection& section : chains[0]) a = section.step(a);
      for (PlainSection& section : chains[1]) b = section.step(b);
      std::swap(a, memory);
      phase += inc;
      back[i] = a * std::sin(phase) + b * std::cos(phase);
      out[i] = static_cast<double>(back[i]);
    }
  }

 private:
  static double limited(double x, double low) { return std::min(std::max(x, low), 1.0); }

  double target(int v) const {
    const double knob = limited(recipe.params[0](v) + 0.5 * recipe.modulation(0, v), -1.0);
    const double raw = recipe.params[3](v);
    const double spread = raw * std::fabs(raw) * recipe.sign();
    const double s = limited(spread + recipe.sign() * recipe.modulation(3, v), -1.0);
    const double ratio = (2.0 * knob - 1.0 + s) * recipe.params[1](v) / 44100.0;
    return -2.0 * static_cast<double>(kPi) * ratio;
  }

  void follow(double cutoff) {
    const auto w = static_cast<float>(std::max(0.002, cutoff));
    const double s = static_cast<double>(std::sin(w)), c = static_cast<double>(std::cos(w));
    for (PlainSection& section : highpass) {
      section.b0 = section.b2 = (1.0 + c) / 2.0;
      section.b1 = -(1.0 + c);
      section.a0 = 1.0 + 0.5882 * s;
      section.a1 = -2.0 * c;
      section.a2 = 1.0 - 0.5882 * s;
    }
  }

  const Recipe recipe;
  PlainSmoother increments = PlainSmoother::perVector(200.0);
  PlainSmoother gains = PlainSmoother::perVector(500.0);
  PlainSmoother cutoffs = PlainSmoother::perVector(300.0);
  PlainSection highpass[6];
  PlainSection chains[2][8];
  Real memory = 0.0L, phase = 0.0L;
  Real back[kVectorLength] = {};
};

Recipe recipe(double knob, double scale, double feedback = 0.0, double spread = 0.0) {
  Recipe result;
  const double values[] = {knob, scale, feedback, spread, 1.0};
  for (int k = 0; k < Recipe::kParams; ++k) result.params[k] = constant(values[k]);
  return result;
}

Signal shifted(const Recipe& settings, const Signal& in) {
  HilbertShifter shifter(settings.isRight);
  return follow(shifter, settings, in);
}

double besideModel(const Recipe& settings, const Signal& in) {
  return largestDifference(shifted(settings, in), runModel(ShifterModel(settings), in));
}

/// Six sections at 14 Hz in double, however they are run, lie 2e-12 beside their exact output, and
/// the feedback carries that round.
constexpr double kTolerance = 1e-11;

TEST(HilbertShifter, isItsModelAtEveryRateAndScale) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    for (double scale : {10.0, 100.0, 1000.0}) {
      for (double knob : {0.0, 0.37, 1.0}) {
        EXPECT_LT(besideModel(recipe(knob, scale, 0.6), noise(300)), kTolerance)
            << scale << " " << knob;
      }
    }
  }
}

TEST(HilbertShifter, isItsModelUnderModulationAndSweepsOfEveryControl) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    for (bool isRight : {false, true}) {
      Recipe moving = recipe(0.6, 1000.0, 0.3, -0.5);
      moving.isRight = isRight;
      moving.params[2] = [](int v) { return v % 100 / 100.0; };
      moving.params[3] = [](int v) { return v < 200 ? -0.5 : 0.8; };
      moving.sources[0] = [](int v) { return 3.0 * std::sin(0.05 * v); };
      moving.sources[2] = [](int v) { return std::sin(0.031 * v); };
      moving.sources[3] = [](int v) { return v % 40 < 20 ? 2.5 : -2.5; };
      EXPECT_LT(besideModel(moving, noise(400)), kTolerance) << rate;
    }
  }
}

TEST(HilbertShifter, answersAnImpulseAsItsModelAndSilenceWithSilence) {
  EXPECT_LT(besideModel(recipe(0.8, 100.0, 1.0), testing_support::impulse(400)), kTolerance);
  EXPECT_EQ(shifted(recipe(0.8, 100.0, 1.0), Signal(320, 0.0)), Signal(320, 0.0));
}

/// Amplitudes behind a tone of 1000 Hz, at the sum and the difference of the tone and a shift.
std::pair<double, double> sidebands(double knob, double shiftHz) {
  const Signal out = shifted(recipe(knob, 100.0), tone(1000.0, 3000));
  return {amplitudeAt(out, 1000.0 + shiftHz, 65536), amplitudeAt(out, 1000.0 - shiftHz, 65536)};
}

TEST(HilbertShifter, movesAToneByTheShownFrequencyToOneSideOnly) {
  const auto [up, mirrorOfUp] = sidebands(1.0, 100.0);
  EXPECT_NEAR(up, 1.0, 0.01);
  EXPECT_LT(mirrorOfUp, 0.01);
  const auto [mirrorOfDown, down] = sidebands(0.0, 100.0);
  EXPECT_NEAR(down, 1.02, 0.01);  // the high-pass ahead is still a little above 0 dB there
  EXPECT_LT(mirrorOfDown, 0.01);
}

TEST(HilbertShifter, shiftsInProportionToTheRateBecauseItCountsFrom44100) {
  ScopedRate scope(96000.0);
  const auto [heard, mirror] = sidebands(1.0, 100.0 * 96000.0 / 44100.0);
  EXPECT_NEAR(heard, 1.0, 0.01);
  EXPECT_LT(sidebands(1.0, 100.0).first, 0.01);
}

TEST(HilbertShifter, theMiddleOfTheKnobKeepsTheFrequency) {
  const Signal out = shifted(recipe(0.5, 1000.0), tone(1000.0, 3000));
  EXPECT_NEAR(amplitudeAt(out, 1000.0, 65536), 1.0, 1e-3);
  // At a phase that stands still at 0 the second chain alone is heard: an all-pass.
  const Signal again = shifted(recipe(0.5, 10.0), tone(1000.0, 3000));
  EXPECT_EQ(out, again) << "nothing to scale";
}

TEST(HilbertShifter, aShiftDownwardsLeavesNoMirrorImageBelowZero) {
  // 60 Hz moved down by 100 Hz would come back as 40 Hz.
  const Signal out = shifted(recipe(0.0, 100.0), tone(60.0, 6000));
  EXPECT_LT(amplitudeAt(out, 40.0, 65536), 0.05);
  // Nothing of the kind is taken off ahead of a shift upwards.
  EXPECT_NEAR(amplitudeAt(shifted(recipe(1.0, 100.0), tone(60.0, 6000)), 160.0, 65536), 1.1, 0.05);
}

TEST(HilbertShifter, spreadMovesTheChannelsApartByItsSquare) {
  for (bool isRight : {false, true}) {
    Recipe settings = recipe(0.5, 100.0, 0.0, 0.5);
    settings.isRight = isRight;
    const double hz = 1000.0 + (isRight ? -25.0 : 25.0);
    EXPECT_NEAR(amplitudeAt(shifted(settings, tone(1000.0, 4000)), hz, 65536), 1.0, 0.01);
  }
}

TEST(HilbertShifter, feedbackComesRoundAfterOneVector) {
  const Signal without = shifted(recipe(0.9, 1000.0, 0.0), testing_support::impulse(100));
  const Signal with = shifted(recipe(0.9, 1000.0, 1.0), testing_support::impulse(100));
  EXPECT_TRUE(std::equal(without.begin(), without.begin() + kVectorLength, with.begin()));
  EXPECT_FALSE(std::equal(without.begin() + 32, without.begin() + 64, with.begin() + 32));
}

TEST(HilbertShifter, fullFeedbackDiesAway) {
  Signal in = noise(1000);
  in.resize(12000 * 32, 0.0);
  for (double knob : {0.0, 0.5, 1.0}) {
    const Signal out = shifted(recipe(knob, 1000.0, 1.0), in);
    EXPECT_LT(testing_support::peakOf({out.end() - 3200, out.end()}), 1e-6) << knob;
  }
  // Shifted first, and then back to the middle, where what goes round meets itself.
  Recipe back = recipe(0.8, 1000.0, 1.0);
  back.params[0] = [](int v) { return v < 500 ? 0.8 : 0.5; };
  const Signal out = shifted(back, in);
  EXPECT_LT(testing_support::peakOf({out.end() - 3200, out.end()}), 1e-6);
}

TEST(HilbertShifter, resetDropsTheTailAndKeepsTheSettings) {
  HilbertShifter shifter(false);
  const Recipe settings = recipe(0.7, 100.0, 1.0);
  follow(shifter, settings, noise(100));
  shifter.reset();
  EXPECT_EQ(testing_support::run(shifter, Signal(640, 0.0)), Signal(640, 0.0));
  shifter.setBypass(true);
  Signal untouched(kVectorLength, 0.25);
  shifter.process(untouched.data(), nullptr);
  EXPECT_EQ(untouched, Signal(kVectorLength, 0.25));
}

TEST(HilbertShifter, afterARateChangeItIsAsNewlyBuilt) {
  const double source[kVectorLength] = {0.25};
  const auto build = [&source] {
    auto shifter = std::make_unique<HilbertShifter>(true);
    const double values[] = {0.7, 1000.0, 0.5, 0.4, 1.0};
    for (int k = 0; k < 5; ++k) shifter->setParam(k, values[k]);
    shifter->setModSource(0, source);
    shifter->setModDepth(0, source);
    return shifter;
  };
  const auto kept = build();
  testing_support::run(*kept, noise(101));
  ScopedRate scope(96000.0);
  kept->rateChanged();
  kept->reset();
  const Signal in = noise(100, 9);
  EXPECT_TRUE(testing_support::run(*kept, in) == testing_support::run(*build(), in));
}

TEST(HilbertShifter, aSourceThatGoesLeavesTheKnob) {
  Recipe settings = recipe(0.5, 100.0, 0.0);
  HilbertShifter shifter(false);
  for (int k : {0, 2, 3}) settings.sources[k] = constant(1.0);
  follow(shifter, settings, noise(200));
  for (int k : {0, 2, 3}) shifter.setModSource(k, nullptr);
  const Signal out = testing_support::run(shifter, tone(1000.0, 6000));
  EXPECT_NEAR(amplitudeAt(out, 1000.0, 65536), 1.0, 1e-3);
}

TEST(HilbertShifter, recoversFromBadInputAsNewlyBuilt) {
  for (double bad : {std::numeric_limits<double>::quiet_NaN(), HUGE_VAL, -1e13}) {
    HilbertShifter hurt(false), fresh(false);
    follow(hurt, recipe(0.8, 1000.0, 1.0), noise(30));
    for (int k = 0; k < 5; ++k) fresh.setParam(k, std::vector{0.8, 1000.0, 1.0, 0.0, 1.0}[k]);
    Signal hit = noise(1);
    hit[7] = bad;
    EXPECT_EQ(testing_support::run(hurt, hit), Signal(32, 0.0));
    const Signal in = noise(60, 5);
    EXPECT_TRUE(testing_support::run(hurt, in) == testing_support::run(fresh, in)) << bad;
  }
}

TEST(HilbertShifter, survivesAMillionfoldInputAndWildModulation) {
  Signal loud = noise(100);
  for (double& sample : loud) sample *= 1e6;
  Recipe wild = recipe(1.0, 1000.0, 1.0, 1.0);
  for (int k : {0, 2, 3}) {
    wild.sources[k] = [](int v) { return v % 3 == 0 ? std::nan("") : v % 3 == 1 ? 1e300 : -1e300; };
  }
  HilbertShifter shifter(false);
  EXPECT_TRUE(testing_support::allFinite(follow(shifter, wild, loud)));
  testing_support::expectItSoundsOnItsOwn(shifter);
}

TEST(HilbertShifter, worksInPlaceAndOnTheFirstOfTwoChannels) {
  const Signal in = noise(50), other = noise(50, 2);
  const Recipe settings = recipe(0.8, 1000.0, 0.5);
  const Signal expected = shifted(settings, in);
  HilbertShifter first(false), second(false);
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
