#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

#include "fx/RateValues.h"
#include "fx/VectorLength.h"

namespace orvantesco::testing_support {

using Signal = std::vector<double>;

/// Sets the process-wide rate for one scope and puts 44100 back at its end.
class ScopedRate {
 public:
  explicit ScopedRate(double rate) { setRateValues(rate); }
  ~ScopedRate() { setRateValues(44100.0); }
  ScopedRate(const ScopedRate&) = delete;
  ScopedRate& operator=(const ScopedRate&) = delete;
};

inline const double kRates[] = {44100.0, 48000.0, 96000.0};

inline Signal noise(int vectors, unsigned seed = 1) {
  std::mt19937 engine(seed);
  std::uniform_real_distribution<double> uniform(-1.0, 1.0);
  Signal signal(static_cast<size_t>(vectors) * kVectorLength);
  for (double& sample : signal) sample = uniform(engine);
  return signal;
}

inline Signal impulse(int vectors) {
  Signal signal(static_cast<size_t>(vectors) * kVectorLength, 0.0);
  signal[0] = 1.0;
  return signal;
}

/// Runs a block over the signal, vector by vector, out of place.
template <class Block>
Signal run(Block& block, Signal signal) {
  Signal out(signal.size(), 0.0);
  for (size_t at = 0; at < signal.size(); at += kVectorLength) block.process(&signal[at], &out[at]);
  return out;
}

inline double largestDifference(const Signal& a, const Signal& b) {
  double largest = a.size() == b.size() ? 0.0 : INFINITY;
  for (size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
    const double difference = std::fabs(a[i] - b[i]);
    largest = difference <= largest ? largest : difference;
  }
  return largest;
}

}  // namespace orvantesco::testing_support
