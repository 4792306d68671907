#include "fx/Comb.h"

#include "delay/DelayTestSupport.h"
#include "fx/BiquadFixture.h"
#include "fx/EffectCatalogue.h"
#include "fx/EffectPromises.h"

namespace orvantesco {
namespace {

using namespace testing_support;

struct CombRecipe {
  double pitch = 0.51;  ///< knob: 10^(4 pitch) Hz
  double feedback = 0.5;
  double highpass = 0.0;
  double lowpass = 0.8;
  double spread = 0.0;
  bool isRight = false;
  Modulations modulations{};
};

Maker makerOf(const CombRecipe& recipe) {
  return [recipe] {
    auto comb = std::make_unique<Comb>(recipe.isRight);
    const double values[] = {recipe.pitch, recipe.feedback, recipe.highpass, recipe.lowpass,
                             recipe.spread};
    for (int k = 0; k < 5; ++k) comb->setParam(k, values[k]);
    return comb;
  };
}

/// A filter at a knob that moves from vector to vector.
FilterRecipe filterRecipe(int mode, double knob, const Modulations& all, int control) {
  FilterRecipe recipe;
  recipe.mode = mode;
  recipe.cutoff = 0.0;
  recipe.modulation[0] = [knob, all, control](int vector) {
    const auto sum = static_cast<float>(knob + valueOf(all, control, vector));
    return static_cast<double>(std::clamp(sum, 0.0F, 1.0F));
  };
  return recipe;
}

/// The comb sample by sample; what goes round waits for the next vector.
class CombModel {
 public:
  explicit CombModel(const CombRecipe& start)
      : recipe(start),
        lowpass(filterRecipe(0, start.lowpass, start.modulations, 3)),
        highpass(filterRecipe(3, start.highpass, start.modulations, 2)) {}

  Signal run(const Signal& in) {
    Signal out;
    for (size_t at = 0; at < in.size(); at += kVectorLength) runVector(&in[at], out);
    return out;
  }

 private:
  void runVector(const double* in, Signal& out) {
    control();
    for (size_t i = 0; i < 32; ++i) round[i] += in[i];
    ring.write(round, 32);
    const double target = std::max(blockGlide.tick(delaySamples), 0.0001 * sampleRate);
    for (int i = 0; i < 32; ++i) {
      const double d = sampleGlide.tick(target);
      const int k = static_cast<int>(d);
      const double f = d - k;
      const long p = ring.writePosition() - 32 + i - k;
      last = (1.0 - f) / (1.0 + f) * (ring.at(p) - last) + ring.at(p - 1);
      const double sum = highpass.tick(lowpass.tick(last)) + in[i];
      round[i] = std::tanh(sum * feedback) * 1.66;
      out.push_back(sum);
    }
  }

  void control() {
    const double sign = recipe.isRight ? -1.0 : 1.0;
    const double s = recipe.spread * sign + valueOf(recipe.modulations, 0, vector) +
                     valueOf(recipe.modulations, 4, vector) * sign;
    const double hz =
        std::clamp(std::pow(10.0, s) * std::pow(10.0, 4.0 * recipe.pitch), 1.0, 10000.0);
    delaySamples = sampleRate / 2.0 / hz;
    feedback =
        -0.5 * std::clamp(recipe.feedback + valueOf(recipe.modulations, 1, vector), 0.0, 1.0);
    ++vector;
  }

  CombRecipe recipe;
  BiquadModel lowpass, highpass;
  PlainRing ring{65536};
  OnePole blockGlide{0.010 * sampleRate / 32.0};
  PlainGlide sampleGlide{5.0, sampleRate};
  double round[32] = {};
  double delaySamples = 0.0, feedback = 0.0, last = 0.0;
  int vector = 0;
};

double againstModel(const CombRecipe& recipe, const Signal& in) {
  const auto comb = makerOf(recipe)();
  ModulatedBlock modulated(*comb, recipe.modulations);
  return largestDifference(run(modulated, in), CombModel(recipe).run(in));
}

TEST(Comb, isItsModelAtEveryRate) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    for (double pitch : {0.12, 0.51, 0.83}) {
      for (double feedback : {0.0, 0.5, 1.0}) {
        const CombRecipe recipe{pitch, feedback, 0.3, 0.8, 0.1, true};
        EXPECT_LT(againstModel(recipe, noise(150)), 1e-12) << pitch << " at " << rate;
        EXPECT_LT(againstModel(recipe, impulse(150)), 1e-12) << pitch << " at " << rate;
      }
    }
  }
}

TEST(Comb, isItsModelUnderModulationOfEveryControl) {
  for (bool isRight : {false, true}) {
    CombRecipe recipe{0.6, 0.5, 0.2, 0.7, 0.1, isRight};
    recipe.modulations = {{0, [](int v) { return 0.3 * std::sin(0.05 * v); }},
                          {1, [](int v) { return 0.9 * std::sin(0.031 * v); }},
                          {2, [](int v) { return 0.4 * std::sin(0.013 * v); }},
                          {3, [](int v) { return 0.5 * std::sin(0.017 * v); }},
                          {4, [](int v) { return v % 40 < 20 ? 0.1 : -0.1; }}};
    EXPECT_LT(againstModel(recipe, noise(300)), 1e-12) << isRight;
  }
}

/// The line's first echo of an impulse once the delay has come to rest, in samples.
size_t firstEcho(Comb& comb, int vectors) {
  run(comb, Signal(1500 * kVectorLength, 0.0));
  const Signal out = run(comb, impulse(vectors));
  const auto peak = std::max_element(
      out.begin() + 1, out.end(), [](double a, double b) { return std::fabs(a) < std::fabs(b); });
  return static_cast<size_t>(peak - out.begin());
}

TEST(Comb, anEchoOfHalfAPeriodAddsToTheSignal) {
  const auto comb = makerOf({0.5, 0.0, 0.0, 1.0})();
  // 100 Hz: 220.5 samples, and one or two more through the filters.
  const auto at = firstEcho(static_cast<Comb&>(*comb), 20);
  EXPECT_GE(at, 220U);
  EXPECT_LE(at, 223U);
}

TEST(Comb, oneHertzFitsAtTheHighestRate) {
  ScopedRate scope(96000.0);
  Comb comb;
  EXPECT_EQ(comb.capacity(), 65536);
  comb.setParam(0, 0.0);
  comb.setParam(3, 1.0);
  const auto at = firstEcho(comb, 1600);
  EXPECT_GE(at, 48000U);
  EXPECT_LE(at, 48004U);
}

TEST(Comb, whatGoesRoundIsOneVectorLateAndTurnedOver) {
  const auto comb = makerOf({0.5, 1.0, 0.0, 1.0})();
  run(*comb, Signal(1500 * kVectorLength, 0.0));
  const Signal in = impulse(20);
  const Signal out = run(*comb, in);
  // The impulse itself goes round at once: it comes 32 samples behind its own echo.
  const double echo = *std::max_element(out.begin() + 215, out.begin() + 230);
  const double round = *std::min_element(out.begin() + 247, out.begin() + 262);
  EXPECT_NEAR(round / echo, std::tanh(-0.5) * 1.66, 0.02);
}

TEST(Comb, theClipHoldsEveryLevel) {
  const auto comb = makerOf({0.5, 1.0, 0.0, 1.0})();
  Signal loud = noise(2000);
  for (double& sample : loud) sample *= 1e6;
  run(*comb, loud);
  const Signal tail = run(*comb, Signal(2000 * kVectorLength, 0.0));
  EXPECT_LT(std::fabs(tail.back()), 0.1);
}

TEST(Comb, frequencyEndsAtItsLimits) {
  for (auto [spread, delay] : {std::pair(-10.0, 22050U), std::pair(10.0, 4U)}) {
    const auto comb = makerOf({0.5, 0.0, 0.0, 1.0, spread})();
    // The line itself reads no nearer than 0.1 ms, so beyond 5000 Hz nothing gets higher.
    EXPECT_NEAR(static_cast<double>(firstEcho(static_cast<Comb&>(*comb), 800)),
                static_cast<double>(delay), 3.0);
  }
}

/// The line reads no nearer than 0.1 ms, so the upper limit is heard only on the way back from it:
/// the shorter the delay it glides from, the later the comb comes down again.
TEST(Comb, comesBackFromTenKilohertzHoweverFarItWasPushed) {
  CombRecipe recipe{1.0, 0.5, 0.0, 1.0, -0.5, false};
  recipe.modulations = {{4, [](int v) { return v % 60 < 30 ? 8.0 : 0.0; }}};
  EXPECT_LT(againstModel(recipe, noise(240)), 1e-12);
}

TEST(Comb, theLastKnobIsNoMix) {
  const auto comb = makerOf({0.5, 0.5, 0.0, 1.0, 0.3})();
  EXPECT_EQ(comb->wetShare(), 1.0);
  EXPECT_FALSE(fifthParamIsMix(35));
}

TEST(Comb, keepsThePromisesOfABlock) {
  const Maker make = makerOf({0.6, 0.7, 0.2, 0.8, 0.1});
  expectFreshAfterRateChange(make);
  expectOneResultFromEveryCall(make);
  expectNoTailAfterBypass(make);
  expectFreshAfterBadInput(make);
  expectLoudImpulseDiesAway(make, 3000);
  expectParametersThatAreNoNumbersIgnored(make);
  for (int control = 0; control < 5; ++control) expectKnobAfterSourceGoesAway(make, control);
}

}  // namespace
}  // namespace orvantesco
