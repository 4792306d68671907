// The effects of the twelve positions: five parameters with their modulation, and the on switch.

#include <array>
#include <cstddef>

#include "core/EffectPosition.h"
#include "fx/EffectCatalogue.h"
#include "params/ParamIndex.h"
#include "params/dispatch/EffectTypeChange.h"
#include "params/dispatch/FxReadoutText.h"
#include "params/dispatch/ModulationSources.h"
#include "params/dispatch/ParamDispatch.h"

namespace orvantesco {

namespace {

constexpr std::array<std::string_view, kEffectStages> kStageMarks{" PR", " FB", " PO"};
constexpr std::string_view kBullet = "\u2022";
constexpr std::string_view kBullets = "\u2022\u2022\u2022\u2022";

/// One of the five parameters of a position.
struct Place {
  int p = 0;
  int position = 0;

  int valueIdx() const { return fxParamIndex(p, FxParamKind::value, position); }
  int depthIdx() const { return fxParamIndex(p, FxParamKind::modDepth, position); }
  std::size_t cell() const { return static_cast<std::size_t>(p); }
};

void takeValue(ParamDispatch& change, Place place) {
  EffectPosition& position = change.position(place.position);
  position.value[place.cell()] = change.percent();
  position.requests.post(kTakeEffectParam << place.p);
  showFxParam(change, {position.type, place.p}, change.percent());
  if (!change.label.empty()) change.editor().setKnobText(change.paramIdx, change.label.view());
}

void takeDepth(ParamDispatch& change, Place place) {
  EffectPosition& position = change.position(place.position);
  const double depth = change.takeCubedDepth();
  position.depth[place.cell()] = depth;
  change.editor().showModulationDepth(place.valueIdx(), depth);
  const FxReadout readout = fxReadout(position.type, place.p);
  change.show({readout.name});
  if (!change.caption.empty()) change.caption.append(" MOD");
}

void takeSource(ParamDispatch& change, Place place) {
  EffectPosition& position = change.position(place.position);
  const bool chosen = change.choice > kSourceOff;
  change.editor().setRing(place.valueIdx(), sourceColour(change.choice), chosen);
  change.editor().enableKnob(place.depthIdx(), chosen);
  position.source[place.cell()] = change.source();
  // With the value, to which a control without a source returns.
  position.requests.post((kTakeEffectSource | kTakeEffectParam) << place.p);
  if (!chosen && !change.bulk()) change.dispatch(place.valueIdx());
  change.show({fxReadout(position.type, place.p).name});
  change.showLabel(change.param(change.paramIdx).getDisplayText(change.choice));
}

void effectParameter(ParamDispatch& change) {
  const FxParamPlace at = fxParamPlace(change.paramIdx);
  const Place place{at.parameter, at.position};
  const auto bullets = static_cast<std::size_t>(at.position % numSlots + 1);
  change.stage = kStageMarks[static_cast<std::size_t>(at.position / numSlots)];
  change.slotMarks = kBullets.substr(0, bullets * kBullet.size());
  if (at.kind == FxParamKind::value) takeValue(change, place);
  if (at.kind == FxParamKind::modDepth) takeDepth(change, place);
  if (at.kind == FxParamKind::modSource) takeSource(change, place);
  if (change.touched()) change.editor().redraw(place.valueIdx());
}

void effectOn(ParamDispatch& change) {
  const int number = change.paramIdx - kFxOnPre;
  EffectPosition& position = change.position(number);
  position.on = change.isOn();
  if (position.type == kNoEffect) {
    change.editor().redraw(change.paramIdx);
    return;
  }
  position.requests.post(kTakeEffectSwitch);
  change.editor().enableEffect(number, change.isOn());
  change.editor().refreshEffect(number);
}

constexpr DispatchFamily kTable[] = {
    {kFxTypePre, kEffectPositions, changeEffectType},
    {kFxParam1, numFxParams* fxParamBlockSize, effectParameter, {}, KnobFlash::no},
    {kFxOnPre, kEffectPositions, effectOn},
};

}  // namespace

constinit const std::span<const DispatchFamily> effectFamilies{kTable};

}  // namespace orvantesco
