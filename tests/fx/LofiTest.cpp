#include "fx/Lofi.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <limits>
#include <numbers>
#include <set>

#include "fx/FxTestSupport.h"

namespace orvantesco {
namespace {

using testing_support::impulse;
using testing_support::kRates;
using testing_support::largestDifference;
using testing_support::noise;
using testing_support::run;
using testing_support::ScopedRate;
using testing_support::Signal;

constexpr int kControls = 4;

struct Recipe {
  std::array<double, kControls> knobs{};  ///< drive, noise, downsample, bitcrush
  std::array<std::function<double(int)>, kControls> sources;  ///< by the vector's number
};

/// The effect set as a recipe says, with the vectors that modulate it.
class RecipeLofi {
 public:
  explicit RecipeLofi(const Recipe& lofiRecipe) : recipe(lofiRecipe), lofi(false) {
    for (size_t i = 0; i < kControls; ++i) {
      lofi.setParam(static_cast<int>(i), recipe.knobs[i]);
      if (!recipe.sources[i]) continue;
      lofi.setModSource(static_cast<int>(i), values[i].data());
      lofi.setModDepth(static_cast<int>(i), &depth);
    }
  }
  RecipeLofi(const RecipeLofi&) = delete;
  RecipeLofi& operator=(const RecipeLofi&) = delete;

  void process(double* in, double* out) {
    for (size_t i = 0; i < kControls; ++i) {
      if (recipe.sources[i]) values[i][0] = recipe.sources[i](vector);
    }
    ++vector;
    lofi.process(in, out);
  }
  Lofi* operator->() { return &lofi; }

 private:
  Recipe recipe;
  std::array<std::array<double, kVectorLength>, kControls> values{};
  double depth = 1.0;
  int vector = 0;
  Lofi lofi;
};

/// One sample after the other. The noise is drawn from the same generator, started alike.
class Model {
 public:
  explicit Model(const Recipe& lofiRecipe) : recipe(lofiRecipe) { draw.seed(1); }

  Signal run(const Signal& in) {
    Signal out(in.size());
    for (size_t at = 0; at < in.size(); at += 32) vectorOf(&in[at], &out[at]);
    return out;
  }

 private:
  static double glide(double ms, double x, double& y) {
    const double a = std::exp(-2.0 * std::numbers::pi / (ms * 0.001 * sampleRate));
    y = x * (1.0 - a) + a * y + 1e-15;
    return y - 1e-15;
  }
  double modulated(size_t i, double base) const {
    return recipe.sources[i] ? std::clamp(base + recipe.sources[i](vector), 0.0, 1.0) : base;
  }

  void vectorOf(const double* in, double* out) {
    const double d = modulated(0, glide(10.0, recipe.knobs[0], driveState));
    for (size_t i = 0; i < 32; ++i) out[i] = std::tanh(in[i] * (7.0 * d + 1.0));
    noisy(out);
    const double rate = 1.0 - std::pow(modulated(2, recipe.knobs[2]), 0.125) * 0.99;
    for (size_t i = 0; i < 32 && rate != 1.0; ++i) {
      phase += rate;
      if (phase >= 1.0) {
        phase -= 1.0;
        hold = out[i];
      }
      out[i] = hold;
    }
    const double levels =
        std::pow(2.0, (1.0 - std::pow(modulated(3, recipe.knobs[3]), 0.2)) * 22.0 + 2.0);
    for (size_t i = 0; i < 32 && levels < 16777216.0; ++i) {
      out[i] = std::nearbyint(out[i] * levels) / levels;
    }
    ++vector;
  }

  void noisy(double* out) {
    const double share = modulated(1, recipe.knobs[1]);
    if (share == 0.0) return;
    double mean = 0.0;
    for (size_t i = 0; i < 32; ++i) mean += std::fabs(out[i]) / 32.0;
    const double level = glide(5.0, mean, levelState);
    for (size_t i = 0; i < 32; ++i) {
      const double n = 2.0 * draw.next() / 32767.0 - 1.0;
      out[i] = out[i] * (1.0 - share) + n * level * share;
    }
  }

  Recipe recipe;
  RandomDraw draw;
  double driveState = 0.0, levelState = 0.0, phase = 0.0, hold = 0.0;
  int vector = 0;
};

double againstModel(const Recipe& recipe, const Signal& in) {
  RecipeLofi lofi(recipe);
  return largestDifference(run(lofi, in), Model(recipe).run(in));
}

TEST(Lofi, isItsModelAtEveryRate) {
  const Recipe recipes[] = {{{0.0, 0.0, 0.0, 0.0}, {}}, {{0.7, 0.0, 0.0, 0.0}, {}},
                            {{0.2, 0.6, 0.0, 0.0}, {}}, {{1.0, 0.0, 0.4, 0.0}, {}},
                            {{0.0, 0.0, 1.0, 0.0}, {}}, {{0.3, 0.0, 0.0, 0.3}, {}},
                            {{0.5, 0.3, 0.1, 0.0}, {}}, {{0.5, 1.0, 0.9, 0.0}, {}}};
  for (double rate : kRates) {
    ScopedRate scope(rate);
    for (const Recipe& recipe : recipes) {
      EXPECT_LT(againstModel(recipe, noise(150)), 1e-12) << rate;
      EXPECT_LT(againstModel(recipe, impulse(50)), 1e-12) << rate;
    }
  }
}

TEST(Lofi, isItsModelUnderModulationOfEveryControl) {
  for (size_t control = 0; control < kControls; ++control) {
    Recipe recipe;
    recipe.knobs = {0.3, 0.2, 0.3, 0.2};
    recipe.sources[control] = [](int v) { return 0.9 * std::sin(0.1 * v); };
    EXPECT_LT(againstModel(recipe, noise(200)), 1e-12) << control;
  }
}

TEST(Lofi, isNeverLinear) {
  RecipeLofi lofi({});
  const Signal in = noise(4);
  const Signal out = run(lofi, in);
  for (size_t i = 0; i < in.size(); ++i) ASSERT_NEAR(out[i], std::tanh(in[i]), 1e-13);
}

TEST(Lofi, withoutBitcrushThereIsNoQuantiserAndAtItsTopFourLevelsAUnit) {
  RecipeLofi open({});
  Recipe crushed;
  crushed.knobs[3] = 1.0;
  RecipeLofi four(crushed);
  const Signal in(64, 1e-9);
  EXPECT_NEAR(run(open, in)[40], 1e-9, 1e-20);
  for (double level : run(four, noise(40))) ASSERT_EQ(level * 4.0, std::round(level * 4.0));
}

/// Neighbouring numbers, some of which the drive bends to just this level.
Signal numbersThatBecome(double level) {
  Signal in(640);
  double x = std::atanh(level);
  for (int i = 0; i < 320; ++i) x = std::nextafter(x, 0.0);
  for (double& sample : in) sample = x = std::nextafter(x, 1.0);
  return in;
}

TEST(Lofi, theQuantiserRoundsHalvesToEven) {
  // Four levels a unit: 1/8 lies between 0 and 1 of them, 5/8 between 2 and 3.
  for (auto [half, even] : {std::pair(0.125, 0.0), std::pair(0.625, 0.5)}) {
    Recipe recipe;
    recipe.sources[0] = [](int) { return -1.0; };  // a gain of just 1: a knob rests 1e-14 above
    RecipeLofi open(recipe);
    recipe.knobs[3] = 1.0;
    RecipeLofi crushed(recipe);
    const Signal in = numbersThatBecome(half);
    const Signal bent = run(open, in), out = run(crushed, in);
    const auto found = std::find(bent.begin(), bent.end(), half);
    ASSERT_NE(found, bent.end());
    EXPECT_EQ(out[static_cast<size_t>(found - bent.begin())], even);
  }
}

TEST(Lofi, holdsNothingAtZeroAndAHundredSamplesAtTheTop) {
  RecipeLofi open({});
  const Signal in = noise(100);
  const Signal passed = run(open, in);
  EXPECT_NE(passed[10], passed[11]);
  Recipe slow;
  slow.knobs[2] = 1.0;
  RecipeLofi held(slow);
  const Signal out = run(held, in);
  std::set<double> values(out.begin() + 200, out.end());
  EXPECT_NEAR(static_cast<double>(values.size()), 30.0, 1.0);
}

TEST(Lofi, theNoiseAloneHasTheLevelOfTheSignalAndVanishesWithIt) {
  Recipe recipe;
  recipe.knobs[1] = 1.0;
  RecipeLofi lofi(recipe);
  run(lofi, Signal(1000 * 32, 0.5));
  const Signal out = run(lofi, Signal(1000 * 32, 0.5));
  double square = 0.0, product = 0.0;
  for (size_t i = 0; i < out.size(); ++i) square += out[i] * out[i], product += out[i];
  const auto count = static_cast<double>(out.size());
  // Even draws between -level and level: an effective value of level / sqrt(3), and no mean.
  EXPECT_NEAR(std::sqrt(square / count), std::tanh(0.5) / std::sqrt(3.0), 0.005);
  EXPECT_NEAR(product / count, 0.0, 0.01);
  const Signal silence = run(lofi, Signal(3000 * 32, 0.0));
  EXPECT_LT(std::fabs(silence.back()), 1e-12);
}

TEST(Lofi, theChannelsDrawTheirOwnNoise) {
  Lofi left(false), right(true), again(false);
  for (Lofi* lofi : {&left, &right, &again}) lofi->setParam(1, 1.0);
  const Signal in = noise(20);
  const Signal heard = run(left, in);
  EXPECT_NE(run(right, in), heard);
  EXPECT_EQ(run(again, in), heard);
  again.seed(77);
  left.seed(77);
  EXPECT_EQ(run(again, in), run(left, in));
}

TEST(Lofi, theHeldSampleSurvivesAReset) {
  Recipe recipe;
  recipe.knobs[2] = 1.0;
  RecipeLofi lofi(recipe);
  const Signal before = run(lofi, noise(60));
  lofi->reset();
  EXPECT_EQ(run(lofi, Signal(32, 0.0))[0], before.back());
}

TEST(Lofi, afterARateChangeItIsAsNewlyBuilt) {
  Recipe recipe;
  recipe.knobs = {0.4, 0.3, 0.5, 0.2};
  recipe.sources[2] = [](int) { return 0.1; };
  RecipeLofi kept(recipe);
  run(kept, noise(101));
  ScopedRate scope(96000.0);
  kept->rateChanged();
  kept->reset();
  RecipeLofi fresh(recipe);
  const Signal in = noise(100, 9);
  EXPECT_TRUE(run(kept, in) == run(fresh, in));
}

TEST(Lofi, recoversFromBadInput) {
  for (double bad : {std::numeric_limits<double>::quiet_NaN(), HUGE_VAL, -1e300, 1e6}) {
    Recipe recipe;
    recipe.knobs = {1.0, 0.5, 0.6, 0.3};
    RecipeLofi hurt(recipe);
    run(hurt, noise(30));
    Signal hit = noise(1);
    std::fill(hit.begin() + 5, hit.end(), bad);
    run(hurt, hit);
    for (double y : run(hurt, noise(60, 5))) ASSERT_LE(std::fabs(y), 2.0) << bad;
    const Signal silence = run(hurt, Signal(4000 * 32, 0.0));
    EXPECT_LT(std::fabs(silence.back()), 1e-6) << bad;
  }
}

TEST(Lofi, ignoresParametersThatAreNoNumbers) {
  RecipeLofi spoilt({}), fresh({});
  for (int i = -1; i < 6; ++i) spoilt->setParam(i, std::numeric_limits<double>::quiet_NaN());
  const Signal in = noise(20);
  EXPECT_TRUE(run(spoilt, in) == run(fresh, in));
}

}  // namespace
}  // namespace orvantesco
