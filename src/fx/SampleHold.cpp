#include "fx/SampleHold.h"

#include <cmath>

namespace orvantesco {

namespace {

constexpr double kSlowing = 0.99;

}  // namespace

double holdRateOf(double amount) noexcept {
  return 1.0 - std::sqrt(std::sqrt(std::sqrt(amount))) * kSlowing;
}

}  // namespace orvantesco
