// The two envelope modulators.

#include <cmath>
#include <cstddef>

#include "core/ModulatorControls.h"
#include "params/ParamIndex.h"
#include "params/dispatch/ParamDispatch.h"

namespace orvantesco {

namespace {

constexpr int kSourceLeft = 1;  ///< position "IN LEFT"
constexpr int kFirstOther = 3;  ///< first position that is not the main input

EnvelopeControls& envelopeOf(const ParamDispatch& change) {
  return change.modulatorControls().envelope[static_cast<std::size_t>(change.member)];
}

void refresh(const ParamDispatch& change) {
  change.editor().refreshModulator(ModulatorGroup::Envelope, change.member);
}

void on(ParamDispatch& change) {
  envelopeOf(change).on = change.isOn();
  refresh(change);
}

void mode(ParamDispatch& change) {
  envelopeOf(change).follower = change.choice == 0;
  refresh(change);
}

void source(ParamDispatch& change) {
  const bool fromHost = change.choice < kFirstOther;
  envelopeOf(change).source = fromHost && change.mainInputIsMono() ? kSourceLeft : change.choice;
}

void gain(ParamDispatch& change) { envelopeOf(change).gain = gainOfDb(change.value); }

void attack(ParamDispatch& change) { envelopeOf(change).attackMs = change.value; }

void release(ParamDispatch& change) { envelopeOf(change).releaseMs = change.value; }

void hold(ParamDispatch& change) { envelopeOf(change).holdMs = change.value; }

void threshold(ParamDispatch& change) {
  envelopeOf(change).threshold = gainOfDb(change.value);
  refresh(change);
}

/// Place of a frequency between 50 Hz (0) and 20 kHz (1) on a logarithmic scale.
double bandLimit(double hz) { return std::log(hz / 50.0) / std::log(400.0); }

void locut(ParamDispatch& change) { envelopeOf(change).locut = bandLimit(change.value); }

void hicut(ParamDispatch& change) { envelopeOf(change).hicut = bandLimit(change.value); }

void depth(ParamDispatch& change) { envelopeOf(change).depth = change.percent(); }

void output(ParamDispatch& change) { envelopeOf(change).linear = change.isOn(); }

constexpr DispatchFamily kTable[] = {
    {kEnvOn, 2, on},
    {kEnvMode, 2, mode},
    {kEnvSource, 2, source},
    {kEnvGain, 2, gain, {"ENV GAIN", 1, " dB"}},
    {kEnvAttack, 2, attack, {"ENV ATTACK", 0, " ms"}},
    {kEnvDecay, 2, release, {"ENV RELEASE", 0, " ms"}},
    {kEnvHold, 2, hold, {"ENV HOLD", 0, " ms"}},
    {kEnvThreshold, 2, threshold, {"ENV THRESHOLD", 1, " db"}},
    {kEnvLocut, 2, locut, {"ENV LOCUT", 0, " Hz"}},
    {kEnvHicut, 2, hicut, {"ENV HICUT", 0, " Hz"}},
    {kEnvDepth, 2, depth, {"ENV DEPTH"}},
    {kEnvOutput, 2, output},
};

}  // namespace

constinit const std::span<const DispatchFamily> envelopeFamilies{kTable};

}  // namespace orvantesco
