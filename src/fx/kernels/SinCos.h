#pragma once

#include "fx/VectorLength.h"

namespace orvantesco {

/// Sine and cosine of each of 32 angles in radians, in one pass: for oscillators that need both.
///
/// The angle is brought to -pi/4..pi/4 by taking off whole quarter turns, pi/2 being held in three
/// parts (W. Cody and W. Waite, "Software Manual for the Elementary Functions", 1980), and both
/// functions are summed there as Taylor series, to x^15 and x^16: what is cut off is below 5e-17.
/// For magnitudes up to kSinCosRange each result is within kSinCosError of the true value, and no
/// further than that beyond 1. A vector that goes beyond the range, or holds what is no number,
/// goes to the standard library, which is slower. Every processor level gives the same bits.
///
/// `src` may be one of the destinations; the two must not overlap. Any thread.
void vecSinCos(const double* src, double* sinDst, double* cosDst) noexcept;

inline constexpr double kSinCosRange = 1e6;
inline constexpr double kSinCosError = 2.5e-16;

}  // namespace orvantesco
