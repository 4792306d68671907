#pragma once

#include <limits>

#include "fx/FxTestSupport.h"

namespace orvantesco::testing_support {

/// The engine's lowest rate, which hosts at 22050 Hz get, the usual ones, and its highest.
inline const double kEngineRates[] = {32000.0, 44100.0, 48000.0, 96000.0};

/// Two channels of any length that is a multiple of 32.
struct Stereo {
  Signal left, right;
};

inline Stereo stereoNoise(int vectors, double amplitude, unsigned seed = 1) {
  Stereo signal{noise(vectors, seed), noise(vectors, seed + 1000)};
  for (Signal* channel : {&signal.left, &signal.right}) {
    for (double& sample : *channel) sample *= amplitude;
  }
  return signal;
}

/// Runs a block over both channels, vector by vector, out of place.
template <class Block>
Stereo runStereo(Block& block, Stereo in) {
  Stereo out{Signal(in.left.size(), 0.0), Signal(in.left.size(), 0.0)};
  for (size_t at = 0; at < in.left.size(); at += kVectorLength) {
    block.process(&in.left[at], &in.right[at], &out.left[at], &out.right[at]);
  }
  return out;
}

inline double largestDifference(const Stereo& a, const Stereo& b) {
  return std::max(largestDifference(a.left, b.left), largestDifference(a.right, b.right));
}

inline double peakOf(const Signal& signal) {
  double highest = 0.0;
  for (const double x : signal) highest = std::max(highest, std::fabs(x));
  return highest;
}

inline bool allFinite(const Signal& signal) {
  return std::all_of(signal.begin(), signal.end(), [](double x) { return std::isfinite(x); });
}

inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
inline constexpr double kInfinity = std::numeric_limits<double>::infinity();

}  // namespace orvantesco::testing_support
