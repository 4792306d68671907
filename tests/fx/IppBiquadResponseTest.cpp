#include <gtest/gtest.h>

#include "fx/BiquadFixture.h"

// The settled response of the filter against the analogue prototypes that it stands for.

namespace orvantesco {
namespace {

using testing_support::FilterRecipe;
using testing_support::knobOf;
using testing_support::kRates;
using testing_support::RecipeFilter;
using testing_support::responseDb;
using testing_support::ScopedRate;
using C = std::complex<double>;

constexpr double kCornerHz = 1000.0;
constexpr double kThreeHz[] = {300.0, 1000.0, 4000.0};

/// The prototype's frequency, 1 at the corner: both go through the same bilinear warp. The corner
/// is the one that the filter's frequency curve gives, 1e-5 beside the wish.
double prototypeFrequency(double hz) {
  return std::tan(std::numbers::pi * hz / sampleRate) /
         std::tan(std::numbers::pi * kCornerHz / sampleRate);
}

double dbOf(C response) { return 20.0 * std::log10(std::abs(response)); }

C expected(int mode, double hz, double q, double amplitude) {
  const C s(0.0, prototypeFrequency(hz));
  const C low = 1.0 / (s * s + s / q + 1.0);
  const double root = std::sqrt(amplitude);
  switch (mode) {
    case 3:
      return s * s * low;
    case 6:
      return s / q * low;
    case 10:
      return (s * s + s * amplitude / q + 1.0) / (s * s + s / (amplitude * q) + 1.0);
    case 20:
      return (s * s - s / q + 1.0) * low;
    case 23:
      return amplitude * (s * s + s * root / q + amplitude) /
             (amplitude * s * s + s * root / q + 1.0);
    case 24:
      return amplitude * (amplitude * s * s + s * root / q + 1.0) /
             (s * s + s * root / q + amplitude);
    default:
      return low;
  }
}

TEST(IppBiquadResponse, isTheSecondOrderPrototypeOfItsMode) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    for (int mode : {0, 3, 6, 10, 20, 23, 24}) {
      for (double hz : kThreeHz) {
        FilterRecipe recipe;
        recipe.mode = mode;
        recipe.cutoff = knobOf(kCornerHz);
        recipe.resonance = 0.5;
        recipe.gain = mode == 10 ? 0.5 : 1.7;
        RecipeFilter filter(recipe);
        const double amplitude = mode == 10 ? std::pow(10.0, 12.0 / 40.0) : 1.7;
        const double db = dbOf(expected(mode, hz, 5.45 / 2.0, amplitude));
        EXPECT_NEAR(responseDb(filter, hz), db, 0.01) << mode << " at " << hz << ", " << rate;
      }
    }
  }
}

TEST(IppBiquadResponse, allpassTurnsThePhaseByHalfACircleAtItsCorner) {
  FilterRecipe recipe;
  recipe.mode = 20;
  recipe.cutoff = knobOf(kCornerHz);
  RecipeFilter filter(recipe);
  testing_support::run(filter, testing_support::Signal(4000 * 32, 0.0));
  const auto answer = testing_support::run(filter, testing_support::impulse(500));
  C sum = 0.0;
  for (size_t n = 0; n < answer.size(); ++n) {
    sum += answer[n] *
           std::polar(1.0, -2.0 * std::numbers::pi * kCornerHz * static_cast<double>(n) / 44100.0);
  }
  EXPECT_NEAR(sum.real(), -1.0, 1e-3);
  EXPECT_NEAR(sum.imag(), 0.0, 1e-3);
}

TEST(IppBiquadResponse, chebyshevModesAreEquiripple) {
  for (auto [mode, order] :
       {std::pair(15, 2), std::pair(16, 4), std::pair(18, 2), std::pair(19, 4)}) {
    for (double hz : kThreeHz) {
      FilterRecipe recipe;
      recipe.mode = mode;
      recipe.cutoff = knobOf(kCornerHz);
      recipe.resonance = 0.5;  // 8 dB of ripple
      RecipeFilter filter(recipe);
      const double w = mode >= 18 ? 1.0 / prototypeFrequency(hz) : prototypeFrequency(hz);
      const double polynomial =
          w <= 1.0 ? std::cos(order * std::acos(w)) : std::cosh(order * std::acosh(w));
      const double square = (std::pow(10.0, 0.8) - 1.0) * polynomial * polynomial;
      EXPECT_NEAR(responseDb(filter, hz), -10.0 * std::log10(1.0 + square), 0.02)
          << mode << " at " << hz;
    }
  }
}

TEST(IppBiquadResponse, everyStageAddsTwelveDecibelAnOctave) {
  for (int stages : {1, 2, 4}) {
    FilterRecipe low;
    low.stages = stages;
    low.cutoff = knobOf(100.0);
    RecipeFilter lower(low), upper(low);
    const double fall = responseDb(lower, 800.0) - responseDb(upper, 1600.0);
    EXPECT_NEAR(fall, 12.04 * stages, 0.25 * stages) << stages;

    FilterRecipe high = low;
    high.mode = 3;
    high.cutoff = knobOf(8000.0);
    RecipeFilter below(high), above(high);
    EXPECT_NEAR(responseDb(above, 400.0) - responseDb(below, 200.0), 12.04 * stages, 0.25 * stages);
  }
}

TEST(IppBiquadResponse, spreadMovesTheChannelsApart) {
  FilterRecipe recipe;
  recipe.cutoff = 0.5;
  recipe.spread = 0.5;  // a quarter of the range, once squared
  RecipeFilter left(recipe);
  recipe.isRight = true;
  RecipeFilter right(recipe);
  const double atCorner = 20.0 * std::log10(0.725);
  EXPECT_NEAR(responseDb(left, 50.0 * std::pow(400.0, 0.75)), atCorner, 0.01);
  EXPECT_NEAR(responseDb(right, 50.0 * std::pow(400.0, 0.25)), atCorner, 0.01);
}

TEST(IppBiquadResponse, splitModeIsLowOnTheLeftAndHighOnTheRight) {
  FilterRecipe recipe;
  recipe.mode = 22;
  RecipeFilter left(recipe);
  EXPECT_LT(responseDb(left, 15000.0), -30.0);
  recipe.isRight = true;
  RecipeFilter right(recipe);
  EXPECT_LT(responseDb(right, 100.0), -30.0);
}

TEST(IppBiquadResponse, theVowelsPeaksStandAtTheirFormants) {
  FilterRecipe recipe;
  recipe.mode = 21;
  recipe.cutoff = 0.0;
  recipe.gain = 1.0;
  for (double hz : {270.0, 2290.0}) {
    RecipeFilter at(recipe), below(recipe), above(recipe);
    const double peak = responseDb(at, hz);
    EXPECT_GT(peak, 20.0);
    EXPECT_GT(peak, responseDb(below, hz * 0.8) + 3.0);
    EXPECT_GT(peak, responseDb(above, hz * 1.25) + 3.0);
  }
}

}  // namespace
}  // namespace orvantesco
