// A slot's gains: input, pan, feedback, level and send, each with its modulation.

#include <cmath>

#include "params/ParamIndex.h"
#include "params/dispatch/ParamDispatch.h"

namespace orvantesco {

namespace {

/// A fader whose lower end is silence, not -60 dB.
double takeFader(ParamDispatch& change) {
  const double gain = gainOfFader(change.value);
  if (gain == 0.0) change.label = "-inf";
  return gain;
}

void inputGain(ParamDispatch& change) { change.controls().inputGain = takeFader(change); }

void inputGainDepth(ParamDispatch& change) {
  change.controls().inputGainMod.depth = change.takeCubedDepth();
}

void inputGainSource(ParamDispatch& change) {
  change.chooseSource(change.controls().inputGainMod.source,
                      {kInputGain + change.member, kInputGainModDepth + change.member});
}

void panning(ParamDispatch& change) {
  change.controls().pan = change.percent();
  change.shown = std::abs(change.value);
  if (change.value != 0.0) change.unit = change.value < 0.0 ? "% L" : "% R";
}

void panningDepth(ParamDispatch& change) { change.controls().panMod.depth = change.percent(); }

void panningSource(ParamDispatch& change) {
  change.chooseSource(change.controls().panMod.source,
                      {kPanning + change.member, kPanningModDepth + change.member});
}

void feedback(ParamDispatch& change) { change.controls().feedback = change.percent(); }

void feedbackDepth(ParamDispatch& change) {
  change.controls().feedbackMod.depth = change.takeCubedDepth();
}

void feedbackSource(ParamDispatch& change) {
  change.chooseSource(change.controls().feedbackMod.source,
                      {kFeedback + change.member, kFeedbackModDepth + change.member});
}

void level(ParamDispatch& change) { change.controls().level = takeFader(change); }

void levelDepth(ParamDispatch& change) {
  change.controls().levelMod.depth = change.takeCubedDepth();
}

void levelSource(ParamDispatch& change) {
  change.chooseSource(change.controls().levelMod.source,
                      {kLevel + change.member, kLevelModDepth + change.member});
}

void masterFxSend(ParamDispatch& change) { change.controls().send = change.percent(); }

void masterFxSendDepth(ParamDispatch& change) {
  change.controls().sendMod.depth = change.percent();
}

void masterFxSendSource(ParamDispatch& change) {
  change.chooseSource(change.controls().sendMod.source,
                      {kMasterFxSend + change.member, kMasterFxSendModDepth + change.member});
}

constexpr DispatchFamily kTable[] = {
    {kInputGain, 4, inputGain, {"INPUT GAIN", 1, " dB"}},
    {kInputGainModDepth, 4, inputGainDepth, {"INPUT GAIN MOD DEPTH"}},
    {kInputGainModSource, 4, inputGainSource},
    {kPanning, 4, panning, {"PAN", 0, ""}},
    {kPanningModDepth, 4, panningDepth, {"PAN MOD DEPTH"}},
    {kPanningModSource, 4, panningSource},
    {kFeedback, 4, feedback, {"FEEDBACK LEVEL"}},
    {kFeedbackModDepth, 4, feedbackDepth, {"FEEDBACK MOD DEPTH"}},
    {kFeedbackModSource, 4, feedbackSource},
    {kLevel, 4, level, {"OUTPUT LEVEL", 1, " dB"}},
    {kLevelModDepth, 4, levelDepth, {"LEVEL MOD DEPTH"}},
    {kLevelModSource, 4, levelSource},
    {kMasterFxSend, 4, masterFxSend, {"MASTER FX SEND"}},
    {kMasterFxSendModDepth, 4, masterFxSendDepth, {"MASTER FX MOD DEPTH"}},
    {kMasterFxSendModSource, 4, masterFxSendSource},
};

}  // namespace

constinit const std::span<const DispatchFamily> slotGainFamilies{kTable};

}  // namespace orvantesco
