// Runs the effects of a position and mixes them with their dry signal.

#include <algorithm>

#include "core/Orvantesco.h"
#include "fx/EffectCatalogue.h"

namespace orvantesco {

namespace {

constexpr int kMixParam = 4;

/// The vector that modulates a position's mix, or null. Types whose fifth parameter is no mix
/// have none.
const double* mixSourceOf(const EffectPosition& position) {
  return fifthParamIsMix(position.running->typeId) ? position.source[kMixParam].get() : nullptr;
}

}  // namespace

bool Orvantesco::effectIsOn(int slot, int stage) const noexcept {
  const EffectPosition& position = positions[effectPositionIndex(slot, stage)];
  return position.running != nullptr && !position.running->list.empty() && position.switchedOn;
}

bool Orvantesco::effectRuns(int slot, int stage) const noexcept {
  return effectIsOn(slot, stage) &&
         !fxBusy[static_cast<std::size_t>(stage)].load(std::memory_order_acquire);
}

void Orvantesco::runEffect(const StereoPointers& in, const StereoPointers& out,
                           EffectPosition& position, int index) noexcept {
  if (index < 0) {
    runEffectPair(in, out, position);
    return;
  }
  DSPShell& effect = *position.running->list.at(static_cast<std::size_t>(index));
  const double* source = mixSourceOf(position);
  double mix = effect.wetShare();
  if (source != nullptr) {
    mix = std::clamp(*effect.modDepthOf(kMixParam) * source[0] + mix, 0.0, 1.0);
  }
  double* dry = index % 2 == 0 ? in.left : in.right;
  double* wet = index % 2 == 0 ? out.left : out.right;
  effect.process(dry, wet);
  if (mix == 1.0) return;
  vecMulConstInPlace(mix, wet, kVectorLength);
  vecAddProductConst(dry, 1.0 - mix, wet, kVectorLength);
}

void Orvantesco::runEffectPair(const StereoPointers& in, const StereoPointers& out,
                               EffectPosition& position) noexcept {
  DSPShell& left = *position.running->list[0];
  left.process(in.left, out.left);
  position.running->list[1]->process(in.right, out.right);
  double mix = left.wetShare();
  if (const double* source = mixSourceOf(position)) {
    mix = std::clamp(position.depthCell[kMixParam] * source[0] + mix, 0.0, 1.0);
  }
  // Fully wet stays bit for bit; the smoother rests, so a lower mix glides from where it was.
  if (mix == 1.0) return;
  const double* ramp = position.mixSmoother.ramp(mix, kVectorLength);
  for (int i = 0; i < kVectorLength; ++i) {
    out.left[i] = out.left[i] * ramp[i] + in.left[i] * (1.0 - ramp[i]);
    out.right[i] = out.right[i] * ramp[i] + in.right[i] * (1.0 - ramp[i]);
  }
}

void Orvantesco::runEffectInPlace(double* left, double* right, EffectPosition& position,
                                  int index) noexcept {
  const StereoPointers out{effectScratch.left.data(), effectScratch.right.data()};
  runEffect({left, right}, out, position, index);
  const bool both = index < 0;
  if (both || index % 2 == 0) vecCopy(out.left, left, kVectorLength);
  if (both || index % 2 != 0) vecCopy(out.right, right, kVectorLength);
}

}  // namespace orvantesco
