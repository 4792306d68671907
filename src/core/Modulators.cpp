// The last step of a sub-block: the modulators, each with its control words of this moment.

#include <algorithm>

#include "core/Orvantesco.h"
#include "mod/WaveTable.h"

namespace orvantesco {

namespace {

constexpr int kClockedTimebases = 12;  ///< first timebase that another modulator clocks
/// Steps for each quarter note: 1/4 to 1/64, then dotted, then triplets.
constexpr std::array<double, kClockedTimebases> kStepsPerBeat{
    1.0, 2.0, 4.0, 8.0, 16.0, 2.0 / 3.0, 4.0 / 3.0, 8.0 / 3.0, 16.0 / 3.0, 1.5, 3.0, 6.0};

enum EnvelopeSource {
  kInMono,
  kInLeft,
  kInRight,
  kFirstSlotMono,  ///< then left and right of the slot, then the next slot
  kSidechain = 15,
  kMasterReturn
};

std::size_t at(int number) { return static_cast<std::size_t>(number); }

void takeWords(const EnvelopeControls& controls, Envelope& envelope) noexcept {
  envelope.setFollower(controls.follower);
  envelope.setLinear(controls.linear);
  envelope.setGain(controls.gain);
  envelope.setAttack(controls.attackMs);
  envelope.setRelease(controls.releaseMs);
  envelope.setHold(controls.holdMs);
  envelope.setThreshold(controls.threshold);
  envelope.setLocut(controls.locut);
  envelope.setHicut(controls.hicut);
  envelope.setDepth(controls.depth);
}

/// Timebases behind the notes: both envelopes, the gates' levels, the gates' starts.
const unsigned char* clockOf(const TriggerFlags& triggers, int timebase) noexcept {
  const int flag = timebase - kClockedTimebases;
  if (flag < 0) return nullptr;
  if (flag < 2) return &triggers.envPulse[at(flag)];
  if (flag < 6) return &triggers.gateLevelPulse[at(flag - 2)];
  return &triggers.gateStartPulse[at(std::min(flag - 6, 3))];
}

[[gnu::noinline]] void takeWords(const GateControls& controls, const TriggerFlags& triggers,
                                 ArpGate& gate) noexcept {
  const int timebase = std::max(0, controls.timebase.get());
  gate.setStepCount(controls.length);
  gate.setDirection(static_cast<ArpGate::Direction>(controls.direction.get()));
  gate.setPolarity(static_cast<ArpGate::Polarity>(controls.polarity.get()));
  gate.setClockSource(clockOf(triggers, timebase));
  if (timebase < kClockedTimebases) gate.setStepsPerBeat(kStepsPerBeat[at(timebase)]);
  gate.setSync(controls.sync && timebase < kClockedTimebases);
  gate.setDepth(controls.depth);
  gate.setGlide(controls.glideMs);
  for (int step = 0; step < ArpGate::kSteps; ++step) {
    gate.setLevel(step, controls.level[at(step)]);
  }
}

void takeWave(int menuPosition, LfoUnit& unit) noexcept {
  if (menuPosition == unit.wave) return;
  unit.wave = menuPosition;
  const WaveRecord* record = waveList[at(std::clamp(menuPosition, 0, kOfferedWaves - 1))];
  if (record->id == kSampleAndHoldWave) unit.block.drawRandom();
  unit.block.setWave(record);
}

void takeWords(const LfoControls& controls, double tempo, LfoUnit& unit) noexcept {
  takeWave(controls.wave, unit);
  WaveLFO& lfo = unit.block;
  const double hz = controls.rateHz(tempo);
  if (hz != lfo.getRate()) lfo.setRate(hz);
  lfo.setPolarity(static_cast<WaveLFO::Polarity>(controls.polarity.get()));
  lfo.setSwap(controls.swap);
  lfo.setReverse(controls.reverse);
  lfo.setMode(static_cast<WaveLFO::Mode>(controls.mode.get()));
  lfo.setTrigger(controls.trigger);
  lfo.setRateModDepth(controls.rateModDepth);
  lfo.setRateModSource(controls.rateModSource);
  lfo.setDepth(controls.depth);
  lfo.setPhase(controls.phase);
  lfo.setGlide(controls.glideMs);
}

void takeWords(const LogicControls& controls, LogicUnit& unit) noexcept {
  unit.setType(static_cast<LogicUnit::Type>(controls.type.get()));
  for (int i = 0; i < 2; ++i) {
    unit.setOperand(i, {controls.source[at(i)], controls.sourceDepth[at(i)]});
  }
  unit.setSmooth(controls.smoothMs);
  unit.setDepth(controls.depth);
  unit.setDepthModulation({controls.depthSource, controls.depthMod});
}

struct GatePulses {
  bool level, start;
};

// The work of those that are on stands apart and is not drawn in, so that one that is off costs no
// more than the look at its switch.

[[gnu::noinline]] GatePulses runGate(const ArpGate::Clock& clock, GateUnit& unit,
                                     double* vector) noexcept {
  ArpGate& gate = unit.block;
  const int before = gate.currentStep();
  gate.process(clock, vector);
  const GatePulses pulses{unit.previous < 1.0 && gate.stepValue(-1, false) >= 1.0,
                          before != 0 && gate.currentStep() == 0};
  unit.previous = std::clamp(vector[0], -1.0, 1.0);
  return pulses;
}

[[gnu::noinline]] void runLfo(const LfoControls& controls, double tempo, LfoUnit& unit,
                              double* vector) noexcept {
  takeWords(controls, tempo, unit);
  unit.block.process(vector);
}

[[gnu::noinline]] void runLogic(const LogicControls& controls, LogicUnit& unit,
                                double* vector) noexcept {
  takeWords(controls, unit);
  unit.process(vector);
}

}  // namespace

// A modulator reads what stands before it in this order as of now, and what stands behind it as
// of the last sub-block.
void Orvantesco::updateModulators() noexcept {
  for (int e = 0; e < 2; ++e) updateEnvelope(e);
  for (int n = 0; n < 4; ++n) {
    updateGate(n);
    updateLfo(n);
    updateLogic(n);
  }
  modulatorUnits.main.process();
  modulators.mainMod = modulatorUnits.main.mainMod();
  tempoTracker.tempoSeen();
}

const double* Orvantesco::envelopeSource(int menuPosition) const noexcept {
  switch (menuPosition) {
    case kInMono:
      return buses.inMono.data();
    case kInLeft:
      return buses.inL.data();
    case kInRight:
      return buses.inR.data();
    case kSidechain:
      return buses.sideIn.data();
    case kMasterReturn:
      return buses.masterReturn.left.data();
    default:
      break;
  }
  if (menuPosition < kInMono || menuPosition > kMasterReturn) return nullptr;
  const Slot& slot = slots[at((menuPosition - kFirstSlotMono) / 3)];
  const int channel = (menuPosition - kFirstSlotMono) % 3;
  if (channel == 0) return slot.slotMono.data();
  return channel == 1 ? directOutOf(slot).left : directOutOf(slot).right;
}

void Orvantesco::updateEnvelope(int number) noexcept {
  EnvelopeUnit& unit = modulatorUnits.envelope[at(number)];
  const EnvelopeControls& controls = modulatorControls.envelope[at(number)];
  AudioVector& vector = modulators.envelope[at(number)];
  if (!controls.on) {
    if (unit.running) vector.fill(0.0);
    unit.running = false;
    // A pulse is up for one sub-block; one that stayed up would restart its listeners for ever.
    triggers.envPulse[at(number)] = 0;
    return;
  }
  unit.running = true;
  const double* source = envelopeSource(controls.source);
  if (source == nullptr) {
    unit.previous = 0.0;
    triggers.envPulse[at(number)] = 0;
    return;
  }
  takeWords(controls, unit.block);
  unit.block.run(source, vector.data());
  const double value = unit.block.value();
  triggers.envPulse[at(number)] = unit.previous < 1.0 && value >= 1.0;
  unit.previous = value;
  if (modulatorControls.listenTo == number) {
    vecCopy(unit.block.filteredInput(), rings.outRingL.data(), kVectorLength);
    vecCopy(unit.block.filteredInput(), rings.outRingR.data(), kVectorLength);
  }
}

// A gate that is off keeps its last vector. Its flags fall: one that stayed up would stick.
void Orvantesco::updateGate(int number) noexcept {
  const GateControls& controls = modulatorControls.gate[at(number)];
  if (!controls.on) {
    triggers.gateLevelPulse[at(number)] = 0;
    triggers.gateStartPulse[at(number)] = 0;
    return;
  }
  GateUnit& unit = modulatorUnits.gate[at(number)];
  takeWords(controls, triggers, unit.block);
  const GatePulses pulses = runGate({tempoTracker.position(), tempoTracker.tempo()}, unit,
                                    modulators.gate[at(number)].data());
  triggers.gateLevelPulse[at(number)] = pulses.level;
  triggers.gateStartPulse[at(number)] = pulses.start;
}

void Orvantesco::updateLfo(int number) noexcept {
  LfoUnit& unit = modulatorUnits.lfo[at(number)];
  const LfoControls& controls = modulatorControls.lfo[at(number)];
  AudioVector& vector = modulators.lfo[at(number)];
  if (!controls.on) {
    if (unit.running) vector.fill(0.0);
    unit.running = false;
    return;
  }
  unit.running = true;
  runLfo(controls, tempoTracker.tempo(), unit, vector.data());
}

// A logic unit that is off keeps its last vector.
void Orvantesco::updateLogic(int number) noexcept {
  const LogicControls& controls = modulatorControls.logic[at(number)];
  if (!controls.on) return;
  runLogic(controls, modulatorUnits.logic[at(number)], modulators.logic[at(number)].data());
}

}  // namespace orvantesco
