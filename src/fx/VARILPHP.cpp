#include "fx/VARILPHP.h"

#include <algorithm>
#include <cmath>

namespace orvantesco {

namespace {

/// Sections of 12 dB for a slope's number.
int sectionsOf(double slope) noexcept { return static_cast<int>(std::clamp(slope, 0.0, 1e6)) + 1; }

}  // namespace

VARILPHP::VARILPHP(bool isRight) : LPHP(isRight, false) {}

void VARILPHP::setParam(int index, double value) noexcept {
  if (!std::isfinite(value)) return;
  switch (index) {
    case 0:
      highpass.setCutoff(value);
      break;
    case 1:
      highpass.setStageCount(sectionsOf(value));
      break;
    case 2:
      lowpass.setCutoff(value);
      break;
    case 3:
      lowpass.setStageCount(sectionsOf(value));
      break;
    case 4:
      setMix(value);
      break;
    default:
      break;
  }
}

DSPShell* VARILPHP::modulatedBy(int index) noexcept {
  if (index == 0) return &highpass;
  if (index == 2) return &lowpass;
  return nullptr;
}

}  // namespace orvantesco
