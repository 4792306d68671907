#pragma once

#include <array>
#include <complex>
#include <functional>
#include <numbers>
#include <vector>

#include "fx/FxTestSupport.h"

namespace orvantesco::testing_support {

/// What a filter is set to. A modulation gives its value for each vector, depth included.
struct FilterRecipe {
  int mode = 0;
  int stages = 1;
  bool isRight = false;
  double driveDb = 24.0;
  double cutoff = 0.5;
  double resonance = 0.0;
  double spread = 0.0;  ///< the control, before its square
  double gain = 1.0;
  double dim = 0.0;
  std::array<std::function<double(int)>, 4> modulation{};
  bool dampsSweeps = true;
};

/// One-pole smoothing, one sample after the other.
struct OnePole {
  explicit OnePole(double samples) : a(std::exp(-2.0 * std::numbers::pi / samples)) {}
  double tick(double x) {
    y = x * (1.0 - a) + a * y + 1e-15;
    return y - 1e-15;
  }
  double a;
  double y = 0.0;
};

/// Recursion of any order, transposed direct form II, one sample after the other.
struct PlainRecursion {
  double tick(double x) {
    const double y = b[0] * x + (s.empty() ? 0.0 : s[0]);
    for (size_t k = 0; k < s.size(); ++k) {
      const double next = k + 1 < s.size() ? s[k + 1] : 0.0;
      s[k] = next + b[k + 1] * x - a[k + 1] * y;
    }
    return y;
  }
  /// Takes taps divided by a[0]; the memory stays.
  void take(std::vector<double> numerator, std::vector<double> denominator) {
    const double lead = denominator[0];
    for (double& tap : numerator) tap /= lead;
    for (double& tap : denominator) tap /= lead;
    b = std::move(numerator);
    a = std::move(denominator);
    s.resize(b.size() - 1, 0.0);
  }
  std::vector<double> b{1.0}, a{1.0}, s;
};

using Complex = std::complex<long double>;

/// Butterworth (rippleDb 0) or Chebyshev type I by poles and zeros.
inline void designByPoles(int order, double corner, double rippleDb, bool isHighpass,
                          PlainRecursion& recursion) {
  const long double pi = std::numbers::pi_v<long double>;
  const long double warp = std::tan(pi * static_cast<long double>(corner));
  const long double ripple = std::pow(10.0L, static_cast<long double>(rippleDb) / 10.0L);
  const long double mu =
      rippleDb > 0.0 ? std::asinh(1.0L / std::sqrt(ripple - 1.0L)) / order : 0.0L;
  std::vector<Complex> poles;
  for (int k = 0; k < order; ++k) {
    const long double angle = pi * (2 * k + 1) / (2 * order);
    const Complex pole =
        rippleDb > 0.0 ? Complex(-std::sinh(mu) * std::sin(angle), std::cosh(mu) * std::cos(angle))
                       : Complex(-std::sin(angle), std::cos(angle));
    const Complex analogue = isHighpass ? warp / pole : warp * pole;
    poles.push_back((1.0L + analogue) / (1.0L - analogue));
  }
  std::vector<Complex> denominator{1.0L}, numerator{1.0L};
  auto times = [](std::vector<Complex>& polynomial, Complex root) {
    polynomial.push_back(0.0L);
    for (size_t i = polynomial.size() - 1; i > 0; --i) polynomial[i] -= root * polynomial[i - 1];
  };
  for (const Complex& pole : poles) {
    times(denominator, pole);
    times(numerator, isHighpass ? 1.0L : -1.0L);
  }
  const long double at = isHighpass ? -1.0L : 1.0L;
  Complex top = 0.0L, bottom = 0.0L;
  long double power = 1.0L;
  for (size_t i = 0; i < denominator.size(); ++i, power *= at) {
    top += numerator[i] * power;
    bottom += denominator[i] * power;
  }
  const long double passband = rippleDb > 0.0 && order % 2 == 0 ? 1.0L / std::sqrt(ripple) : 1.0L;
  const long double gain = passband * std::abs(bottom) / std::abs(top);
  std::vector<double> b, a;
  for (size_t i = 0; i < denominator.size(); ++i) {
    b.push_back(static_cast<double>(numerator[i].real() * gain));
    a.push_back(static_cast<double>(denominator[i].real()));
  }
  recursion.take(b, a);
}

/// The effects' filter, one sample after the other.
class BiquadModel {
 public:
  explicit BiquadModel(const FilterRecipe& filterRecipe)
      : recipe(filterRecipe),
        sign(filterRecipe.isRight ? -1.0 : 1.0),
        cutoffGlide(0.001 * sampleRate),
        resonanceGlide(0.005 * sampleRate),
        gainGlide(0.005 * sampleRate / 32.0) {
    isDirect = recipe.mode == 15 || recipe.mode == 16 || recipe.mode == 18 || recipe.mode == 19;
    if (recipe.mode == 15 || recipe.mode == 18) recipe.stages = 2;
    if (recipe.mode == 16 || recipe.mode == 19) recipe.stages = 4;
    if (recipe.mode == 21) recipe.stages = 3;
    sections.resize(isDirect ? 1 : static_cast<size_t>(recipe.stages));
  }

  Signal run(const Signal& in) {
    Signal out;
    for (double sample : in) out.push_back(tick(sample));
    return out;
  }

  double tick(double x) {
    const int vector = static_cast<int>(samples / 32);
    if (samples % 32 == 0 && (vector == 0 || vector % 2 == 1)) control(vector);
    ++samples;
    for (PlainRecursion& section : sections) x = section.tick(x);
    return x * behind;
  }

 private:
  double modulated(int control, int vector) const {
    const auto& source = recipe.modulation[static_cast<size_t>(control)];
    return source ? source(vector) : 0.0;
  }

  void control(int vector) {
    const double spread = std::fabs(recipe.spread) * recipe.spread * sign;
    double c = static_cast<double>(static_cast<float>(recipe.cutoff)) + spread +
               modulated(0, vector) + modulated(2, vector) * sign;
    c = cutoffGlide.tick(c);
    double r = static_cast<double>(static_cast<float>(recipe.resonance));
    if (recipe.modulation[1]) r = std::clamp(r + modulated(1, vector), 0.0, 1.0);
    r = resonanceGlide.tick(r);
    double g = recipe.gain;
    if (recipe.modulation[3]) {
      g = std::clamp(g + modulated(3, vector), recipe.mode == 10 ? -1.0 : 0.0, 1.0);
    }
    g = gainGlide.tick(g);
    const double d = std::pow((lastCutoff - c) * 5.0, 2);
    const double damping = !recipe.dampsSweeps || d == 0.0 ? 1.0 : std::min(1.0, 0.01 / d);
    lastCutoff = c;
    design(c, r, g, damping);
  }

  static double relativeCorner(double c) {
    const float t = static_cast<float>(c) * 8.643856f;
    const int i = static_cast<int>(t);
    const float f = t - static_cast<float>(i);
    const float p = (((0.0136991f * f + 0.0517387f) * f + 0.2415636f) * f + 0.6929986f) * f + 1.0f;
    return static_cast<double>(p) * std::pow(2.0, i) * 50.0 * inverseSampleRate;
  }

  void design(double c, double r, double g, double damping) {
    if (recipe.mode == 21) return designVowel(c, g);
    const double corner = std::clamp(relativeCorner(c), 0.0002, 20000.0 / 44100.0);
    if (isDirect) {
      const double ripple = (r * 14.0 + 1.0) * damping;
      designByPoles(recipe.stages, corner, ripple, recipe.mode >= 18, sections[0]);
      return;
    }
    const float omega = static_cast<float>(2.0 * std::numbers::pi * corner);
    const double al = static_cast<double>(
        static_cast<float>(static_cast<double>(sinf(omega)) / (8.0 * r + 1.45)));
    designSections(static_cast<double>(cosf(omega)), al, g);
  }

  void designSections(double c, double al, double g) {
    const double root = 2.0 * std::sqrt(std::fabs(g)) * al;
    std::vector<double> b{(1 - c) / 2, 1 - c, (1 - c) / 2};
    std::vector<double> a{1 + al, -2 * c, 1 - al};
    int mode = recipe.mode;
    if (mode == 22) mode = recipe.isRight ? 3 : 0;
    if (mode == 3) b = {(1 + c) / 2, -(1 + c), (1 + c) / 2};
    if (mode == 6) b = {al, 0.0, -al};
    if (mode == 20) b = {1 - al, -2 * c, 1 + al};
    if (mode == 23) {
      b = {g * ((g + 1) - (g - 1) * c + root), 2 * g * ((g - 1) - (g + 1) * c),
           g * ((g + 1) - (g - 1) * c - root)};
      a = {(g + 1) + (g - 1) * c + root, -2 * ((g + 1) * c + (g - 1)),
           (g + 1) + (g - 1) * c - root};
    }
    if (mode == 24) {
      b = {g * ((g + 1) + (g - 1) * c + root), -2 * g * ((g + 1) * c + (g - 1)),
           g * ((g + 1) + (g - 1) * c - root)};
      a = {(g + 1) - (g - 1) * c + root, 2 * ((g - 1) - (g + 1) * c), (g + 1) - (g - 1) * c - root};
    }
    if (mode == 10 || mode == 12) {
      const double db = recipe.driveDb * g;
      const double amplitude = std::exp(db / 2 / recipe.stages * 0.1151292546497);
      const double dim = static_cast<double>(static_cast<float>(recipe.dim));
      behind = static_cast<double>(
          static_cast<float>(std::min(1.0, dim / std::exp(db * 0.1151292546497) + (1 - dim))));
      b = {1 + al * amplitude, -2 * c, 1 - al * amplitude};
      a = {1 + al / amplitude, -2 * c, 1 - al / amplitude};
    }
    for (PlainRecursion& section : sections) section.take(b, a);
  }

  void designVowel(double c, double g) {
    static const double rows[3][3] = {{270, 2290, 3010}, {530, 1840, 2480}, {300, 870, 2240}};
    const double db = recipe.driveDb * g;
    const double amplitude = std::exp(db * 0.5 * 0.1151292546497);
    const double dim = static_cast<double>(static_cast<float>(recipe.dim));
    behind =
        static_cast<double>(static_cast<float>(dim / std::exp(db * 0.1151292546497) + (1 - dim)));
    const float t = 2.0f * static_cast<float>(std::clamp(c, 0.0, 1.0));
    const int i = static_cast<int>(t);
    const float f = t - static_cast<float>(i);
    for (int j = 0; j < 3; ++j) {
      const double above = i < 2 ? rows[i + 1][j] : 0.0;
      const double hz = rows[i][j] * static_cast<double>(1.0f - f) + above * static_cast<double>(f);
      const double w = 2.0 * std::numbers::pi * hz / sampleRate;
      const double x = std::sin(w) * 0.1;
      sections[static_cast<size_t>(j)].take(
          {1 + x * amplitude, -2 * std::cos(w), 1 - x * amplitude},
          {1 + x / amplitude, -2 * std::cos(w), 1 - x / amplitude});
    }
  }

  FilterRecipe recipe;
  double sign;
  OnePole cutoffGlide, resonanceGlide, gainGlide;
  double lastCutoff = 0.0;
  double behind = 1.0;
  bool isDirect = false;
  long samples = 0;
  std::vector<PlainRecursion> sections;
};

}  // namespace orvantesco::testing_support
