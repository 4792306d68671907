#include "core/TailEstimate.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/EffectTail.h"
#include "core/MasterTail.h"

namespace orvantesco {

namespace {

constexpr double kSilenceDb = 90.0;
constexpr double kForever = std::numeric_limits<double>::infinity();
constexpr double kHighestFeedback = 1.6;
constexpr double kHighestGain = 4.0;      // of an input or a level that is modulated
constexpr double kMixRouteGain = 0.99;    // 0.7 and the square root of 2 by which the route turns
constexpr double kSoftClipCeiling = 1.5;  // of what goes round
constexpr double kMasterMargin = 8.0;     // 18 dB, the most that an equaliser adds

double decibelsOf(double gain) { return 20.0 * std::log10(std::max(gain, 1e-6)); }

double highest(const ModInput& modulation, double base, double limit) {
  if (modulation.source == nullptr) return base;
  return std::clamp(base + std::abs(modulation.depth), 0.0, limit);
}

/// The slots whose sum an input hears, one bit each.
unsigned heardBy(SlotInput input) {
  switch (input) {
    case SlotInput::Slot1:
      return 0b0001;
    case SlotInput::Slot2:
      return 0b0010;
    case SlotInput::Slot3:
      return 0b0100;
    case SlotInput::Sum12:
      return 0b0011;
    case SlotInput::Sum13:
      return 0b0101;
    case SlotInput::Sum23:
      return 0b0110;
    case SlotInput::Sum123:
      return 0b0111;
    default:
      return 0;
  }
}

/// Decibels that a single loop would have to fade by, for `slots` alike in a row to have faded by
/// `decibels`: their sound is t^(n - 1) exp(-s t), and x = D + (n - 1) ln(1 + x) for x = s t.
double decibelsInARow(double decibels, int slots) {
  constexpr double kDecibelsPerNeper = 8.685889638065037;
  constexpr int iterations = 20;
  const double nepers = std::max(decibels, 0.0) / kDecibelsPerNeper;
  double x = nepers;
  for (int k = 0; k < iterations; ++k) x = nepers + (slots - 1) * std::log1p(x);
  return x * kDecibelsPerNeper;
}

}  // namespace

void TailEstimate::Sum::add(const Sum& other, double gain) {
  for (std::size_t i = 0; i < count; ++i) lines[i] += gain * other.lines[i];
  outside += gain * other.outside;
}

TailEstimate::TailEstimate(const Slots& allSlots, const Positions& allPositions,
                           const GlobalControls& allGlobals, const TimeFrame& timeFrame)
    : slots(allSlots), positions(allPositions), globals(allGlobals), frame(timeFrame) {
  for (std::size_t slot = 0; slot < count; ++slot) {
    if (runs(slot)) takeSlot(slot);
  }
  for (std::size_t slot = 0; slot < count; ++slot) {
    if (echoes(slot)) takeFeedback(slot);
  }
}

bool TailEstimate::runs(std::size_t slot) const { return slots[slot].controls.slotOn; }

bool TailEstimate::echoes(std::size_t slot) const {
  return runs(slot) && slots[slot].controls.delayOn;
}

const EffectPosition& TailEstimate::effect(std::size_t slot, int stage) const {
  const int index = effectPositionIndex(static_cast<int>(slot), stage);
  return positions[static_cast<std::size_t>(index)];
}

double TailEstimate::feedbackOf(std::size_t slot) const {
  const SlotControls& controls = slots[slot].controls;
  const double knob = std::clamp(controls.feedback + globals.feedbackMaster, 0.0, kHighestFeedback);
  const double feedback = highest(controls.feedbackMod, knob, kHighestFeedback);
  return controls.delay.route == DelayRoute::Mix ? feedback * kMixRouteGain : feedback;
}

/// What a slot gives back of its line: 1, but a tap of a tapped slot takes the feedback here too.
double TailEstimate::lineShare(std::size_t slot) const {
  const double share =
      slots[slot].controls.delay.mode == DelayMode::Tapped ? feedbackOf(slot) : 1.0;
  return share > 0.0 ? share * effectLoopGain(effect(slot, kStageFB)) : 0.0;
}

TailEstimate::Sum TailEstimate::inputOf(std::size_t slot) const {
  const SlotControls& controls = slots[slot].controls;
  Sum heard;
  const unsigned sources = heardBy(controls.input);
  heard.outside = controls.input == SlotInput::Mono ? 2.0 : (sources == 0 ? 1.0 : 0.0);
  for (std::size_t from = 0; from < slot; ++from) {
    const bool isHeard = (sources >> from & 1u) != 0 && runs(from);
    if (isHeard && !slots[from].controls.directOutParked) {
      heard.add(stageOf(from, slots[from].controls.directOut), 1.0);
    }
    // Through the master effect too a slot may drive itself, by way of the matrix.
    const bool sends = slots[from].controls.masterSendEnabled && runs(from);
    if (controls.input == SlotInput::MasterFx && sends) {
      heard.add(stageOf(from, slots[from].controls.masterSource), kMasterMargin);
    }
  }
  return heard;
}

TailEstimate::Sum TailEstimate::ownLine(std::size_t slot) const {
  Sum line;
  if (echoes(slot)) line.lines[slot] = 1.0;
  return line;
}

/// What a stage of a slot is made of, for every slot before the one that listens.
TailEstimate::Sum TailEstimate::stageOf(std::size_t slot, int stage) const {
  const SlotControls& controls = slots[slot].controls;
  if (stage == kStageInput) return input[slot];
  Sum signal;
  if (stage == kStageDelay) return ownLine(slot);
  signal.add(input[slot], effectGain(effect(slot, kStagePR)));
  if (stage == kStagePre) return signal;
  Sum post;
  post.add(signal, echoes(slot) ? controls.directIn.get() : 1.0);
  const bool tapped = controls.delay.mode == DelayMode::Tapped;
  const double taps = tapped ? controls.taps.lastTap + 1.0 : 1.0;
  post.add(ownLine(slot), controls.wetShare * taps);
  const double level =
      stage == kStagePost ? 1.0 : highest(controls.levelMod, controls.level, kHighestGain);
  Sum out;
  out.add(post, effectGain(effect(slot, kStagePO)) * level);
  return out;
}

void TailEstimate::takeSlot(std::size_t slot) {
  const SlotControls& controls = slots[slot].controls;
  const double gain =
      globals.inputAttenuation * highest(controls.inputGainMod, controls.inputGain, kHighestGain);
  const Sum heard = inputOf(slot);
  input[slot].add(heard, gain);
  for (std::size_t from = 0; from < slot; ++from) {
    if (heard.lines[from] == 0.0) continue;
    row[slot].slots = std::max(row[slot].slots, row[from].slots);
    row[slot].seconds = std::max(row[slot].seconds, row[from].seconds);
  }
  if (!echoes(slot)) return;
  loops.seconds[slot] = turnSeconds(controls, frame);
  ++row[slot].slots;
  row[slot].seconds += longestDelaySeconds(controls, frame);
}

/// What a slot writes to its line: its input, and what is given back.
void TailEstimate::takeFeedback(std::size_t slot) {
  const SlotControls& controls = slots[slot].controls;
  const Sum feed = stageOf(slot, kStagePre);
  loops.gain[slot] = feed.lines;
  written[slot] = feed.outside;
  const double feedback = feedbackOf(slot);
  for (std::size_t from = 0; from < count; ++from) {
    const double share = controls.matrixOn ? std::abs(controls.matrix[from]) : double(from == slot);
    if (share == 0.0 || feedback == 0.0 || !echoes(from)) continue;
    loops.gain[slot][from] += share * feedback * lineShare(from);
    written[slot] += share * feedback * kSoftClipCeiling;
  }
}

/// The most of a stage of a slot, as a gain over full scale. Each line counts as full of what is
/// written to it.
double TailEstimate::loudestAt(std::size_t slot, int stage) const {
  const Sum signal = stageOf(slot, stage);
  double most = signal.outside;
  for (std::size_t line = 0; line < count; ++line) most += signal.lines[line] * written[line];
  return most;
}

/// The most that leaves the effect, slots and master effect together.
double TailEstimate::loudest() const {
  double sum = 0.0;
  for (std::size_t slot = 0; slot < count; ++slot) {
    if (!runs(slot)) continue;
    const SlotControls& controls = slots[slot].controls;
    if (controls.outputMode != OutputMode::Mute) sum += loudestAt(slot, kStageOut);
    if (!controls.masterSendEnabled || globals.masterFxType <= kMasterFxOff) continue;
    const double send = highest(controls.sendMod, controls.send, 1.0) * globals.masterFxLevel;
    sum += loudestAt(slot, controls.masterSource) * send * kMasterMargin;
  }
  const double boost = globals.limiterMode > 0 ? globals.limiterBoostDb.get() : 0.0;
  return sum * globals.wetLevel * globals.outputLevel * std::pow(10.0, boost / 20.0);
}

/// Seconds that the effects in and around the slots need for themselves.
double TailEstimate::effectSeconds() const {
  double together = 0.0;
  for (std::size_t slot = 0; slot < count; ++slot) {
    for (int stage = 0; runs(slot) && stage < kEffectStages; ++stage) {
      together += effectTailSeconds(effect(slot, stage));
    }
  }
  return together;
}

double TailEstimate::seconds() const {
  const double decibels = kSilenceDb + decibelsOf(loudest());
  const double decay = loopDecay(loops);
  double slotSeconds = 0.0;
  for (const Row& one : row) {
    // Without a slot that echoes there is no loop to wait for.
    if (one.slots == 0) continue;
    if (decay == 0.0) return kForever;
    const double fading = decibelsInARow(decibels, one.slots) / decay;
    slotSeconds = std::max(slotSeconds, fading + one.seconds);
  }
  return slotSeconds + effectSeconds() + masterTailSeconds(globals, decibels);
}

}  // namespace orvantesco
