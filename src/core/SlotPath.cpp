// A slot from its source to the input of its delays, and the order of all of its steps.

#include <algorithm>
#include <cmath>

#include "core/EngineRate.h"
#include "core/Modulated.h"
#include "core/NoteLengths.h"
#include "core/Orvantesco.h"
#include "core/SlotPass.h"

namespace orvantesco {

namespace {

constexpr double kShortestDelay = 0.001;    // samples; the delay's own minimum raises it
constexpr double kMonoPingPongGain = 0.66;  // not 0.5: a mono sum keeps some level
constexpr double kMixRouteGain = 0.7;       // the route crosses both channels into each
constexpr double kHighestFeedback = 1.6;

}  // namespace

void Orvantesco::processSlot(int slotIndex) noexcept {
  Slot& slot = slots[static_cast<std::size_t>(slotIndex)];
  if (!slot.running) {
    addToRouteSums(slot);
    return;
  }
  SlotPass pass;
  planDelays(slot, pass);
  takeSource(slot);
  offsetChannels(slot);
  runPreEffect(slot, pass);
  planFeedback(slot, pass);
  feedDelays(slot, pass);
  if (slot.delayRunning) {
    readDelays(slot, pass);
    mixDelay(slot);
  } else {
    slot.stage[kStagePost] = slot.stage[kStagePre];
  }
  runPostEffect(slot, pass);
  placeInField(slot);
  sendOut(slot);
  addToRouteSums(slot);
}

StereoInput Orvantesco::inputOf(const Slot& slot) const noexcept {
  const auto pair = [](const StereoVector& v) {
    return StereoInput{v.left.data(), v.right.data()};
  };
  const auto both = [](const AudioVector& v) { return StereoInput{v.data(), v.data()}; };
  switch (slot.controls.input.get()) {
    case SlotInput::Left:
      return both(buses.inL);
    case SlotInput::Right:
      return both(buses.inR);
    case SlotInput::Stereo:
      return {buses.inL.data(), buses.inR.data()};
    case SlotInput::MasterFx:
      return pair(buses.masterReturn);
    case SlotInput::Slot1:
      return directOutOf(slots[0]);
    case SlotInput::Slot2:
      return directOutOf(slots[1]);
    case SlotInput::Slot3:
      return directOutOf(slots[2]);
    case SlotInput::Sum12:
      return pair(routeSums.sum12);
    case SlotInput::Sum13:
      return pair(routeSums.sum13);
    case SlotInput::Sum23:
      return pair(routeSums.sum23);
    case SlotInput::Sum123:
      return pair(routeSums.sum123);
    case SlotInput::Mono:
      break;
  }
  return both(buses.inMono);
}

void Orvantesco::takeSource(Slot& slot) noexcept {
  const SlotControls& controls = slot.controls;
  const StereoInput source = inputOf(slot);
  const double base = controls.inputGain * globals.inputAttenuation;
  const double target = modulatedFirst(controls.inputGainMod, base, 0.0, 4.0) * fadeGain;
  const double* gain = slot.inputSmoother.ramp(target, kVectorLength);
  StereoVector& input = slot.stage[kStageInput];
  vecMul(source.left, gain, input.left.data(), kVectorLength);
  vecMul(source.right, gain, input.right.data(), kVectorLength);
}

void Orvantesco::offsetChannels(Slot& slot) noexcept {
  const double offsetMs = slot.controls.offsetMs;
  const auto offset = [](RingDelay& line, const AudioVector& in, double ms, AudioVector& out) {
    line.write(in.data(), kVectorLength);
    const double* delayed =
        ms == 0.0 ? in.data() : line.read(ms * 0.001 * engineRate(), kVectorLength);
    vecCopy(delayed, out.data(), kVectorLength);
  };
  const StereoVector& input = slot.stage[kStageInput];
  StereoVector& pre = slot.stage[kStagePre];
  offset(slot.offsetLine[0], input.left, std::abs(std::min(offsetMs, 0.0)), pre.left);
  offset(slot.offsetLine[1], input.right, std::max(offsetMs, 0.0), pre.right);
}

void Orvantesco::runPreEffect(Slot& slot, const SlotPass& pass) noexcept {
  if (!effectRuns(slot.index, kStagePR)) return;
  EffectPosition& position = positionOf(slot, kStagePR);
  StereoVector& pre = slot.stage[kStagePre];
  runEffectInPlace(pass.monoR ? nullptr : pre.left.data(), pass.monoL ? nullptr : pre.right.data(),
                   position, pass.instance());
}

void Orvantesco::planDelays(Slot& slot, SlotPass& pass) noexcept {
  const DelayControls& delay = slot.controls.delay;
  pass.mode = slot.modeNow;
  pass.route = delay.route;
  pass.monoL = pass.route == DelayRoute::MonoL && slot.delayRunning;
  pass.monoR = pass.route == DelayRoute::MonoR && slot.delayRunning;

  const int timebase = delay.timebase;
  const double factor = timebaseFactor(timebase);
  pass.unitsL = timebase == 0 ? delay.timeL.get() : delay.factorL * factor;
  pass.unitsR = timebase == 0 ? delay.timeR.get() : delay.factorR * factor;
  pass.samplesPerUnit = timebase == 0 ? engineRate() : engineRate() * tempoTracker.secondsPerBeat();
  pass.samplesPerUnit *= globals.timeScale;
  const double spread = engineRate() * delay.spreadMs * 0.001;
  pass.delayL = std::max(kShortestDelay, pass.samplesPerUnit * pass.unitsL + spread);
  pass.delayR = std::max(kShortestDelay, pass.samplesPerUnit * pass.unitsR - spread);

  const double swing = slot.controls.mainModAmount * globals.mainModDepth;
  const auto pairOf = static_cast<std::size_t>(slot.index / 2);
  pass.modR = swing * modulators.mainMod[pairOf];
  pass.modL = swing * modulators.mainMod[pairOf + 1];

  slot.depthCells.time = engineRate() * delay.modDepth * 0.025;
  slot.depthCells.tapsTime = delay.tapsTimeModDepth;
  slot.depthCells.grainPosition = delay.grainPositionDepth;
  slot.depthCells.grainSpeed = delay.grainSpeedDepth;
  slot.depthCells.grainSize = delay.grainSizeDepth;

  const unsigned char* trigger = delay.reverseTrigger;
  if (trigger == nullptr || *trigger == 0) return;
  for (QLMMultiDelay& line : slot.delay) line.triggerReverse();
}

void Orvantesco::planFeedback(Slot& slot, const SlotPass& pass) noexcept {
  const SlotControls& controls = slot.controls;
  double feedback = controls.feedback + globals.feedbackMaster;
  if (const double* source = controls.feedbackMod.source) {
    feedback += controls.feedbackMod.depth * source[0];
  }
  feedback = std::clamp(feedback, 0.0, kHighestFeedback);
  if (pass.route == DelayRoute::Mix) feedback *= kMixRouteGain;
  slot.feedbackL = feedback;
  slot.feedbackR = feedback;
  const bool proportional = controls.delay.feedbackProportional && pass.route == DelayRoute::Dual &&
                            pass.mode == DelayMode::Forward;
  if (!proportional) return;
  // The shorter loop turns more often; the exponent lets both decay at the same rate.
  if (pass.delayL >= pass.delayR) {
    slot.feedbackR = std::pow(feedback, pass.delayR / pass.delayL);
  } else {
    slot.feedbackL = std::pow(feedback, pass.delayL / pass.delayR);
  }
}

void Orvantesco::feedDelays(Slot& slot, const SlotPass& pass) noexcept {
  const StereoVector& pre = slot.stage[kStagePre];
  StereoVector& feed = slot.delayFeed;
  feed = pre;
  if (pass.mode == DelayMode::Tapped || pass.mode == DelayMode::Backward) return;
  const DelayRoute route = pass.route;
  if (route == DelayRoute::PingPongMonoL || route == DelayRoute::PingPongMonoR) {
    const bool left = route == DelayRoute::PingPongMonoL;
    AudioVector& sum = left ? feed.left : feed.right;
    for (std::size_t i = 0; i < sum.size(); ++i) {
      sum[i] = (pre.left[i] + pre.right[i]) * kMonoPingPongGain;
    }
    (left ? feed.right : feed.left).fill(0.0);
  }
  if (route == DelayRoute::PingPongL) feed.right.fill(0.0);
  if (route == DelayRoute::PingPongR) feed.left.fill(0.0);
}

}  // namespace orvantesco
