#pragma once

#include <cstddef>
#include <vector>

#include "fx/FxTestSupport.h"

namespace orvantesco::testing_support {

/// What a ring of `length` samples holds, from everything that was ever written since a reset: a
/// position gives the newest sample that was written there, 0 where there is none.
class PlainRing {
 public:
  explicit PlainRing(int ringLength) : length(ringLength) {}

  void write(const double* samples, int n) { written.insert(written.end(), samples, samples + n); }
  void reset() { written.clear(); }

  long writePosition() const { return count() % length; }

  double at(long position) const {
    const long wrapped = ((position % length) + length) % length;
    const long newest = count() - 1;
    if (wrapped > newest) return 0.0;
    const long laps = (newest - wrapped) / length;
    return written[static_cast<size_t>(wrapped + laps * length)];
  }

  const long length;

 private:
  long count() const { return static_cast<long>(written.size()); }

  Signal written;
};

/// A one-pole glide, step by step; summed in extended precision, so that it has no rounding of
/// its own.
struct PlainGlide {
  PlainGlide(double timeMs, double rate)
      : a(std::exp(-2.0 * 3.14159265358979323846 / (timeMs * 0.001 * rate))), b(1.0 - a) {}

  double tick(double target) {
    y = static_cast<long double>(target) * b + a * y;
    return static_cast<double>(y);
  }

  double a;
  double b;
  long double y = 0.0L;
};

inline Signal sine(int vectors, double radiansPerSample) {
  Signal signal(static_cast<size_t>(vectors) * kVectorLength);
  for (size_t i = 0; i < signal.size(); ++i) {
    signal[i] = std::sin(radiansPerSample * static_cast<double>(i));
  }
  return signal;
}

}  // namespace orvantesco::testing_support
