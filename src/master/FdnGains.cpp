#include "master/FdnGains.h"

#include <algorithm>
#include <cmath>

namespace orvantesco {

namespace {

constexpr double kReferenceRate = 44100.0;
constexpr double kLargestCoefficient = 0.98;

}  // namespace

FdnLineGain fdnLineGain(const FdnDecay& decay, double length, double rateHz) noexcept {
  const double r = rateHz / kReferenceRate * 0.5 + 0.5;
  const double a = decay.damping / r;
  const double g = std::pow(10.0, decay.inverseDecay * (-3.0 / rateHz) * r * length);
  const double c =
      std::min(kLargestCoefficient, std::log(g) * (1.0 - 1.0 / (a * a)) * 0.575646273248511);
  return {(1.0 - c) * g, -c};
}

}  // namespace orvantesco
