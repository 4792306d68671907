#include "fx/Runaway.h"

#include <algorithm>

namespace orvantesco {

bool isSaneSpan(const double* values, int n) noexcept {
  if (n == kVectorLength) return isSaneVector(values);
  return std::all_of(values, values + n, isSane);
}

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
  return isSane(total) || std::all_of(vector, vector + kVectorLength, isSane);
}

}  // namespace orvantesco
