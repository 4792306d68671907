#pragma once

#include "fx/BiquadFixture.h"
#include "fx/QLMSVF.h"
#include "fx/SvfModel.h"

namespace orvantesco::testing_support {

/// A state-variable filter set as a recipe says, with the modulation vectors it reads.
class RecipeSvf {
 public:
  explicit RecipeSvf(const FilterRecipe& filterRecipe)
      : recipe(filterRecipe), filter(recipe.isRight) {
    filter.setParam(0, recipe.cutoff);
    filter.setParam(1, recipe.resonance);
    filter.setParam(2, recipe.spread);
    filter.setParam(3, recipe.mode);
    for (size_t i = 0; i < 4; ++i) {
      if (!recipe.modulation[i]) continue;
      filter.setModSource(static_cast<int>(i), sources[i].data());
      filter.setModDepth(static_cast<int>(i), &depth);
    }
  }

  void process(double* in, double* out) {
    for (size_t i = 0; i < 4; ++i) {
      if (recipe.modulation[i]) sources[i][0] = recipe.modulation[i](vector);
    }
    ++vector;
    filter.process(in, out);
  }

  QLMSVF* operator->() { return &filter; }

 private:
  FilterRecipe recipe;
  std::array<std::array<double, 32>, 4> sources{};
  double depth = 1.0;
  int vector = 0;
  QLMSVF filter;
};

inline const int kSvfModes[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 26};

}  // namespace orvantesco::testing_support
