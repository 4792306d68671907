#pragma once

#include <gtest/gtest.h>

#include <functional>

#include "fx/DSPShell.h"
#include "fx/FxTestSupport.h"

// What the tests of the shifters share: a recipe that block and model both follow, and the plain
// pieces of the models, which run sample by sample and share no code with the blocks.

namespace orvantesco::testing_support {

using Real = long double;

inline const Real kPi = std::acos(-1.0L);

/// A number for each vector.
using Curve = std::function<double(int)>;

inline Curve constant(double value) {
  return [value](int) { return value; };
}

/// Settings and modulation of one channel.
struct Recipe {
  static constexpr int kParams = 5;
  bool isRight = false;
  Curve params[kParams];
  Curve sources[kParams];  ///< empty for no modulator
  double depth = 0.5;      ///< of all of them

  double sign() const { return isRight ? -1.0 : 1.0; }
  double modulation(int k, int vector) const {
    return sources[k] ? depth * sources[k](vector) : 0.0;
  }
};

/// A block that follows a recipe, vector by vector.
class Follower {
 public:
  Follower(DSPShell& blockToRun, const Recipe& recipeToFollow)
      : block(blockToRun), recipe(recipeToFollow) {
    for (int k = 0; k < Recipe::kParams; ++k) {
      if (!recipe.sources[k]) continue;
      block.setModSource(k, cells[k]);
      block.setModDepth(k, &recipe.depth);
    }
  }
  Follower(const Follower&) = delete;
  Follower& operator=(const Follower&) = delete;

  void process(const double* in, double* out) {
    for (int k = 0; k < Recipe::kParams; ++k) {
      if (recipe.params[k]) block.setParam(k, recipe.params[k](vector));
      if (recipe.sources[k]) cells[k][0] = recipe.sources[k](vector);
    }
    double copy[kVectorLength];
    std::copy_n(in, kVectorLength, copy);
    block.process(out == in ? out : copy, out);
    ++vector;
  }

  void processInPlace(double* inOut) { process(inOut, inOut); }

 private:
  DSPShell& block;
  const Recipe recipe;
  int vector = 0;
  double cells[Recipe::kParams][kVectorLength] = {};
};

/// In double, for its last bits matter: a frequency is held for thousands of samples.
class PlainSmoother {
 public:
  explicit PlainSmoother(double ms)
      : a(std::exp(-2.0 * static_cast<double>(kPi) / (ms * 0.001 * sampleRate))) {}
  static PlainSmoother perVector(double ms) { return PlainSmoother(ms / kVectorLength); }
  double tick(double x) {
    y = x * (1.0 - a) + a * y + 1e-15;
    return y - 1e-15;
  }

 private:
  double a;
  double y = 0.0;
};

/// A section in transposed direct form II. Its taps are doubles, as a filter's taps are; what runs
/// through it is not rounded to them.
struct PlainSection {
  double b0 = 1.0, b1 = 0.0, b2 = 0.0, a0 = 1.0, a1 = 0.0, a2 = 0.0;
  Real s1 = 0.0L, s2 = 0.0L;

  Real step(Real x) {
    const Real y = b0 / a0 * x + s1;
    s1 = s2 + b1 / a0 * x - a1 / a0 * y;
    s2 = b2 / a0 * x - a2 / a0 * y;
    return y;
  }
};

/// Runs a model with `vector(number, in, out)` over a whole signal.
template <class Model>
Signal runModel(Model&& model, const Signal& in) {
  Signal out(in.size(), 0.0);
  for (size_t at = 0, v = 0; at < in.size(); at += kVectorLength, ++v) {
    model.vector(static_cast<int>(v), &in[at], &out[at]);
  }
  return out;
}

inline Signal follow(DSPShell& block, const Recipe& recipe, const Signal& in) {
  Follower follower(block, recipe);
  return run(follower, in);
}

inline Signal tone(double hz, int vectors) {
  Signal signal(static_cast<size_t>(vectors) * kVectorLength);
  const double step = 2.0 * static_cast<double>(kPi) * hz / sampleRate;
  for (size_t i = 0; i < signal.size(); ++i) signal[i] = std::sin(step * static_cast<double>(i));
  return signal;
}

/// Amplitude of one frequency over the last `count` samples, through a Hann window.
inline double amplitudeAt(const Signal& signal, double hz, size_t count) {
  const size_t first = signal.size() - count;
  const double step = 2.0 * static_cast<double>(kPi) * hz / sampleRate;
  const double window = 2.0 * static_cast<double>(kPi) / static_cast<double>(count);
  double re = 0.0, im = 0.0;
  for (size_t i = 0; i < count; ++i) {
    const auto at = static_cast<double>(i);
    const double x = signal[first + i] * (1.0 - std::cos(window * at));
    re += x * std::cos(step * at);
    im += x * std::sin(step * at);
  }
  return 2.0 * std::hypot(re, im) / static_cast<double>(count);
}

inline bool allFinite(const Signal& signal) {
  return std::all_of(signal.begin(), signal.end(), [](double x) { return std::isfinite(x); });
}

inline double peakOf(const Signal& signal) {
  double peak = 0.0;
  for (const double x : signal) peak = std::fmax(peak, std::fabs(x));
  return peak;
}

/// Without its sources, and with nothing but noise to hear, a block is not mute. Silence is finite
/// too: a block that went on dropping every vector would pass for a healthy one.
inline void expectItSoundsOnItsOwn(DSPShell& block) {
  for (int k = 0; k < DSPShell::kControlCount; ++k) block.setModSource(k, nullptr);
  run(block, noise(1000, 21));
  const Signal heard = run(block, noise(100, 22));
  EXPECT_TRUE(allFinite(heard));
  EXPECT_GT(peakOf(heard), 0.01);
}

}  // namespace orvantesco::testing_support
