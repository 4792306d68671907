// A slot's delay: mode, route, filters, spread, modulation and the reverse reader.

#include "core/EffectPosition.h"
#include "host/EditorPages.h"
#include "params/ParamIndex.h"
#include "params/dispatch/ModulationSources.h"
#include "params/dispatch/ParamDispatch.h"

namespace orvantesco {

namespace {

/// Dispatches the parameters of one kind of the slot's POST effect anew.
void dispatchPostParam(const ParamDispatch& change, int p, FxParamKind kind) {
  change.dispatch(fxParamIndex(p, kind, fxPosition(kStagePO, change.member)));
}

/// The taps take the POST effect over, or give it back.
void handOverPostEffect(ParamDispatch& change) {
  change.position(fxPosition(kStagePO, change.member))
      .requests.post(kTakeAllEffectParams | kTakeAllEffectSources);
  if (change.bulk()) return;
  for (const int selector : {kTapFxParam1, kTapFxParam2}) {
    const int selected = change.choiceOf(selector + change.member);
    if (selected > 0) dispatchPostParam(change, selected - 1, FxParamKind::value);
  }
}

void leaveTapped(ParamDispatch& change) {
  if (change.position(fxPosition(kStagePO, change.member)).type != 0) {
    for (int p = 0; p < kEffectParams; ++p) dispatchPostParam(change, p, FxParamKind::modSource);
  }
  if (!change.bulk()) change.editor().showPage(kDelayPage);
}

void delayMode(ParamDispatch& change) {
  DelayControls& delay = change.controls().delay;
  const auto mode = static_cast<DelayMode>(change.choice);
  const bool left = delay.mode == DelayMode::Tapped && mode != DelayMode::Tapped;
  delay.mode = mode;
  change.slot().requests.post(kTakeDelayMode);
  handOverPostEffect(change);
  if (mode == DelayMode::Forward) change.dispatch(kDelayRoute + change.member);
  if (mode == DelayMode::Tapped) change.dispatch(kDelayTaps + change.member);
  if (left) leaveTapped(change);
  change.editor().refreshSlot(change.member);
}

void delayRoute(ParamDispatch& change) {
  const auto route = static_cast<DelayRoute>(change.choice);
  change.controls().delay.route = route;
  // Only two delays that go round on their own have times of their own to be balanced.
  change.editor().enableKnob(kFbProportional + change.member, route == DelayRoute::Dual);
  change.editor().refreshSlot(change.member);
}

void feedbackProportional(ParamDispatch& change) {
  change.controls().delay.feedbackProportional = change.isOn();
}

void spread(ParamDispatch& change) { change.controls().delay.spreadMs = change.value; }

void modDepth(ParamDispatch& change) { change.controls().delay.modDepth = change.takeCubedDepth(); }

void modSource(ParamDispatch& change) {
  change.chooseSource(change.controls().delay.timeSource,
                      {kDelaySpread + change.member, kDelayModDepth + change.member});
  change.slot().requests.post(kTakeDelaySources);
}

void lopass(ParamDispatch& change) {
  change.controls().delay.lopassHz = change.value;
  change.slot().requests.post(kTakeDelaySettings);
}

void hipass(ParamDispatch& change) {
  change.controls().delay.hipassHz = change.value;
  change.slot().requests.post(kTakeDelaySettings);
}

void reverseDelayTrigger(ParamDispatch& change) {
  change.controls().delay.reverseTrigger = reverseTrigger(change.triggers(), change.choice);
}

void reverseFade(ParamDispatch& change) {
  change.controls().delay.reverseFadeMs = change.value;
  change.slot().requests.post(kTakeDelaySettings);
}

constexpr DispatchFamily kTable[] = {
    {kDelayMode, 4, delayMode},
    {kDelayRoute, 4, delayRoute},
    {kFbProportional, 4, feedbackProportional},
    {kDelaySpread, 4, spread, {"DELAY SPREAD", 1, " ms"}},
    {kDelayModDepth, 4, modDepth, {"DELAY MOD DEPTH"}},
    {kDelayModSource, 4, modSource},
    {kDelayLopass, 4, lopass, {"DELAY LOPASS ", 0, " Hz"}},
    {kDelayHipass, 4, hipass, {"DELAY HIPASS ", 0, " Hz"}},
    {kReverseDelayTrigger, 4, reverseDelayTrigger},
    {kReverseXFade, 4, reverseFade, {"DELAY REVERSE X-FADE ", 1, " ms"}},
};

}  // namespace

constinit const std::span<const DispatchFamily> delayFamilies{kTable};

}  // namespace orvantesco
