#pragma once

#include <cmath>

#include "fx/VectorLength.h"

namespace orvantesco {

/// Largest magnitude that a signal or a state may have. Beyond it a recursion has run away, and
/// what it holds is dropped. 1e8 is +160 dB: no setting of any control comes near.
inline constexpr double kRunawayLimit = 1e8;

/// True for a finite value within the limit. Written so that NaN fails it.
inline bool isSane(double value) noexcept { return std::fabs(value) <= kRunawayLimit; }

/// True if all 32 values are finite and within the limit. About the cost of reading them.
bool isSaneVector(const double* vector) noexcept;

/// The same for n values.
bool isSaneSpan(const double* values, int n) noexcept;

/// The value, or 0 where it is not sane.
inline double saneOrZero(double value) noexcept { return isSane(value) ? value : 0.0; }

}  // namespace orvantesco
