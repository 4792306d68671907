#include "delay/TapGlide.h"

#include <cmath>
#include <numbers>

namespace orvantesco {

// Summed in extended precision and rounded once, so that a glide at rest lies at its target.
void TapGlide::setRate(double rateHz, double timeMs) noexcept {
  const double a = std::exp(-2.0 * std::numbers::pi / (timeMs * 0.001 * rateHz));
  gain = 1.0 - a;
  long double power = 1.0L;
  long double sum = 0.0L;
  for (int i = 0; i < kVectorLength; ++i) {
    sum += power;
    power *= a;
    sums[i] = static_cast<double>(sum);
    powers[i] = static_cast<double>(power);
  }
}

}  // namespace orvantesco
