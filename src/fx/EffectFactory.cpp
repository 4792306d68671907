#include "fx/EffectFactory.h"

#include "fx/EffectCatalogue.h"
#include "fx/IppBiquad.h"
#include "fx/QLMSVF.h"

namespace orvantesco {

bool effectExists(int typeId) noexcept {
  switch (effectRecord(typeId).build.kind) {
    case EffectClass::biquad:
    case EffectClass::stateVariable:
      return true;
    default:
      return false;
  }
}

std::shared_ptr<DSPShell> createEffect(int typeId, bool isRight, DSPShell* /*partner*/) {
  const EffectBuild& build = effectRecord(typeId).build;
  switch (build.kind) {
    case EffectClass::biquad:
      return std::make_shared<IppBiquad>(isRight, build.argument, build.stages);
    case EffectClass::stateVariable:
      return std::make_shared<QLMSVF>(isRight);
    default:
      return nullptr;
  }
}

}  // namespace orvantesco
