#include "fx/Runaway.h"

#include <algorithm>

#include "fx/Lanes.h"

namespace orvantesco {

bool isSaneSpan(const double* values, int n) noexcept {
  if (n == kVectorLength) return isSaneVector(values);
  return std::all_of(values, values + n, isSane);
}

// Where the sum of all magnitudes is within the limit, so is each of them; and a NaN or an infinity
// stays in a sum. Eight partial sums keep the additions independent of each other.
bool isSaneVector(const double* vector) noexcept {
  const auto at = [vector](int i) { return magnitudes(loadLanes(vector + i)); };
  Lanes a = at(0);
  Lanes b = at(2);
  Lanes c = at(4);
  Lanes d = at(6);
  for (int i = 8; i < kVectorLength; i += 8) {
    a += at(i);
    b += at(i + 2);
    c += at(i + 4);
    d += at(i + 6);
  }
  const Lanes total = (a + b) + (c + d);
  return isSane(total[0] + total[1]) || std::all_of(vector, vector + kVectorLength, isSane);
}

}  // namespace orvantesco
