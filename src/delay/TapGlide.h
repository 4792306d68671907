#pragma once

#include "fx/VectorLength.h"

namespace orvantesco {

/// The glide of a tap's delay time: a one-pole response of 100 ms (T) to a new time, in double.
///
///     d[i] = a^(i+1) d0 + (1 - a) x (1 + a + ... + a^i),   a = exp(-2 pi / (T * sampleRate))
///
/// In double the glide comes to rest. (In float it never would: it would jitter by its last bit,
/// and modulate what is delayed with noise.) Once a block ends within 1e-9 of its target, relative
/// to it, it *is* the target, from its first sample on; the reader then works with one constant
/// fraction. One table serves all taps of a delay, each tap owns no more than its state.
struct TapGlide {
  static constexpr double kTimeMs = 100.0;
  static constexpr double kSettled = 1e-9;

  /// Computes the tables for a rate in Hz.
  void setRate(double rateHz, double timeMs = kTimeMs) noexcept;

  /// The delay at sample i of a block that starts from `start`; `pull` is gain times target.
  double at(int i, double start, double pull) const noexcept {
    return powers[i] * start + pull * sums[i];
  }

  static bool isSettled(double state, double target) noexcept {
    const double distance = state > target ? state - target : target - state;
    return distance <= kSettled * target;
  }

  double gain = 1.0;                              ///< 1 - a
  alignas(64) double powers[kVectorLength] = {};  ///< a^(i+1)
  alignas(64) double sums[kVectorLength] = {};    ///< 1 + a + ... + a^i
};

}  // namespace orvantesco
