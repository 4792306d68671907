#pragma once

#include <memory>

#include "fx/DSPShell.h"

namespace orvantesco {

/// Master effects: the entries of the "MasterFX" menu behind "OFF".
inline constexpr int kMasterEffects = 7;

/// Builds the master effect at an index, 0..kMasterEffects - 1, in the menu's order; null for any
/// other. Allocates: not for the audio thread. May throw std::bad_alloc.
std::unique_ptr<DSPShell> createMasterEffect(int index);

}  // namespace orvantesco
