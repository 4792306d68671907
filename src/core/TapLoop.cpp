// A slot's delays in "TAPPED" mode: up to sixteen taps a side, each with its own place in time,
// level and pan, swell echoes before it and a POST effect of its own.

#include <array>

#include "core/EngineRate.h"
#include "core/Orvantesco.h"
#include "core/SlotPass.h"
#include "core/TapPlan.h"

namespace orvantesco {

namespace {

/// Interval between two taps in seconds.
double tapInterval(const TapControls& taps, double secondsPerBeat) noexcept {
  const double factor = taps.beatFactor;
  return factor != 0.0 ? factor * secondsPerBeat : taps.interval.get();
}

/// What all taps of one side read, by tap; null where a tap is not read.
using TapSamples = std::array<const double*, TapControls::kSteps>;

TapSamples readSide(QLMMultiDelay& delay, const TapPlan& plan, bool left, double mod) noexcept {
  std::array<QLMMultiDelay::TapRead, TapControls::kSteps> reads;
  int count = 0;
  for (int t = 0; t < plan.count; ++t) {
    const PlannedTap& tap = plan.taps[static_cast<std::size_t>(t)];
    if (!(left ? tap.readL : tap.readR)) continue;
    reads[static_cast<std::size_t>(count++)] = {mod + tap.delay, t, nullptr};
  }
  delay.readTaps(reads.data(), count, kVectorLength);
  TapSamples samples{};
  for (int r = 0; r < count; ++r) {
    const auto& read = reads[static_cast<std::size_t>(r)];
    samples[static_cast<std::size_t>(read.tap)] = read.samples;
  }
  return samples;
}

}  // namespace

void Orvantesco::readTaps(Slot& slot, SlotPass& pass) noexcept {
  const TapControls& taps = slot.controls.taps;
  const double interval = tapInterval(taps, tempoTracker.secondsPerBeat());
  const TapPlan plan = planTaps(taps, interval * (engineRate() * globals.timeScale),
                                slot.controls.wetShare, maxDelay);
  pass.tapEffects =
      effectIsOn(slot.index, kStagePO) && (taps.fxParam[0] > 0 || taps.fxParam[1] > 0);
  slot.stage[kStageDelay] = slot.stage[kStagePost] = slot.feedbackVec = {};
  const TapSamples left = readSide(slot.delay[0], plan, true, pass.modL);
  const TapSamples right = readSide(slot.delay[1], plan, false, pass.modR);
  for (int t = 0; t < plan.count; ++t) {
    const auto n = static_cast<std::size_t>(t);
    if (left[n] != nullptr) soundTap(slot, pass, plan, {plan.taps[n], t, 0, left[n]});
    if (right[n] != nullptr) soundTap(slot, pass, plan, {plan.taps[n], t, 1, right[n]});
  }
  runTapFeedbackEffect(slot);
  if (taps.allTapsOut) slot.stage[kStageDelay] = slot.stage[kStagePost];
}

void Orvantesco::soundTap(Slot& slot, const SlotPass& pass, const TapPlan& plan,
                          const TapVoice& voice) noexcept {
  const PlannedTap& tap = voice.tap;
  const bool left = voice.side == 0;
  const auto own = [&](StereoVector& pair) { return (left ? pair.left : pair.right).data(); };
  if (voice.index == plan.feedbackTap) {
    // Both sides take the left amount: in this mode the two are equal.
    vecMulConst(voice.samples, slot.feedbackL, own(slot.feedbackVec), kVectorLength);
  }
  if (voice.index == plan.lastTap) {
    vecCopy(voice.samples, own(slot.stage[kStageDelay]), kVectorLength);
  }
  if (!(left ? tap.soundsL : tap.soundsR)) return;

  AudioVector work;
  vecCopy(voice.samples, work.data(), kVectorLength);
  slot.delay[static_cast<std::size_t>(voice.side)].addEchoes(plan.swell, tap.delay, work.data());
  const bool tapped = pass.tapEffects && ((slot.controls.taps.stepFxMask.get() >> voice.index) & 1);
  if (tapped && effectRuns(slot.index, kStagePO)) {
    runEffectInPlace(left ? work.data() : nullptr, left ? nullptr : work.data(),
                     positionOf(slot, kStagePO), 2 * voice.index + voice.side);
  }
  StereoVector& post = slot.stage[kStagePost];
  const double ownGain = left ? tap.gainA : tap.gainB;
  const double otherGain = left ? tap.gainB : tap.gainA;
  vecAddProductConst(work.data(), ownGain, own(post), kVectorLength);
  if (plan.panMode == kPanStereo || otherGain == 0.0) return;
  vecAddProductConst(work.data(), otherGain, (left ? post.right : post.left).data(), kVectorLength);
}

void Orvantesco::runTapFeedbackEffect(Slot& slot) noexcept {
  // Kept as users know it: here the effect waits for changes of the POST stage, not of its own.
  if (fxBusy[kStagePO].load(std::memory_order_acquire)) return;
  EffectPosition& position = positionOf(slot, kStageFB);
  if (position.running == nullptr || position.running->list.empty() || !position.switchedOn) return;
  StereoVector& round = slot.feedbackVec;
  runEffectInPlace(round.left.data(), round.right.data(), position, -1);
}

}  // namespace orvantesco
