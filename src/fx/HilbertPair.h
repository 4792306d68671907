#pragma once

#include "fx/Lanes.h"
#include "fx/VectorLength.h"

namespace orvantesco {

/// Two chains of all-passes whose outputs stand at 90 degrees to each other over most of the audio
/// band, once the first is delayed by one sample: a signal and its Hilbert transform, but for a
/// phase that both have in common. Neither changes any magnitude.
///
/// Each chain has 8 sections (c - z^-2) / (1 - c z^-2), run in transposed direct form II:
/// y = c x + s, s' = c y - x. Since z^-2 alone occurs, even and odd samples never meet: they run
/// side by side as the two lanes of a vector, and so do the two chains. All |c| are below 1, so
/// both are stable. Audio thread.
class HilbertPair {
 public:
  static constexpr int kSections = 8;

  /// One vector of 32; the destinations must not overlap each other or `in`.
  void process(const double* in, double* outA, double* outB) noexcept;
  void clear() noexcept;

 private:
  Lanes memoryA[kSections] = {};
  Lanes memoryB[kSections] = {};
};

}  // namespace orvantesco
