#pragma once

#include <memory>

#include "fx/BiquadModel.h"
#include "fx/IppBiquad.h"

namespace orvantesco::testing_support {

/// A filter set as a recipe says, with the modulation vectors it reads.
class RecipeFilter {
 public:
  explicit RecipeFilter(const FilterRecipe& filterRecipe)
      : recipe(filterRecipe), filter(recipe.isRight, recipe.mode, recipe.stages, recipe.driveDb) {
    filter.setCutoff(recipe.cutoff);
    filter.setResonance(static_cast<float>(recipe.resonance));
    filter.setParam(2, recipe.spread);
    if (recipe.mode == 10) filter.setGain((recipe.gain + 1.0) / 2.0);
    if (recipe.mode != 10) filter.setGain(recipe.gain);
    filter.setDim(recipe.dim);
    for (int i = 0; i < 4; ++i) {
      if (!recipe.modulation[static_cast<size_t>(i)]) continue;
      filter.setModSource(i, sources[static_cast<size_t>(i)].data());
      filter.setModDepth(i, &depth);
    }
  }

  void process(double* in, double* out) {
    for (size_t i = 0; i < 4; ++i) {
      if (recipe.modulation[i]) sources[i][0] = recipe.modulation[i](vector);
    }
    ++vector;
    filter.process(in, out);
  }

  IppBiquad& operator*() { return filter; }
  IppBiquad* operator->() { return &filter; }

 private:
  FilterRecipe recipe;
  std::array<std::array<double, 32>, 4> sources{};
  double depth = 1.0;
  int vector = 0;
  IppBiquad filter;
};

/// |H| in dB at a frequency, from the answer to an impulse once the controls have come to rest.
template <class Block>
double responseDb(Block& block, double hz, int settleVectors = 4000, int answerVectors = 2000) {
  run(block, Signal(static_cast<size_t>(settleVectors) * kVectorLength, 0.0));
  const Signal answer = run(block, impulse(answerVectors));
  std::complex<double> sum = 0.0;
  for (size_t n = 0; n < answer.size(); ++n) {
    const double angle = -2.0 * std::numbers::pi * hz * static_cast<double>(n) / sampleRate;
    sum += answer[n] * std::polar(1.0, angle);
  }
  return 20.0 * std::log10(std::abs(sum));
}

/// The knob position of a corner in Hz.
inline double knobOf(double hz) { return std::log(hz / 50.0) / std::log(400.0); }

}  // namespace orvantesco::testing_support
