#include "fx/Compressor.h"

#include <numbers>

#include "fx/BiquadModel.h"
#include "fx/EffectCatalogue.h"
#include "fx/EffectPromises.h"

namespace orvantesco {
namespace {

using namespace testing_support;

struct CompressorRecipe {
  double threshold = 0.1;
  double ratio = 4.0;
  double attackMs = 10.0;
  double releaseMs = 100.0;
  double gain = 0.0;
  Modulations modulations{};
};

Maker makerOf(const CompressorRecipe& recipe) {
  return [recipe] {
    auto compressor = std::make_unique<Compressor>(false);
    const double values[] = {recipe.threshold, recipe.ratio, recipe.attackMs, recipe.releaseMs,
                             recipe.gain};
    for (int k = 0; k < 5; ++k) compressor->setParam(k, values[k]);
    return compressor;
  };
}

/// The compressor written out; its times already doubled.
class CompressorModel {
 public:
  explicit CompressorModel(const CompressorRecipe& start) : recipe(start) {}

  Signal run(const Signal& in) {
    Signal out;
    const auto late = static_cast<size_t>(0.01 * sampleRate);
    for (size_t at = 0; at < in.size(); at += kVectorLength) {
      const double g = gainOf(&in[at], static_cast<int>(at / 32));
      for (size_t i = at; i < at + 32; ++i) out.push_back(i < late ? 0.0 : in[i - late] * g);
    }
    return out;
  }

  double level = 0.0;

 private:
  double gainOf(const double* x, int vector) {
    const double trim = std::clamp(recipe.gain + valueOf(recipe.modulations, 4, vector), 0.0, 1.0);
    double sum = 0.0;
    for (int i = 0; i < 32; ++i) sum += x[i] * x[i];
    meanSquare = 0.015 * (sum / 32.0) + 0.985 * meanSquare + 1e-9;
    const double p = std::sqrt(meanSquare - 1e-9);
    const double v = std::max(0.0, std::log(std::fabs(p / recipe.threshold)) * 8.685889638065037);
    if (v < level) {
      level *= factor(-2.0 * recipe.releaseMs);
    } else {
      level = std::min(level * factor(2.0 * recipe.attackMs), v);
    }
    level = std::max(level, 0.001867442732);
    const double db = (level - 0.001867442732) * 0.998132557 * (recipe.ratio - 1.0) / recipe.ratio;
    const double reduction = std::exp(-db * 0.1151292546497);
    return glide.tick(std::exp(24.0 * trim * 0.1151292546497) * reduction);
  }

  /// Growth of a vector for a time above 0, decay for one below.
  static double factor(double ms) {
    return std::pow(std::exp(2.0 * std::numbers::pi / (ms * 0.001 * sampleRate)), 32.0);
  }

  CompressorRecipe recipe;
  OnePole glide{0.032 * sampleRate / 32.0};
  double meanSquare = 0.0;
};

double againstModel(const CompressorRecipe& recipe, const Signal& in) {
  const auto compressor = makerOf(recipe)();
  ModulatedBlock modulated(*compressor, recipe.modulations);
  return largestDifference(run(modulated, in), CompressorModel(recipe).run(in));
}

/// Noise that is loud and soft in turn.
Signal strokes(int vectors) {
  Signal signal = noise(vectors, 7);
  for (size_t i = 0; i < signal.size(); ++i) signal[i] *= i / 3200 % 2 == 0 ? 1.0 : 0.02;
  return signal;
}

TEST(Compressor, isItsModelAtEveryRate) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    for (double ratio : {1.0, 1.5, 10.0}) {
      for (double threshold : {1.0, 0.1, 0.004}) {
        const CompressorRecipe recipe{threshold, ratio, 5.0, 60.0, 0.1};
        EXPECT_LT(againstModel(recipe, strokes(600)), 1e-12) << ratio << " at " << rate;
      }
    }
    EXPECT_LT(againstModel({}, impulse(100)), 1e-12) << rate;
    EXPECT_LT(againstModel({}, Signal(100 * 32, 0.0)), 1e-12) << rate;
  }
}

TEST(Compressor, isItsModelUnderModulationOfItsGainAlone) {
  CompressorRecipe recipe{0.1, 4.0, 5.0, 60.0, 0.3};
  for (int control = 0; control < 5; ++control) {
    recipe.modulations[control] = [control](int v) { return std::sin(0.02 * v + control); };
  }
  EXPECT_LT(againstModel(recipe, strokes(600)), 1e-11);
}

/// The signal is heard 10 ms late, in whole samples.
TEST(Compressor, aRatioOfOneDelaysAndTrimsAndNoMore) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    const auto compressor = makerOf({0.003, 1.0, 1.0, 20.0, 0.5})();
    run(*compressor, noise(2000));
    const Signal in = noise(100, 4);
    const Signal out = run(*compressor, in);
    const auto late = static_cast<size_t>(rate / 100.0);
    const double trim = std::exp(12.0 * 0.1151292546497);
    double worst = 0.0;
    for (size_t i = late; i < in.size(); ++i) {
      worst = std::max(worst, std::fabs(out[i] - in[i - late] * trim));
    }
    EXPECT_LT(worst, 1e-9) << rate;
  }
}

/// Gain of the compressor for a steady tone whose mean square is that of `rms`, in dB.
double settledGainDb(Compressor& compressor, double rms) {
  Signal tone(6000 * kVectorLength);
  for (size_t i = 0; i < tone.size(); ++i) {
    tone[i] = rms * std::numbers::sqrt2 *
              std::sin(2.0 * std::numbers::pi * static_cast<double>(i) / 32.0);
  }
  const Signal out = run(compressor, tone);
  double square = 0.0;
  for (size_t i = out.size() - 3200; i < out.size(); ++i) square += out[i] * out[i];
  return 20.0 * std::log10(std::sqrt(square / 3200.0) / rms);
}

TEST(Compressor, holdsWhatIsOverTheThresholdToTheRatio) {
  for (auto [ratio, expected] : {std::pair(2.0, -10.0), std::pair(4.0, -15.0)}) {
    Compressor compressor;
    compressor.setParam(0, 0.05);
    compressor.setParam(1, ratio);
    compressor.setParam(4, 0.0);
    // A level that falls by the last bit falls by a whole vector's factor, here 1 % of its dB.
    EXPECT_NEAR(settledGainDb(compressor, 0.5), expected, 0.15) << "20 dB over";
  }
  Compressor below;
  below.setParam(0, 0.5);
  below.setParam(1, 10.0);
  below.setParam(4, 0.25);
  EXPECT_NEAR(settledGainDb(below, 0.05), 6.0, 1e-3) << "the trim alone";
}

/// Seconds of a constant input until the gain has come to the other side of a bound; what the
/// line still holds of the input before passes first.
double secondsUntil(Compressor& compressor, double in, double bound) {
  run(compressor, Signal(20 * kVectorLength, in));
  Signal constant(kVectorLength, in), out(kVectorLength);
  compressor.process(constant.data(), out.data());
  const bool fromAbove = out[31] > bound * in;
  int vectors = 21;
  while (vectors < 100000 && (out[31] > bound * in) == fromAbove) {
    compressor.process(constant.data(), out.data());
    ++vectors;
  }
  return vectors * 32.0 / sampleRate;
}

/// The release of a compressor with its knob at `ms`, from 29.5 dB over to 3 dB of reduction left.
double releaseSeconds(double ms) {
  Compressor compressor;
  compressor.setParam(0, 0.01);
  compressor.setParam(1, 1e6);
  compressor.setParam(3, ms);
  compressor.setParam(4, 0.0);
  run(compressor, Signal(3000 * kVectorLength, 0.3));
  return secondsUntil(compressor, 1e-5, 0.708);
}

// A level of 29.5 dB falls to 3 dB within 0.364 of the time that runs, and that is twice the knob.
// What the detector and the smoothing of the gain add is the same for both.
TEST(Compressor, aUserHearsTwiceTheTimesThatHeSets) {
  const double difference = releaseSeconds(6000.0) - releaseSeconds(3000.0);
  const double shareOfTime = std::log(29.5 / 3.0) / (2.0 * std::numbers::pi);
  EXPECT_NEAR(difference, 2.0 * 3.0 * shareOfTime, 0.03);
}

TEST(Compressor, attackRunsTwiceTheKnobToo) {
  auto attackSeconds = [](double ms) {
    Compressor compressor;
    compressor.setParam(0, 0.001);
    compressor.setParam(1, 1e6);
    compressor.setParam(2, ms);
    compressor.setParam(4, 0.0);
    run(compressor, Signal(1000 * kVectorLength, 1e-4));
    return secondsUntil(compressor, 0.5, 0.1);
  };
  // From the floor of the level to 20 dB, at exp(2 pi) in the time that runs.
  const double shareOfTime = std::log(20.0 / 0.001867442732) / (2.0 * std::numbers::pi);
  EXPECT_NEAR(attackSeconds(600.0) - attackSeconds(200.0), 2.0 * 0.4 * shareOfTime, 0.02);
}

TEST(Compressor, theGainIsThereBeforeTheStroke) {
  Compressor compressor;
  compressor.setParam(0, 0.01);
  compressor.setParam(1, 1e6);
  compressor.setParam(2, 0.5);
  compressor.setParam(4, 0.0);
  run(compressor, Signal(1000 * kVectorLength, 1e-3));
  Signal in(40 * kVectorLength, 1e-3);
  std::fill(in.begin() + 320, in.end(), 1.0);
  const Signal out = run(compressor, in);
  EXPECT_NEAR(out[300] / 1e-3, 1.0, 1e-3);
  EXPECT_LT(out[760] / 1e-3, 0.5) << "the last soft sample is turned down already";
}

TEST(Compressor, theLastKnobIsNoMix) {
  EXPECT_EQ(makerOf({})()->wetShare(), 1.0);
  EXPECT_FALSE(fifthParamIsMix(37));
}

TEST(Compressor, controlsBeyondTheirRangeAreHeld) {
  Compressor compressor;
  const double values[] = {-1.0, -5.0, -10.0, -10.0, 40.0};
  for (int k = 0; k < 5; ++k) compressor.setParam(k, values[k]);
  const Signal out = run(compressor, noise(500));
  EXPECT_TRUE(std::all_of(out.begin(), out.end(), [](double s) { return std::fabs(s) < 16.0; }));
}

TEST(Compressor, badInputIsDroppedAndForgotten) {
  for (double bad : {std::numeric_limits<double>::quiet_NaN(), HUGE_VAL, -1e13}) {
    const auto compressor = makerOf({})(), fresh = makerOf({})();
    Signal hit = noise(60);
    hit[70] = bad;
    const Signal out = run(*compressor, hit);
    EXPECT_TRUE(std::all_of(out.begin(), out.end(), [](double s) { return std::fabs(s) < 1e8; }));
    run(*compressor, Signal(20000 * kVectorLength, 0.0));
    run(*fresh, Signal(20000 * kVectorLength, 0.0));
    const Signal in = noise(60, 5);
    EXPECT_LT(largestDifference(run(*compressor, in), run(*fresh, in)), 1e-9) << bad;
  }
}

TEST(Compressor, keepsThePromisesOfABlock) {
  const Maker make = makerOf({0.05, 6.0, 3.0, 50.0, 0.2});
  expectFreshAfterRateChange(make);
  expectOneResultFromEveryCall(make);
  expectNoTailAfterBypass(make);
  expectLoudImpulseDiesAway(make, 100);
  expectParametersThatAreNoNumbersIgnored(make);
  expectKnobAfterSourceGoesAway(make, 4);
}

}  // namespace
}  // namespace orvantesco
