// A slot's delays in "TAPPED" mode: up to sixteen taps a side, each with its own place in time,
// level and pan, swell echoes before it and a POST effect of its own.

#include "core/EngineRate.h"
#include "core/NoteLengths.h"
#include "core/Orvantesco.h"
#include "core/SlotPass.h"
#include "core/TapPlan.h"

namespace orvantesco {

namespace {

/// Adds the echoes that swell up to a tap. They are read as they stand in the ring.
void addSwell(QLMMultiDelay& delay, const SwellPlan& swell, double tapDelay, double* work) {
  for (int k = 0; k < swell.count; ++k) {
    const SwellEcho& echo = swell.echoes[static_cast<std::size_t>(k)];
    const double distance = tapDelay - echo.back;
    // The echoes run ever earlier, so behind the first one that is out of reach all are.
    if (distance <= 0.0) return;
    vecAddProductConst(delay.readRaw(distance, kVectorLength), echo.gain, work, kVectorLength);
  }
}

/// Interval between two taps in samples.
double tapInterval(const TapControls& taps, double secondsPerBeat) noexcept {
  const double factor = taps.beatFactor;
  return factor != 0.0 ? factor * secondsPerBeat : taps.interval.get();
}

}  // namespace

void Orvantesco::readTaps(Slot& slot, SlotPass& pass) noexcept {
  const TapControls& taps = slot.controls.taps;
  const double interval = tapInterval(taps, tempoTracker.secondsPerBeat());
  const TapPlan plan = planTaps(taps, interval * (engineRate() * globals.timeScale),
                                slot.controls.wetShare, maxDelay);
  const SwellPlan swell = planSwell(taps.swell);
  pass.tapEffects =
      effectRuns(slot.index, kStagePO) && (taps.fxParam[0] > 0 || taps.fxParam[1] > 0);
  slot.stage[kStageDelay] = slot.stage[kStagePost] = slot.feedbackVec = {};
  for (int t = 0; t < plan.count; ++t) {
    const PlannedTap& tap = plan.taps[static_cast<std::size_t>(t)];
    if (tap.readL) readTapSide(slot, {&pass, &plan, &swell, t, 0});
    if (tap.readR) readTapSide(slot, {&pass, &plan, &swell, t, 1});
  }
  // Kept as users know it: this effect waits for changes of the POST stage, not of its own.
  if (!fxBusy[kStagePO].load(std::memory_order_acquire)) runTapFeedbackEffect(slot);
  if (taps.allTapsOut) slot.stage[kStageDelay] = slot.stage[kStagePost];
}

void Orvantesco::readTapSide(Slot& slot, const TapPass& tapPass) noexcept {
  const auto [pass, plan, swell, t, side] = tapPass;
  const PlannedTap& tap = plan->taps[static_cast<std::size_t>(t)];
  const bool left = side == 0;
  QLMMultiDelay& delay = slot.delay[static_cast<std::size_t>(side)];
  const double* tapped =
      delay.readTap((left ? pass->modL : pass->modR) + tap.delay, kVectorLength, t);
  if (t == plan->feedbackTap) {
    // Both sides take the left amount: in this mode the two are equal.
    vecMulConst(tapped, slot.feedbackL,
                (left ? slot.feedbackVec.left : slot.feedbackVec.right).data(), kVectorLength);
  }
  StereoVector& delayed = slot.stage[kStageDelay];
  if (t == plan->lastTap)
    vecCopy(tapped, (left ? delayed.left : delayed.right).data(), kVectorLength);
  if (!(left ? tap.soundsL : tap.soundsR)) return;

  AudioVector work;
  vecCopy(tapped, work.data(), kVectorLength);
  addSwell(delay, *swell, tap.delay, work.data());
  if (pass->tapEffects && ((slot.controls.taps.stepFxMask.get() >> t) & 1)) {
    runEffectInPlace(left ? work.data() : nullptr, left ? nullptr : work.data(),
                     positionOf(slot, kStagePO), 2 * t + side);
  }
  StereoVector& post = slot.stage[kStagePost];
  const double ownGain = left ? tap.gainA : tap.gainB;
  const double otherGain = left ? tap.gainB : tap.gainA;
  vecAddProductConst(work.data(), ownGain, (left ? post.left : post.right).data(), kVectorLength);
  if (plan->panMode == 0 || otherGain == 0.0) return;
  vecAddProductConst(work.data(), otherGain, (left ? post.right : post.left).data(), kVectorLength);
}

void Orvantesco::runTapFeedbackEffect(Slot& slot) noexcept {
  const EffectPosition& position = positionOf(slot, kStageFB);
  if (position.running == nullptr || position.running->list.empty() || !position.switchedOn) return;
  StereoVector& round = slot.feedbackVec;
  runEffectInPlace(round.left.data(), round.right.data(), positionOf(slot, kStageFB), -1);
}

}  // namespace orvantesco
