#include "delay/CleanCopy.h"

#include <algorithm>
#include <cmath>

#include "fx/Runaway.h"
#include "fx/VectorLength.h"

namespace orvantesco {

namespace {

double clean(double x) noexcept {
  return std::isfinite(x) ? std::clamp(x, -kRunawayLimit, kRunawayLimit) : 0.0;
}

}  // namespace

void cleanCopy(const double* source, double* destination, int n) noexcept {
  if (n == kVectorLength && isSaneVector(source)) {
    std::copy_n(source, kVectorLength, destination);
    return;
  }
  for (int i = 0; i < n; ++i) destination[i] = clean(source[i]);
}

}  // namespace orvantesco
