#include "fx/PhaserC.h"

#include <complex>
#include <numbers>

#include "fx/BiquadFixture.h"
#include "fx/EffectCatalogue.h"
#include "fx/EffectPromises.h"

namespace orvantesco {
namespace {

using namespace testing_support;

struct PhaserRecipe {
  double place = 0.5;
  double depth = 1.0;
  double stages = 2.0;
  double spread = 0.0;
  double feedback = 0.5;
  bool isRight = false;
  Modulations modulations{};
};

void give(DSPShell& phaser, const PhaserRecipe& recipe) {
  const double values[] = {recipe.place, recipe.depth, recipe.stages, recipe.spread,
                           recipe.feedback};
  for (int k = 0; k < 5; ++k) phaser.setParam(k, values[k]);
}

Maker makerOf(const PhaserRecipe& recipe) {
  return [recipe] {
    auto phaser = std::make_unique<PhaserC>(recipe.isRight);
    give(*phaser, recipe);
    return phaser;
  };
}

/// The phaser sample by sample, in plain inputs and outputs of each section. Summed in extended
/// precision: at the ends of the sweep the sections magnify the last bits of any order of sums.
class PhaserModel {
 public:
  explicit PhaserModel(const PhaserRecipe& start) : recipe(start) {}

  Signal run(const Signal& in) {
    Signal out;
    for (double x : in) out.push_back(tick(x));
    return out;
  }

  PhaserRecipe recipe;

 private:
  double tick(double input) {
    if (samples % 32 == 0) control(static_cast<int>(samples / 32));
    ++samples;
    long double x = input + fed;
    for (size_t i = 0; i < count; ++i) {
      const long double y = a[i] * x + b[i] * x1[i] + x2[i] - (a[i] * y2[i] + b[i] * y1[i]);
      x2[i] = x1[i];
      x1[i] = x;
      y2[i] = y1[i];
      y1[i] = y;
      x = y;
    }
    fed = x * (0.95 * std::sqrt(recipe.feedback));
    return (static_cast<double>(x) * wet + input * (1.0 - 0.5 * recipe.depth)) *
           (0.5 * recipe.depth + 1.0);
  }

  void control(int vector) {
    const double sign = recipe.isRight ? -1.0 : 1.0;
    const double m =
        valueOf(recipe.modulations, 0, vector) + valueOf(recipe.modulations, 3, vector) * sign;
    const double position = glide.tick((recipe.place * recipe.place + 0.1) * 6.0 + 6.0 * m);
    wet = std::clamp(0.5 * recipe.depth + valueOf(recipe.modulations, 1, vector), 0.0, 1.0);
    count = static_cast<size_t>(std::clamp(std::trunc(recipe.stages), 1.0, 8.0));
    for (size_t i = 0; i < count; ++i) derive(i, position);
  }

  void derive(size_t i, double position) {
    static const double t1[] = {0.0094802, 0.034095, 0.01834, 0.1194, 0.038, 0.18, 0.07, 0.21};
    static const double t2[] = {0.971927, 0.51927, 0.45452, 0.40452, 0.4, 0.4, 0.3, 0.25};
    const double f = std::clamp(t1[i] * position, 0.002, 0.998);
    const double d = 0.25 + t2[i] * (f - f * f);
    a[i] = (0.25 + t2[i] * (f * f - f)) / d;
    double p = 2 * f * f - 0.5, q = 4 * f - 2 * f * f - 1.5;
    if (f > 0.5) p = 0.0;
    if (f < 0.5) q = 0.0;
    b[i] = (p + q) / d;
  }

  OnePole glide{0.010 * sampleRate / 32.0};
  double wet = 0.0;
  long double fed = 0.0L;
  size_t count = 0;
  long samples = 0;
  double a[8] = {}, b[8] = {};
  long double x1[8] = {}, x2[8] = {}, y1[8] = {}, y2[8] = {};
};

double againstModel(const PhaserRecipe& recipe, const Signal& in) {
  const auto phaser = makerOf(recipe)();
  ModulatedBlock modulated(*phaser, recipe.modulations);
  return largestDifference(run(modulated, in), PhaserModel(recipe).run(in));
}

TEST(PhaserC, isItsModelWithEveryCountOfStagesAndRate) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    for (int stages = 1; stages <= 8; ++stages) {
      PhaserRecipe recipe;
      recipe.stages = stages;
      EXPECT_LT(againstModel(recipe, noise(100)), 1e-12) << stages << " at " << rate;
    }
  }
}

TEST(PhaserC, isItsModelAtBothEndsOfItsKnobs) {
  for (double place : {0.0, 1.0}) {
    for (double depth : {0.0, 0.5, 1.0}) {
      for (double feedback : {0.0, 1.0}) {
        PhaserRecipe recipe{place, depth, 8.0, 0.3, feedback};
        // Full feedback has six times full scale behind it. At the upper end, besides, two
        // sections stand at 0.998 of half the rate, where a last bit of their taps is worth
        // thousands of the output.
        const double bound = (1.0 + 5.0 * feedback) * (place > 0.0 ? 1e-11 : 1e-12);
        EXPECT_LT(againstModel(recipe, noise(100)), bound) << place << depth << feedback;
        EXPECT_LT(againstModel(recipe, impulse(100)), bound) << place << depth << feedback;
      }
    }
  }
}

TEST(PhaserC, isItsModelUnderModulation) {
  for (bool isRight : {false, true}) {
    PhaserRecipe recipe;
    recipe.stages = 6.0;
    recipe.isRight = isRight;
    recipe.modulations = {{0, [](int v) { return 0.5 * std::sin(0.05 * v); }},
                          {1, [](int v) { return 0.9 * std::sin(0.031 * v); }},
                          {2, [](int v) { return 0.4 * std::sin(0.011 * v); }},
                          {3, [](int v) { return v % 40 < 20 ? 0.1 : -0.1; }},
                          {4, [](int v) { return 0.4 * std::sin(0.013 * v); }}};
    // The sweep passes the upper end, as above.
    EXPECT_LT(againstModel(recipe, noise(300)), 2e-11) << isRight;
  }
}

TEST(PhaserC, stagesThatComeBackRememberWhereTheyWere) {
  PhaserRecipe recipe;
  const auto phaser = makerOf(recipe)();
  PhaserModel model(recipe);
  for (double stages : {8.0, 2.0, 5.0, 1.0, 8.0}) {
    model.recipe.stages = stages;
    phaser->setParam(2, stages);
    const Signal in = noise(7, static_cast<unsigned>(stages));
    EXPECT_LT(largestDifference(run(*phaser, in), model.run(in)), 1e-12) << stages;
  }
}

TEST(PhaserC, withoutDepthItPassesItsInputBitForBit) {
  PhaserRecipe recipe;
  recipe.depth = 0.0;
  recipe.stages = 8.0;
  const auto phaser = makerOf(recipe)();
  const Signal in = noise(100);
  EXPECT_TRUE(run(*phaser, in) == in);
  PhaserC untouched(false);
  EXPECT_TRUE(run(untouched, in) == in);
}

TEST(PhaserC, everySectionIsAStableAllPassWhereverTheSweepStands) {
  double worst = 0.0;
  bool stable = true;
  for (double position = -1.0; position < 60.0; position += 0.037) {
    for (int stage = 0; stage < 8; ++stage) {
      const auto [a, b] = phaserTaps(stage, position);
      stable = stable && std::fabs(a) < 1.0 && std::fabs(b) < 1.0 + a;
      for (double w : {0.001, 0.1, 1.0, 3.0}) {
        const std::complex<double> z = std::polar(1.0, -w);
        const auto h = (a + b * z + z * z) / (1.0 + b * z + a * z * z);
        worst = std::max(worst, std::fabs(std::abs(h) - 1.0));
      }
    }
  }
  EXPECT_TRUE(stable);
  EXPECT_LT(worst, 1e-9);
}

TEST(PhaserC, aSectionInTheMiddleTurnsAQuarterOfTheRateByHalf) {
  const auto [a, b] = phaserTaps(7, 0.5 / 0.21);
  EXPECT_NEAR(b, 0.0, 1e-15);
  EXPECT_NEAR(a, (0.25 - 0.25 * 0.25) / (0.25 + 0.25 * 0.25), 1e-15);
}

std::complex<double> rowAt(double hz, double position, int stages) {
  const std::complex<double> z = std::polar(1.0, -2.0 * std::numbers::pi * hz / sampleRate);
  std::complex<double> row = 1.0;
  for (int i = 0; i < stages; ++i) {
    const auto [a, b] = phaserTaps(i, position);
    row *= (a + b * z + z * z) / (1.0 + b * z + a * z * z);
  }
  return row;
}

TEST(PhaserC, cancelsWhereTheRowHasTurnedByHalfAndPeaksThroughItsFeedback) {
  PhaserRecipe recipe{0.6, 1.0, 4.0, 0.0, 0.64};
  const double position = (0.36 + 0.1) * 6.0;
  for (double hz : {100.0, 440.0, 1000.0, 3000.0, 9000.0}) {
    const auto phaser = makerOf(recipe)();
    const std::complex<double> z = std::polar(1.0, -2.0 * std::numbers::pi * hz / sampleRate);
    const auto row = rowAt(hz, position, 4);
    const auto wet = row / (1.0 - 0.95 * 0.8 * z * row);
    const double expected = 20.0 * std::log10(std::abs(0.5 * wet + 0.5) * 1.5);
    EXPECT_NEAR(responseDb(*phaser, hz, 200, 300), expected, 1e-6) << hz;
  }
}

TEST(PhaserC, notchesFallDeep) {
  PhaserRecipe recipe{0.6, 1.0, 2.0, 0.0, 0.0};
  const double position = (0.36 + 0.1) * 6.0;
  double notch = 20.0;
  for (double hz = 20.0; hz < 3000.0; hz *= 1.0005) {
    const auto distance = [position](double at) { return std::abs(1.0 + rowAt(at, position, 2)); };
    if (distance(hz) < distance(notch)) notch = hz;
  }
  const auto phaser = makerOf(recipe)();
  EXPECT_LT(responseDb(*phaser, notch, 200, 300), -40.0) << notch;
}

// The knob has never reached the sound, its modulator always has; presets depend on both.
TEST(PhaserC, theSpreadKnobIsNotHeardButItsModulatorMovesTheChannelsApart) {
  PhaserRecipe narrow, wide;
  wide.spread = 1.0;
  const Signal in = noise(100);
  const auto a = makerOf(narrow)(), b = makerOf(wide)();
  EXPECT_TRUE(run(*a, in) == run(*b, in));

  auto moved = [&in](bool isRight, int control, double by) {
    PhaserRecipe recipe;
    recipe.isRight = isRight;
    recipe.modulations = {{control, [by](int) { return by; }}};
    const auto phaser = makerOf(recipe)();
    ModulatedBlock modulated(*phaser, recipe.modulations);
    return run(modulated, in);
  };
  EXPECT_TRUE(moved(false, 3, 0.1) == moved(false, 0, 0.1));
  EXPECT_TRUE(moved(true, 3, 0.1) == moved(false, 0, -0.1));
  EXPECT_FALSE(moved(true, 3, 0.1) == moved(false, 3, 0.1));
}

// A modulator on the feedback knob fades the whole effect: the slot takes it for one of a mix.
TEST(PhaserC, aModulatorOfTheFeedbackIsLeftToTheMix) {
  PhaserRecipe recipe;
  recipe.modulations = {{4, [](int v) { return 0.5 * std::sin(0.1 * v); }}};
  const auto driven = makerOf(recipe)(), plain = makerOf(recipe)();
  ModulatedBlock modulated(*driven, recipe.modulations);
  const Signal in = noise(50);
  EXPECT_TRUE(run(modulated, in) == run(*plain, in));
  EXPECT_TRUE(fifthParamIsMix(3));
  EXPECT_EQ(driven->wetShare(), 1.0);
}

TEST(PhaserC, stageCountsAreCutAndHeld) {
  PhaserC phaser;
  EXPECT_EQ(phaser.stageCount(), 2);
  const std::pair<double, int> expected[] = {{0.0, 1}, {2.9, 2}, {8.0, 8}, {9.0, 8}, {-3.0, 1}};
  for (auto [value, stages] : expected) {
    phaser.setParam(2, value);
    EXPECT_EQ(phaser.stageCount(), stages) << value;
  }
}

TEST(PhaserC, preparingLiftsTheSweepUntilTheKnobIsMoved) {
  PhaserC phaser;
  EXPECT_EQ(phaser.sweepBase(), 0.6);
  phaser.setParam(0, 0.5);
  const double base = (0.25 + 0.1) * 6.0;
  EXPECT_DOUBLE_EQ(phaser.sweepBase(), base);
  phaser.prepare();
  EXPECT_DOUBLE_EQ(phaser.sweepBase(), (base + 0.1) * 6.0);
  phaser.setParam(0, 0.5);
  EXPECT_DOUBLE_EQ(phaser.sweepBase(), base);
  phaser.rateChanged();
  phaser.reset();
  EXPECT_DOUBLE_EQ(phaser.sweepBase(), base) << "a change of rate leaves it";
}

TEST(PhaserC, clearingTheStateEmptiesSectionsAndFeedback) {
  PhaserRecipe recipe{0.5, 1.0, 8.0, 0.0, 1.0};
  const auto phaser = makerOf(recipe)();
  run(*phaser, noise(50));
  phaser->clearState();
  const Signal silence(50 * kVectorLength, 0.0);
  EXPECT_TRUE(run(*phaser, silence) == silence);
}

TEST(PhaserC, whatRunsAwayUnheardIsDroppedToo) {
  PhaserRecipe recipe{0.5, 0.0, 8.0, 0.0, 1.0};
  const auto phaser = makerOf(recipe)();
  const Signal high(200 * kVectorLength, 9e7);
  const Signal out = run(*phaser, high);
  EXPECT_TRUE(std::any_of(out.begin(), out.end(), [](double s) { return s == 0.0; }));
  phaser->setParam(1, 1.0);
  const Signal tail = run(*phaser, Signal(2000 * kVectorLength, 0.0));
  EXPECT_TRUE(std::all_of(tail.begin(), tail.end(), [](double s) { return std::fabs(s) <= 1e8; }));
}

TEST(PhaserC, keepsThePromisesOfABlock) {
  const PhaserRecipe recipe{0.4, 0.8, 5.0, 0.2, 0.6};
  const Maker make = makerOf(recipe);
  expectFreshAfterRateChange(make);
  expectOneResultFromEveryCall(make);
  expectNoTailAfterBypass(make);
  expectFreshAfterBadInput(make);
  expectLoudImpulseDiesAway(make, 1000);
  expectParametersThatAreNoNumbersIgnored(make);
  for (int control : {0, 1, 3}) expectKnobAfterSourceGoesAway(make, control);
}

}  // namespace
}  // namespace orvantesco
