#pragma once

#include "fx/BiquadModel.h"

namespace orvantesco::testing_support {

/// What a drive stage with a low-pass and a high-pass behind it is set to. The drive's modulation
/// gives its value for each sample, the corners' for each vector, depth included.
struct PairRecipe {
  bool isRight = false;
  bool drives = true;
  bool parallel = false;
  double highCutoff = 0.3;
  double lowCutoff = 0.7;
  int highSections = 2;
  int lowSections = 2;
  double drive = 0.0;
  std::function<double(int)> highModulation{};
  std::function<double(int)> lowModulation{};
  std::function<double(int)> driveModulation{};
};

/// The drive: x / sqrt(1 + x x), averaged from sample to sample, behind a gain and before a trim.
class DriveModel {
 public:
  explicit DriveModel(const PairRecipe& pairRecipe)
      : recipe(pairRecipe), glide(0.01 * sampleRate) {}

  Signal run(const Signal& in) {
    Signal out(in.size());
    double amount = 0.0, before = 0.0, rootBefore = 0.0;
    for (size_t i = 0; i < in.size(); ++i) {
      if (i % 32 == 0) amount = glide.tick(recipe.drive);
      double a = amount;
      if (recipe.driveModulation) {
        a = std::clamp(a + recipe.driveModulation(static_cast<int>(i)), 0.0, 1.0);
      }
      const double x = in[i] * (16.0 * a * a + 1.0);
      const double root = std::sqrt(x * x + 1.0);
      const double y = (x + before) / (root + rootBefore);
      before = x;
      rootBefore = root;
      out[i] = y / (3.0 * a * a + 1.0);
    }
    return out;
  }

 private:
  PairRecipe recipe;
  OnePole glide;
};

/// Drive and filters, one after the other over the whole signal.
class PairModel {
 public:
  explicit PairModel(const PairRecipe& pairRecipe) : recipe(pairRecipe) {}

  Signal run(const Signal& in) const {
    const Signal source = recipe.drives ? DriveModel(recipe).run(in) : in;
    const Signal low = BiquadModel(side(0)).run(source);
    if (!recipe.parallel) return BiquadModel(side(3)).run(low);
    Signal sum = BiquadModel(side(3)).run(source);
    for (size_t i = 0; i < sum.size(); ++i) sum[i] += low[i];
    return sum;
  }

 private:
  FilterRecipe side(int mode) const {
    FilterRecipe filter;
    filter.mode = mode;
    filter.isRight = recipe.isRight;
    filter.stages = mode == 0 ? recipe.lowSections : recipe.highSections;
    filter.cutoff = mode == 0 ? recipe.lowCutoff : recipe.highCutoff;
    filter.modulation[0] = mode == 0 ? recipe.lowModulation : recipe.highModulation;
    return filter;
  }

  PairRecipe recipe;
};

}  // namespace orvantesco::testing_support
