#pragma once

#include <cstdint>

namespace orvantesco {

/// Small generator of random draws in the range 0..32767, one for each owner.
///
/// A linear congruential generator modulo 2^32 (multiplier and increment from Numerical Recipes,
/// 2nd ed., section 7.1, "an even quicker generator"), of which the upper bits are drawn: the low
/// bits of such a generator have short periods. The standard library's `rand` is no choice on
/// the audio thread, since it takes a lock. Not for two threads at once.
class RandomDraw {
 public:
  static constexpr int kMax = 32767;

  explicit constexpr RandomDraw(std::uint32_t start = 1) noexcept { seed(start); }

  /// Restarts the sequence. Seeds that lie close together are first stirred, so that owners with
  /// neighbouring seeds do not draw neighbouring values.
  constexpr void seed(std::uint32_t start) noexcept {
    state = (start ^ (start >> 16)) * 0x45d9f3bU;
    state ^= state >> 16;
  }

  /// The next draw, 0..kMax, every value equally likely.
  constexpr int next() noexcept {
    state = state * 1664525U + 1013904223U;
    return static_cast<int>(state >> 17);
  }

 private:
  std::uint32_t state = 0;
};

}  // namespace orvantesco
