#include "core/EffectTail.h"

#include <limits>

#include "fx/EffectCatalogue.h"

namespace orvantesco {

namespace {

constexpr double kForever = std::numeric_limits<double>::infinity();
// From here on, or with a modulator on it, a state-variable filter's Q may let it oscillate.
constexpr int kResonanceKnob = 1;
constexpr double kResonanceThatHolds = 0.9;
// A shaper makes a faint signal loud: 36 dB.
constexpr double kShaperGain = 64.0;
// Gain knobs, resonances and make-up gains of all others: 24 dB.
constexpr double kLargestGain = 16.0;

EffectClass kindOf(const EffectPosition& position) {
  return effectRecord(position.type).build.kind;
}

bool mayOscillate(const EffectPosition& filter) {
  return filter.source[kResonanceKnob] != nullptr ||
         filter.value[kResonanceKnob] >= kResonanceThatHolds;
}

double secondsOf(const EffectPosition& position) {
  switch (kindOf(position)) {
    case EffectClass::none:
      return 0.0;
    case EffectClass::hilbertShifter:
      return 5.0;
    case EffectClass::stateVariable:
      return mayOscillate(position) ? kForever : 4.0;
    // Its poles come within 1e-5 of the unit circle.
    case EffectClass::phaseFilter:
      return 45.0;
    case EffectClass::comb:
      return 30.0;
    default:
      return 3.0;
  }
}

}  // namespace

double effectTailSeconds(const EffectPosition& position) {
  return position.on ? secondsOf(position) : 0.0;
}

double effectLoopGain(const EffectPosition& position) {
  if (!position.on) return 1.0;
  switch (kindOf(position)) {
    case EffectClass::none:
    case EffectClass::ringMod:
    case EffectClass::pitchShifter:
    case EffectClass::biquad:  // in a feedback path only slopes, which have no resonance
    case EffectClass::variableFilterPair:
      return 1.0;
    default:
      return kForever;
  }
}

double effectGain(const EffectPosition& position) {
  if (!position.on) return 1.0;
  switch (kindOf(position)) {
    case EffectClass::none:
    case EffectClass::ringMod:
    case EffectClass::variableFilterPair:
      return 1.0;
    case EffectClass::shaper:
    case EffectClass::lofi:
      return kShaperGain;
    default:
      return kLargestGain;
  }
}

}  // namespace orvantesco
