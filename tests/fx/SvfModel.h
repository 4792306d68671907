#pragma once

#include "fx/BiquadModel.h"

namespace orvantesco::testing_support {

/// The state-variable filter, one sample after the other, every line as a textbook writes it.
class SvfModel {
 public:
  explicit SvfModel(const FilterRecipe& filterRecipe)
      : recipe(filterRecipe),
        sign(filterRecipe.isRight ? -1.0 : 1.0),
        cutoffGlide(0.001 * sampleRate) {
    const int mode = recipe.mode;
    twoStages = mode == 0 || mode == 3 || mode == 7 || mode == 9;
    resonant = twoStages || mode == 1 || mode == 4 || mode == 6 || mode == 10;
  }

  Signal run(const Signal& in) {
    Signal out(in.size());
    for (size_t i = 0; i < in.size(); ++i) {
      const int vector = static_cast<int>(i / 32);
      if (i % 32 == 0 && (vector == 0 || vector % 2 == 1)) control(vector);
      double y = resonant ? first(in[i]) : second(in[i]);
      if (twoStages) y = second(y);
      out[i] = y;
    }
    return out;
  }

 private:
  double modulated(size_t control, int vector) const {
    return recipe.modulation[control] ? recipe.modulation[control](vector) : 0.0;
  }

  void control(int vector) {
    const double spread = std::fabs(recipe.spread) * recipe.spread * sign;
    const double knob = static_cast<double>(static_cast<float>(recipe.cutoff));
    const double target = knob + spread + modulated(0, vector) + modulated(2, vector) * sign;
    const double c = std::clamp(cutoffGlide.tick(target), 0.0, 1.0);
    const double r = std::clamp(recipe.resonance + modulated(1, vector), 0.0, 1.0);

    const float t = static_cast<float>(c) * 8.643856f;
    const int i = static_cast<int>(t);
    const float f = t - static_cast<float>(i);
    const float p = (((0.0136991f * f + 0.0517387f) * f + 0.2415636f) * f + 0.6929986f) * f + 1.0f;
    double w = static_cast<double>(p) * std::pow(2.0, i) * 100.0 / sampleRate;
    w = std::min(std::max(w, 0.002), 2.0 * 20000.0 / 44100.0);
    const double x = w * w;
    g = (((0.10928518325090408 * x - 4.380795955657959) * x + 15.827852249145508) * w) /
        ((x - 11.076322555541992) * x + 10.076322555541992);
    k1 = (g + 1.0) - (1.1 - 0.1 * c * c * c) * r;
    h1 = 1.0 / (k1 * g + 1.0);
    k2 = g + 1.0;
    h2 = 1.0 / (g * (g + 1.0) + 1.0);
  }

  static double sat(double x) {
    const double u = x * x;
    return x * (((u + 378) * u + 17325) * u + 135135) /
           (((28 * u + 3150) * u + 62370) * u + 135135);
  }

  double output(double x, double hp, double bp, double lp) const {
    switch (recipe.mode) {
      case 3:
      case 4:
      case 5:
        return hp;
      case 6:
      case 7:
        return bp;
      case 9:
        return hp + lp;
      case 10:
        return x + bp;
      default:
        return lp;
    }
  }

  double first(double x) {
    const double hp = (x - k1 * s1a - s1b) * h1 + 1e-15 - 1e-15;
    const double bp = hp * g + s1a;
    const double lp = bp * g + s1b;
    s1a = sat(hp * g + bp);
    s1b = bp * g + lp;
    return output(x, hp, bp, lp);
  }

  double second(double x) {
    const double hp = (x - k2 * s2a - s2b) * h2 + 1e-15 - 1e-15;
    const double bp = hp * g + s2a;
    const double lp = bp * g + s2b;
    s2a = hp * g + bp;
    s2b = bp * g + lp;
    return output(x, hp, bp, lp);
  }

  FilterRecipe recipe;
  double sign;
  OnePole cutoffGlide;
  bool twoStages = false, resonant = false;
  double g = 0.0, k1 = 1.0, h1 = 1.0, k2 = 1.0, h2 = 1.0;
  double s1a = 0.0, s1b = 0.0, s2a = 0.0, s2b = 0.0;
};

}  // namespace orvantesco::testing_support
