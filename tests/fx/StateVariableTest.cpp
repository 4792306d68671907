#include "fx/StateVariable.h"

#include <gtest/gtest.h>

#include <complex>
#include <numbers>

#include "fx/SvfFixture.h"

// The formulas of the state-variable filter, and its response against the analogue prototypes.

namespace orvantesco {
namespace {

using testing_support::FilterRecipe;
using testing_support::kRates;
using testing_support::RecipeSvf;
using testing_support::ScopedRate;
using testing_support::Signal;
using C = std::complex<double>;

TEST(StateVariable, theTangentIsWithinItsBound) {
  double largest = 0.0;
  for (double w = 0.002; w < 0.91; w += 0.0001) {
    const double exact = std::tan(std::numbers::pi / 2.0 * w);
    largest = std::max(largest, std::fabs(svfTangent(w) / exact - 1.0));
  }
  EXPECT_LT(largest, 2e-7);
}

TEST(StateVariable, theSaturationIsWithinItsBounds) {
  double near = 0.0, far = 0.0;
  for (double x = -5.0; x <= 5.0; x += 0.001) {
    const double error = std::fabs(padeTanh(x) - std::tanh(x));
    (std::fabs(x) <= 2.5 ? near : far) = std::max(std::fabs(x) <= 2.5 ? near : far, error);
  }
  EXPECT_LT(near, 2e-7);
  EXPECT_LT(far, 1.1e-4);
  EXPECT_NEAR(padeTanh(1e8), 1e8 / 28.0, 1.0);
  EXPECT_EQ(padeTanh(0.0), 0.0);
}

/// Amplitude response to an impulse too small for the saturation to bend.
double smallSignalDb(RecipeSvf& filter, double hz) {
  testing_support::run(filter, Signal(600 * 32, 0.0));
  Signal in = testing_support::impulse(500);
  in[0] = 1e-4;
  const Signal answer = testing_support::run(filter, in);
  C sum = 0.0;
  for (size_t n = 0; n < answer.size(); ++n) {
    sum += answer[n] *
           std::polar(1e4, -2.0 * std::numbers::pi * hz * static_cast<double>(n) / sampleRate);
  }
  return 20.0 * std::log10(std::abs(sum));
}

C output(int mode, C s, C denominator) {
  switch (mode) {
    case 3:
    case 4:
    case 5:
      return s * s / denominator;
    case 6:
    case 7:
      return s / denominator;
    case 9:
      return (s * s + 1.0) / denominator;
    case 10:
      return 1.0 + s / denominator;
    default:
      return 1.0 / denominator;
  }
}

/// The prototype; its two stages differ in their damping, and modes without resonance have the
/// second stage's alone.
double expectedDb(int mode, double hz, double cornerHz, double inverseQ) {
  const double w = std::tan(std::numbers::pi * hz / sampleRate) /
                   std::tan(std::numbers::pi * cornerHz / sampleRate);
  const C s(0.0, w);
  const C first = output(mode, s, s * s + inverseQ * s + 1.0);
  const C second = output(mode, s, s * s + s + 1.0);
  const bool isPlain = mode == 2 || mode == 5 || mode == 8 || mode > 10;
  const bool isDouble = mode == 0 || mode == 3 || mode == 7 || mode == 9;
  return 20.0 * std::log10(std::abs(isPlain ? second : isDouble ? first * second : first));
}

TEST(QLMSVFResponse, isThePrototypeOfItsMode) {
  const double cornerHz = 1000.0;
  for (double rate : kRates) {
    ScopedRate scope(rate);
    for (int mode : testing_support::kSvfModes) {
      for (double hz : {300.0, 900.0, 4000.0}) {
        FilterRecipe recipe;
        recipe.mode = mode;
        recipe.cutoff = testing_support::knobOf(cornerHz);
        recipe.resonance = 0.6;
        const double inverseQ = 1.0 - (1.1 - 0.1 * std::pow(recipe.cutoff, 3)) * 0.6;
        RecipeSvf filter(recipe);
        EXPECT_NEAR(smallSignalDb(filter, hz), expectedDb(mode, hz, cornerHz, inverseQ), 0.02)
            << mode << " at " << hz << ", " << rate;
      }
    }
  }
}

TEST(QLMSVFResponse, itsCornerStopsAtTheCeilingAndTheFloor) {
  ScopedRate scope(32000.0);
  FilterRecipe recipe;
  recipe.mode = 2;  // a plain low-pass has 0 dB of loss at its corner: 1/Q is 1
  recipe.cutoff = 1.0;
  RecipeSvf highest(recipe);
  EXPECT_NEAR(smallSignalDb(highest, 32000.0 * 20000.0 / 44100.0), 0.0, 0.01);
  setRateValues(96000.0);
  recipe.cutoff = 0.0;
  RecipeSvf lowest(recipe);
  EXPECT_NEAR(smallSignalDb(lowest, 96.0), 0.0, 0.02);
}

TEST(QLMSVFResponse, theResonanceOfTheSecondStageIsFixed) {
  FilterRecipe recipe;
  recipe.cutoff = testing_support::knobOf(1000.0);
  for (double resonance : {0.0, 0.5}) {
    recipe.resonance = resonance;
    recipe.mode = 0;
    RecipeSvf both(recipe);
    recipe.mode = 1;
    RecipeSvf one(recipe);
    EXPECT_NEAR(smallSignalDb(both, 2000.0) - smallSignalDb(one, 2000.0),
                expectedDb(2, 2000.0, 1000.0, 1.0), 0.01);
  }
}

}  // namespace
}  // namespace orvantesco
