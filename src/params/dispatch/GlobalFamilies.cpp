// The parameters of the whole plug-in, but for the master effect, and the feedback matrix.

#include <cmath>
#include <cstddef>

#include "core/GlobalControls.h"
#include "params/ParamIndex.h"
#include "params/dispatch/ParamDispatch.h"

namespace orvantesco {

namespace {

void mainModRate(ParamDispatch& change) {
  change.globals().mainModRate = change.value * 0.07 * 32.0 + 0.01;
  change.postGlobal(kTakeMainModRate);
}

void mainModDepth(ParamDispatch& change) { change.globals().mainModDepth = change.value; }

void feedbackMaster(ParamDispatch& change) { change.globals().feedbackMaster = change.percent(); }

void delayTimeScale(ParamDispatch& change) {
  const double factor = std::exp2(change.percent());
  change.globals().timeScale = factor;
  change.shown = factor;
}

void limiterOn(ParamDispatch& change) {
  GlobalControls& globals = change.globals();
  if (globals.limiterMode != change.choice) {
    globals.limiterMode = change.choice;
    change.postGlobal(kTakeLimiter);
  }
  change.editor().enableKnob(kLimiterLevel, change.isOn());
  change.showLabel(change.param(change.paramIdx).getDisplayText(change.choice));
}

void limiterLevel(ParamDispatch& change) {
  change.globals().limiterBoostDb = change.value;
  change.postGlobal(kTakeLimiter);
}

void wetLevel(ParamDispatch& change) { change.globals().wetLevel = change.percent(); }

void dryLevel(ParamDispatch& change) {
  GlobalControls& globals = change.globals();
  globals.dryLevel = globals.dryMuted ? 0.0 : change.percent();
}

void outputLevel(ParamDispatch& change) { change.globals().outputLevel = gainOfDb(change.value); }

void globalWidth(ParamDispatch& change) { change.globals().globalWidth = change.value; }

void matrixOn(ParamDispatch& change) {
  change.controls().matrixOn = change.isOn();
  for (int from = 0; from < numSlots; ++from) {
    change.editor().enableKnob(slotFbIndex(from, change.member), change.isOn());
  }
}

/// The row belongs to the receiving slot, with one entry for each sending slot.
template <std::size_t From>
void matrixEntry(ParamDispatch& change) {
  change.controls().matrix[From] = change.percent();
}

constexpr DispatchFamily kTable[] = {
    {kMainModRate, 1, mainModRate, {"MAIN MOD RATE "}},
    {kMainModDepth, 1, mainModDepth, {"MAIN MOD DEPTH "}},
    {kFeedbackMaster, 1, feedbackMaster, {"FB SCALE "}},
    {kDelayTimeScale, 1, delayTimeScale, {"DLY TIME SCALE ", 2, " x"}},
    {kLimiterOn, 1, limiterOn, {"LIMITER MODE", 0, ""}},
    {kLimiterLevel, 1, limiterLevel, {"LIMITER BOOST", 1, " dB"}},
    {kWetLevel, 1, wetLevel, {"WET LEVEL"}},
    {kDryLevel, 1, dryLevel, {"DRY LEVEL"}},
    {kOutputLevel, 1, outputLevel, {"OUTPUT LEVEL", 1, " dB"}},
    {kGlobalWidth, 1, globalWidth, {"WIDTH"}},
    {kFbMatrix, 4, matrixOn},
    {kSlot1Fb, 4, matrixEntry<0>, {"FB SLOT1"}},
    {kSlot2Fb, 4, matrixEntry<1>, {"FB SLOT2"}},
    {kSlot3Fb, 4, matrixEntry<2>, {"FB SLOT3"}},
    {kSlot4Fb, 4, matrixEntry<3>, {"FB SLOT4"}},
};

}  // namespace

constinit const std::span<const DispatchFamily> globalFamilies{kTable};

}  // namespace orvantesco
