#pragma once

namespace orvantesco {

/// Magnitude that no music reaches, 120 dB above full scale, yet so far below the runaway limit
/// that an interpolator cannot get from one to the other within a vector.
inline constexpr double kQuietLimit = 1e6;

/// Copies n samples (0 or less copies none), held at ±1e8, and 0 in place of a NaN or an infinity:
/// what enters a delay line comes back again and again, so nothing else may. No overlap.
/// Returns whether all of them are known to lie within kQuietLimit.
bool cleanCopy(const double* source, double* destination, int n) noexcept;

}  // namespace orvantesco
