#pragma once

#include "fx/VectorLength.h"

namespace orvantesco::kernels {

/// The last input of a curve that looks one sample back, and the second number that it keeps of it.
struct CurveMemory {
  double x = 0.0;
  double t = 0.0;
};

/// What a curve reads, vectors of 32; one that a curve does not name may be null.
struct CurveInput {
  const double* signal = nullptr;
  const double* gain = nullptr;
  const double* trim = nullptr;       ///< factor behind the curve
  const double* threshold = nullptr;  ///< where `fold` folds
};

/// Curves over one vector of 32, one loop each, and the functions they are made of. The output may
/// be the input. The curves keep magnitudes: a NaN or an infinity comes out as one, or leaves no
/// trace behind the samples it stands in but in the memory.
struct ShapeLoops {
  /// dst = tanh(src), within 4e-16 of the result.
  void (*tanh)(const double* src, double* dst) noexcept;
  /// dst = sin(pi factor x), x the source held within -1..1, factor up to 1e6; within 4e-16.
  void (*sine)(const double* src, double factor, double* dst) noexcept;
  /// dst = cos(pi factor x), likewise.
  void (*cosine)(const double* src, double factor, double* dst) noexcept;

  /// x / sqrt(1 + x^2) as the mean slope of its integral t = sqrt(1 + x^2) between two samples,
  ///     y[n] = (t[n] - t[n-1]) / (x[n] - x[n-1]) = (x[n] + x[n-1]) / (t[n] + t[n-1]),
  /// x = gain * signal: antiderivative antialiasing of the first order (Parker, Zavalishin, Le
  /// Bivic, DAFx 2016), in a form without a division by the difference. Then times the trim.
  void (*saturate)(const CurveInput& in, CurveMemory& memory, double* dst) noexcept;

  /// The soft clip (1 + g) x / (1 + g |x|) by the same method; its integral is
  ///     t = (1 + g) (A - ln(1 + A)) / g^2,  A = g |x|.
  /// Where two samples lie within 0.01 of each other it is the curve itself at their mean. Then
  /// times the trim, held within -1..1 where `isHeld`. The gain must not be 0.
  void (*softClip)(const CurveInput& in, CurveMemory& memory, bool isHeld, double* dst) noexcept;

  /// A wave folder, x = gain * signal, t the threshold: where |x| >= t[0] (always, for a negative
  /// t[0]) the output is a triangle of amplitude |t|, ||4 f t| - 2 |t|| - |t| with f the fraction
  /// of (x - t) t towards 0; elsewhere it is x.
  void (*fold)(const CurveInput& in, double* dst) noexcept;

  /// A valve stage: a polynomial of t = tanh(x) and of t * gain held within its two knees.
  void (*tube)(const CurveInput& in, double* dst) noexcept;
};

extern const ShapeLoops shapeLoopsScalar;
extern const ShapeLoops shapeLoopsSse2;  ///< x86-64
extern const ShapeLoops shapeLoopsAvx2;  ///< x86-64, only where the processor has AVX2

/// The loops of the processor level in force (Level.h); all of them give the same bits.
const ShapeLoops& shapeLoops() noexcept;

}  // namespace orvantesco::kernels
