#pragma once

#include "core/GlobalControls.h"

namespace orvantesco {

/// Seconds in which the selected master effect fades by `decibels`; 0 where none runs. Any thread.
double masterTailSeconds(const GlobalControls& globals, double decibels);

}  // namespace orvantesco
