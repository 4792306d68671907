// What a shaper computes, sample for sample.
#include "fx/Shaper.h"

#include <gtest/gtest.h>

#include "fx/ShaperModel.h"

namespace orvantesco {
namespace {

using testing_support::againstModel;
using testing_support::impulse;
using testing_support::kRates;
using testing_support::noise;
using testing_support::ScopedRate;
using testing_support::ShaperRecipe;
using testing_support::Signal;

constexpr int kPlainTypes[] = {7, 14, 16, 18, 20, 23};
constexpr int kFeedbackTypes[] = {15, 17, 19, 21, 24};
constexpr int kShapes[] = {14, 7, 16, 9, 10, 11, 12, 13};

Signal scaled(Signal signal, double factor) {
  for (double& sample : signal) sample *= factor;
  return signal;
}

/// Slow and quiet enough to run along the curves instead of across them.
Signal tone(int vectors, double level = 0.7) {
  Signal signal(static_cast<size_t>(vectors) * kVectorLength);
  for (size_t i = 0; i < signal.size(); ++i) {
    signal[i] = level * std::sin(0.01 * static_cast<double>(i));
  }
  return signal;
}

TEST(Shaper, isItsModelInEveryTypeAtEveryRate) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    for (int type : kPlainTypes) {
      for (double amount : {0.0, 0.43, 1.0}) {
        ShaperRecipe recipe;
        recipe.type = type;
        recipe.amount = amount;
        recipe.resonance = 0.3;
        EXPECT_LT(againstModel(recipe, noise(120)), 1e-12) << type << " at " << rate;
        EXPECT_LT(againstModel(recipe, tone(120)), 1e-12) << type << " at " << rate;
      }
    }
  }
}

TEST(Shaper, isItsModelWithEveryFilterOfTheFeedbackTypes) {
  for (int type : kFeedbackTypes) {
    for (double mode : {26.0, 0.0, 3.0, 6.0, 20.0}) {
      ShaperRecipe recipe;
      recipe.type = type;
      recipe.resonance = mode;
      EXPECT_LT(againstModel(recipe, noise(100)), 1e-12) << type << ", mode " << mode;
    }
  }
}

TEST(Shaper, isItsModelInEveryWaveShapeAtEveryRate) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    for (int shape : kShapes) {
      for (double gain : {0.0, 0.6, 1.0}) {
        ShaperRecipe recipe;
        recipe.type = 6;
        recipe.shape = shape;
        recipe.gain = gain;
        recipe.resonance = 0.5;
        recipe.spread = 0.2;
        EXPECT_LT(againstModel(recipe, noise(120)), 1e-12) << shape << " at " << rate;
        EXPECT_LT(againstModel(recipe, tone(120)), 1e-12) << shape << " at " << rate;
      }
    }
  }
}

TEST(Shaper, followsAModulatedAmountSampleBySample) {
  for (int type : {14, 15, 16, 17, 18, 19, 20, 21, 23, 24}) {
    ShaperRecipe recipe;
    recipe.type = type;
    recipe.amount = 0.4;
    recipe.amountSource = [](int n) { return 0.9 * std::sin(0.003 * n); };
    EXPECT_LT(againstModel(recipe, noise(200)), 1e-12) << type;
  }
}

TEST(Shaper, modulationMovesItsFilterOnBothChannels) {
  for (bool isRight : {false, true}) {
    for (int type : {6, 14, 16, 18, 20, 23}) {
      ShaperRecipe recipe;
      recipe.type = type;
      recipe.isRight = isRight;
      recipe.spread = 0.3;
      recipe.cutoffSource = [](int n) { return 0.3 * std::sin(0.001 * n); };
      if (type != 6) recipe.spreadSource = [](int n) { return 0.2 * std::cos(0.002 * n); };
      EXPECT_LT(againstModel(recipe, noise(200)), 1e-12) << type;
    }
  }
}

TEST(Shaper, answersLoudnessImpulsesAndSilenceAsItsModel) {
  for (int type : kPlainTypes) {
    ShaperRecipe recipe;
    recipe.type = type;
    EXPECT_LT(againstModel(recipe, impulse(60)), 1e-12) << type;
    EXPECT_LT(againstModel(recipe, Signal(60 * 32, 0.0)), 1e-12) << type;
    // Ten times full scale; a fold magnifies the last bit of what it folds.
    EXPECT_LT(againstModel(recipe, scaled(noise(60), 10.0)), 1e-11) << type;
  }
}

TEST(Shaper, turnsBackToItsKnobWhenASourceGoes) {
  testing_support::RecipeShaper shaper({});
  const double source[kVectorLength] = {0.5};
  shaper->setModSource(0, source);
  const double depth = 1.0;
  shaper->setModDepth(0, &depth);
  testing_support::run(shaper, noise(2000));
  shaper->setModSource(0, nullptr);
  testing_support::run(shaper, Signal(500 * 32, 0.0));
  testing_support::RecipeShaper plain({});
  testing_support::run(plain, Signal(2500 * 32, 0.0));
  shaper->reset();
  plain->reset();
  const Signal in = noise(20, 3);
  EXPECT_TRUE(testing_support::run(shaper, in) == testing_support::run(plain, in));
}

TEST(Shaper, worksInPlace) {
  for (int type : {6, 7, 14, 16, 18, 20, 23}) {
    ShaperRecipe recipe;
    recipe.type = type;
    testing_support::RecipeShaper apart(recipe), inPlace(recipe);
    Signal in = noise(40);
    const Signal expected = testing_support::run(apart, in);
    for (size_t at = 0; at < in.size(); at += 32) inPlace.process(&in[at], nullptr);
    EXPECT_TRUE(in == expected) << type;
  }
}

}  // namespace
}  // namespace orvantesco
