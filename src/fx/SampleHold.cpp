#include "fx/SampleHold.h"

#include <cmath>

namespace orvantesco {

namespace {

/// A smoothed knob comes to rest this close to 0, where its eighth root would still be a tenth.
constexpr double kNothing = 1e-9;
constexpr double kSlowing = 0.99;

}  // namespace

double holdRateOf(double amount) noexcept {
  if (amount < kNothing) return 1.0;
  return 1.0 - std::sqrt(std::sqrt(std::sqrt(amount))) * kSlowing;
}

}  // namespace orvantesco
