#include <gtest/gtest.h>

#include "fx/BiquadFixture.h"
#include "fx/EffectCatalogue.h"
#include "fx/EffectFactory.h"

// The filters as a position of a slot has them: from the five knobs to the response, against the
// formulas that each effect stands for.

namespace orvantesco {
namespace {

using testing_support::knobOf;
using testing_support::kRates;
using testing_support::ScopedRate;
using testing_support::Signal;
using C = std::complex<double>;

/// An effect and its knobs, 0..1 each.
struct Knobs {
  int typeId = 0;
  double at[kFxParamCount] = {};
};

std::shared_ptr<DSPShell> built(const Knobs& knobs, bool isRight = false) {
  auto effect = createEffect(knobs.typeId, isRight, nullptr);
  for (int k = 0; k < kFxParamCount; ++k) {
    double shown = knobs.at[k];
    double control = shown;
    fxParamScale(knobs.typeId, k, &shown, &control);
    effect->setParam(k, control);
  }
  return effect;
}

/// Responses in dB at the frequencies `kHz`, to an impulse too small for any curve to bend.
constexpr double kHz[] = {200.0, 700.0, 1000.0, 1600.0, 5000.0};

std::vector<double> measured(const Knobs& knobs, bool isRight = false) {
  const auto effect = built(knobs, isRight);
  testing_support::run(*effect, Signal(2000 * 32, 0.0));
  Signal in = testing_support::impulse(300);
  in[0] = 1e-4;
  const Signal answer = testing_support::run(*effect, in);
  std::vector<double> db;
  for (double hz : kHz) {
    C sum = 0.0;
    for (size_t n = 0; n < answer.size(); ++n) {
      sum += answer[n] *
             std::polar(1e4, -2.0 * std::numbers::pi * hz * static_cast<double>(n) / sampleRate);
    }
    db.push_back(20.0 * std::log10(std::abs(sum)));
  }
  return db;
}

/// i times the frequency over the corner, both warped as the bilinear transform does.
C frequencyOver(double hz, double cornerHz) {
  return C(0.0, std::tan(std::numbers::pi * hz / sampleRate) /
                    std::tan(std::numbers::pi * cornerHz / sampleRate));
}

C lowpass(C s, double q) { return 1.0 / (s * s + s / q + 1.0); }
C highpass(C s, double q) { return s * s * lowpass(s, q); }
C bandpass(C s, double q) { return s / q * lowpass(s, q); }
C allpass(C s, double q) { return (s * s - s / q + 1.0) * lowpass(s, q); }

double qOf(double knob) { return (8.0 * knob + 1.45) / 2.0; }

template <class Formula>
void expectResponse(const Knobs& knobs, Formula formula, bool isRight = false) {
  const std::vector<double> db = measured(knobs, isRight);
  for (size_t i = 0; i < db.size(); ++i) {
    EXPECT_NEAR(db[i], 20.0 * std::log10(std::abs(formula(kHz[i]))), 0.03)
        << knobs.typeId << " at " << kHz[i] << ", " << sampleRate;
  }
}

TEST(FilterEffects, multi12dBIsTheSecondOrderPrototypeOfItsMode) {
  using Formula = C (*)(C, double);
  const Formula formulas[] = {lowpass, highpass, bandpass, allpass};
  for (double rate : kRates) {
    ScopedRate scope(rate);
    for (int mode = 0; mode < 4; ++mode) {
      expectResponse({31, {knobOf(1000.0), 0.4, 0.5, mode / 3.0, 1.0}}, [&](double hz) {
        return formulas[mode](frequencyOver(hz, 1000.0), qOf(0.4));
      });
    }
  }
}

TEST(FilterEffects, multi12dBInTheLoopHasASlopeInPlaceOfResonance) {
  for (int slope = 0; slope < 4; ++slope) {
    expectResponse({32, {knobOf(1000.0), slope / 3.0, 0.5, 1.0 / 3.0, 1.0}}, [&](double hz) {
      return std::pow(highpass(frequencyOver(hz, 1000.0), qOf(0.0)), slope + 1);
    });
  }
}

TEST(FilterEffects, aSourceOnTheSlopeMovesAHiddenResonance) {
  const auto effect = built({32, {knobOf(1000.0), 0.0, 0.5, 0.0, 1.0}});
  const double source[32] = {0.5};
  const double depth = 1.0;
  effect->setModSource(1, source);
  effect->setModDepth(1, &depth);
  EXPECT_NEAR(testing_support::responseDb(*effect, 1000.0), 20.0 * std::log10(qOf(0.5)), 0.03);
}

TEST(FilterEffects, theSteepFilterIsTheChebyshevPolynomialOfFourthOrder) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    for (int mode = 0; mode < 2; ++mode) {
      expectResponse({30, {knobOf(1000.0), 0.25, 0.5, mode * 1.0, 1.0}}, [&](double hz) {
        const double w = frequencyOver(hz, 1000.0).imag();
        const double v = mode == 1 ? 1.0 / w : w;
        const double t = 8.0 * std::pow(v, 4) - 8.0 * v * v + 1.0;
        const double rippleDb = 14.0 * 0.25 + 1.0;
        return 1.0 / std::sqrt(1.0 + (std::pow(10.0, rippleDb / 10.0) - 1.0) * t * t);
      });
    }
  }
}

TEST(FilterEffects, peakBoostsAndCutsWithTwoBellsAndDimPullsABoostBack) {
  for (double gainDb : {-12.0, 12.0}) {
    for (double dim : {0.0, 1.0}) {
      expectResponse({33, {knobOf(1000.0), 0.1, 0.5, 0.5 + gainDb / 48.0, dim}}, [&](double hz) {
        const C s = frequencyOver(hz, 1000.0);
        const double a = std::pow(10.0, gainDb / 2.0 / 2.0 / 20.0);
        const C bell = (s * s + s * a / qOf(0.1) + 1.0) / (s * s + s / (a * qOf(0.1)) + 1.0);
        const double pull = dim == 1.0 && gainDb > 0.0 ? std::pow(10.0, -gainDb / 20.0) : 1.0;
        return bell * bell * pull;
      });
    }
  }
}

TEST(FilterEffects, vowelIsThreeBellsAtTheFormantsOfItsSet) {
  // Halfway between "had" and "hood", the first two of the fourth set.
  const double formants[] = {550.0, 1370.0, 2325.0};
  const double gain = 0.5, dim = 0.25;
  for (double rate : kRates) {
    ScopedRate scope(rate);
    expectResponse({36, {0.25, 1.0, 0.5, gain, dim}}, [&](double hz) {
      const double a = std::pow(10.0, 24.0 * gain / 40.0);
      const C z = std::polar(1.0, -2.0 * std::numbers::pi * hz / sampleRate);
      C product = dim / (a * a) + 1.0 - dim;
      for (double formant : formants) {
        const double w = 2.0 * std::numbers::pi * formant / sampleRate;
        const double x = std::sin(w) * 0.1;
        const C middle = -2.0 * std::cos(w) * z;
        product *= (1.0 + x * a + middle + (1.0 - x * a) * z * z) /
                   (1.0 + x / a + middle + (1.0 - x / a) * z * z);
      }
      return product;
    });
  }
}

TEST(FilterEffects, theLastVowelSetThatWasChosenSoundsInAllVowels) {
  const Knobs first{36, {0.0, 0.0, 0.5, 1.0, 0.0}};
  const Knobs second{36, {0.0, 1.0, 0.5, 1.0, 0.0}};
  const auto older = built(first);
  const auto newer = built(second);  // its set holds for the older one as well
  EXPECT_NEAR(testing_support::responseDb(*older, 660.0),
              testing_support::responseDb(*newer, 660.0), 1e-6);
  const auto third = built(first);  // and back
  EXPECT_GT(testing_support::responseDb(*third, 270.0),
            testing_support::responseDb(*third, 660.0) + 6.0);
}

TEST(FilterEffects, stateVariableIsOneResonantAndOnePlainStage) {
  const double inverseQ = 1.0 - (1.1 - 0.1 * std::pow(knobOf(1000.0), 3)) * 0.6;
  for (int mode = 0; mode < 4; ++mode) {
    expectResponse({29, {knobOf(1000.0), 0.6, 0.5, mode / 3.0, 1.0}}, [&](double hz) {
      const C s = frequencyOver(hz, 1000.0);
      const C numerators[] = {1.0, s * s, s, s};
      const C first = numerators[mode] / (s * s + s * inverseQ + 1.0);
      return mode == 2 ? first : first * numerators[mode] / (s * s + s + 1.0);
    });
  }
}

/// What averaging two neighbours leaves of a frequency.
C averaged(double hz) {
  return 0.5 * (1.0 + std::polar(1.0, -2.0 * std::numbers::pi * hz / sampleRate));
}

TEST(FilterEffects, drivenPairIsABandOrTwoEnds) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    for (int mode = 0; mode < 6; ++mode) {
      expectResponse({56, {knobOf(400.0), knobOf(2000.0), 0.0, mode / 5.0, 1.0}}, [&](double hz) {
        const int sections = 2 * (mode % 3 + 1);
        const C low = std::pow(lowpass(frequencyOver(hz, 2000.0), qOf(0.0)), sections);
        const C high = std::pow(highpass(frequencyOver(hz, 400.0), qOf(0.0)), sections);
        return averaged(hz) * (mode > 2 ? low + high : low * high);
      });
    }
  }
}

TEST(FilterEffects, variablePairHasASlopeForEachSide) {
  for (int slopes = 0; slopes < 16; ++slopes) {
    const int up = slopes / 4, down = slopes % 4;
    expectResponse({57, {knobOf(400.0), up / 3.0, knobOf(2000.0), down / 3.0, 1.0}},
                   [&](double hz) {
                     return std::pow(lowpass(frequencyOver(hz, 2000.0), qOf(0.0)), down + 1) *
                            std::pow(highpass(frequencyOver(hz, 400.0), qOf(0.0)), up + 1);
                   });
  }
}

TEST(FilterEffects, spreadMovesTheChannelsOfAFilterApart) {
  for (int id : {29, 30, 31, 32, 33}) {
    const bool isPeak = id == 33;
    const Knobs knobs{id, {0.5, 0.0, 0.75, isPeak ? 1.0 : 0.0, isPeak ? 0.0 : 1.0}};
    // Half of the spread's way is a quarter of the range, once squared; over 400^(1/4) is 4.47.
    const double upper = 1000.0 * std::pow(400.0, 0.25);
    const auto left = built(knobs, false);
    const auto right = built(knobs, true);
    EXPECT_GT(testing_support::responseDb(*left, upper),
              testing_support::responseDb(*right, upper) + 10.0)
        << id;
  }
}

}  // namespace
}  // namespace orvantesco
