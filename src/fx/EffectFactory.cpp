#include "fx/EffectFactory.h"

#include "fx/EffectCatalogue.h"
#include "fx/IppBiquad.h"

namespace orvantesco {

bool effectExists(int typeId) noexcept {
  return effectRecord(typeId).build.kind == EffectClass::biquad;
}

std::shared_ptr<DSPShell> createEffect(int typeId, bool isRight, DSPShell* /*partner*/) {
  const EffectBuild& build = effectRecord(typeId).build;
  switch (build.kind) {
    case EffectClass::biquad:
      return std::make_shared<IppBiquad>(isRight, build.argument, build.stages);
    default:
      return nullptr;
  }
}

}  // namespace orvantesco
