// The four LFOs. Their rate is a frequency or a note of the host's tempo.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "core/ModulatorControls.h"
#include "core/TempoTracker.h"
#include "params/ParamBank.h"
#include "params/ParamIndex.h"
#include "params/dispatch/ModulationSources.h"
#include "params/dispatch/ParamDispatch.h"

namespace orvantesco {

namespace {

enum LfoSync { kSyncHz, kSyncStraight, kSyncDotted, kSyncTriplet };

constexpr std::array<std::string_view, 8> kNotes{"4/1", "2/1", "1/1",  "1/2",
                                                 "1/4", "1/8", "1/16", "1/32"};
constexpr int kLastNote = 7;
constexpr int kBeatNote = 4;  ///< one cycle for each beat

LfoControls& lfoOf(const ParamDispatch& change) {
  return change.modulatorControls().lfo[static_cast<std::size_t>(change.member)];
}

void refresh(const ParamDispatch& change) {
  change.editor().refreshModulator(ModulatorGroup::Lfo, change.member);
}

void on(ParamDispatch& change) {
  lfoOf(change).on = change.isOn();
  refresh(change);
}

void wave(ParamDispatch& change) {
  lfoOf(change).wave = change.choice;
  change.showLabel(change.param(change.paramIdx).getDisplayText(change.choice));
  refresh(change);
}

void polarity(ParamDispatch& change) {
  lfoOf(change).polarity = change.choice;
  refresh(change);
}

void swap(ParamDispatch& change) {
  lfoOf(change).swap = change.isOn();
  refresh(change);
}

void reverse(ParamDispatch& change) {
  lfoOf(change).reverse = change.isOn();
  refresh(change);
}

void mode(ParamDispatch& change) { lfoOf(change).mode = change.choice; }

void trigger(ParamDispatch& change) {
  lfoOf(change).trigger = lfoTrigger(change.triggers(), change.choice);
}

double cyclesPerBeat(int note, int sync) {
  const double straight = std::exp2(note - kBeatNote);
  if (sync == kSyncDotted) return straight / 1.5;
  return sync == kSyncTriplet ? straight * 1.5 : straight;
}

/// The note whose rate lies at or below a rate in Hz. The margin keeps a rate that is exactly a
/// note from falling to the next lower one by rounding.
int noteOf(double hz, double tempo) {
  const double note = std::floor(std::log2(hz * 960.0 / tempo) + 1e-9);
  return static_cast<int>(std::clamp(note, 0.0, static_cast<double>(kLastNote)));
}

int decimalsOfHz(double hz) {
  if (hz <= 0.1) return 3;
  return hz < 100.0 ? 2 : 0;
}

void rate(ParamDispatch& change) {
  LfoControls& lfo = lfoOf(change);
  const int sync = lfo.sync;
  if (sync == kSyncHz) {
    lfo.rate = change.value;
    change.decimals = decimalsOfHz(change.value);
    return;
  }
  const int note = std::clamp(change.choice, 0, kLastNote);
  lfo.rate = -cyclesPerBeat(note, sync);
  change.showLabel(kNotes[static_cast<std::size_t>(note)]);
  if (sync == kSyncDotted) change.label.append(" D");
  if (sync == kSyncTriplet) change.label.append(" T");
}

/// Going from Hz to notes and back, the LFO keeps its pace as far as it can. What a bulk operation
/// has loaded stays.
void sync(ParamDispatch& change) {
  LfoControls& lfo = lfoOf(change);
  const int rateIdx = kLfoRate + change.member;
  const bool inNotes = change.choice != kSyncHz;
  const bool hadNotes = lfo.sync != kSyncHz;
  const double runningHz = lfo.rateHz(change.tempo().tempo());
  lfo.sync = change.choice;
  change.bank().setLfoRateInNotes(change.member, inNotes);
  if (inNotes != hadNotes && !change.bulk()) {
    change.moveKnob(rateIdx, inNotes ? noteOf(runningHz, change.tempo().tempo()) : runningHz);
  }
  change.editor().setKnobSteps(rateIdx, inNotes ? kLastNote : 0, 1.0);
  if (change.touched()) {
    change.touch(rateIdx);
    change.editor().redraw(rateIdx);
  }
  change.dispatch(rateIdx);
}

void rateDepth(ParamDispatch& change) { lfoOf(change).rateModDepth = change.takeCubedDepth(); }

void rateSource(ParamDispatch& change) {
  change.chooseSource(lfoOf(change).rateModSource,
                      {kLfoRate + change.member, kLfoFreqModDepth + change.member});
}

void depth(ParamDispatch& change) { lfoOf(change).depth = change.percent(); }

void phase(ParamDispatch& change) {
  lfoOf(change).phase = change.percent();
  refresh(change);
}

void glide(ParamDispatch& change) { lfoOf(change).glideMs = change.value; }

constexpr DispatchFamily kTable[] = {
    {kLfoOn, 4, on},
    {kLfoWave, 4, wave, {"LFO WAVE", 0, ""}},
    {kLfoPol, 4, polarity},
    {kLfoSync, 4, sync},
    {kLfoSwap, 4, swap},
    {kLfoReverse, 4, reverse},
    {kLfoMode, 4, mode},
    {kLfoTrigger, 4, trigger},
    {kLfoRate, 4, rate, {"LFO RATE", 2, " Hz"}},
    {kLfoFreqModDepth, 4, rateDepth, {"LFO RATE MOD DEPTH "}},
    {kLfoFreqModSource, 4, rateSource},
    {kLfoDepth, 4, depth, {"LFO DEPTH", 1, " %"}},
    {kLfoPhase, 4, phase, {"LFO PHASE"}},
    {kLfoGlide, 4, glide, {"LFO GLIDE", 1, " ms"}},
};

}  // namespace

constinit const std::span<const DispatchFamily> lfoFamilies{kTable};

}  // namespace orvantesco
