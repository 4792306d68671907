#pragma once

#include <array>
#include <cmath>
#include <numbers>
#include <random>
#include <vector>

#include "fx/RateValues.h"
#include "fx/VectorLength.h"

namespace orvantesco::testing_support {

using Vector32 = std::array<double, kVectorLength>;

inline const double kRates[] = {44100.0, 48000.0, 96000.0};

/// Sets the process-wide rate for one scope and puts 44100 back at its end.
class ScopedRate {
 public:
  explicit ScopedRate(double rate) { setRateValues(rate); }
  ~ScopedRate() { setRateValues(44100.0); }
  ScopedRate(const ScopedRate&) = delete;
  ScopedRate& operator=(const ScopedRate&) = delete;
};

/// One-pole glide of a time, sample by sample.
struct PlainGlide {
  double a = 0.0;
  double y = 0.0;
  PlainGlide(double ms, double rate) { setTime(ms, rate); }
  void setTime(double ms, double rate) {
    a = ms > 0.0 ? std::exp(-2.0 * std::numbers::pi / (ms * 0.001 * rate)) : 0.0;
  }
  double tick(double x) { return y = x * (1.0 - a) + a * y; }
  /// The same with the offset that keeps a smoother out of the denormal range.
  double tickOffset(double x) {
    y = x * (1.0 - a) + a * y + 1e-15;
    return y - 1e-15;
  }
};

/// Reproducible choices for a test.
class Dice {
 public:
  explicit Dice(unsigned seed) : engine(seed) {}
  int below(int count) { return std::uniform_int_distribution<int>(0, count - 1)(engine); }
  double between(double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(engine);
  }
  bool oneIn(int count) { return below(count) == 0; }
  Vector32 vector(double low = -1.0, double high = 1.0) {
    Vector32 values{};
    for (double& value : values) value = between(low, high);
    return values;
  }

 private:
  std::mt19937 engine;
};

template <class A, class B>
double largestDifference(const A& a, const B& b) {
  double largest = 0.0;
  for (std::size_t i = 0; i < static_cast<std::size_t>(kVectorLength); ++i) {
    const double difference = std::fabs(a[i] - b[i]);
    largest = difference <= largest ? largest : difference;
  }
  return largest;
}

}  // namespace orvantesco::testing_support
