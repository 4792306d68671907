#pragma once

#include <algorithm>

#include "core/SlotControls.h"

namespace orvantesco {

/// Value of a control at the start of a sub-block: `base` without a source and unclamped then,
/// base + depth · source[0] within `min`..`max` with one.
inline double modulatedFirst(const ModInput& input, double base, double min, double max) noexcept {
  const double* source = input.source;
  if (source == nullptr) return base;
  return std::clamp(base + input.depth * source[0], min, max);
}

}  // namespace orvantesco
