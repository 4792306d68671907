// Carries out, at the start of a sub-block, what control threads have asked for.

#include <algorithm>

#include "core/EffectSetup.h"
#include "core/EngineRate.h"
#include "core/Orvantesco.h"

namespace orvantesco {

namespace {

void takeDelaySettings(const DelayControls& controls, QLMMultiDelay& delay) noexcept {
  delay.setLowpass(controls.lopassHz / engineRate());
  delay.setHighpass(controls.hipassHz / engineRate());
  delay.setGrainSize(controls.grainSizeMs);
  delay.setGrainSpeed(controls.grainSpeed);
  delay.setGrainPosition(controls.grainPosition);
  delay.setGrainFade(controls.grainFadeMs);
  delay.setReverseFade(controls.reverseFadeMs);
}

void takeDelaySources(const DelayControls& controls, QLMMultiDelay& delay) noexcept {
  delay.setModSource(kDelayTimeControl, controls.timeSource);
  delay.setModSource(kGrainPositionControl, controls.grainPositionSource);
  delay.setModSource(kGrainSpeedControl, controls.grainSpeedSource);
  delay.setModSource(kGrainSizeControl, controls.grainSizeSource);
  delay.setModSource(kTapsTimeControl, controls.tapsTimeSource);
}

void clear(StereoVector& vector) noexcept { vector = {}; }

constexpr double kLongestOffsetSeconds = 0.025;

/// Sources and values that `bits` asks for.
void giveSettings(EffectInstances& instances, const EffectContext& context,
                  unsigned bits) noexcept {
  for (int k = 0; k < kEffectParams; ++k) {
    // The value last, so that a control whose source has gone takes its knob's value.
    if (bits & (kTakeEffectSource << k)) giveEffectSource(instances, context, k);
    if (bits & (kTakeEffectParam << k)) giveEffectParam(instances, context, k);
  }
}

}  // namespace

void Orvantesco::carryOutRequests() noexcept {
  carryOutGlobalRequests();
  for (Slot& slot : slots) carryOutSlotRequests(slot);
  for (int position = 0; position < kEffectPositions; ++position) carryOutEffectRequests(position);
}

void Orvantesco::carryOutGlobalRequests() noexcept {
  const unsigned bits = globalRequests.take();
  if (bits == 0) return;
  if (bits & kResetSignals) ResetDSP();
  if (bits & kStartFade) fade.request();
  if (bits & kTakeLimiter) limiter.take(globals.limiterMode, globals.limiterBoostDb);
  if (bits & kTakeMainModRate) modulatorUnits.main.setRate(globals.mainModRate);
  if (bits & (kClearMasterReturn | kClearMasterSend)) clear(buses.masterReturn);
  if (bits & kClearMasterSend) clear(buses.masterSend);
  takeMasterEffect(bits);
}

void Orvantesco::carryOutSlotRequests(Slot& slot) noexcept {
  const SlotControls& controls = slot.controls;
  const unsigned bits = slot.requests.take();
  if (bits != 0) {
    const DelayMode mode = controls.delay.mode;
    for (QLMMultiDelay& delay : slot.delay) {
      if (bits & kTakeDelaySources) takeDelaySources(controls.delay, delay);
      if (bits & kTakeDelaySettings) takeDelaySettings(controls.delay, delay);
      if (bits & kTakeDelayMode) delay.setDelayMode(static_cast<int>(mode));
      if (bits & kResetDelays) delay.reset();
    }
    if (bits & kTakeDelayMode) slot.modeNow = mode;
    if (bits & kSnapTapGlideLeft) slot.delay[0].snapTapGlide();
    if (bits & kSnapTapGlideRight) slot.delay[1].snapTapGlide();
    if (bits & kClearTapMemoryLeft) slot.delay[0].clearTapMemory();
    if (bits & kClearTapMemoryRight) slot.delay[1].clearTapMemory();
    if (bits & kClearFeedback) clear(slot.feedbackVec);
    if (bits & kClearDelayOutputs) clear(slot.stage[kStageDelay]);
    if (bits & kClearStages) silenceSlot(slot);
    if (bits & kTakeSwitches) {
      slot.running = controls.slotOn;
      slot.delayRunning = controls.delayOn;
    }
  }
}

/// Leaves nothing of a slot's signal that could sound when it is switched on again.
void Orvantesco::silenceSlot(Slot& slot) noexcept {
  for (StereoVector& stage : slot.stage) clear(stage);
  clear(slot.delayFeed);
  clear(slot.feedbackVec);
  slot.slotMono.fill(0.0);
  for (RingDelay& line : slot.offsetLine) {
    // As far back as an offset can reach.
    const auto reach = static_cast<int>(kLongestOffsetSeconds * engineRate()) + kVectorLength;
    for (int written = 0; written < reach; written += kVectorLength) {
      line.write(buses.silence.data(), kVectorLength);
    }
  }
  for (int stage = 0; stage < kEffectStages; ++stage) {
    EffectInstances* instances = positionOf(slot, stage).running;
    if (instances == nullptr) continue;
    for (const auto& instance : instances->list) instance->clearState();
  }
}

void Orvantesco::carryOutEffectRequests(int index) noexcept {
  EffectPosition& position = positions[static_cast<std::size_t>(index)];
  // Requests first: those that were posted behind a hand-over must meet the new instances.
  const unsigned bits = position.requests.take();
  const bool isNew = position.takeIncoming();
  for (std::size_t k = 0; k < kEffectParams; ++k) position.depthCell[k] = position.depth[k];
  if (position.running == nullptr) return;
  EffectInstances& instances = *position.running;
  // Built for another rate than the one that has come into force meanwhile.
  if (isNew && instances.builtAtRate != engineRate()) renewInstances(instances);
  if (bits != 0) {
    const SlotControls& controls = slots[static_cast<std::size_t>(index % numSlots)].controls;
    giveSettings(instances, {position, controls, index / numSlots == kStagePO}, bits);
  }
  if (!isNew && !(bits & kTakeEffectSwitch)) return;
  // The switch comes last, as when one turns the knobs of an effect and then switches it on: its
  // reset has the last word, so that a sound does not depend on when its knobs arrived. It moves
  // together with the bypass: a bypassed effect that ran would leave old samples.
  position.switchedOn = position.on;
  giveEffectSwitch(instances, position.switchedOn);
}

}  // namespace orvantesco
