#pragma once

#include <array>
#include <cmath>
#include <cstddef>

#include "fx/Kernels.h"

namespace orvantesco {

/// What benchmarks of single blocks run on.
using Vector = std::array<double, kVectorLength>;

/// A sine of full scale, 0.1 radians a sample, from a phase in radians on.
inline Vector tone(double phase) {
  Vector vector{};
  for (std::size_t i = 0; i < vector.size(); ++i)
    vector[i] = std::sin(phase + 0.1 * static_cast<double>(i));
  return vector;
}

}  // namespace orvantesco
