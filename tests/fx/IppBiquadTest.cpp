#include "fx/IppBiquad.h"

#include <gtest/gtest.h>

#include <limits>

#include "fx/BiquadFixture.h"
#include "fx/VowelTable.h"

namespace orvantesco {
namespace {

using testing_support::BiquadModel;
using testing_support::FilterRecipe;
using testing_support::kRates;
using testing_support::largestDifference;
using testing_support::noise;
using testing_support::RecipeFilter;
using testing_support::responseDb;
using testing_support::ScopedRate;
using testing_support::Signal;

constexpr int kAllModes[] = {0, 3, 6, 10, 12, 15, 16, 18, 19, 20, 21, 22, 23, 24, 25};

double againstModel(const FilterRecipe& recipe, const Signal& in) {
  RecipeFilter filter(recipe);
  const Signal actual = testing_support::run(filter, in);
  const Signal expected = BiquadModel(recipe).run(in);
  const double scale = *std::max_element(expected.begin(), expected.end());
  return largestDifference(actual, expected) / std::max(1.0, scale);
}

/// A direct form of order 4 magnifies the last bit of its taps, the more the lower its corner.
double toleranceOf(int mode) {
  return mode == 15 || mode == 16 || mode == 18 || mode == 19 ? 1e-9 : 1e-12;
}

TEST(IppBiquad, isItsModelInEveryModeAndRate) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    for (int mode : kAllModes) {
      FilterRecipe recipe;
      recipe.mode = mode;
      recipe.cutoff = 0.6;
      recipe.resonance = 0.4;
      recipe.gain = 0.7;
      recipe.dim = 0.3;
      EXPECT_LT(againstModel(recipe, noise(200)), toleranceOf(mode)) << mode << " at " << rate;
    }
  }
}

TEST(IppBiquad, isItsModelWithManyStagesAndSpread) {
  for (int stages : {2, 3, 4, 8, 12}) {
    for (bool isRight : {false, true}) {
      FilterRecipe recipe;
      recipe.stages = stages;
      recipe.isRight = isRight;
      recipe.cutoff = 0.7;
      recipe.spread = -0.3;
      EXPECT_LT(againstModel(recipe, noise(200)), 1e-12) << stages;
    }
  }
}

TEST(IppBiquad, isItsModelUnderModulationOfEveryControl) {
  for (int mode : {0, 3, 6, 10, 16, 19, 20, 21, 23}) {
    FilterRecipe recipe;
    recipe.mode = mode;
    recipe.isRight = true;
    recipe.stages = 2;
    recipe.cutoff = 0.6;
    recipe.resonance = 0.2;
    recipe.gain = 0.5;
    recipe.modulation = {[](int v) { return 0.2 * std::sin(0.05 * v); },
                         [](int v) { return 0.9 * std::sin(0.031 * v); },
                         [](int v) { return v % 40 < 20 ? 0.05 : -0.05; },
                         [](int v) { return 0.4 * std::sin(0.013 * v); }};
    EXPECT_LT(againstModel(recipe, noise(600)), toleranceOf(mode) * 10) << mode;
  }
}

TEST(IppBiquad, answersImpulsesAndSilenceAsItsModel) {
  FilterRecipe recipe;
  recipe.mode = 6;
  recipe.resonance = 1.0;
  EXPECT_LT(againstModel(recipe, testing_support::impulse(300)), 1e-12);
  RecipeFilter filter(recipe);
  EXPECT_EQ(testing_support::run(filter, Signal(64 * 32, 0.0)), Signal(64 * 32, 0.0));
}

TEST(IppBiquad, modeOffLeavesABufferUntouched) {
  IppBiquad filter(false, kFilterOff, 1);
  Signal buffer = noise(1);
  const Signal before = buffer;
  filter.process(buffer.data(), nullptr);
  EXPECT_EQ(buffer, before);
  Signal out(kVectorLength, 0.125);
  filter.process(buffer.data(), out.data());
  EXPECT_EQ(out, Signal(kVectorLength, 0.125));
}

TEST(IppBiquad, aNegativeCutoffStopsAtTheCornerFloor) {
  FilterRecipe recipe;
  recipe.mode = 3;
  recipe.cutoff = 0.0;
  recipe.spread = -1.0;
  // At 9 Hz even the plain recursion is a few 1e-12 beside the exact one.
  EXPECT_LT(againstModel(recipe, noise(300)), 1e-11);
  RecipeFilter filter(recipe);
  EXPECT_NEAR(responseDb(filter, 1000.0), 0.0, 0.01);
}

TEST(IppBiquad, resonanceRunsFromQ145To945) {
  for (auto [resonance, divisor] : {std::pair(0.0, 1.45), std::pair(1.0, 9.45)}) {
    FilterRecipe recipe;
    recipe.cutoff = testing_support::knobOf(1000.0);
    recipe.resonance = resonance;
    RecipeFilter filter(recipe);
    // At its corner the low-pass has the gain of half the divisor.
    EXPECT_NEAR(responseDb(filter, 1000.0), 20.0 * std::log10(divisor / 2.0), 0.01);
  }
}

TEST(IppBiquad, stageChangesClearTheMemory) {
  auto ringing = [](IppBiquad& filter) {
    Signal in = noise(200);
    testing_support::run(filter, in);
  };
  IppBiquad filter(false, kLowpassFilter, 1);
  filter.setCutoff(0.5);
  ringing(filter);
  filter.setStages(1.0);
  EXPECT_EQ(filter.stageCount(), 4);
  EXPECT_EQ(testing_support::run(filter, Signal(32, 0.0)), Signal(32, 0.0));
  ringing(filter);
  filter.setStages(1.1);
  EXPECT_EQ(filter.stageCount(), 4);
  EXPECT_NE(testing_support::run(filter, Signal(32, 0.0)), Signal(32, 0.0));

  IppBiquad slope(false, kSlopeFilter, 1);
  slope.setCutoff(0.5);
  ringing(slope);
  slope.setParam(1, 0.4);
  EXPECT_EQ(slope.stageCount(), 2);
  EXPECT_EQ(testing_support::run(slope, Signal(32, 0.0)), Signal(32, 0.0));
}

TEST(IppBiquad, stagesFollowTheNormalisedNumber) {
  IppBiquad filter(false, kLowpassFilter, 20);
  EXPECT_EQ(filter.stageCount(), 12);
  const std::pair<double, int> expected[] = {{0.0, 2}, {0.49, 2}, {0.5, 3}, {1.0, 4}, {-1.0, 1}};
  for (auto [normalised, stages] : expected) {
    filter.setStages(normalised);
    EXPECT_EQ(filter.stageCount(), stages) << normalised;
  }
}

TEST(IppBiquad, theSlopeStaysParameterOneInWhateverModeFollows) {
  IppBiquad filter(false, kSlopeFilter, 1);
  for (int mode : {0, 3, 6, 20}) {
    filter.setParam(3, mode);
    EXPECT_EQ(filter.filterMode(), mode);
    filter.setParam(1, 1.0);
    EXPECT_EQ(filter.stageCount(), 4);
    filter.setParam(1, 0.5);  // half to even: 3 stages
    EXPECT_EQ(filter.stageCount(), 3);
    filter.setParam(1, 2.5 / 3.0);
    EXPECT_EQ(filter.stageCount(), 3);
    filter.setParam(1, 0.0);
    EXPECT_EQ(filter.stageCount(), 1);
  }
  IppBiquad plain(false, kLowpassFilter, 1);
  plain.setParam(1, 1.0);
  EXPECT_EQ(plain.stageCount(), 1);
}

TEST(IppBiquad, forcedStagesFollowTheMode) {
  IppBiquad filter(false, kLowpassFilter, 1);
  for (auto [mode, stages] : {std::pair(15, 2), std::pair(16, 4), std::pair(18, 2),
                              std::pair(19, 4), std::pair(21, 3), std::pair(0, 3)}) {
    filter.setMode(mode);
    EXPECT_EQ(filter.stageCount(), stages) << mode;
  }
}

TEST(IppBiquad, anEffectsParametersReachTheirControls) {
  IppBiquad peak(false, kPeakFilter, 2);
  peak.setParam(3, 1.0);
  peak.setParam(4, 1.0);
  EXPECT_EQ(peak.filterMode(), kPeakFilter);
  EXPECT_EQ(peak.wetShare(), 1.0);
  testing_support::run(peak, Signal(64 * 32, 0.0));
  EXPECT_NEAR(peak.gainBehind(), std::pow(10.0, -24.0 / 20.0), 1e-3);

  IppBiquad multi(false, kLowpassFilter, 1);
  multi.setParam(3, 6.0);
  multi.setParam(4, 0.25);
  EXPECT_EQ(multi.filterMode(), kBandpassFilter);
  EXPECT_EQ(multi.wetShare(), 0.25);
}

TEST(IppBiquad, dimPullsAPeakDownToZeroDb) {
  FilterRecipe recipe;
  recipe.mode = 10;
  recipe.stages = 2;
  recipe.cutoff = testing_support::knobOf(1000.0);
  recipe.gain = 0.5;
  RecipeFilter boosted(recipe);
  EXPECT_NEAR(responseDb(boosted, 1000.0), 12.0, 0.01);
  recipe.dim = 1.0;
  RecipeFilter dimmed(recipe);
  EXPECT_NEAR(responseDb(dimmed, 1000.0), 0.0, 0.01);
  RecipeFilter skirt(recipe);
  EXPECT_LT(responseDb(skirt, 60.0), -11.0);
}

TEST(IppBiquad, dimNeverRaisesAPeakButAVowel) {
  IppBiquad peak(false, kPeakFilter, 1);
  peak.setGain(0.0);
  peak.setDim(1.0);
  testing_support::run(peak, Signal(64 * 32, 0.0));
  EXPECT_EQ(peak.gainBehind(), 1.0);
  IppBiquad vowel(false, kVowelFilter, 1);
  vowel.setGain(-0.5);
  vowel.setDim(1.0);
  testing_support::run(vowel, Signal(4000 * 32, 0.0));
  EXPECT_NEAR(vowel.gainBehind(), std::pow(10.0, 12.0 / 20.0), 1e-3);
}

TEST(IppBiquad, modulationHoldsTheGainOfAShapersPeakWithinItsKnob) {
  FilterRecipe recipe;
  recipe.mode = 12;
  recipe.gain = 0.5;
  recipe.cutoff = 0.5;
  recipe.modulation[3] = [](int v) { return v % 400 < 200 ? 3.0 : -3.0; };
  EXPECT_LT(againstModel(recipe, noise(800)), 1e-12);
  for (const auto& [pushed, db] : {std::pair(-3.0, 0.0), std::pair(3.0, 24.0)}) {
    recipe.cutoff = testing_support::knobOf(1000.0);
    recipe.modulation[3] = [push = pushed](int) { return push; };
    RecipeFilter filter(recipe);
    EXPECT_NEAR(responseDb(filter, 1000.0), db, 0.01);
  }
}

TEST(IppBiquad, shelvesAtZeroDbPass) {
  for (int mode : {23, 24}) {
    FilterRecipe recipe;
    recipe.mode = mode;
    RecipeFilter filter(recipe);
    testing_support::run(filter, Signal(4000 * 32, 0.0));
    const Signal in = noise(20);
    EXPECT_LT(largestDifference(testing_support::run(filter, in), in), 1e-9) << mode;
  }
}

TEST(IppBiquad, aShelfOfNoAmplitudeStaysAFilter) {
  for (int mode : {23, 24}) {
    IppBiquad filter(false, mode, 1);
    filter.setGain(-1.0);
    filter.setCutoff(0.5);
    const Signal out = testing_support::run(filter, noise(500));
    EXPECT_TRUE(std::all_of(out.begin(), out.end(), [](double s) { return std::fabs(s) < 10.0; }));
  }
}

TEST(IppBiquad, aFastSweepLosesItsResonanceAndRegainsIt) {
  FilterRecipe recipe;
  recipe.mode = 16;
  recipe.cutoff = 0.5;
  recipe.resonance = 1.0;
  const int sweepEnd = 400;
  recipe.modulation[0] = [](int v) { return v < sweepEnd && v % 20 < 10 ? 0.45 : 0.0; };
  const Signal in = noise(600);
  RecipeFilter filter(recipe);
  const Signal damped = testing_support::run(filter, in);
  recipe.dampsSweeps = false;
  const Signal wild = BiquadModel(recipe).run(in);
  auto energy = [](const Signal& signal) {
    double sum = 0.0;
    for (size_t i = 0; i < sweepEnd * 32; ++i) sum += signal[i] * signal[i];
    return sum;
  };
  // With its full ripple the passband of an even order lies 15 dB down, without it at 0 dB.
  EXPECT_GT(energy(damped), 1.5 * energy(wild));

  recipe.modulation[0] = nullptr;
  RecipeFilter still(recipe);
  const double hz = 950.0;
  EXPECT_NEAR(responseDb(filter, hz), responseDb(still, hz), 1e-6);
}

/// The filter with its damping laid open.
struct WatchedFilter : IppBiquad {
  using IppBiquad::IppBiquad;
  double damping() const { return sweepDamping; }
};

/// A jump of the knob is a sweep of the smoothed cutoff, which goes on for some control ticks of
/// two vectors each. As soon as one of these steps is no longer than 0.02 the ripple is whole
/// again.
TEST(IppBiquad, aSweepThatEndsGivesTheResonanceBackAtItsFirstSlowStep) {
  WatchedFilter filter(false, kSteepLowpassFilter, 4);
  filter.setCutoff(0.2);
  filter.setResonance(1.0F);
  testing_support::run(filter, Signal(4000 * 32, 0.0));
  const double jump = 0.5;
  filter.setCutoff(0.2 + jump);
  const double keep = std::exp(-2.0 * std::numbers::pi / (0.001 * sampleRate));
  int ticks = 0;
  for (double step = jump * (1.0 - keep); step > 0.02; step *= keep) {
    testing_support::run(filter, Signal(64, 0.0));
    EXPECT_NEAR(filter.damping(), 0.01 / (25.0 * step * step), 1e-6) << ticks;
    ++ticks;
  }
  EXPECT_EQ(ticks, 9);
  testing_support::run(filter, Signal(64, 0.0));
  EXPECT_EQ(filter.damping(), 1.0);
}

TEST(IppBiquad, everyKnobModulationAndRateKeepsItStable) {
  for (double rate : {22050.0, 32000.0, 44100.0, 192000.0}) {
    ScopedRate scope(rate);
    for (int mode : kAllModes) {
      for (double push : {-30.0, 0.0, 30.0}) {
        FilterRecipe recipe;
        recipe.mode = mode;
        recipe.cutoff = 1.0;
        recipe.spread = 1.0;
        recipe.resonance = 1.0;
        recipe.modulation[0] = [push](int) { return push; };
        RecipeFilter filter(recipe);
        const Signal out = testing_support::run(filter, noise(500));
        const bool bounded = std::all_of(out.begin() + 400 * 32, out.end(),
                                         [](double s) { return std::fabs(s) < 1e4; });
        const bool sounds = std::any_of(out.begin(), out.end(), [](double s) { return s != 0.0; });
        EXPECT_TRUE(bounded && sounds) << mode << " at " << rate << ", " << push;
      }
    }
  }
}

TEST(IppBiquad, theCornerNeverPassesItsCeiling) {
  ScopedRate scope(32000.0);
  FilterRecipe recipe;
  recipe.cutoff = 1.0;
  RecipeFilter filter(recipe);
  // 20000/44100 of 32000 Hz is 14512.5 Hz: there a low-pass of width 1.45 has -2.79 dB.
  EXPECT_NEAR(responseDb(filter, 32000.0 * 20000.0 / 44100.0), 20.0 * std::log10(0.725), 0.01);
}

TEST(IppBiquad, theSteepModesKeepTheirRippleEdgeAtTheCeilingAndTheFloor) {
  ScopedRate scope(32000.0);
  FilterRecipe recipe;
  recipe.mode = 16;
  recipe.cutoff = 1.0;
  RecipeFilter highest(recipe);
  EXPECT_NEAR(responseDb(highest, 32000.0 * 20000.0 / 44100.0), -1.0, 0.01);
  recipe.mode = 19;
  recipe.cutoff = 0.0;
  recipe.spread = -1.0;
  RecipeFilter lowest(recipe);
  EXPECT_NEAR(responseDb(lowest, 32000.0 * 0.0002, 4000, 20000), -1.0, 0.02);
}

TEST(IppBiquad, aDirectFrequencyReplacesTheKnob) {
  IppBiquad filter(false, kLowpassFilter, 2);
  filter.setDirectFrequency(2000.0 / 44100.0);
  EXPECT_NEAR(responseDb(filter, 2000.0), 40.0 * std::log10(0.725), 0.01);
  filter.setDirectFrequency(0.9);
  EXPECT_NEAR(responseDb(filter, 20000.0), 40.0 * std::log10(0.725), 0.01);
}

TEST(IppBiquad, afterARateChangeItIsAsNewlyBuilt) {
  for (int mode : kAllModes) {
    FilterRecipe recipe;
    recipe.mode = mode;
    recipe.cutoff = 0.4;
    recipe.resonance = 0.5;
    recipe.gain = 0.3;
    recipe.dim = 0.5;
    const double source[32] = {0.25};
    auto connect = [&source](IppBiquad& filter) {
      filter.setModSource(0, source);
      filter.setModDepth(0, source);
    };
    RecipeFilter kept(recipe);
    connect(*kept);
    testing_support::run(kept, noise(101));
    ScopedRate scope(96000.0);
    kept->rateChanged();
    kept->reset();
    RecipeFilter fresh(recipe);
    connect(*fresh);
    const Signal in = noise(100, 9);
    EXPECT_TRUE(testing_support::run(kept, in) == testing_support::run(fresh, in)) << mode;
  }
}

TEST(IppBiquad, recoversFromBadInputAsNewlyBuilt) {
  const double bad[] = {std::numeric_limits<double>::quiet_NaN(), INFINITY, -1e13};
  for (int mode : kAllModes) {
    for (double value : bad) {
      FilterRecipe recipe;
      recipe.mode = mode;
      RecipeFilter hurt(recipe), fresh(recipe);
      testing_support::run(hurt, noise(30));
      Signal hit = noise(1);
      hit[7] = value;
      EXPECT_TRUE(testing_support::run(hurt, hit) == Signal(32, 0.0)) << mode;
      const Signal in = noise(60, 5);
      EXPECT_TRUE(testing_support::run(hurt, in) == testing_support::run(fresh, in)) << mode;
    }
  }
}

TEST(IppBiquad, survivesAMillionfoldInput) {
  FilterRecipe recipe;
  recipe.mode = 16;
  recipe.resonance = 1.0;
  RecipeFilter filter(recipe);
  Signal loud = noise(50);
  for (double& sample : loud) sample *= 1e6;
  testing_support::run(filter, loud);
  const Signal tail = testing_support::run(filter, Signal(4000 * 32, 0.0));
  EXPECT_LT(std::fabs(tail.back()), 1e-9);
}

TEST(IppBiquad, ignoresParametersThatAreNoNumbers) {
  FilterRecipe recipe;
  RecipeFilter spoilt(recipe), fresh(recipe);
  for (int i = 0; i < 5; ++i) spoilt->setParam(i, std::numeric_limits<double>::quiet_NaN());
  spoilt->setGain(NAN);
  spoilt->setDirectFrequency(NAN);
  spoilt->setCutoff(NAN);
  spoilt->setStages(NAN);
  const Signal in = noise(50);
  EXPECT_TRUE(testing_support::run(spoilt, in) == testing_support::run(fresh, in));
}

TEST(IppBiquad, theLastVowelFilterDecidesTheSetForAll) {
  IppBiquad first(false, kVowelFilter, 2);
  IppBiquad second(false, kVowelFilter, 2);
  EXPECT_EQ(first.stageCount(), 3);
  first.setParam(1, 0.4);
  EXPECT_EQ(vowelAt(0.0).formantHz[0], 390.0);
  second.setParam(1, 1.0);
  EXPECT_EQ(vowelAt(0.0).formantHz[0], 660.0);
  IppBiquad third(true, kVowelFilter, 2);
  EXPECT_EQ(vowelAt(0.0).formantHz[0], 270.0);
}

}  // namespace
}  // namespace orvantesco
