#include "fx/StateVariable.h"

namespace orvantesco {

double svfTangent(double w) noexcept {
  const double x = w * w;
  const double over = ((0.10928518325090408 * x - 4.380795955657959) * x + 15.827852249145508) * w;
  return over / ((x - 11.076322555541992) * x + 10.076322555541992);
}

SvfStage::SvfStage(double tangent, double inverseQ) noexcept
    : g(tangent), k(tangent + inverseQ), h(1.0 / (k * g + 1.0)) {
  fromInput = 2.0 * g * h;
  fromMemory = 1.0 - fromInput * k;
}

}  // namespace orvantesco
