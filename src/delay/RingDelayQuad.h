#pragma once

#include <array>

#include "delay/DelayRing.h"
#include "delay/TapGlide.h"
#include "fx/VectorLength.h"

namespace orvantesco {

/// Four delay lines that are written first and then read at delays that glide, side by side: what
/// `RingDelay::readModulated` does for one line, at a fraction of four times its cost. For lines
/// that are read apart from each other use RingDelay.
///
/// Delays glide with 5 ms, from 0 after construction and `rateChanged`. The interpolator is the
/// first-order all-pass of TapLanes.h. At a delay of whole samples it would ring for ever at half
/// the rate with whatever it began with; there it starts anew with each vector instead, which
/// gives the samples themselves.
///
/// Memory is taken by `allocate` alone. Audio thread, but for that.
class RingDelayQuad {
 public:
  static constexpr int kLines = 4;

  RingDelayQuad() { rateChanged(); }

  /// Takes the next power of two from `samples` on for one line. Throws std::bad_alloc.
  void allocate(int line, int samples);

  /// Silence; the glides stay.
  void clear() noexcept;
  /// The glide's constants anew, and its start at 0.
  void rateChanged() noexcept;

  /// Appends 32 samples to a line, held at ±1e8; what is not finite is written as 0.
  void write(int line, const double* samples) noexcept;

  /// 32 samples of each line, at delays in samples from the newest written: 0.1 ms at least, the
  /// line's length at most.
  void read(const std::array<double, kLines>& delays) noexcept;

  /// What the last `read` gave for a line.
  const double* samples(int line) const noexcept { return outputs[line]; }

 private:
  struct Line {
    DelayRing ring;
    double delay = 0.0;   ///< where the glide stands
    double memory = 0.0;  ///< last output of the interpolator
  };
  struct Batch;

  double heldDelay(const Line& line, double delay) const noexcept;
  void planSettled(int index, double delay, Batch& batch) noexcept;
  void planMoving(int index, double target, Batch& batch) noexcept;
  void walk(int index, double target) noexcept;

  Line lines[kLines];
  TapGlide glide;
  alignas(64) double outputs[kLines][kVectorLength] = {};
};

}  // namespace orvantesco
