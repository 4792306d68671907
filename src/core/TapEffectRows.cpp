#include "core/TapEffectRows.h"

namespace orvantesco {

int rowDriving(const SlotControls& slot, int param) noexcept {
  if (slot.delay.mode != DelayMode::Tapped || !slot.delayOn) return -1;
  for (int row = 0; row < 2; ++row) {
    if (slot.taps.fxParam[static_cast<std::size_t>(row)] == param + 1) return row;
  }
  return -1;
}

double tapFxControl(const TapFxInput& input) noexcept {
  const double inverse = 1.0 - input.rowDepth;
  if (input.bipolar) {
    return (input.stepPercent - 50.0) * input.rowDepth * 0.01 + (input.base - 0.5) * inverse + 0.5;
  }
  return input.stepPercent * 0.01 * input.rowDepth + input.base * inverse;
}

}  // namespace orvantesco
