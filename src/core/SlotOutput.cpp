// A slot behind its delays: POST effect, place in the stereo field, buses and sums.

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/Modulated.h"
#include "core/Orvantesco.h"
#include "core/SlotPass.h"

namespace orvantesco {

namespace {

/// Takes the slot's width; cos and sin follow only when it has moved.
void takeWidth(Slot& slot) noexcept {
  const double width = slot.controls.width;
  if (width == slot.widthNow) return;
  slot.widthNow = width;
  const double angle = (1.0 - width) * std::numbers::pi / 4.0;
  slot.widthCos = std::cos(angle);
  slot.widthSin = std::sin(angle);
}

/// L = a·cos + b·sin, R = b·cos + a·sin; full width is a plain copy.
void applyWidth(const Slot& slot, const StereoVector& in, StereoVector& out) noexcept {
  if (slot.widthSin == 0.0) {
    out = in;
    return;
  }
  for (std::size_t i = 0; i < in.left.size(); ++i) {
    out.left[i] = in.left[i] * slot.widthCos + in.right[i] * slot.widthSin;
    out.right[i] = in.right[i] * slot.widthCos + in.left[i] * slot.widthSin;
  }
}

void multiply(const StereoVector& gains, StereoVector& signal) noexcept {
  vecMulInPlace(gains.left.data(), signal.left.data(), kVectorLength);
  vecMulInPlace(gains.right.data(), signal.right.data(), kVectorLength);
}

}  // namespace

void Orvantesco::runPostEffect(Slot& slot, const SlotPass& pass) noexcept {
  if (pass.tapEffects || !effectRuns(slot.index, kStagePO)) return;
  StereoVector& post = slot.stage[kStagePost];
  runEffectInPlace(post.left.data(), post.right.data(), positionOf(slot, kStagePO), -1);
}

void Orvantesco::placeInField(Slot& slot) noexcept {
  const SlotControls& controls = slot.controls;
  const double pan = modulatedFirst(controls.panMod, controls.pan, -1.0, 1.0);
  const double level = modulatedFirst(controls.levelMod, controls.level, 0.0, 4.0) * fadeGain;
  const double* panRamp = slot.panSmoother.ramp(pan, kVectorLength);
  const double* levelRamp = slot.levelSmoother.ramp(level, kVectorLength);
  StereoVector gains;
  for (std::size_t i = 0; i < gains.left.size(); ++i) {
    // Linear, with the centre at full level on both sides.
    gains.right[i] = std::min(panRamp[i] + 1.0, 1.0) * levelRamp[i];
    gains.left[i] = std::min(1.0 - panRamp[i], 1.0) * levelRamp[i];
  }
  takeWidth(slot);
  StereoVector& out = slot.stage[kStageOut];
  if (controls.panBeforeWidth) {
    StereoVector panned = slot.stage[kStagePost];
    multiply(gains, panned);
    applyWidth(slot, panned, out);
  } else {
    applyWidth(slot, slot.stage[kStagePost], out);
    multiply(gains, out);
  }
}

void Orvantesco::sendOut(Slot& slot) noexcept {
  const SlotControls& controls = slot.controls;
  const StereoVector& out = slot.stage[kStageOut];
  const OutputMode mode = controls.outputMode;
  if (mode != OutputMode::Mute) {
    const bool swap = mode == OutputMode::Swap;
    vecAddInPlace(out.left.data(), (swap ? buses.wet.right : buses.wet.left).data(), kVectorLength);
    vecAddInPlace(out.right.data(), (swap ? buses.wet.left : buses.wet.right).data(),
                  kVectorLength);
  }
  if (!controls.masterSendEnabled || masterFxRunning <= kMasterFxOff) return;
  const double send = modulatedFirst(controls.sendMod, controls.send, 0.0, 1.0);
  const StereoVector& source = slot.stage[static_cast<std::size_t>(controls.masterSource.get())];
  vecAddProductConst(source.left.data(), send, buses.masterSend.left.data(), kVectorLength);
  vecAddProductConst(source.right.data(), send, buses.masterSend.right.data(), kVectorLength);
}

StereoInput Orvantesco::directOutOf(const Slot& slot) const noexcept {
  // A slot that listens to the master effect is parked: it must not drive itself through it.
  if (!slot.running || slot.controls.directOutParked) {
    return {buses.silence.data(), buses.silence.data()};
  }
  const int stage = slot.controls.directOut;
  if (stage == kStageDelay) return {slot.delayOutL, slot.delayOutR};
  const StereoVector& out = slot.stage[static_cast<std::size_t>(stage)];
  return {out.left.data(), out.right.data()};
}

void Orvantesco::addToRouteSums(Slot& slot) noexcept {
  const StereoInput direct = directOutOf(slot);
  vecAdd(direct.left, direct.right, slot.slotMono.data(), kVectorLength);
  const auto set = [&](StereoVector& sum) {
    vecCopy(direct.left, sum.left.data(), kVectorLength);
    vecCopy(direct.right, sum.right.data(), kVectorLength);
  };
  const auto add = [&](StereoVector& sum) {
    vecAddInPlace(direct.left, sum.left.data(), kVectorLength);
    vecAddInPlace(direct.right, sum.right.data(), kVectorLength);
  };
  switch (slot.index) {
    case 0:
      set(routeSums.sum12);
      set(routeSums.sum13);
      set(routeSums.sum123);
      break;
    case 1:
      add(routeSums.sum12);
      set(routeSums.sum23);
      add(routeSums.sum123);
      break;
    case 2:
      add(routeSums.sum13);
      add(routeSums.sum23);
      add(routeSums.sum123);
      break;
    default:
      break;
  }
}

}  // namespace orvantesco
