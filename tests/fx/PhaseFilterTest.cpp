#include "fx/PhaseFilter.h"

#include <complex>
#include <numbers>

#include "delay/DelayTestSupport.h"
#include "fx/BiquadFixture.h"
#include "fx/EffectCatalogue.h"
#include "fx/EffectPromises.h"

namespace orvantesco {
namespace {

using namespace testing_support;

struct PhaseRecipe {
  double frequency = 0.5;
  double resonance = 0.0;
  double spread = 0.0;
  double poles = 0.5;
  bool isRight = false;
  Modulations modulations{};
};

Maker makerOf(const PhaseRecipe& recipe) {
  return [recipe] {
    auto filter = std::make_unique<PhaseFilter>(recipe.isRight, 5);
    const double values[] = {recipe.frequency, recipe.resonance, recipe.spread, recipe.poles, 1.0};
    for (int k = 0; k < 5; ++k) filter->setParam(k, values[k]);
    return filter;
  };
}

/// The filter sample by sample, with the memory of each section's input written out.
class PhaseModel {
 public:
  explicit PhaseModel(const PhaseRecipe& start)
      : recipe(start), stages(static_cast<size_t>(4.0 * start.poles + 3.0)) {}

  Signal run(const Signal& in) {
    Signal out;
    for (double x : in) out.push_back(tick(x));
    return out;
  }

 private:
  double tick(double input) {
    if (samples % 32 == 0) control(static_cast<int>(samples / 32));
    ++samples;
    const double k = glide.tick(target);
    state[0] = state[stages] * fed + input;
    for (size_t i = 1; i <= stages; ++i) {
      const double old = delay[i - 1];
      delay[i - 1] = state[i - 1];
      state[i] = (state[i - 1] + state[i]) * k - old;
    }
    return state[stages] * (1.0 - 0.65 * fed);
  }

  void control(int vector) {
    const double sign = recipe.isRight ? -1.0 : 1.0;
    const double c = std::clamp(recipe.frequency + recipe.spread * sign +
                                    valueOf(recipe.modulations, 0, vector) +
                                    valueOf(recipe.modulations, 2, vector) * sign,
                                0.0001, 1.0);
    target = std::min(1.0 - std::pow(c, 4.0), 0.99999);
    fed = 0.8 * std::clamp(recipe.resonance + valueOf(recipe.modulations, 1, vector), 0.0, 1.0);
  }

  PhaseRecipe recipe;
  size_t stages;
  PlainGlide glide{1.0, sampleRate};
  double target = 0.0, fed = 0.0;
  long samples = 0;
  double state[8] = {}, delay[8] = {};
};

double againstModel(const PhaseRecipe& recipe, const Signal& in) {
  const auto filter = makerOf(recipe)();
  ModulatedBlock modulated(*filter, recipe.modulations);
  return largestDifference(run(modulated, in), PhaseModel(recipe).run(in));
}

TEST(PhaseFilter, isItsModelWithEveryCountOfPolesAndRate) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    for (double poles : {0.0, 0.25, 0.5, 0.75, 1.0}) {
      for (double frequency : {0.1, 0.5, 0.9}) {
        PhaseRecipe recipe{frequency, 0.7, 0.1, poles};
        EXPECT_LT(againstModel(recipe, noise(100)), 1e-12) << poles << " at " << rate;
        EXPECT_LT(againstModel(recipe, impulse(100)), 1e-12) << poles << " at " << rate;
      }
    }
  }
}

TEST(PhaseFilter, isItsModelUnderModulation) {
  for (bool isRight : {false, true}) {
    PhaseRecipe recipe{0.5, 0.5, 0.1, 1.0, isRight};
    recipe.modulations = {{0, [](int v) { return 0.3 * std::sin(0.05 * v); }},
                          {1, [](int v) { return 0.9 * std::sin(0.031 * v); }},
                          {2, [](int v) { return v % 40 < 20 ? 0.1 : -0.1; }},
                          {3, [](int v) { return 0.4 * std::sin(0.013 * v); }}};
    EXPECT_LT(againstModel(recipe, noise(300)), 1e-12) << isRight;
  }
}

std::complex<double> sectionAt(double hz, double k) {
  const std::complex<double> z = std::polar(1.0, -2.0 * std::numbers::pi * hz / sampleRate);
  return (k - z) / (1.0 - k * z);
}

TEST(PhaseFilter, isARowOfAllPassesWithoutResonance) {
  const PhaseRecipe recipe{0.4, 0.0, 0.0, 0.5};
  for (double hz : {30.0, 300.0, 3000.0, 15000.0}) {
    const auto filter = makerOf(recipe)();
    EXPECT_NEAR(responseDb(*filter, hz, 100, 300), 0.0, 1e-9) << hz;
  }
}

TEST(PhaseFilter, resonanceFeedsBackAndLowersTheOutput) {
  const PhaseRecipe recipe{0.6, 1.0, 0.0, 0.25};
  for (double hz : {50.0, 500.0, 5000.0}) {
    const auto filter = makerOf(recipe)();
    const std::complex<double> z = std::polar(1.0, -2.0 * std::numbers::pi * hz / sampleRate);
    const auto row = std::pow(sectionAt(hz, 1.0 - std::pow(0.6, 4.0)), 4);
    // A knob at 1 sends 0.8 round and leaves 0.48 of the output.
    const double expected = 20.0 * std::log10(0.48 * std::abs(row / (1.0 - 0.8 * z * row)));
    EXPECT_NEAR(responseDb(*filter, hz, 100, 400), expected, 1e-6) << hz;
  }
}

// The read-out rounds to the nearest count, what runs is cut: between two numbers a user reads one
// pole more than he hears.
TEST(PhaseFilter, polesAreCutWhereTheReadoutRounds) {
  PhaseFilter filter(false, 5);
  EXPECT_EQ(filter.stageCount(), 5);
  const std::tuple<double, int, double> expected[] = {
      {0.0, 3, 3.0}, {0.2, 3, 4.0}, {0.25, 4, 4.0}, {0.99, 6, 7.0}, {1.0, 7, 7.0}};
  for (auto [value, runs, reads] : expected) {
    filter.setParam(3, value);
    EXPECT_EQ(filter.stageCount(), runs) << value;
    double shown = value, native = value;
    fxParamScale(34, 3, &shown, &native);
    EXPECT_EQ(shown, reads) << value;
  }
  filter.setParam(3, 5.0);
  EXPECT_EQ(filter.stageCount(), 7);
  filter.setParam(3, -5.0);
  EXPECT_EQ(filter.stageCount(), 1);
  EXPECT_EQ(PhaseFilter(false, 12).stageCount(), 7);
}

TEST(PhaseFilter, choosingPolesClearsTheMemory) {
  const auto filter = makerOf({0.3, 0.9, 0.0, 0.5})();
  run(*filter, noise(50));
  filter->setParam(3, 0.5);
  const Signal silence(20 * kVectorLength, 0.0);
  EXPECT_TRUE(run(*filter, silence) == silence);
}

TEST(PhaseFilter, anOffsetDoesNotLastAtTheLowestFrequency) {
  const auto filter = makerOf({0.0, 0.0, 0.0, 0.0})();
  run(*filter, Signal(2000 * kVectorLength, 1.0));
  // Ten times 1 / (1 - 0.99999) samples; with nothing but rounding below 1 it would stay as it is.
  const Signal tail = run(*filter, Signal(31250 * kVectorLength, 0.0));
  EXPECT_LT(std::fabs(tail.back()), 0.02 * std::fabs(tail.front()));
}

TEST(PhaseFilter, theLastKnobIsTheMix) {
  PhaseFilter filter;
  filter.setParam(4, 0.3);
  EXPECT_EQ(filter.wetShare(), 0.3);
  EXPECT_TRUE(fifthParamIsMix(34));
}

TEST(PhaseFilter, keepsThePromisesOfABlock) {
  const Maker make = makerOf({0.4, 0.8, 0.1, 1.0});
  expectFreshAfterRateChange(make);
  expectOneResultFromEveryCall(make);
  expectNoTailAfterBypass(make);
  expectFreshAfterBadInput(make);
  expectLoudImpulseDiesAway(make, 1000);
  expectParametersThatAreNoNumbersIgnored(make);
  for (int control : {0, 1, 2}) expectKnobAfterSourceGoesAway(make, control);
}

}  // namespace
}  // namespace orvantesco
