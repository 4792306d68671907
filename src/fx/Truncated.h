#pragma once

#include <algorithm>
#include <cmath>

namespace orvantesco {

/// The whole number of a control value, cut towards 0, for any double that is a number; beyond a
/// million it is a million.
inline int truncated(double value) noexcept {
  return static_cast<int>(std::clamp(std::trunc(value), -1e6, 1e6));
}

}  // namespace orvantesco
