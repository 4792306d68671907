#pragma once

#include "fx/SampleHold.h"
#include "fx/kernels/ShapeLoops.h"

namespace orvantesco {

/// The curves of the shapers and what they remember of the sample before. Vectors of 32, the output
/// may be the input; formulas stand with the loops (ShapeLoops.h). Audio thread.
class WaveFunctions {
 public:
  using Input = kernels::CurveInput;

  /// y = (x + x') / (t + t') * trim: the saturation of "SATURATE" and of driven filters.
  void saturate(const Input& in, double* out) noexcept;
  /// The soft clip, times the trim. The clip itself stays below 2.
  void softClip(const Input& in, double* out) noexcept;
  /// The same, held within -1..1.
  void heldSoftClip(const Input& in, double* out) noexcept;
  /// tanh(1.25 x) of a signal sampled at `rate` times the sample rate.
  void sampleAndHold(const Input& in, double rate, double* out) noexcept;

  static void fold(const Input& in, double* out) noexcept;
  static void tube(const Input& in, double* out) noexcept;
  /// sin(i pi x), odd: silence stays silent.
  static void sine(const double* in, double i, double* out) noexcept;
  /// cos(i pi x), even: silence becomes 1.
  static void cosine(const double* in, double i, double* out) noexcept;

  /// Drops the sample before; the next one is joined to 0.
  void clear() noexcept { memory = {}; }
  /// Drops what the hold keeps as well.
  void clearAll() noexcept;

 private:
  void dropRunaway() noexcept;

  kernels::CurveMemory memory;
  SampleHold holder;
};

}  // namespace orvantesco
