#pragma once

#include "core/EffectPosition.h"

namespace orvantesco {

// How an effect at a position of a slot lengthens what is heard. Found by rendering every type
// with knobs all over their travel. Any thread.

/// Seconds in which the effect itself falls below -90 dB behind a loud sound; 0 where it is off,
/// infinite where its resonance may sound on by itself.
double effectTailSeconds(const EffectPosition& position);

/// The most that the effect makes of a faint signal in a feedback path: 1, or infinite where its
/// knobs may amplify.
double effectLoopGain(const EffectPosition& position);

/// The most that it makes of a signal beside such a path.
double effectGain(const EffectPosition& position);

}  // namespace orvantesco
