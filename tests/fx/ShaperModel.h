#pragma once

#include <array>
#include <functional>
#include <numbers>

#include "fx/FxTestSupport.h"
#include "fx/IppBiquad.h"
#include "fx/Shaper.h"

namespace orvantesco::testing_support {

/// A shaper by its knobs. Sources are given as functions of the sample's number.
struct ShaperRecipe {
  int type = kShaperSaturate;
  bool isRight = false;
  double amount = 0.5;
  double cutoff = 0.7;
  double resonance = 0.0;  ///< the mode of the filter for the feedback types; the Q of "WAVE SHAPE"
  double spread = 0.0;
  int shape = kShaperSaturate;
  double gain = 0.5;
  std::function<double(int)> amountSource;
  std::function<double(int)> cutoffSource;
  std::function<double(int)> spreadSource;  ///< of control 2
};

inline bool isShape(const ShaperRecipe& recipe) { return recipe.type == 6; }

/// A shaper set as a recipe says, with the vectors that modulate it.
class RecipeShaper {
 public:
  explicit RecipeShaper(const ShaperRecipe& shaperRecipe)
      : recipe(shaperRecipe), shaper(recipe.isRight, recipe.type) {
    const double knobs[] = {recipe.amount, recipe.cutoff, recipe.resonance, recipe.spread};
    const double shapeKnobs[] = {static_cast<double>(recipe.shape), recipe.gain, recipe.cutoff,
                                 recipe.resonance, recipe.spread};
    for (int i = 0; i < 4 && !isShape(recipe); ++i) shaper.setParam(i, knobs[i]);
    for (int i = 0; i < 5 && isShape(recipe); ++i) shaper.setParam(i, shapeKnobs[i]);
    connect(0, recipe.amountSource);
    connect(isShape(recipe) ? 2 : 1, recipe.cutoffSource);
    if (!isShape(recipe)) connect(2, recipe.spreadSource);
  }
  RecipeShaper(const RecipeShaper&) = delete;
  RecipeShaper& operator=(const RecipeShaper&) = delete;

  void process(double* in, double* out) {
    fill(0, recipe.amountSource);
    fill(isShape(recipe) ? 2 : 1, recipe.cutoffSource);
    if (!isShape(recipe)) fill(2, recipe.spreadSource);
    sample += kVectorLength;
    shaper.process(in, out);
  }

  Shaper* operator->() { return &shaper; }

 private:
  void connect(int control, const std::function<double(int)>& source) {
    if (!source) return;
    shaper.setModSource(control, sources[static_cast<size_t>(control)].data());
    shaper.setModDepth(control, &depth);
  }
  void fill(int control, const std::function<double(int)>& source) {
    if (!source) return;
    for (int i = 0; i < kVectorLength; ++i) {
      sources[static_cast<size_t>(control)][static_cast<size_t>(i)] = source(sample + i);
    }
  }

  ShaperRecipe recipe;
  std::array<std::array<double, kVectorLength>, 3> sources{};
  double depth = 1.0;
  int sample = 0;
  Shaper shaper;
};

/// One sample after the other, each curve by its formula and the functions of the library. Its
/// filter is the filter effect, which has a model of its own.
class ShaperModel {
 public:
  explicit ShaperModel(const ShaperRecipe& shaperRecipe)
      : recipe(shaperRecipe),
        type(recipe.type),
        filter(recipe.isRight, type == 23 ? 3 : 0, 1),
        filterMode(type == 23 ? 3 : 0) {
    filter.setCutoff(recipe.cutoff);
    filter.setParam(2, recipe.spread);
    const bool isFeedback = type == 15 || type == 17 || type == 19 || type == 21 || type == 24;
    if (type == 6) {
      filter.setMode(12);
      filter.setQOffset(0.05);
      filter.setQScale(4.0);
      filter.setDim(0.0);
      filter.setGain(static_cast<double>(static_cast<float>(recipe.gain)));
      filter.setResonance(static_cast<float>(recipe.resonance * recipe.resonance));
    } else if (isFeedback) {
      filterMode = static_cast<int>(recipe.resonance);
      filter.setMode(filterMode);
    } else {
      filter.setResonance(static_cast<float>(2.0 * recipe.resonance));
    }
    wet = std::min(recipe.gain + 0.1, 1.0);
    connect(0, cutoffVector, static_cast<bool>(recipe.cutoffSource));
    connect(2, spreadVector, static_cast<bool>(recipe.spreadSource));
  }
  ShaperModel(const ShaperModel&) = delete;
  ShaperModel& operator=(const ShaperModel&) = delete;

  Signal run(const Signal& in) {
    Signal out(in.size());
    for (size_t at = 0; at < in.size(); at += 32) {
      Vector vector;
      std::copy_n(&in[at], 32, vector.begin());
      if (recipe.cutoffSource) cutoffVector[0] = recipe.cutoffSource(sample);
      if (recipe.spreadSource) spreadVector[0] = recipe.spreadSource(sample);
      if (type == 6) {
        runShape(vector);
      } else {
        runAmount(vector);
      }
      std::copy_n(vector.begin(), 32, &out[at]);
      sample += 32;
    }
    return out;
  }

 private:
  using Vector = std::array<double, 32>;

  void connect(int control, Vector& vector, bool isUsed) {
    if (!isUsed) return;
    filter.setModSource(control, vector.data());
    filter.setModDepth(control, &depth);
  }

  static double glide(double ms, double x, double& y) {
    const double a = std::exp(-2.0 * std::numbers::pi / (ms * 0.001 * sampleRate));
    y = x * (1.0 - a) + a * y + 1e-15;
    return y - 1e-15;
  }

  void filtered(Vector& vector) {
    if (filterMode != 26) filter.process(vector.data(), nullptr);
  }

  void runAmount(Vector& x) {
    const double a = glide(10.0, recipe.amount, amountState);
    const bool filtersBehind = type >= 18;
    if (!filtersBehind && type != 7) filtered(x);
    for (size_t i = 0; i < 32; ++i) {
      double amount = a;
      if (recipe.amountSource) {
        const double moved = recipe.amountSource(sample + static_cast<int>(i)) + a;
        amount = std::clamp(moved, 0.0, 1.0);
      }
      if (i == 0) firstAmount = amount;
      x[i] = shaped(x[i], amount);
    }
    if (filtersBehind) filtered(x);
  }

  double shaped(double x, double amount) {
    switch (type) {
      case 7:
        return tube(x);
      case 14:
      case 15:
        return saturate(x * (16.0 * amount * amount + 1.0)) / (3.0 * amount * amount + 1.0);
      case 16:
      case 17:
        return std::clamp(softClip(x, 49.0 * std::pow(amount, 4.0) + 1.0) / (2.0 * amount + 1.0),
                          -1.0, 1.0);
      case 18:
      case 19:
        return withoutOffset(fold(x * (15.0 * amount + 1.0), 1.0 / (4.0 * (amount - 1.5)), true));
      case 20:
      case 21: {
        const double driven = x * (100.0 * (amount * amount + 0.5) + 1.0);
        return 0.5 * fold(driven, 1.25, std::fabs(driven) >= 1.25);
      }
      default:
        return held(1.25 * (x * (1.25 * amount + 1.0)));
    }
  }

  double saturate(double x) {
    const double t = std::sqrt(x * x + 1.0);
    const double y = (x + xBefore) / (tBefore + t);
    xBefore = x;
    tBefore = t;
    return y;
  }

  double softClip(double x, double g) {
    const double A = std::fabs(x) * g;
    const double F = (A - std::log1p(A)) * (g + 1.0) / (g * g);
    const double d = x - xBefore;
    const double m = (x + xBefore) / 2.0;
    const double y =
        std::fabs(d) > 0.01 ? (F - tBefore) / d : m * (g + 1.0) / (std::fabs(m) * g + 1.0);
    xBefore = x;
    tBefore = F;
    return y;
  }

  static double fold(double x, double t, bool folds) {
    double whole = 0.0;
    const double fraction = std::modf((x - t) * t, &whole);
    const double depthOfFold = std::fabs(t);
    const double triangle =
        std::fabs(std::fabs(4.0 * fraction * t) - 2.0 * depthOfFold) - depthOfFold;
    return folds ? triangle : x;
  }

  double withoutOffset(double x) {
    if (!offsetHasStarted) offsetBefore = x;
    offsetHasStarted = true;
    offsetState = 0.9999 * offsetState + x - offsetBefore;
    offsetBefore = x;
    return offsetState;
  }

  double held(double v) {
    phase += firstAmount < 1e-9 ? 1.0 : 1.0 - std::pow(firstAmount, 0.125) * 0.99;
    if (phase >= 1.0) {
      phase -= 1.0;
      hold = v;
    }
    return std::tanh(hold);
  }

  static double tube(double x) {
    const double t = std::tanh(x);
    const double c = std::clamp(t, -0.66438299, 1.0257316);
    return -1.6185656 * t * (t * (0.38944033 * c - 0.21108556) - 0.79618573);
  }

  void runShape(Vector& x) {
    Vector dry = x;
    filtered(x);
    const double g = glide(50.0, wet, wetState);
    for (size_t i = 0; i < 32; ++i) {
      if (g < 0.99) x[i] = x[i] * g + dry[i] * (1.0 - g);
      x[i] = curve(x[i]);
    }
  }

  double curve(double x) {
    const double within = std::clamp(x, -1.0, 1.0);
    const double pi = std::numbers::pi;
    switch (recipe.shape) {
      case 7:
        return tube(x);
      case 9:
        return std::cos((within + 1.5) * pi);
      case 10:
        return std::cos((within + 0.5) * 3.0 * pi);
      case 11:
        return std::cos((within + 0.3) * 5.0 * pi);
      case 12:
        return withoutOffset(std::cos(-4.71238898038469 * within));
      case 13:
        return withoutOffset(std::cos(-29.845130209103033 * within));
      case 16:
        return softClip(x, 1.0);
      default:
        return saturate(x);
    }
  }

  ShaperRecipe recipe;
  int type;
  IppBiquad filter;
  int filterMode;
  Vector cutoffVector{}, spreadVector{};
  double depth = 1.0;
  double wet = 1.0;
  double amountState = 0.0, wetState = 0.0;
  double firstAmount = 0.0;
  double xBefore = 0.0, tBefore = 0.0;
  double offsetBefore = 0.0, offsetState = 0.0;
  bool offsetHasStarted = false;
  double phase = 0.0, hold = 0.0;
  int sample = 0;
};

inline double againstModel(const ShaperRecipe& recipe, const Signal& in) {
  RecipeShaper shaper(recipe);
  return largestDifference(run(shaper, in), ShaperModel(recipe).run(in));
}

}  // namespace orvantesco::testing_support
