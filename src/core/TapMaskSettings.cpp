// The masks of the taps: no parameters of the bank, but state that an editor or a host brings.

#include "core/Orvantesco.h"

namespace orvantesco {

void Orvantesco::setTapMasks(int slot, TapMasks masks) {
  TapControls& taps = slots[static_cast<std::size_t>(slot)].controls.taps;
  taps.tapMask[0] = masks.left;
  taps.tapMask[1] = masks.right;
}

TapMasks Orvantesco::tapMasks(int slot) const {
  const TapControls& taps = slots[static_cast<std::size_t>(slot)].controls.taps;
  return {taps.tapMask[0], taps.tapMask[1]};
}

void Orvantesco::setStepFxMask(int slot, std::uint16_t mask) {
  slots[static_cast<std::size_t>(slot)].controls.taps.stepFxMask = mask;
}

void Orvantesco::setStepModMask(int row, int slot, std::uint16_t mask) {
  Slot& of = slots[static_cast<std::size_t>(slot)];
  of.controls.taps.stepModMask[static_cast<std::size_t>(row)] = mask;
  // Which depth a tap's instance reads follows its bit.
  positionOf(of, kStagePO).requests.post(kTakeAllEffectSources);
}

}  // namespace orvantesco
