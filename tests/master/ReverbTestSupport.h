#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "fx/kernels/Level.h"
#include "master/MasterTestSupport.h"

namespace orvantesco::testing_support {

inline Stereo stereoSilence(int vectors) { return stereoNoise(vectors, 0.0); }

inline Stereo stereoImpulse(int vectors, double height = 1.0) {
  Stereo signal = stereoSilence(vectors);
  signal.left[0] = signal.right[0] = height;
  return signal;
}

/// Runs a stereo block in place.
template <class Block>
Stereo runInPlace(Block& block, Stereo signal) {
  for (size_t at = 0; at < signal.left.size(); at += kVectorLength) {
    block.process(&signal.left[at], &signal.right[at], nullptr, nullptr);
  }
  return signal;
}

/// Infinite where a sample is no number.
inline double largestMagnitude(const Stereo& signal) {
  if (!allFinite(signal.left) || !allFinite(signal.right)) return kInfinity;
  return std::max(peakOf(signal.left), peakOf(signal.right));
}

/// Mean power in dB of the samples from..to-1 of both channels.
inline double levelDb(const Stereo& signal, size_t from, size_t to) {
  double energy = 0.0;
  for (size_t i = from; i < to; ++i) {
    energy += signal.left[i] * signal.left[i] + signal.right[i] * signal.right[i];
  }
  return 10.0 * std::log10(energy / static_cast<double>(to - from) + 1e-300);
}

/// Puts a processor level in force for one scope.
class ScopedLevel {
 public:
  explicit ScopedLevel(kernels::Level level) : isThere(kernels::forceLevel(level)) {}
  ~ScopedLevel() { kernels::forgetLevel(); }
  ScopedLevel(const ScopedLevel&) = delete;
  ScopedLevel& operator=(const ScopedLevel&) = delete;
  const bool isThere;
};

}  // namespace orvantesco::testing_support
