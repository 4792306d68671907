#include "core/EffectSetup.h"

#include "core/EngineRate.h"
#include "core/TapEffectRows.h"
#include "fx/EffectCatalogue.h"

namespace orvantesco {

namespace {

double nativeValue(int typeId, int k, double value) noexcept {
  double shown = value;
  double native = value;
  fxParamScale(typeId, k, &shown, &native);
  return native;
}

double tapValue(const EffectInstances& instances, const EffectContext& context, int k,
                std::size_t tap) noexcept {
  const double base = context.position.value[static_cast<std::size_t>(k)];
  const int row = context.perTap ? rowDriving(context.slot, k) : -1;
  if (row < 0) return base;
  const TapControls& taps = context.slot.taps;
  const auto r = static_cast<std::size_t>(row);
  return tapFxControl(
      {taps.fxStep[r][tap], taps.fxDepth[r], base, isBipolarFxParam(instances.typeId, k)});
}

bool tapIsModulated(const EffectContext& context, int row, std::size_t tap) noexcept {
  if (row < 0) return true;
  return (context.slot.taps.stepModMask[static_cast<std::size_t>(row)].get() >> tap) & 1;
}

}  // namespace

void giveEffectParam(EffectInstances& instances, const EffectContext& context, int k) noexcept {
  for (std::size_t i = 0; i < instances.list.size(); ++i) {
    const double value = tapValue(instances, context, k, i / 2);
    instances.list[i]->setParam(k, nativeValue(instances.typeId, k, value));
  }
}

void giveEffectSource(EffectInstances& instances, const EffectContext& context, int k) noexcept {
  const auto param = static_cast<std::size_t>(k);
  const int row = context.perTap ? rowDriving(context.slot, k) : -1;
  for (std::size_t i = 0; i < instances.list.size(); ++i) {
    DSPShell& instance = *instances.list[i];
    instance.setModSource(k, context.position.source[param]);
    instance.setModDepth(
        k, tapIsModulated(context, row, i / 2) ? &context.position.depthCell[param] : &kZeroDepth);
  }
}

void giveEffectSwitch(EffectInstances& instances, bool on) noexcept {
  // Setting the bypass resets as well, so an effect that is switched on has no old tail.
  for (const auto& instance : instances.list) instance->setBypass(!on);
}

void configureInstances(EffectInstances& instances, const EffectContext& context) noexcept {
  for (int k = 0; k < kEffectParams; ++k) {
    giveEffectParam(instances, context, k);
    giveEffectSource(instances, context, k);
  }
  giveEffectSwitch(instances, context.position.on);
}

void renewInstances(EffectInstances& instances) noexcept {
  for (const auto& instance : instances.list) {
    instance->rateChanged();
    instance->reset();
  }
  instances.builtAtRate = engineRate();
}

}  // namespace orvantesco
