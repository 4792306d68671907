// The four logic units, which combine two modulation sources.

#include <array>
#include <cstddef>

#include "core/ModulatorControls.h"
#include "params/ParamIndex.h"
#include "params/dispatch/ParamDispatch.h"

namespace orvantesco {

namespace {

LogicControls& logicOf(const ParamDispatch& change) {
  return change.modulatorControls().logic[static_cast<std::size_t>(change.member)];
}

void on(ParamDispatch& change) {
  logicOf(change).on = change.isOn();
  change.editor().refreshModulator(ModulatorGroup::Logic, change.member);
}

/// The menu lists the operations in another order than the units number them.
void type(ParamDispatch& change) {
  // ADD, MULTIPLY, MIN, MAX, ABS MIN, ABS MAX, GATE, HIGHER, LOWER
  static constexpr std::array<int, 9> kTypes{0, 1, 4, 5, 2, 3, 6, 7, 8};
  const auto menuPosition = static_cast<std::size_t>(change.choice);
  if (menuPosition < kTypes.size()) logicOf(change).type = kTypes[menuPosition];
}

void source1Depth(ParamDispatch& change) { logicOf(change).sourceDepth[0] = change.percent(); }
void source2Depth(ParamDispatch& change) { logicOf(change).sourceDepth[1] = change.percent(); }

/// An input has no value of its own: the ring is around its depth.
void chooseInput(ParamDispatch& change, std::size_t number, int depthIdx) {
  change.chooseSource(logicOf(change).source[number], {depthIdx, depthIdx});
}

void source1(ParamDispatch& change) { chooseInput(change, 0, kLogicSource1Depth + change.member); }
void source2(ParamDispatch& change) { chooseInput(change, 1, kLogicSource2Depth + change.member); }

void smooth(ParamDispatch& change) { logicOf(change).smoothMs = change.value; }

void depth(ParamDispatch& change) { logicOf(change).depth = change.percent(); }

void depthMod(ParamDispatch& change) { logicOf(change).depthMod = change.percent(); }

void depthSource(ParamDispatch& change) {
  change.chooseSource(logicOf(change).depthSource,
                      {kLogicDepth + change.member, kLogicDepthMod + change.member});
}

constexpr DispatchFamily kTable[] = {
    {kLogicOn, 4, on},
    {kLogicType, 4, type},
    {kLogicSource1Depth, 4, source1Depth, {"LOGIC SOURCE 1"}},
    {kLogicSource1, 4, source1},
    {kLogicSource2Depth, 4, source2Depth, {"LOGIC SOURCE 2"}},
    {kLogicSource2, 4, source2},
    {kLogicSmooth, 4, smooth, {"LOGIC SMOOTH", 0, " ms"}},
    {kLogicDepth, 4, depth, {"LOGIC DEPTH"}},
    {kLogicDepthMod, 4, depthMod, {"LOGIC DEPTH MOD"}},
    {kLogicDepthModSource, 4, depthSource},
};

}  // namespace

constinit const std::span<const DispatchFamily> logicFamilies{kTable};

}  // namespace orvantesco
