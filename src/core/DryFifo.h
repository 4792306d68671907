#pragma once

#include <algorithm>
#include <array>

#include "fx/Kernels.h"

namespace orvantesco {

/// Holds a signal back by the limiter's look-ahead, so that dry and limited wet stay aligned.
/// Audio thread only.
class DryFifo {
 public:
  /// Look-ahead that fits: 96 samples, one millisecond at 96000 Hz.
  static constexpr int kMaxLookahead = 96;

  void clear() noexcept { samples.fill(0.0); }

  /// Takes 32 samples and gives the 32 that came `lookahead` (0..96) samples earlier.
  void step(const double* in, double* out, int lookahead) noexcept {
    vecMove(samples.data() + kVectorLength, samples.data(), lookahead);
    vecCopy(in, samples.data() + lookahead, kVectorLength);
    vecCopy(samples.data(), out, kVectorLength);
  }

 private:
  std::array<double, kMaxLookahead + kVectorLength> samples{};
};

}  // namespace orvantesco
