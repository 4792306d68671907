// The four step gates. Their steps are in the lane families.

#include <cstddef>

#include "core/ModulatorControls.h"
#include "params/ParamIndex.h"
#include "params/dispatch/ParamDispatch.h"

namespace orvantesco {

namespace {

constexpr int kClockedTimebases = 12;  ///< first position whose clock is another modulator

GateControls& gateOf(const ParamDispatch& change) {
  return change.modulatorControls().gate[static_cast<std::size_t>(change.member)];
}

void refresh(const ParamDispatch& change) {
  change.editor().refreshModulator(ModulatorGroup::Gate, change.member);
}

void length(ParamDispatch& change) {
  gateOf(change).length = change.choice;
  refresh(change);
}

void on(ParamDispatch& change) {
  gateOf(change).on = change.isOn();
  if (change.isOn()) change.dispatch(kGateLength + change.member);
  refresh(change);
}

void timebase(ParamDispatch& change) {
  gateOf(change).timebase = change.choice;
  change.editor().enableKnob(kGateSync + change.member, change.choice < kClockedTimebases);
}

void direction(ParamDispatch& change) { gateOf(change).direction = change.choice; }

void sync(ParamDispatch& change) { gateOf(change).sync = change.isOn(); }

void glide(ParamDispatch& change) { gateOf(change).glideMs = change.value; }

void depth(ParamDispatch& change) { gateOf(change).depth = change.percent(); }

void polarity(ParamDispatch& change) {
  gateOf(change).polarity = change.choice;
  refresh(change);
}

void steps(ParamDispatch& change) {
  gateOf(change).quantisation = change.choice;
  change.editor().setLaneGrid(change.paramIdx, change.choice);
}

constexpr DispatchFamily kTable[] = {
    {kGateLength, 4, length},
    {kGateOn, 4, on},
    {kGateTimebase, 4, timebase},
    {kGateDirection, 4, direction},
    {kGateSync, 4, sync},
    {kGateGlide, 4, glide, {"GATE GLIDE", 1, "ms"}},
    {kGateDepth, 4, depth, {"GATE DEPTH", 1, " %"}},
    {kGatePol, 4, polarity},
    {kGateSteps, 4, steps},
};

}  // namespace

constinit const std::span<const DispatchFamily> gateFamilies{kTable};

}  // namespace orvantesco
