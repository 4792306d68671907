#include "fx/LPHP.h"

#include <gtest/gtest.h>

#include <limits>

#include "fx/BiquadFixture.h"
#include "fx/PairFixture.h"

namespace orvantesco {
namespace {

using testing_support::kRates;
using testing_support::largestDifference;
using testing_support::ModulatedPair;
using testing_support::noise;
using testing_support::PairModel;
using testing_support::PairRecipe;
using testing_support::ScopedRate;
using testing_support::Signal;

constexpr int kSections[] = {2, 4, 6};

PairRecipe recipeOf(int pairMode) {
  PairRecipe recipe;
  recipe.parallel = pairMode > 2;
  recipe.lowSections = recipe.highSections = kSections[pairMode % 3];
  recipe.drive = 0.4;
  return recipe;
}

ModulatedPair built(const PairRecipe& recipe, int pairMode) {
  auto block = std::make_unique<LPHP>(recipe.isRight);
  block->setParam(0, recipe.highCutoff);
  block->setParam(1, recipe.lowCutoff);
  block->setParam(2, recipe.drive);
  block->setParam(3, pairMode);
  return {std::move(block), recipe, 1};
}

double againstModel(const PairRecipe& recipe, int pairMode, const Signal& in) {
  ModulatedPair pair = built(recipe, pairMode);
  return largestDifference(testing_support::run(pair, in), PairModel(recipe).run(in));
}

TEST(LPHP, isItsModelInEveryModeAndRate) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    for (int mode = 0; mode < 6; ++mode) {
      EXPECT_LT(againstModel(recipeOf(mode), mode, noise(200)), 1e-12) << mode << " at " << rate;
    }
  }
}

TEST(LPHP, isItsModelUnderModulationOfCornersAndDrive) {
  for (int mode : {0, 4}) {
    PairRecipe recipe = recipeOf(mode);
    recipe.isRight = true;
    recipe.highModulation = [](int v) { return 0.2 * std::sin(0.05 * v); };
    recipe.lowModulation = [](int v) { return v % 40 < 20 ? 0.1 : -0.1; };
    recipe.driveModulation = [](int i) { return 0.8 * std::sin(0.003 * i); };
    EXPECT_LT(againstModel(recipe, mode, noise(400)), 1e-12) << mode;
  }
}

TEST(LPHP, aParallelPairLeavesAGapBetweenItsEnds) {
  for (bool parallel : {false, true}) {
    LPHP pair;
    pair.setParam(0, testing_support::knobOf(parallel ? 4000.0 : 200.0));
    pair.setParam(1, testing_support::knobOf(parallel ? 200.0 : 4000.0));
    pair.setParam(2, 0.0);
    pair.setParam(3, parallel ? 4.0 : 1.0);
    const double ends = std::max(testing_support::responseDb(pair, 60.0),
                                 testing_support::responseDb(pair, 9000.0));
    const double middle = testing_support::responseDb(pair, 900.0);
    EXPECT_GT(parallel ? ends - middle : middle - ends, 25.0);
  }
}

TEST(LPHP, driveLiftsQuietSoundsAndHoldsLoudOnes) {
  auto levelOf = [](double drive, double amplitude) {
    LPHP pair;
    pair.setParam(0, 0.0);
    pair.setParam(1, 1.0);
    pair.setParam(2, drive);
    pair.setParam(3, 0.0);
    Signal tone(600 * 32);
    for (size_t i = 0; i < tone.size(); ++i) {
      tone[i] = amplitude * std::sin(0.05 * static_cast<double>(i));
    }
    const Signal out = testing_support::run(pair, tone);
    return *std::max_element(out.end() - 3200, out.end());
  };
  // At full drive a gain of 17 before the curve and a trim of a quarter behind it.
  EXPECT_NEAR(levelOf(1.0, 0.001) / levelOf(0.0, 0.001), 17.0 / 4.0, 0.01);
  EXPECT_LT(levelOf(1.0, 1.0), 0.4);
  EXPECT_LT(levelOf(0.0, 1.0), 0.8);
  EXPECT_GT(levelOf(0.0, 1.0), 0.6);
}

TEST(LPHP, anotherSlopeClearsTheFiltersAndTheSameOneDoesNot) {
  LPHP pair;
  pair.setParam(1, 0.2);
  pair.setParam(3, 0.0);
  testing_support::run(pair, noise(50));
  pair.setParam(3, 0.0);
  EXPECT_GT(std::fabs(testing_support::run(pair, Signal(32, 0.0))[5]), 0.0);
  testing_support::run(pair, noise(50));
  testing_support::run(pair, Signal(32, 0.0));  // the drive's own memory is one sample long
  pair.setParam(3, 5.0);
  EXPECT_TRUE(testing_support::run(pair, Signal(32, 0.0)) == Signal(32, 0.0));
}

TEST(LPHP, modesBeyondTheListAreItsEnds) {
  for (auto [given, held] : {std::pair(-3.0, 0), std::pair(9.0, 5), std::pair(1e300, 5)}) {
    PairRecipe recipe = recipeOf(held);
    ModulatedPair pair = built(recipe, 1);
    pair->setParam(3, given);
    const Signal in = noise(50);
    EXPECT_LT(largestDifference(testing_support::run(pair, in), PairModel(recipe).run(in)), 1e-12);
  }
}

TEST(LPHP, aSourceTakenAwayReturnsToTheKnobs) {
  PairRecipe recipe = recipeOf(0);
  recipe.highModulation = recipe.lowModulation = recipe.driveModulation = [](int) { return 0.3; };
  ModulatedPair pair = built(recipe, 0);
  testing_support::run(pair, noise(40));
  for (int control : {0, 1, 2}) pair->setModSource(control, nullptr);
  testing_support::run(pair, Signal(2000 * 32, 0.0));
  const Signal in = noise(50);
  ModulatedPair plain = built(recipeOf(0), 0);
  testing_support::run(plain, Signal(2000 * 32, 0.0));
  EXPECT_LT(largestDifference(testing_support::run(pair, in), testing_support::run(plain, in)),
            1e-12);
}

TEST(LPHP, itsFifthParameterIsTheMix) {
  LPHP pair;
  pair.setParam(4, 0.3);
  EXPECT_EQ(pair.wetShare(), 0.3);
}

TEST(LPHP, worksInPlace) {
  ModulatedPair apart = built(recipeOf(3), 3), inPlace = built(recipeOf(3), 3);
  Signal actual = noise(20);
  const Signal expected = testing_support::run(apart, actual);
  for (size_t at = 0; at < actual.size(); at += 32) inPlace.process(&actual[at], nullptr);
  EXPECT_TRUE(actual == expected);
}

TEST(LPHP, afterARateChangeItIsAsNewlyBuilt) {
  for (int mode : {0, 5}) {
    ModulatedPair kept = built(recipeOf(mode), mode);
    testing_support::run(kept, noise(101));
    ScopedRate scope(96000.0);
    kept->rateChanged();
    kept->reset();
    ModulatedPair fresh = built(recipeOf(mode), mode);
    const Signal in = noise(100, 9);
    EXPECT_TRUE(testing_support::run(kept, in) == testing_support::run(fresh, in)) << mode;
  }
}

TEST(LPHP, badInputLeavesNothingBehind) {
  for (int mode : {0, 5}) {
    for (double value : {std::numeric_limits<double>::quiet_NaN(), double(INFINITY), -1e300}) {
      ModulatedPair pair = built(recipeOf(mode), mode);
      testing_support::run(pair, noise(30));
      Signal hit = noise(1);
      hit[7] = value;
      testing_support::run(pair, hit);
      const Signal tail = testing_support::run(pair, Signal(3000 * 32, 0.0));
      EXPECT_TRUE(
          std::all_of(tail.begin(), tail.end(), [](double s) { return std::fabs(s) < 10.0; }))
          << mode << ' ' << value;
      EXPECT_LT(std::fabs(tail.back()), 1e-9);
    }
  }
}

TEST(LPHP, withItsMemoriesClearedItIsAsNewlyBuilt) {
  for (int mode : {0, 5}) {
    ModulatedPair cleared = built(recipeOf(mode), mode), fresh = built(recipeOf(mode), mode);
    testing_support::run(cleared, noise(31));
    cleared->clearMemories();
    const Signal in = noise(50, 9);
    EXPECT_TRUE(testing_support::run(cleared, in) == testing_support::run(fresh, in)) << mode;
  }
}

TEST(LPHP, survivesAMillionfoldInput) {
  ModulatedPair pair = built(recipeOf(2), 2);
  Signal loud = noise(50);
  for (double& sample : loud) sample *= 1e6;
  const Signal out = testing_support::run(pair, loud);
  // Whatever comes in, the drive stage holds it.
  EXPECT_LT(*std::max_element(out.begin(), out.end()), 10.0);
}

TEST(LPHP, ignoresParametersThatAreNoNumbers) {
  ModulatedPair spoilt = built(recipeOf(0), 0), fresh = built(recipeOf(0), 0);
  for (int i = 0; i < 5; ++i) spoilt->setParam(i, std::numeric_limits<double>::quiet_NaN());
  const Signal in = noise(50);
  EXPECT_TRUE(testing_support::run(spoilt, in) == testing_support::run(fresh, in));
}

}  // namespace
}  // namespace orvantesco
