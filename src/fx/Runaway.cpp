#include "fx/Runaway.h"

namespace orvantesco {

namespace {

/// Exact check, for the vectors that the sum could not clear.
bool isSaneEach(const double* vector) noexcept {
  for (int i = 0; i < kVectorLength; ++i) {
    if (!isSane(vector[i])) return false;
  }
  return true;
}

}  // namespace

// Where the sum of all magnitudes is within the limit, so is each of them; and a NaN or an infinity
// stays in a sum. Eight partial sums keep the additions independent of each other.
bool isSaneVector(const double* vector) noexcept {
  constexpr int kLanes = 8;
  double sums[kLanes] = {};
  for (int i = 0; i < kVectorLength; i += kLanes) {
    for (int lane = 0; lane < kLanes; ++lane) sums[lane] += std::fabs(vector[i + lane]);
  }
  double total = 0.0;
  for (double sum : sums) total += sum;
  return isSane(total) || isSaneEach(vector);
}

}  // namespace orvantesco
