#include "fx/VARILPHP.h"

#include <gtest/gtest.h>

#include <limits>

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

PairRecipe recipeOf(int highSlope, int lowSlope) {
  PairRecipe recipe;
  recipe.drives = false;
  recipe.highSections = highSlope + 1;
  recipe.lowSections = lowSlope + 1;
  return recipe;
}

ModulatedPair built(const PairRecipe& recipe) {
  auto block = std::make_unique<VARILPHP>(recipe.isRight);
  block->setParam(0, recipe.highCutoff);
  block->setParam(1, recipe.highSections - 1);
  block->setParam(2, recipe.lowCutoff);
  block->setParam(3, recipe.lowSections - 1);
  return {std::move(block), recipe, 2};
}

double againstModel(const PairRecipe& recipe, const Signal& in) {
  ModulatedPair pair = built(recipe);
  return largestDifference(testing_support::run(pair, in), PairModel(recipe).run(in));
}

TEST(VARILPHP, isItsModelInEverySlopeAndRate) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    for (int slopes = 0; slopes < 16; ++slopes) {
      EXPECT_LT(againstModel(recipeOf(slopes / 4, slopes % 4), noise(100)), 1e-12) << slopes;
    }
  }
}

TEST(VARILPHP, isItsModelUnderModulationOfItsCorners) {
  PairRecipe recipe = recipeOf(1, 2);
  recipe.isRight = true;
  recipe.highModulation = [](int v) { return 0.2 * std::sin(0.05 * v); };
  recipe.lowModulation = [](int v) { return v % 40 < 20 ? 0.1 : -0.1; };
  EXPECT_LT(againstModel(recipe, noise(400)), 1e-12);
}

TEST(VARILPHP, sourcesOfTheSlopesMoveNothing) {
  ModulatedPair pair = built(recipeOf(1, 2)), plain = built(recipeOf(1, 2));
  const double source[32] = {0.5};
  const double depth = 1.0;
  for (int control : {1, 3, 4}) {
    pair->setModSource(control, source);
    pair->setModDepth(control, &depth);
  }
  const Signal in = noise(100);
  EXPECT_TRUE(testing_support::run(pair, in) == testing_support::run(plain, in));
}

TEST(VARILPHP, doesNotBendLoudSounds) {
  ModulatedPair soft = built(recipeOf(0, 0)), loud = built(recipeOf(0, 0));
  Signal in = noise(100);
  Signal scaled = testing_support::run(soft, in);
  for (double& sample : in) sample *= 1024.0;
  for (double& sample : scaled) sample *= 1024.0;
  EXPECT_LT(largestDifference(testing_support::run(loud, in), scaled), 1024.0 * 1e-12);
}

TEST(VARILPHP, anotherSlopeClearsItsFilterAndTheSameOneDoesNot) {
  VARILPHP pair;
  pair.setParam(0, 0.2);
  pair.setParam(2, 0.3);
  testing_support::run(pair, noise(50));
  pair.setParam(1, 0.9);
  pair.setParam(3, 0.9);
  EXPECT_GT(std::fabs(testing_support::run(pair, Signal(32, 0.0))[5]), 0.0);
  pair.setParam(1, 1.0);
  pair.setParam(3, 3.0);
  EXPECT_TRUE(testing_support::run(pair, Signal(32, 0.0)) == Signal(32, 0.0));
}

TEST(VARILPHP, resetAndBypassDropTheTail) {
  VARILPHP pair;
  pair.setParam(2, 0.3);
  testing_support::run(pair, noise(50));
  pair.setBypass(true);
  pair.setBypass(false);
  EXPECT_TRUE(testing_support::run(pair, Signal(32, 0.0)) == Signal(32, 0.0));
}

TEST(VARILPHP, itsFifthParameterIsTheMix) {
  VARILPHP pair;
  pair.setParam(4, 0.3);
  EXPECT_EQ(pair.wetShare(), 0.3);
}

TEST(VARILPHP, afterARateChangeItIsAsNewlyBuilt) {
  ModulatedPair kept = built(recipeOf(0, 3));
  testing_support::run(kept, noise(101));
  ScopedRate scope(96000.0);
  kept->rateChanged();
  kept->reset();
  ModulatedPair fresh = built(recipeOf(0, 3));
  const Signal in = noise(100, 9);
  EXPECT_TRUE(testing_support::run(kept, in) == testing_support::run(fresh, in));
}

TEST(VARILPHP, badInputLeavesNothingBehind) {
  for (double value : {std::numeric_limits<double>::quiet_NaN(), double(INFINITY), -1e300, 1e6}) {
    ModulatedPair pair = built(recipeOf(3, 3));
    testing_support::run(pair, noise(30));
    Signal hit = noise(1);
    hit[7] = value;
    testing_support::run(pair, hit);
    const Signal tail = testing_support::run(pair, Signal(3000 * 32, 0.0));
    EXPECT_TRUE(std::all_of(tail.begin(), tail.end(), [](double s) { return std::isfinite(s); }));
    EXPECT_LT(std::fabs(tail.back()), 1e-9) << value;
  }
}

TEST(VARILPHP, ignoresParametersThatAreNoNumbers) {
  ModulatedPair spoilt = built(recipeOf(1, 1)), fresh = built(recipeOf(1, 1));
  for (int i = 0; i < 5; ++i) spoilt->setParam(i, std::numeric_limits<double>::quiet_NaN());
  const Signal in = noise(50);
  EXPECT_TRUE(testing_support::run(spoilt, in) == testing_support::run(fresh, in));
}

}  // namespace
}  // namespace orvantesco
