#include "delay/CleanCopy.h"

#include <algorithm>
#include <cmath>

#include "fx/Runaway.h"
#include "fx/kernels/VectorBounds.h"

namespace orvantesco {

namespace {

double clean(double x) noexcept {
  return std::isfinite(x) ? std::clamp(x, -kRunawayLimit, kRunawayLimit) : 0.0;
}

}  // namespace

bool cleanCopy(const double* source, double* destination, int n) noexcept {
  if (n <= 0) return true;
  if (vecStaysWithin(source, n, kQuietLimit)) {
    std::copy_n(source, n, destination);
    return true;
  }
  std::transform(source, source + n, destination, clean);
  return false;
}

}  // namespace orvantesco
