#include "fx/EffectFactory.h"

#include "fx/Comb.h"
#include "fx/Compressor.h"
#include "fx/EffectCatalogue.h"
#include "fx/HilbertShifter.h"
#include "fx/IppBiquad.h"
#include "fx/LPHP.h"
#include "fx/Lofi.h"
#include "fx/MVPitchShifter.h"
#include "fx/PhaseFilter.h"
#include "fx/PhaserC.h"
#include "fx/QLMSVF.h"
#include "fx/RingMod.h"
#include "fx/Shaper.h"
#include "fx/VARILPHP.h"

namespace orvantesco {

bool effectExists(int typeId) noexcept {
  switch (effectRecord(typeId).build.kind) {
    case EffectClass::biquad:
    case EffectClass::stateVariable:
    case EffectClass::filterPair:
    case EffectClass::variableFilterPair:
    case EffectClass::shaper:
    case EffectClass::lofi:
    case EffectClass::hilbertShifter:
    case EffectClass::ringMod:
    case EffectClass::pitchShifter:
    case EffectClass::phaser:
    case EffectClass::phaseFilter:
    case EffectClass::comb:
    case EffectClass::compressor:
      return true;
    default:
      return false;
  }
}

void seedEffect(DSPShell& effect, std::uint32_t seed) noexcept {
  if (auto* lofi = dynamic_cast<Lofi*>(&effect)) lofi->seed(seed);
}

std::shared_ptr<DSPShell> createEffect(int typeId, bool isRight, DSPShell* partner) {
  const EffectBuild& build = effectRecord(typeId).build;
  switch (build.kind) {
    case EffectClass::biquad:
      return std::make_shared<IppBiquad>(isRight, build.argument, build.stages);
    case EffectClass::stateVariable:
      return std::make_shared<QLMSVF>(isRight);
    case EffectClass::filterPair:
      return std::make_shared<LPHP>(isRight);
    case EffectClass::variableFilterPair:
      return std::make_shared<VARILPHP>(isRight);
    case EffectClass::shaper:
      return std::make_shared<Shaper>(isRight, build.argument);
    case EffectClass::lofi:
      return std::make_shared<Lofi>(isRight);
    case EffectClass::hilbertShifter:
      return std::make_shared<HilbertShifter>(isRight);
    case EffectClass::ringMod:
      return std::make_shared<RingMod>(isRight, dynamic_cast<RingMod*>(partner));
    case EffectClass::pitchShifter:
      return std::make_shared<MVPitchShifter>(isRight, build.argument != 0);
    case EffectClass::phaser:
      return std::make_shared<PhaserC>(isRight);
    case EffectClass::phaseFilter:
      return std::make_shared<PhaseFilter>(isRight, build.argument);
    case EffectClass::comb:
      return std::make_shared<Comb>(isRight);
    case EffectClass::compressor:
      return std::make_shared<Compressor>(isRight);
    default:
      return nullptr;
  }
}

}  // namespace orvantesco
