#include "fx/QLMSVF.h"

#include <gtest/gtest.h>

#include <limits>

#include "fx/SvfFixture.h"

namespace orvantesco {
namespace {

using testing_support::FilterRecipe;
using testing_support::kRates;
using testing_support::kSvfModes;
using testing_support::largestDifference;
using testing_support::noise;
using testing_support::RecipeSvf;
using testing_support::ScopedRate;
using testing_support::Signal;
using testing_support::SvfModel;

double againstModel(const FilterRecipe& recipe, const Signal& in) {
  RecipeSvf filter(recipe);
  return largestDifference(testing_support::run(filter, in), SvfModel(recipe).run(in));
}

double peakOf(const Signal& signal) {
  double peak = 0.0;
  for (double sample : signal) peak = std::max(peak, std::fabs(sample));
  return peak;
}

TEST(QLMSVF, isItsModelInEveryModeAndRate) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    for (int mode : kSvfModes) {
      FilterRecipe recipe;
      recipe.mode = mode;
      recipe.cutoff = 0.6;
      recipe.resonance = 0.7;
      EXPECT_LT(againstModel(recipe, noise(200)), 1e-12) << mode << " at " << rate;
    }
  }
}

TEST(QLMSVF, isItsModelAtTheEndsOfItsControls) {
  for (double cutoff : {0.0, 0.02, 1.0}) {
    for (double resonance : {0.0, 1.0}) {
      for (double spread : {-1.0, 0.4}) {
        FilterRecipe recipe;
        recipe.mode = 7;
        recipe.isRight = true;
        recipe.cutoff = cutoff;
        recipe.resonance = resonance;
        recipe.spread = spread;
        EXPECT_LT(againstModel(recipe, noise(200)), 1e-12) << cutoff << ' ' << resonance;
      }
    }
  }
}

TEST(QLMSVF, isItsModelUnderModulationOfEveryControl) {
  for (int mode : kSvfModes) {
    FilterRecipe recipe;
    recipe.mode = mode;
    recipe.isRight = true;
    recipe.cutoff = 0.6;
    recipe.resonance = 0.5;
    recipe.modulation = {[](int v) { return 0.3 * std::sin(0.05 * v); },
                         [](int v) { return 0.9 * std::sin(0.031 * v); },
                         [](int v) { return v % 40 < 20 ? 0.2 : -0.2; },
                         [](int v) { return 3.0 * std::sin(0.013 * v); }};
    EXPECT_LT(againstModel(recipe, noise(600)), 1e-12) << mode;
  }
}

TEST(QLMSVF, isItsModelWhereItIsDrivenHard) {
  FilterRecipe recipe;
  recipe.resonance = 0.9;
  Signal loud = noise(200);
  for (double& sample : loud) sample *= 40.0;
  EXPECT_LT(againstModel(recipe, loud), 40.0 * 1e-12);
}

TEST(QLMSVF, answersImpulsesAndSilenceAsItsModel) {
  FilterRecipe recipe;
  recipe.mode = 6;
  recipe.resonance = 0.8;
  EXPECT_LT(againstModel(recipe, testing_support::impulse(300)), 1e-12);
  RecipeSvf filter(recipe);
  EXPECT_TRUE(testing_support::run(filter, Signal(64 * 32, 0.0)) == Signal(64 * 32, 0.0));
}

TEST(QLMSVF, aTailEndsInZerosAndNotInDenormals) {
  for (int mode : {0, 2, 6}) {
    FilterRecipe recipe;
    recipe.mode = mode;
    recipe.cutoff = 0.7;
    RecipeSvf filter(recipe);
    testing_support::run(filter, noise(20));
    const Signal tail = testing_support::run(filter, Signal(1000 * 32, 0.0));
    EXPECT_EQ(tail.back(), 0.0) << mode;
    EXPECT_TRUE(std::none_of(tail.begin(), tail.end(), [](double s) {
      return std::fpclassify(s) == FP_SUBNORMAL;
    })) << mode;
  }
}

TEST(QLMSVF, worksInPlace) {
  FilterRecipe recipe;
  RecipeSvf apart(recipe), inPlace(recipe);
  const Signal expected = testing_support::run(apart, noise(20));
  Signal actual = noise(20);
  for (size_t at = 0; at < actual.size(); at += 32) inPlace.process(&actual[at], nullptr);
  EXPECT_TRUE(actual == expected);
}

TEST(QLMSVF, withoutInputSingsAtFullResonanceAtASteadyLevel) {
  FilterRecipe recipe;
  recipe.mode = 6;
  recipe.cutoff = 0.5;
  recipe.resonance = 1.0;
  RecipeSvf filter(recipe);
  testing_support::run(filter, noise(1));
  testing_support::run(filter, Signal(3000 * 32, 0.0));
  const double early = peakOf(testing_support::run(filter, Signal(500 * 32, 0.0)));
  const double late = peakOf(testing_support::run(filter, Signal(500 * 32, 0.0)));
  EXPECT_GT(late, 0.1);
  EXPECT_LT(late, 2.0);
  EXPECT_NEAR(late, early, 1e-3);

  recipe.resonance = 0.9;
  RecipeSvf quieter(recipe);
  testing_support::run(quieter, noise(1));
  EXPECT_LT(peakOf(testing_support::run(quieter, Signal(3000 * 32, 0.0))), 1.0);
  EXPECT_LT(peakOf(testing_support::run(quieter, Signal(500 * 32, 0.0))), 1e-6);
}

TEST(QLMSVF, staysBoundedUnderFastSweepsAtFullResonance) {
  for (double rate : {32000.0, 44100.0, 96000.0}) {
    ScopedRate scope(rate);
    for (int mode : kSvfModes) {
      FilterRecipe recipe;
      recipe.mode = mode;
      recipe.resonance = 1.0;
      recipe.modulation[0] = [](int v) { return v % 6 < 3 ? 2.0 : -2.0; };
      RecipeSvf filter(recipe);
      EXPECT_LT(peakOf(testing_support::run(filter, noise(500))), 100.0) << mode << " at " << rate;
    }
  }
}

TEST(QLMSVF, anotherModeClearsTheMemoryAndTheSameOneDoesNot) {
  QLMSVF filter;
  filter.setParam(3, 0.0);
  filter.setParam(0, 0.4);
  testing_support::run(filter, noise(50));
  filter.setParam(3, 0.9);
  EXPECT_EQ(filter.filterMode(), 0);
  EXPECT_FALSE(testing_support::run(filter, Signal(32, 0.0)) == Signal(32, 0.0));
  filter.setParam(3, 6.0);
  EXPECT_EQ(filter.filterMode(), 6);
  EXPECT_TRUE(testing_support::run(filter, Signal(32, 0.0)) == Signal(32, 0.0));
}

TEST(QLMSVF, anotherModeAtOnceHasItsResonance) {
  FilterRecipe recipe;
  recipe.mode = 2;  // without resonance: its stage was never computed
  recipe.resonance = 0.8;
  RecipeSvf filter(recipe);
  testing_support::run(filter, Signal(2001 * 32, 0.0));
  filter->setParam(3, 6.0);
  recipe.mode = 6;
  RecipeSvf other(recipe);
  testing_support::run(other, Signal(2000 * 32, 0.0));
  const Signal in = noise(40);
  EXPECT_LT(largestDifference(testing_support::run(filter, in), testing_support::run(other, in)),
            1e-12);
}

TEST(QLMSVF, resetAndBypassDropTheTail) {
  FilterRecipe recipe;
  RecipeSvf filter(recipe);
  testing_support::run(filter, noise(50));
  filter->reset();
  EXPECT_TRUE(testing_support::run(filter, Signal(32, 0.0)) == Signal(32, 0.0));
  testing_support::run(filter, noise(50));
  filter->setBypass(true);
  Signal untouched(32, 0.125);
  Signal in = noise(1);
  filter.process(in.data(), untouched.data());
  EXPECT_TRUE(untouched == Signal(32, 0.125));
  filter->setBypass(false);
  EXPECT_TRUE(testing_support::run(filter, Signal(32, 0.0)) == Signal(32, 0.0));
}

TEST(QLMSVF, itsFifthParameterIsTheMix) {
  QLMSVF filter;
  filter.setParam(4, 0.3);
  EXPECT_EQ(filter.wetShare(), 0.3);
}

TEST(QLMSVF, afterARateChangeItIsAsNewlyBuilt) {
  for (int mode : kSvfModes) {
    FilterRecipe recipe;
    recipe.mode = mode;
    recipe.cutoff = 0.4;
    recipe.resonance = 0.5;
    recipe.spread = 0.2;
    double source[32] = {0.25};
    auto connect = [&source](RecipeSvf& filter) {
      for (int i = 0; i < 4; ++i) {
        filter->setModSource(i, source);
        filter->setModDepth(i, source);
      }
    };
    RecipeSvf kept(recipe);
    connect(kept);
    testing_support::run(kept, noise(101));
    ScopedRate scope(96000.0);
    kept->rateChanged();
    kept->reset();
    RecipeSvf fresh(recipe);
    connect(fresh);
    const Signal in = noise(100, 9);
    EXPECT_TRUE(testing_support::run(kept, in) == testing_support::run(fresh, in)) << mode;
  }
}

TEST(QLMSVF, recoversFromBadInputAsNewlyBuilt) {
  for (int mode : kSvfModes) {
    for (double value : {std::numeric_limits<double>::quiet_NaN(), double(INFINITY), -1e13}) {
      FilterRecipe recipe;
      recipe.mode = mode;
      recipe.resonance = 0.5;
      RecipeSvf hurt(recipe), fresh(recipe);
      testing_support::run(hurt, noise(1030));
      Signal hit = noise(1);
      hit[7] = value;
      EXPECT_TRUE(testing_support::run(hurt, hit) == Signal(32, 0.0)) << mode << ' ' << value;
      const Signal in = noise(60, 5);
      EXPECT_TRUE(testing_support::run(hurt, in) == testing_support::run(fresh, in)) << mode;
    }
  }
}

TEST(QLMSVF, survivesAMillionfoldInput) {
  for (int mode : kSvfModes) {
    FilterRecipe recipe;
    recipe.mode = mode;
    recipe.resonance = 0.9;
    RecipeSvf filter(recipe);
    Signal loud = noise(50);
    for (double& sample : loud) sample *= 1e6;
    testing_support::run(filter, loud);
    const Signal tail = testing_support::run(filter, Signal(2000 * 32, 0.0));
    EXPECT_LT(std::fabs(tail.back()), 1e-9) << mode;
  }
}

TEST(QLMSVF, ignoresParametersThatAreNoNumbers) {
  FilterRecipe recipe;
  RecipeSvf spoilt(recipe), fresh(recipe);
  for (int i = 0; i < 5; ++i) {
    spoilt->setParam(i, std::numeric_limits<double>::quiet_NaN());
    spoilt->setParam(i, INFINITY);
  }
  const Signal in = noise(50);
  EXPECT_TRUE(testing_support::run(spoilt, in) == testing_support::run(fresh, in));
}

}  // namespace
}  // namespace orvantesco
