#include "fx/FrequencyCurve.h"

#include <algorithm>
#include <cmath>

namespace orvantesco {

namespace {

constexpr float kLog2Of400 = 8.643856F;
/// Beyond this the power is far outside of any frequency; it also keeps the exponent an int.
constexpr float kLargestExponent = 120.0F;

}  // namespace

double powerOfTwoCurve(float t) noexcept {
  if (std::isnan(t)) return 1.0;
  const float within = std::clamp(t, -kLargestExponent, kLargestExponent);
  const float whole = std::trunc(within);
  const float f = within - whole;
  const float p = (((0.0136991F * f + 0.0517387F) * f + 0.2415636F) * f + 0.6929986F) * f + 1.0F;
  return std::ldexp(static_cast<double>(p), static_cast<int>(whole));
}

double curveFrequencyHz(double control) noexcept {
  return powerOfTwoCurve(static_cast<float>(control) * kLog2Of400) * 50.0;
}

}  // namespace orvantesco
