#include "delay/MSinOsc.h"

#include <cmath>
#include <numbers>

namespace orvantesco {

void MSinOsc::setFrequency(float hz, float tickRate, float phaseDegrees) noexcept {
  if (!std::isfinite(hz) || !std::isfinite(phaseDegrees) || !(tickRate > 0.0F)) return;
  constexpr double kTurn = 2.0 * std::numbers::pi;
  const double w = kTurn * static_cast<double>(hz) / static_cast<double>(tickRate);
  const double phase = kTurn * static_cast<double>(phaseDegrees) / 360.0;
  frequency = hz;
  coefficient = 2.0 * std::cos(w);
  y1 = std::sin(phase);
  y2 = std::sin(phase - w);
  restart = std::sin(0.5 * std::numbers::pi - w);
}

float MSinOsc::tick() noexcept {
  double y = coefficient * y1 - y2;
  if (y >= 1.0) {
    y2 = restart;
    y1 = 1.0;
    return 1.0F;
  }
  if (y <= -1.0) {
    y = -1.0;
    y2 = -restart;
  } else {
    y2 = y1;
  }
  y1 = y;
  return static_cast<float>(y);
}

}  // namespace orvantesco
