// A slot's "TAPPED" mode: the taps in time, the amounts of the step rows, their grids, and which
// parameters of the POST effect the two effect rows drive.

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "core/GlobalControls.h"
#include "core/NoteLengths.h"
#include "core/TempoTracker.h"
#include "params/ParamIndex.h"
#include "params/dispatch/BeatsReadout.h"
#include "params/dispatch/ParamDispatch.h"

namespace orvantesco {

namespace {

constexpr int kTimebaseMs = 0;

TapControls& tapsOf(const ParamDispatch& change) { return change.controls().taps; }

EffectPosition& postEffectOf(const ParamDispatch& change) {
  return change.position(fxPosition(kStagePO, change.member));
}

void tapCount(ParamDispatch& change) {
  tapsOf(change).lastTap = change.choice;
  const bool followsLast = change.choiceOf(kDelayTapFb + change.member) == 0;
  if (followsLast) tapsOf(change).feedbackTap = change.choice;
  change.editor().refreshLanes(change.member);
}

void feedbackTap(ParamDispatch& change) {
  TapControls& taps = tapsOf(change);
  taps.feedbackTap = change.choice == 0 ? taps.lastTap.get() : change.choice - 1;
}

/// Where the knob of the interval stands for a note; half a second is the end of its travel.
double knobPositionOf(const ParamDispatch& change, double quarterNotes) {
  const double travel = std::min(2.0 * change.tempo().secondsPerBeat() * quarterNotes, 1.0);
  return std::pow(travel, 1.0 / change.param(kDelayTapsTime + change.member).shape());
}

void tapTimebase(ParamDispatch& change) {
  const bool inNotes = change.choice > kTimebaseMs && change.choice < kTimebases;
  const double factor = inNotes ? timebaseFactor(change.choice) : 0.0;
  tapsOf(change).beatFactor = factor;
  // The fade first, so that it covers the reset whenever the audio thread looks.
  change.postGlobal(kStartFade);
  change.slot().requests.post(kResetDelays);
  if (!inNotes || change.restoringState()) return;
  change.editor().showKnobPosition(kDelayTapsTime + change.member, knobPositionOf(change, factor));
  change.touch(-1);
}

void interval(ParamDispatch& change) {
  tapsOf(change).interval = change.value * 0.001;
  if (change.value < 10.0) change.decimals = 2;
  showBeatsOf(change);
}

void intervalDepth(ParamDispatch& change) {
  change.controls().delay.tapsTimeModDepth = change.takeCubedDepth() * 0.5;
}

void intervalSource(ParamDispatch& change) {
  change.chooseSource(change.controls().delay.tapsTimeSource,
                      {kDelayTapsTime + change.member, kDelayTapsTimeModDepth + change.member});
  change.slot().requests.post(kTakeDelaySources);
}

void swell(ParamDispatch& change) { tapsOf(change).swell = change.percent(); }

void swing(ParamDispatch& change) { tapsOf(change).swing = change.value / 3.0 * 0.01; }

void directOutOfTaps(ParamDispatch& change) { tapsOf(change).allTapsOut = change.isOn(); }

void panMode(ParamDispatch& change) { tapsOf(change).panMode = change.choice; }

void timeStepDepth(ParamDispatch& change) {
  tapsOf(change).timeStepInverse = 1.0 - change.percent();
}

void levelStepDepth(ParamDispatch& change) {
  tapsOf(change).levelStepInverse = 1.0 - change.percent();
}

void panWidth(ParamDispatch& change) { tapsOf(change).panWidth = change.percent(); }

void takeFxDepth(ParamDispatch& change, std::size_t row) {
  tapsOf(change).fxDepth[row] = change.percent();
  const int driven = tapsOf(change).fxParam[row];
  if (driven > 0) postEffectOf(change).requests.post(kTakeEffectParam << (driven - 1));
}

void fxDepth1(ParamDispatch& change) { takeFxDepth(change, 0); }
void fxDepth2(ParamDispatch& change) { takeFxDepth(change, 1); }

/// Two rows never drive one parameter: the row that chooses it takes it from the other.
void selectFxParam(ParamDispatch& change, std::size_t row, int otherSelector) {
  tapsOf(change).fxParam[row] = change.choice;
  const int other = otherSelector + change.member;
  if (change.isOn() && change.choiceOf(other) == change.choice) change.changeValue(other, 0.0);
  postEffectOf(change).requests.post(kTakeAllEffectParams | kTakeAllEffectSources);
  change.editor().refreshLanes(change.member);
}

void fxParam1(ParamDispatch& change) { selectFxParam(change, 0, kTapFxParam2); }
void fxParam2(ParamDispatch& change) { selectFxParam(change, 1, kTapFxParam1); }

void laneGrid(ParamDispatch& change) {
  change.editor().setLaneGrid(change.paramIdx, change.choice);
}

constexpr DispatchFamily kTable[] = {
    {kDelayTaps, 4, tapCount},
    {kDelayTapFb, 4, feedbackTap},
    {kTapTimebase, 4, tapTimebase},
    {kTapFxParam1, 4, fxParam1},
    {kTapFxParam2, 4, fxParam2},
    {kTapFxParam1Steps, 4, laneGrid},
    {kTapFxParam2Steps, 4, laneGrid},
    {kTapTimeStepDepth, 4, timeStepDepth, {"TAPS TIME DEPTH", 0, "%"}},
    {kTapLevelStepDepth, 4, levelStepDepth, {"TAPS LEVEL DEPTH", 0, "%"}},
    {kTapPanWidth, 4, panWidth, {"TAPS PAN DEPTH", 0, "%"}},
    {kTapFxP1StepDepth, 4, fxDepth1, {"TAPS FX P1", 0, "%"}},
    {kTapFxP2StepDepth, 4, fxDepth2, {"TAPS FX P2", 0, "%"}},
    {kTapTimeSteps, 4, laneGrid},
    {kTapLevelSteps, 4, laneGrid},
    {kTapPanSteps, 4, laneGrid},
    {kTapPanMode, 4, panMode},
    {kDelayTapDiOut, 4, directOutOfTaps},
    {kDelayTapsTime, 4, interval, {"DELAY TAP TIME", 0, " ms"}},
    {kDelayTapsTimeModDepth, 4, intervalDepth, {"DELAY TAP TIME MOD DEPTH"}},
    {kDelayTapsTimeModSource, 4, intervalSource},
    {kDelayTapsSwell, 4, swell, {"DELAY TAP SWELL", 0, "%"}},
    {kDelayTapsSwing, 4, swing, {"DELAY TAP SWING", 0, "%"}},
};

}  // namespace

constinit const std::span<const DispatchFamily> tapFamilies{kTable};

}  // namespace orvantesco
