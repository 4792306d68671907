// Step rows: five lanes for the taps of each slot, and the levels of the gates.

#include <array>
#include <cstddef>

#include "core/EffectPosition.h"
#include "core/ModulatorControls.h"
#include "core/TapEffectRows.h"
#include "fx/EffectCatalogue.h"
#include "params/ParamIndex.h"
#include "params/dispatch/FxReadoutText.h"
#include "params/dispatch/ParamDispatch.h"

namespace orvantesco {

namespace {

constexpr int kFirstEffectLane = 3;
constexpr int kPolarityBoth = 2;

struct Step {
  int slot = 0;
  std::size_t step = 0;
};

Step stepOf(const ParamDispatch& change) {
  const LanePlace place = tapStepPlace(change.paramIdx);
  return {place.slot, static_cast<std::size_t>(place.step)};
}

TapControls& tapsOf(const ParamDispatch& change, Step at) {
  return change.slot(at.slot).controls.taps;
}

void numberCaption(ParamDispatch& change, Step at) {
  change.caption.append(static_cast<int>(at.step) + 1);
}

void timeStep(ParamDispatch& change) {
  const Step at = stepOf(change);
  tapsOf(change, at).timeStep[at.step] = change.percent();
  numberCaption(change, at);
}

void levelStep(ParamDispatch& change) {
  const Step at = stepOf(change);
  tapsOf(change, at).levelStep[at.step] = change.percent();
  numberCaption(change, at);
}

void panStep(ParamDispatch& change) {
  const Step at = stepOf(change);
  tapsOf(change, at).panStep[at.step] = change.percent();
  numberCaption(change, at);
}

/// Shows what the step makes of the parameter that its row drives.
void showDrivenParam(ParamDispatch& change, const EffectPosition& position, std::size_t row,
                     int p) {
  const Step at = stepOf(change);
  const TapControls& taps = tapsOf(change, at);
  const double base = position.value[static_cast<std::size_t>(p)];
  const bool bipolar = isBipolarFxParam(position.type, p);
  showFxParam(change, {position.type, p},
              tapFxControl({change.value, taps.fxDepth[row], base, bipolar}));
  change.caption.append(" STEP ");
  numberCaption(change, at);
}

void effectStep(ParamDispatch& change) {
  const Step at = stepOf(change);
  const auto row = static_cast<std::size_t>(tapStepPlace(change.paramIdx).lane - kFirstEffectLane);
  TapControls& taps = tapsOf(change, at);
  taps.fxStep[row][at.step] = change.value;
  const int driven = taps.fxParam[row];
  EffectPosition& position = change.position(fxPosition(kStagePO, at.slot));
  if (driven > 0) position.requests.post(kTakeEffectParam << (driven - 1));
  if (driven > 0 && position.type != kNoEffect) {
    showDrivenParam(change, position, row, driven - 1);
  } else {
    numberCaption(change, at);
  }
}

void gateStep(ParamDispatch& change) {
  const LanePlace place = gateStepPlace(change.paramIdx);
  GateControls& gate = change.modulatorControls().gate[static_cast<std::size_t>(place.slot)];
  gate.level[static_cast<std::size_t>(place.step)] = change.percent();
  if (gate.polarity == kPolarityBoth) change.shown = change.value * 2.0 - 100.0;
  change.caption.append(place.step + 1).append(" LEVEL");
  const int grid = gate.quantisation;
  if (grid == 0) return;
  change.shown *= grid * 0.01;
  change.decimals = 0;
  change.unit = " / ";
  change.unit.append(grid);
}

constexpr DispatchFamily kTable[] = {
    {kTapStepTime, laneSize, timeStep, {"TAP TIME STEP ", 1, " %"}, KnobFlash::no},
    {kTapStepLevel, laneSize, levelStep, {"TAP LEVEL STEP ", 1, " %"}, KnobFlash::no},
    {kTapStepPan, laneSize, panStep, {"TAP PAN STEP ", 1, " %"}, KnobFlash::no},
    {kTapStepFxP1, laneSize, effectStep, {"TAP FX P1 STEP "}, KnobFlash::no},
    {kTapStepFxP2, laneSize, effectStep, {"TAP FX P2 STEP "}, KnobFlash::no},
    {kGateStep, laneSize, gateStep, {"GATE STEP ", 1, " %"}, KnobFlash::no},
};

}  // namespace

constinit const std::span<const DispatchFamily> laneFamilies{kTable};

}  // namespace orvantesco
