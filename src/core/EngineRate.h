#pragma once

#include "fx/RateValues.h"

namespace orvantesco {

/// The rate in Hz that all signal code computes with: the host's, held within 32000..96000. Members
/// of the effect call it by this name, since the framework's field of the host's rate hides it.
inline double engineRate() noexcept { return orvantesco::sampleRate; }

}  // namespace orvantesco
