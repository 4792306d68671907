// The ends of a shaper's knobs, what it keeps and drops, and what it sounds like.
#include <gtest/gtest.h>

#include <complex>
#include <limits>

#include "fx/EffectFactory.h"
#include "fx/ShaperModel.h"

namespace orvantesco {
namespace {

using testing_support::largestDifference;
using testing_support::noise;
using testing_support::RecipeShaper;
using testing_support::run;
using testing_support::ScopedRate;
using testing_support::ShaperRecipe;
using testing_support::Signal;

constexpr int kTypes[] = {6, 7, 14, 15, 16, 17, 18, 19, 20, 21, 23, 24};
constexpr double kOff = 26.0;

ShaperRecipe recipeOf(int type) {
  ShaperRecipe recipe;
  recipe.type = type;
  return recipe;
}

/// Lets the smoothed amount arrive; that of "WAVE SHAPE" and an offset need three times as long.
constexpr size_t kLong = 12000;
void settle(RecipeShaper& shaper, size_t vectors = 4000) { run(shaper, Signal(vectors * 32, 0.0)); }

double amplitudeAt(const Signal& signal, double cyclesPerSample) {
  std::complex<double> sum = 0.0;
  for (size_t n = 0; n < signal.size(); ++n) {
    sum += signal[n] *
           std::polar(1.0, -2.0 * std::numbers::pi * cyclesPerSample * static_cast<double>(n));
  }
  return 2.0 * std::abs(sum) / static_cast<double>(signal.size());
}

Signal sine(int vectors, double cyclesPerSample, double level) {
  Signal signal(static_cast<size_t>(vectors) * 32);
  for (size_t n = 0; n < signal.size(); ++n) {
    signal[n] = level * std::sin(2.0 * std::numbers::pi * cyclesPerSample * static_cast<double>(n));
  }
  return signal;
}

/// Of all samples but the first, which a curve may still join to the one before.
double largestBehindTheFirst(const Signal& signal) {
  const Signal rest(signal.begin() + 1, signal.end());
  return largestDifference(rest, Signal(rest.size(), 0.0));
}

TEST(Shaper, isBuiltForEveryTypeOfTheCatalogue) {
  for (int type : kTypes) {
    for (bool isRight : {false, true}) {
      const auto effect = createEffect(type, isRight, nullptr);
      EXPECT_NE(dynamic_cast<Shaper*>(effect.get()), nullptr) << type;
    }
  }
}

TEST(Shaper, fullSaturationHasSeventeenQuartersOfGainForSmallSignals) {
  ShaperRecipe recipe = recipeOf(15);
  recipe.amount = 1.0;
  recipe.resonance = kOff;
  RecipeShaper shaper(recipe);
  settle(shaper);
  EXPECT_NEAR(run(shaper, Signal(64, 1e-6))[63] / 1e-6, 17.0 / 4.0, 1e-6);
  EXPECT_NEAR(run(shaper, Signal(64, 1e3))[63], 0.25, 1e-6) << "and 1/4 at most";
}

TEST(Shaper, rectificationOnlyClips) {
  ShaperRecipe recipe = recipeOf(17);
  recipe.resonance = kOff;
  recipe.amount = 1.0;
  RecipeShaper shaper(recipe);
  settle(shaper);
  for (double x : {0.01, 0.1, 1.0}) {
    EXPECT_NEAR(run(shaper, Signal(64, x))[63], 51.0 * x / (1.0 + 50.0 * x) / 3.0, 1e-9);
    EXPECT_NEAR(run(shaper, Signal(64, -x))[63], -51.0 * x / (1.0 + 50.0 * x) / 3.0, 1e-9)
        << "a negative half stays one";
  }
}

TEST(Shaper, rectificationStaysWithinFullScale) {
  ShaperRecipe recipe = recipeOf(17);
  recipe.resonance = kOff;
  recipe.amount = 0.0;
  RecipeShaper shaper(recipe);
  const Signal out = run(shaper, sine(100, 0.01, 50.0));
  EXPECT_EQ(*std::max_element(out.begin(), out.end()), 1.0);
  EXPECT_EQ(*std::min_element(out.begin(), out.end()), -1.0);
}

TEST(Shaper, anOffFilterLeavesTheCurveTheInput) {
  ShaperRecipe recipe = recipeOf(24);
  recipe.amount = 0.0;
  recipe.resonance = kOff;
  RecipeShaper shaper(recipe);
  const Signal in = noise(20);
  Signal expected(in);
  // A hold of rate 1 at each sample.
  for (double& x : expected) x = std::tanh(1.25 * x);
  // A smoothed amount rests a few 1e-14 above 0.
  EXPECT_LT(largestDifference(run(shaper, in), expected), 1e-13);
}

TEST(Shaper, aFullResonanceIsTwiceThatOfAFilterAndAModulatedCutoffKeepsIt) {
  ShaperRecipe recipe = recipeOf(14);
  recipe.amount = 0.0;
  recipe.resonance = 1.0;
  const double knob = std::log(1000.0 / 50.0) / std::log(400.0);
  // So quiet that the curve is straight: at its corner the low-pass has half of 8 * 2 + 1.45. A
  // resonance that modulation held within 1 would leave half of 8 + 1.45.
  for (const double moved : {0.0, 0.2}) {
    recipe.cutoff = knob - moved;
    if (moved != 0.0) recipe.cutoffSource = [moved](int) { return moved; };
    RecipeShaper shaper(recipe);
    settle(shaper);
    const Signal out = run(shaper, sine(2000, 1000.0 / 44100.0, 1e-7));
    const Signal settled(out.end() - 441 * 32, out.end());
    EXPECT_NEAR(amplitudeAt(settled, 1000.0 / 44100.0) / 1e-7, (8.0 * 2.0 + 1.45) / 2.0, 0.1);
  }
}

TEST(Shaper, aSourceAtTheResonanceKeepsTwiceTheResonanceToo) {
  ShaperRecipe recipe = recipeOf(14);
  recipe.amount = 0.0;
  recipe.resonance = 1.0;
  recipe.cutoff = std::log(1000.0 / 50.0) / std::log(400.0) - 0.2;
  recipe.spreadSource = [](int) { return 0.2; };
  RecipeShaper shaper(recipe);
  settle(shaper);
  const Signal out = run(shaper, sine(2000, 1000.0 / 44100.0, 1e-7));
  const Signal settled(out.end() - 441 * 32, out.end());
  EXPECT_NEAR(amplitudeAt(settled, 1000.0 / 44100.0) / 1e-7, (8.0 * 2.0 + 1.45) / 2.0, 0.1);
}

TEST(Shaper, aSourceAtTheResonanceMovesTheChannelsApartAndNotTheResonance) {
  auto level = [](bool isRight, double source) {
    ShaperRecipe recipe = recipeOf(14);
    recipe.isRight = isRight;
    recipe.cutoff = 0.5;
    recipe.amount = 0.0;
    recipe.spreadSource = [source](int) { return source; };
    RecipeShaper shaper(recipe);
    settle(shaper);
    const Signal out = run(shaper, sine(500, 1000.0 / 44100.0, 1e-3));
    return amplitudeAt(Signal(out.end() - 441 * 16, out.end()), 1000.0 / 44100.0);
  };
  EXPECT_GT(level(false, 0.3), 1.3 * level(false, 0.0));
  EXPECT_LT(level(true, 0.3), 0.5 * level(true, 0.0));
  EXPECT_NEAR(level(true, -0.3), level(false, 0.3), 1e-9);
}

TEST(Shaper, modulationOfWhatHasNoWayInIsIgnored) {
  for (int type : {6, 14}) {
    RecipeShaper driven(recipeOf(type)), plain(recipeOf(type));
    const double source[kVectorLength] = {1.0};
    const double depth = 1.0;
    for (int control : {3, 4}) {
      driven->setModSource(control, source);
      driven->setModDepth(control, &depth);
    }
    const Signal in = noise(40);
    EXPECT_TRUE(run(driven, in) == run(plain, in)) << type;
  }
}

/// The folds and the even curves leave nothing on a channel that is silent.
TEST(Shaper, silenceBecomesSilence) {
  for (int type : kTypes) {
    for (int shape : {14, 7, 16, 9, 10, 11, 12, 13}) {
      ShaperRecipe recipe = recipeOf(type);
      recipe.shape = shape;
      RecipeShaper shaper(recipe);
      const Signal out = run(shaper, Signal(4000 * 32, 0.0));
      EXPECT_LT(std::fabs(out.back()), 1e-5) << type << ", shape " << shape;
      if (type != 6) break;
    }
  }
}

TEST(Shaper, destroyFoldsAllOfItAndNoiseOnlyWhatIsLoud) {
  ShaperRecipe recipe = recipeOf(21);
  recipe.amount = 0.0;
  recipe.resonance = kOff;
  RecipeShaper noisy(recipe);
  settle(noisy);
  EXPECT_NEAR(run(noisy, Signal(32, 0.02))[9], 0.5 * 51.0 * 0.02, 1e-12) << "below the threshold";
  const Signal loud = run(noisy, noise(50));
  EXPECT_LE(*std::max_element(loud.begin(), loud.end()), 0.625 + 1e-12);

  // Near 0 the triangle falls by 4 t^2, t = -1/6.
  recipe.type = 19;
  RecipeShaper destroyed(recipe);
  settle(destroyed, kLong);
  EXPECT_NEAR(amplitudeAt(run(destroyed, sine(1000, 0.01, 0.01)), 0.01), 0.01 / 9.0, 1e-5);
}

TEST(Shaper, theTrimOfDestroyIsNotHeard) {
  // A trim of 0.618 or 1 would show in the height of the triangle, 1/2 at full amount.
  ShaperRecipe recipe = recipeOf(19);
  recipe.amount = 1.0;
  recipe.resonance = kOff;
  RecipeShaper shaper(recipe);
  settle(shaper);
  const Signal out = run(shaper, sine(400, 0.001, 1.0));
  const auto [low, high] = std::minmax_element(out.begin(), out.end());
  EXPECT_NEAR(*high - *low, 1.0, 0.02);
}

TEST(Shaper, lookingBackASampleKeepsAliasesDown) {
  // 0.23 of the rate: the third harmonic, 0.69, comes back at 0.31.
  ShaperRecipe recipe = recipeOf(15);
  recipe.amount = 1.0;
  recipe.resonance = kOff;
  RecipeShaper shaper(recipe);
  settle(shaper);
  const Signal in = sine(400, 0.23, 0.5);
  const Signal out = run(shaper, in);
  Signal direct(in);
  for (double& x : direct) x = x * 17.0 / std::sqrt(1.0 + x * x * 289.0) / 4.0;
  EXPECT_LT(amplitudeAt(out, 0.31), 0.65 * amplitudeAt(direct, 0.31));
}

TEST(Shaper, aResetBringsTheWholeFilterBackUntilTheGainMoves) {
  ShaperRecipe recipe = recipeOf(6);
  recipe.gain = 0.2;
  recipe.resonance = 1.0;
  recipe.shape = 0;  // no curve: the mix of filter and dry signal as it is
  auto settled = [](RecipeShaper& shaper) {
    settle(shaper, kLong);
    return run(shaper, noise(100));
  };
  RecipeShaper turned(recipe), wiped(recipe);
  wiped->reset();
  const Signal byHand = settled(turned);
  const Signal whole = settled(wiped);
  EXPECT_GT(largestDifference(byHand, whole), 1e-3);
  IppBiquad peak(false, 12, 1);
  peak.setCutoff(recipe.cutoff);
  peak.setQOffset(0.05);
  peak.setQScale(4.0);
  peak.setGain(static_cast<double>(0.2F));
  peak.setResonance(1.0F);
  run(peak, Signal(kLong * 32, 0.0));
  EXPECT_TRUE(run(peak, noise(100)) == whole);
  wiped->setParam(1, 0.2);
  EXPECT_LT(largestDifference(settled(wiped), settled(turned)), 1e-9);
}

TEST(Shaper, resetClearsTheFilterAndLeavesTheOneSampleOfTheCurve) {
  for (int type : {14, 18}) {
    RecipeShaper shaper(recipeOf(type));
    settle(shaper);
    RecipeShaper fresh(recipeOf(type));
    settle(fresh);
    run(shaper, noise(30));
    shaper->reset();
    fresh->reset();
    const Signal silence(64, 0.0);
    const Signal a = run(shaper, silence), b = run(fresh, silence);
    EXPECT_TRUE(std::equal(a.begin() + 1, a.end(), b.begin() + 1)) << type;
    EXPECT_EQ(a[0] == b[0], type == 18) << "only what looks back remembers";
  }
}

/// Behind the curve it turns phases alone; what the menu promises comes about in the mix.
TEST(Shaper, aNotchIsAnAllPassThatCancelsTheDrySignalAtItsCorner) {
  ShaperRecipe recipe = recipeOf(24);
  recipe.amount = 0.0;
  recipe.resonance = kAllpassFilter;
  recipe.cutoff = std::log(1000.0 / 50.0) / std::log(400.0);
  RecipeShaper shaper(recipe);
  settle(shaper);
  Signal wet = run(shaper, testing_support::impulse(1000));
  const double gain = std::tanh(1.25);
  const auto level = [](const Signal& answer, double hz) {
    const double half = static_cast<double>(answer.size()) / 2.0;
    return amplitudeAt(answer, hz / 44100.0) * half;
  };
  for (const double hz : {100.0, 1000.0, 9000.0}) EXPECT_NEAR(level(wet, hz), gain, 1e-4) << hz;
  wet[0] += gain;
  EXPECT_LT(level(wet, 1000.0), 1e-3 * gain);
  EXPECT_NEAR(level(wet, 60.0), 2.0 * gain, 0.02);
}

TEST(Shaper, aNewShapeDropsTheSampleBefore) {
  ShaperRecipe recipe = recipeOf(6);
  recipe.resonance = 0.0;
  recipe.gain = 0.0;
  RecipeShaper shaper(recipe);
  run(shaper, Signal(32, 0.9));
  shaper->setParam(0, 16.0);
  // As if silence, not 0.9, stood before: F(x) / x at a gain of 1.
  EXPECT_NEAR(run(shaper, Signal(32, 0.9))[0], (0.9 - std::log(1.9)) * 2.0 / 0.9, 1e-9);
}

TEST(Shaper, aNewShapeDropsTheOffsetOfTheOneBefore) {
  ShaperRecipe recipe = recipeOf(6);
  recipe.shape = 12;
  RecipeShaper anew(recipe), again(recipe);
  run(anew, noise(200));
  run(again, noise(200));
  anew->setParam(0, 13.0);
  again->setParam(0, 12.0);
  // The filter still rings for a while.
  anew->setParam(1, 0.0);
  EXPECT_LT(std::fabs(run(anew, Signal(32, 0.0))[0]), 1e-12) << "it starts from where it is";
  EXPECT_GT(std::fabs(run(again, Signal(32, 0.0))[0]), 0.01) << "the same shape again goes on";
}

/// A switch that is thrown in a pause must not be heard, though these curves make 1 of silence.
TEST(Shaper, aResetInSilenceMakesNoThump) {
  for (int type : {6, 18, 19}) {
    for (int shape : {12, 13}) {
      ShaperRecipe recipe = recipeOf(type);
      recipe.shape = shape;
      RecipeShaper shaper(recipe);
      settle(shaper, kLong);
      shaper->reset();
      const Signal out = run(shaper, Signal(400 * 32, 0.0));
      EXPECT_LT(largestDifference(out, Signal(out.size(), 0.0)), 1e-9) << type << ", " << shape;
    }
  }
}

TEST(Shaper, aRunawayLeavesNoThumpBehind) {
  ShaperRecipe recipe = recipeOf(6);
  recipe.shape = 12;
  RecipeShaper shaper(recipe);
  run(shaper, noise(30));
  run(shaper, Signal(32, std::numeric_limits<double>::quiet_NaN()));
  const Signal out = run(shaper, Signal(400 * 32, 0.0));
  EXPECT_LT(largestDifference(out, Signal(out.size(), 0.0)), 1e-12);
}

TEST(Shaper, afterARateChangeItIsAsNewlyBuilt) {
  for (int type : kTypes) {
    ShaperRecipe recipe = recipeOf(type);
    recipe.shape = 12;
    recipe.cutoffSource = [](int) { return 0.1; };
    if (type != 6) recipe.amountSource = [](int) { return 0.2; };
    RecipeShaper kept(recipe);
    run(kept, noise(101));
    ScopedRate scope(96000.0);
    kept->rateChanged();
    kept->reset();
    RecipeShaper fresh(recipe);
    // The gain knob of "WAVE SHAPE" has just been set: its share of the filter is not yet back.
    if (type == 6) kept->setParam(1, recipe.gain);
    const Signal in = noise(100, 9);
    EXPECT_TRUE(run(kept, in) == run(fresh, in)) << type;
  }
}

TEST(Shaper, forgetsBadInputWhollyAndNeverPassesItOn) {
  for (int type : kTypes) {
    for (double bad : {std::numeric_limits<double>::quiet_NaN(), HUGE_VAL}) {
      ShaperRecipe recipe = recipeOf(type);
      // A hold that takes every sample has no phase to be different in.
      if (type == 23 || type == 24) recipe.amount = 0.0;
      RecipeShaper hurt(recipe), fresh(recipe);
      run(hurt, noise(30));
      Signal hit = noise(2);
      hit[7] = hit[63] = bad;
      const Signal out = run(hurt, hit);
      EXPECT_TRUE(std::all_of(out.begin(), out.end(), [](double y) { return std::isfinite(y); }));
      const bool isSlow = type == 6 || type == 18 || type == 19;
      for (RecipeShaper* shaper : {&hurt, &fresh}) settle(*shaper, isSlow ? kLong : 3000);
      const Signal in = noise(60, 5);
      EXPECT_LT(largestDifference(run(hurt, in), run(fresh, in)), 1e-12) << type << ", " << bad;
    }
  }
}

TEST(Shaper, outlastsMonstrousInput) {
  for (int type : kTypes) {
    for (double monster : {1e6, -1e13, 1e300}) {
      RecipeShaper hurt(recipeOf(type));
      Signal in = noise(200);
      std::fill(in.begin() + 64, in.begin() + 96, monster);
      const Signal out = run(hurt, in);
      const double last = *std::max_element(out.end() - 3200, out.end());
      EXPECT_LT(std::fabs(last), 4.0) << type << " after " << monster;
      EXPECT_GT(std::fabs(last), 1e-6) << type << " after " << monster;
    }
  }
}

TEST(Shaper, ignoresParametersThatAreNoNumbers) {
  for (int type : kTypes) {
    RecipeShaper spoilt(recipeOf(type)), fresh(recipeOf(type));
    for (int i = -1; i < 6; ++i) spoilt->setParam(i, std::numeric_limits<double>::quiet_NaN());
    const Signal in = noise(30);
    EXPECT_TRUE(run(spoilt, in) == run(fresh, in)) << type;
  }
}

TEST(Shaper, bypassWritesNothingAndClears) {
  for (int type : {14, 18}) {
    RecipeShaper shaper(recipeOf(type)), ringing(recipeOf(type));
    for (RecipeShaper* each : {&shaper, &ringing}) {
      settle(*each);
      run(*each, noise(30));
    }
    shaper->setBypass(true);
    Signal in = noise(1), out(32, 0.125);
    shaper.process(in.data(), out.data());
    EXPECT_EQ(out, Signal(32, 0.125));
    shaper->setBypass(false);
    EXPECT_GT(largestBehindTheFirst(run(ringing, Signal(64, 0.0))), 1e-3) << type;
    EXPECT_LT(largestBehindTheFirst(run(shaper, Signal(64, 0.0))), 1e-9) << type;
  }
}

TEST(Shaper, preparedItHasLostItsSources) {
  ShaperRecipe recipe = recipeOf(14);
  recipe.cutoffSource = [](int) { return -0.3; };
  RecipeShaper driven(recipe), plain(recipeOf(14));
  driven->prepare();
  plain->prepare();
  const Signal in = noise(40);
  EXPECT_TRUE(run(driven, in) == run(plain, in));
}

}  // namespace
}  // namespace orvantesco
