#pragma once

#include <array>

#include "fx/ShifterModel.h"

namespace orvantesco::testing_support {

/// The pitch shifter, sample by sample, with each of its voices.
class PitchShifterModel {
 public:
  PitchShifterModel(const Recipe& recipeToFollow, bool dual)
      : recipe(recipeToFollow), isDual(dual), voices(dual ? 3 : 1), buffer(65536, 0.0L) {
    reset(10.0);
  }

  void reset(double sizeMs) {
    std::fill(buffer.begin(), buffer.end(), 0.0L);
    for (auto& pair : taps) pair = {};
    for (PlainSection& section : antiAlias) section.s1 = section.s2 = 0.0L;
    writeIndex = 0;
    sizeState = static_cast<float>(sizeMs);
  }

  void vector(int v, const double* in, double* out) {
    const double term = 1.0 - std::exp2(semitones(v) * 0.083333333333333);
    const auto target = static_cast<float>(sizeMs(v) * 0.001 * sampleRate);
    rampTo(target);
    follow(cutoffs.tick(term));
    for (int i = 0; i < kVectorLength; ++i) {
      Real x = in[i];
      for (PlainSection& section : antiAlias) x = section.step(x);
      buffer[static_cast<size_t>(writeIndex++ & 0xffff)] = x;
      Real sum = 0.0L;
      for (size_t voice = 0; voice < static_cast<size_t>(voices); ++voice) {
        const auto at = static_cast<size_t>(i);
        sum += readVoice(voice, size[at], static_cast<float>(term) / size[at]);
      }
      out[i] = static_cast<double>(sum / voices);
    }
  }

 private:
  static double wrapped(double p) { return p >= 2.0 ? p - 2.0 : p < 0.0 ? p + 2.0 : p; }

  double semitones(int v) const {
    const bool second = isDual && recipe.isRight;
    const double coarse = std::round(12.0 * recipe.params[second ? 1 : 0](v));
    const double fine = isDual ? 0.0 : recipe.params[1](v);
    const double spread = recipe.params[3](v) * recipe.sign() * (isDual ? 0.5 : 1.0);
    const double modulation = recipe.modulation(second ? 1 : 0, v) * 12.0 +
                              recipe.modulation(second ? 2 : 1, v) * 0.5 +
                              recipe.modulation(3, v) * recipe.sign();
    return std::min(std::max(spread + fine + coarse + modulation, -12.0), 12.0);
  }

  double sizeMs(int v) const {
    const double knob = static_cast<double>(static_cast<float>(recipe.params[2](v)));
    if (!recipe.sources[2]) return knob;
    const double e = recipe.depth * std::fabs(recipe.depth);
    return std::min(std::max(e * recipe.sources[2](v) * 99.0 + knob, 1.0), 100.0);
  }

  void rampTo(float target) {
    const double samples = 500.0 / 32.0 * 0.001 * sampleRate;
    const double a = std::exp(-2.0 * static_cast<double>(kPi) / samples);
    const float drive = static_cast<float>(1.0 - a) * target;
    Real power = 1.0L, sum = 0.0L;
    for (float& value : size) {
      sum += power;
      power *= a;
      value = static_cast<float>(power) * sizeState + drive * static_cast<float>(sum);
    }
    sizeState = size.back();
  }

  void follow(double term) {
    const double corner = std::min(std::max(0.5 * term + 1.0, 0.5), 0.99);
    const auto w = static_cast<float>(static_cast<double>(kPi) * corner);
    const double s = static_cast<double>(std::sin(w)), k = static_cast<double>(std::cos(w));
    for (PlainSection& section : antiAlias) {
      section.b0 = section.b2 = (1.0 - k) / 2.0;
      section.b1 = 1.0 - k;
      section.a0 = 1.0 + s / 1.8;
      section.a1 = -2.0 * k;
      section.a2 = 1.0 - s / 1.8;
    }
  }

  Real readVoice(size_t voice, float length, float rate) {
    double& phase = phases[voice];
    phase = wrapped(phase + static_cast<double>(rate));
    const double both[] = {phase, wrapped(phase + 1.0)};
    for (size_t tap = 0; tap < 2; ++tap) {
      const double d = static_cast<double>(length) * both[tap];
      const int k = static_cast<int>(d);
      const Real f = 1.0 - (d - k);
      const auto newer = static_cast<size_t>((writeIndex - k) & 0xffff);
      const auto older = static_cast<size_t>((writeIndex - k - 1) & 0xffff);
      const Real between = (buffer[newer] - taps[voice][tap]) * f * f + buffer[older];
      taps[voice][tap] = f == 1.0L ? buffer[newer] : between;
    }
    const Real w = 1.0L - std::fabs(static_cast<Real>(phase) - 1.0L);
    return (1.0L - w) * taps[voice][1] + w * taps[voice][0];
  }

  const Recipe recipe;
  const bool isDual;
  const int voices;
  std::vector<Real> buffer;
  PlainSection antiAlias[4];
  PlainSmoother cutoffs{5.0};
  std::array<float, kVectorLength> size{};
  float sizeState = 0.0F;
  int writeIndex = 0;
  double phases[3] = {};
  std::array<std::array<Real, 2>, 3> taps{};
};

}  // namespace orvantesco::testing_support
