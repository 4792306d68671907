#pragma once

#include <array>

#include "delay/DelayRing.h"

namespace orvantesco {

/// One echo before a tap.
struct TapEcho {
  double back = 0.0;  ///< samples before the tap, not below 0
  double gain = 0.0;  ///< linear
};

/// The echoes that swell up to a tap, each earlier than the one before: `back` grows.
struct TapEchoes {
  static constexpr int kMost = 16;

  std::array<TapEcho, kMost> list;
  int count = 0;
};

/// Adds 32 samples of every echo of a tap at `delay` samples to `samples`, one echo after the other
/// in the order of the list. They are read as they stand in the ring, on whole samples: no glide,
/// interpolation or filter. An echo that would lie at or behind the write position is left out.
/// Audio thread.
void addEchoes(const DelayRing& ring, const TapEchoes& echoes, double delay,
               double* samples) noexcept;

}  // namespace orvantesco
