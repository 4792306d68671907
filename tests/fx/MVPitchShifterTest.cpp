#include "fx/MVPitchShifter.h"

#include <gtest/gtest.h>

#include <limits>

#include "fx/PitchShifterModel.h"

namespace orvantesco {
namespace {

using testing_support::amplitudeAt;
using testing_support::constant;
using testing_support::follow;
using testing_support::Follower;
using testing_support::kRates;
using testing_support::largestDifference;
using testing_support::noise;
using testing_support::PitchShifterModel;
using testing_support::Recipe;
using testing_support::runModel;
using testing_support::ScopedRate;
using testing_support::Signal;
using testing_support::tone;

/// Coarse and fine in semitones (of a dual pair: coarse left and right), size in ms.
Recipe recipe(double coarse, double fine, double sizeMs, double spread = 0.0) {
  Recipe result;
  const double values[] = {coarse / 12.0, fine, sizeMs, spread, 1.0};
  for (int k = 0; k < Recipe::kParams; ++k) result.params[k] = constant(values[k]);
  return result;
}

Recipe rightOf(Recipe settings) {
  settings.isRight = true;
  return settings;
}

Signal shifted(const Recipe& settings, const Signal& in, bool dual = false) {
  MVPitchShifter shifter(settings.isRight, dual);
  return follow(shifter, settings, in);
}

double besideModel(const Recipe& settings, const Signal& in, bool dual) {
  const Signal expected = runModel(PitchShifterModel(settings, dual), in);
  return largestDifference(shifted(settings, in, dual), expected);
}

TEST(MVPitchShifter, isItsModelAtEveryRatePitchAndSize) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    for (bool dual : {false, true}) {
      for (double coarse : {-12.0, -5.0, 0.0, 7.0, 12.0}) {
        for (double sizeMs : {1.0, 25.75}) {
          const double apart = besideModel(recipe(coarse, 0.3, sizeMs, 0.4), noise(200), dual);
          EXPECT_LT(apart, 1e-12) << rate << " " << dual << " " << coarse << " " << sizeMs;
        }
      }
    }
  }
}

TEST(MVPitchShifter, isItsModelUnderModulationAndSweepsOfEveryControl) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    for (const bool dual : {false, true}) {
      Recipe moving = recipe(3.0, -0.5, 20.0, 0.3);
      moving.params[0] = [](int v) { return v % 200 / 200.0; };
      moving.params[2] = [](int v) { return v < 200 ? 100.0 : 2.0; };
      moving.sources[0] = [](int v) { return std::sin(0.05 * v); };
      moving.sources[1] = [](int v) { return std::sin(0.031 * v); };
      moving.sources[2] = [](int v) { return 0.5 * std::sin(0.02 * v); };
      moving.sources[3] = [](int v) { return v % 40 < 20 ? 0.5 : -0.5; };
      EXPECT_LT(besideModel(moving, noise(400), dual), 1e-12) << rate;
      EXPECT_LT(besideModel(rightOf(moving), noise(400), dual), 1e-12) << rate;
    }
  }
}

TEST(MVPitchShifter, isItsModelWhereTheRingComesRoundAndBehindAReset) {
  // At 1 ms each cycle reads once below one sample of delay: there the ring's oldest sample sounds.
  const Recipe settings = recipe(-7.0, 0.2, 1.0);
  MVPitchShifter shifter(false, false);
  PitchShifterModel model(settings, false);
  const Signal in = noise(2500);
  EXPECT_LT(largestDifference(follow(shifter, settings, in), runModel(model, in)), 1e-12);
  shifter.reset();
  model.reset(1.0);
  const Signal after = noise(2500, 3);
  EXPECT_LT(largestDifference(follow(shifter, settings, after), runModel(model, after)), 1e-12);
}

TEST(MVPitchShifter, withoutAShiftItIsADelayOfTheSize) {
  for (double sizeMs : {10.0, 20.0}) {  // 441 and 882 samples
    const Signal in = tone(500.0, 2000);
    const Signal out = shifted(recipe(0.0, 0.0, sizeMs), in);
    // The filter ahead delays by less than a sample at this frequency.
    const auto delay = static_cast<size_t>(sizeMs * 44.1);
    double worst = 0.0;
    for (size_t i = 32000; i < in.size(); ++i) {
      worst = std::max(worst, std::fabs(out[i] - in[i - delay]));
    }
    EXPECT_LT(worst, 0.1) << sizeMs;
    EXPECT_NEAR(amplitudeAt(out, 500.0, 16384), 1.0, 1e-3);
  }
}

TEST(MVPitchShifter, transposesATone) {
  for (double coarse : {-12.0, -5.0, 4.0, 12.0}) {
    const Signal out = shifted(recipe(coarse, 0.0, 60.0), tone(800.0, 4000));
    const double wanted = amplitudeAt(out, 800.0 * std::exp2(coarse / 12.0), 65536);
    EXPECT_GT(wanted, 0.4) << coarse;
    EXPECT_LT(amplitudeAt(out, 800.0, 65536), 0.02) << coarse;
  }
}

TEST(MVPitchShifter, movesByWholeSemitonesAndByCents) {
  const Signal in = noise(300);
  EXPECT_EQ(shifted(recipe(3.4, 0.0, 10.0), in), shifted(recipe(3.0, 0.0, 10.0), in));
  EXPECT_EQ(shifted(recipe(2.5, 0.0, 10.0), in), shifted(recipe(3.0, 0.0, 10.0), in));
  EXPECT_EQ(shifted(recipe(-2.5, 0.0, 10.0), in), shifted(recipe(-3.0, 0.0, 10.0), in));
  EXPECT_EQ(shifted(recipe(3.0, 1.0, 10.0), in), shifted(recipe(4.0, 0.0, 10.0), in));
}

TEST(MVPitchShifter, neverPassesAnOctave) {
  const Signal in = noise(300);
  Recipe pushed = recipe(12.0, 0.0, 10.0);
  pushed.depth = 1.0 / 12.0;
  pushed.sources[0] = constant(1.0);
  EXPECT_EQ(shifted(pushed, in), shifted(recipe(12.0, 0.0, 10.0), in));
  EXPECT_EQ(shifted(recipe(-12.0, -1.0, 10.0), in), shifted(recipe(-12.0, 0.0, 10.0), in));
}

/// The size that a source pushes 50 ms to, in ms.
double pushedSizeMs(double depth, double source) {
  Recipe pushed = recipe(5.0, 0.0, 50.0);
  pushed.depth = depth;
  pushed.sources[2] = constant(source);
  MVPitchShifter shifter(false, false);
  follow(shifter, pushed, Signal(500 * 32, 0.0));
  return shifter.sizeSamples() / 44.1;
}

TEST(MVPitchShifter, aModulatedSizeStaysWithin1And100Ms) {
  EXPECT_NEAR(pushedSizeMs(0.9, -1.0), 1.0, 1e-3);
  EXPECT_NEAR(pushedSizeMs(0.9, 1.0), 100.0, 0.1);
  EXPECT_NEAR(pushedSizeMs(0.5, 1.0), 50.0 + 0.25 * 99.0, 0.1) << "depths act squared";
  EXPECT_NEAR(pushedSizeMs(-0.5, 1.0), 50.0 - 0.25 * 99.0, 0.1) << "with their sign";
}

TEST(MVPitchShifter, takesOffWhatWouldPassHalfTheRate) {
  const Signal high = tone(18000.0, 3000);
  const auto loudest = [](const Signal& s) {
    return *std::max_element(s.begin() + 64000, s.end());
  };
  EXPECT_LT(loudest(shifted(recipe(12.0, 0.0, 20.0), high)), 0.01);
  EXPECT_GT(loudest(shifted(recipe(-12.0, 0.0, 20.0), high)), 0.5);
}

TEST(MVPitchShifter, aDualPairHasACoarseKnobForEachChannel) {
  const Signal in = noise(300);
  const Signal left = shifted(recipe(7.0, 0.0, 20.0), in);
  const Recipe both = recipe(7.0, -5.0 / 12.0, 20.0);  // the knobs are unscaled: -5 of 12
  EXPECT_LT(largestDifference(shifted(both, in, true), left), 1e-12);
  const Signal right = shifted(recipe(-5.0, 0.0, 20.0), in);
  EXPECT_LT(largestDifference(shifted(rightOf(both), in, true), right), 1e-12);
}

TEST(MVPitchShifter, spreadDetunesTheChannelsHalfAsFarWhenDual) {
  const Signal in = noise(300);
  const Recipe apart = recipe(0.0, 0.0, 20.0, 1.0);
  EXPECT_EQ(shifted(apart, in), shifted(recipe(1.0, 0.0, 20.0), in));
  EXPECT_EQ(shifted(rightOf(apart), in), shifted(recipe(-1.0, 0.0, 20.0), in));
  EXPECT_EQ(shifted(apart, in, true), shifted(recipe(0.0, 0.5, 20.0), in));
  EXPECT_EQ(shifted(rightOf(apart), in, true), shifted(recipe(0.0, -0.5, 20.0), in));
}

/// What a source at one control does, in semitones, told by an equal signal.
bool detunesBy(double semitones, int control, bool isRight) {
  Recipe pushed = recipe(0.0, 0.0, 20.0);
  pushed.isRight = isRight;
  pushed.depth = 0.5;
  pushed.sources[control] = constant(control == 2 ? 0.0625 : 0.25);
  const Signal in = noise(100);
  Recipe expected = recipe(0.0, semitones, 20.0);
  if (control == 2) expected.sources[2] = pushed.sources[2];
  return shifted(pushed, in, true) == shifted(expected, in);
}

TEST(MVPitchShifter, inADualPairTheNextKnobsModulatorDetunesAChannelToo) {
  EXPECT_TRUE(detunesBy(0.5 * 0.25 * 0.5, 1, false)) << "COARSE R in the left channel";
  EXPECT_TRUE(detunesBy(0.5 * 0.0625 * 0.5, 2, true)) << "SIZE in the right channel";
  EXPECT_TRUE(detunesBy(0.0, 2, false));
  EXPECT_TRUE(detunesBy(0.0, 0, true));
}

TEST(MVPitchShifter, resetDropsTheTailAndKeepsTheSettings) {
  MVPitchShifter shifter(false, false);
  follow(shifter, recipe(7.0, 0.0, 100.0), noise(3000));
  shifter.reset();
  EXPECT_EQ(testing_support::run(shifter, Signal(3000 * 32, 0.0)), Signal(3000 * 32, 0.0));
  const Signal out = testing_support::run(shifter, tone(800.0, 4000));
  EXPECT_GT(amplitudeAt(out, 800.0 * std::exp2(7.0 / 12.0), 65536), 0.4);
  shifter.setBypass(true);
  Signal untouched(kVectorLength, 0.25);
  shifter.process(untouched.data(), nullptr);
  EXPECT_EQ(untouched, Signal(kVectorLength, 0.25));
}

/// At a whole number of samples nothing is left between two of them: an interpolation that went on
/// would ring at half the rate for ever.
TEST(MVPitchShifter, aSizeThatComesDownToWholeSamplesLeavesSilenceSilent) {
  MVPitchShifter shifter(false, false);
  for (int k : {0, 1, 3}) shifter.setParam(k, 0.0);
  shifter.setParam(2, 100.0);
  testing_support::run(shifter, noise(1000));
  shifter.setParam(2, 297.0 / 44.1);
  testing_support::run(shifter, noise(3000));
  ASSERT_EQ(shifter.sizeSamples(), 297.0);
  testing_support::run(shifter, Signal(1000 * 32, 0.0));
  EXPECT_EQ(testing_support::run(shifter, Signal(64, 0.0)), Signal(64, 0.0));
}

/// A shifter with every control away from its first value and one source.
std::unique_ptr<MVPitchShifter> configured(const double* source) {
  auto shifter = std::make_unique<MVPitchShifter>(true, false);
  const double values[] = {0.5, 0.3, 35.0, 0.4, 1.0};
  for (int k = 0; k < 5; ++k) shifter->setParam(k, values[k]);
  shifter->setModSource(0, source);
  shifter->setModDepth(0, source);
  return shifter;
}

TEST(MVPitchShifter, afterARateChangeItIsAsNewlyBuilt) {
  const double source[kVectorLength] = {0.25};
  const auto kept = configured(source);
  testing_support::run(*kept, noise(101));
  ScopedRate scope(96000.0);
  kept->rateChanged();
  kept->reset();
  const auto fresh = configured(source);
  fresh->reset();  // as a position does when it has given its parameters
  const Signal in = noise(300, 9);
  EXPECT_TRUE(testing_support::run(*kept, in) == testing_support::run(*fresh, in));
}

TEST(MVPitchShifter, recoversFromBadInputAsNewlyBuilt) {
  const double source[kVectorLength] = {0.25};
  for (double bad : {std::numeric_limits<double>::quiet_NaN(), HUGE_VAL, -1e13}) {
    const auto hurt = configured(source), fresh = configured(source);
    fresh->reset();
    testing_support::run(*hurt, noise(30));
    Signal hit = noise(1);
    hit[7] = bad;
    EXPECT_EQ(testing_support::run(*hurt, hit), Signal(32, 0.0));
    const Signal in = noise(300, 5);
    EXPECT_TRUE(testing_support::run(*hurt, in) == testing_support::run(*fresh, in)) << bad;
  }
}

TEST(MVPitchShifter, aSourceThatGoesLeavesTheKnob) {
  MVPitchShifter shifter(false, false);
  Recipe settings = recipe(5.0, 0.0, 60.0);
  for (int k = 0; k < 4; ++k) settings.sources[k] = constant(0.7);
  follow(shifter, settings, noise(300));
  for (int k = 0; k < 4; ++k) shifter.setModSource(k, nullptr);
  const Signal out = testing_support::run(shifter, tone(800.0, 4000));
  EXPECT_GT(amplitudeAt(out, 800.0 * std::exp2(5.0 / 12.0), 65536), 0.4);
}

TEST(MVPitchShifter, survivesAMillionfoldInputAndWildModulation) {
  Signal loud = noise(300);
  for (double& sample : loud) sample *= 1e6;
  Recipe wild = recipe(12.0, 1.0, 1.0, 1.0);
  for (int k = 0; k < 4; ++k) {
    wild.sources[k] = [](int v) { return v % 3 == 0 ? std::nan("") : v % 3 == 1 ? 1e300 : -1e300; };
  }
  MVPitchShifter shifter(false, false);
  EXPECT_TRUE(testing_support::allFinite(follow(shifter, wild, loud)));
  testing_support::expectItSoundsOnItsOwn(shifter);
}

TEST(MVPitchShifter, ignoresParametersOutOfReach) {
  MVPitchShifter shifter(false, false);
  for (int k = 0; k < 5; ++k) shifter.setParam(k, std::nan(""));
  shifter.setParam(2, 1e7);
  testing_support::expectItSoundsOnItsOwn(shifter);
  EXPECT_LE(shifter.sizeSamples(), 4411.0);
}

TEST(MVPitchShifter, worksInPlaceAndOnTheFirstOfTwoChannels) {
  const Signal in = noise(50), other = noise(50, 2);
  const Recipe settings = recipe(7.0, 0.2, 10.0);
  const Signal expected = shifted(settings, in);
  MVPitchShifter first(false, false), second(false, false);
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
