#pragma once

#include "delay/TapGlide.h"

namespace orvantesco {

/// The inner loops of the tap reads: taps do not depend on each other, so a bundle of them is read
/// side by side, one tap a vector lane. A lane does per sample, in this order of operations,
///
///     c = (1 - f) / (1 + f),   y = (c * x[p] + x[p - 1]) - c * y
///
/// the first-order all-pass interpolator (J. O. Smith, Physical Audio Signal Processing, chapter
/// on fractional delay filtering) at fraction f, so every bundle size and every processor level
/// gives the same bits. The last output is the tap's new memory.

/// A tap whose delay stands still over the block. (Both kinds are filled as a whole, and have no
/// initial values: sixteen of each would cost as much to clear as a tap costs to read.)
struct SettledTap {
  const double* samples;  ///< 33 samples, from the one before the first that is read
  double coefficient;     ///< c
  double memory;          ///< y before the block
  double* output;         ///< 32 samples
};

/// A tap whose delay d moves. Sample i lies, with r the whole part of d[i], at newest + i - r + 1;
/// it and the one before it are loaded as neighbours, so all of them have to be written, and the
/// ring's end must not lie between them.
struct MovingTap {
  const double* newest;  ///< the sample written last
  double start;          ///< delay in samples before the block
  double pull;           ///< gain of the glide times its target
  double memory;         ///< y before the block
  double* output;        ///< 32 samples
};

/// One of several signals that are added up.
struct EchoRow {
  const double* samples;  ///< 32
  double gain;
};

/// The loops of one processor level. Any number of taps from 1 on; nothing is allocated.
struct TapLanes {
  void (*readSettled)(const SettledTap* taps, int count) noexcept;
  void (*readMoving)(const MovingTap* taps, int count, const TapGlide& glide) noexcept;
  /// samples[i] = samples[i] + gain * row[i] over 32 samples, row after row, products rounded
  /// first.
  void (*addRows)(const EchoRow* rows, int count, double* samples) noexcept;
};

extern const TapLanes kTapLanesScalar;
extern const TapLanes kTapLanesSse2;  ///< x86-64
extern const TapLanes kTapLanesAvx2;  ///< x86-64, only where the processor has AVX2

/// The loops for `count` taps at the processor level in force (fx/kernels/Level.h).
const TapLanes& tapLanesFor(int count) noexcept;

}  // namespace orvantesco
