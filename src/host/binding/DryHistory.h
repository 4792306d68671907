#pragma once

#include <array>

#include "host/LatencyBuffer.h"

namespace orvantesco {

/// The last samples of one channel, so that the dry signal can be given late at any moment without
/// having been delayed all the time before. Audio thread.
class DryHistory {
 public:
  /// Samples; more than any latency that the effect reports.
  static constexpr int length = LatencyBuffer::reservedFrames;

  void clear() noexcept { held.fill(0.0); }

  // An input that is null is silence.

  /// Writes a block as it is `delay` (0 .. length) samples late. `out` is another buffer than `in`.
  void delayed(const double* in, double* out, int frames, int delay) const noexcept;

  /// Keeps the end of a block. Comes after `delayed` of the same block.
  void remember(const double* in, int frames) noexcept;

 private:
  std::array<double, length> held{};  ///< a ring
  int next = 0;                       ///< where the next sample goes, and the oldest stands
};

}  // namespace orvantesco
