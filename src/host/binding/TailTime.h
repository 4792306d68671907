#pragma once

#include "core/Orvantesco.h"

namespace orvantesco {

/// Seconds that the effect sounds on behind a full-scale input before it stays below -90 dB;
/// infinite where a loop does not fade. Takes some ten microseconds: cheap enough for each change
/// of a parameter. Any thread.
inline double tailSeconds(const Orvantesco& effect) { return effect.tailSeconds(); }

}  // namespace orvantesco
