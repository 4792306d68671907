#include "mod/MultiLFO.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orvantesco {

namespace {

constexpr double kStepPerIncrement = 2.9;
constexpr double kLargestStep = 0.08;
constexpr double kA = 0.15, kB = 0.2, kC = 10.0;
// Bring the two coordinates to about -1..1.
constexpr double kScaleX = 0.05107000097632408;
constexpr double kScaleY = 0.06790000200271606;
// The attractor lies within ±25; what is far beyond it would not come back.
constexpr double kFarOff = 1e3;

}  // namespace

void MultiLFO::update() noexcept { step = std::min(ratio * kStepPerIncrement, kLargestStep); }

void MultiLFO::restart() noexcept {
  phase = 0.0;
  x = 0.0;
  y = z = 1.0;
  outputs = {};
}

void MultiLFO::process() noexcept {
  phase += phase < 1.0 ? ratio : -2.0;
  if (wave == Wave::Chaos) {
    stepChaos();
  } else {
    outputs[0] = outputs[1] = (periodic() + waveOffset) * waveGain;
  }
}

void MultiLFO::stepChaos() noexcept {
  const double nextX = x - (z + y) * step;
  const double nextY = y + (kA * y + x) * step;
  const double nextZ = z + ((x - kC) * z + kB) * step;
  const bool onCourse =
      std::abs(nextX) < kFarOff && std::abs(nextY) < kFarOff && std::abs(nextZ) < kFarOff;
  x = onCourse ? nextX : 0.0;
  y = onCourse ? nextY : 1.0;
  z = onCourse ? nextZ : 1.0;
  const double scaledX = x * kScaleX;
  const double scaledY = y * kScaleY;
  outputs = {scaledX, scaledY, -scaledX, -scaledY};
}

double MultiLFO::periodic() const noexcept {
  switch (wave) {
    case Wave::Sine:
      return std::sin(std::numbers::pi * phase);
    case Wave::FallingSaw:
      return -phase;
    case Wave::Square:
      return phase < 0.0 ? -1.0 : 1.0;
    case Wave::Triangle:
      return 1.0 - std::abs(2.0 * phase);
    default:
      return phase;
  }
}

}  // namespace orvantesco
