#pragma once

namespace orvantesco {

/// Copies n samples (0 or less copies none), held at ±1e8, and 0 in place of a NaN or an infinity:
/// what enters a delay line comes back again and again, so nothing else may. No overlap.
void cleanCopy(const double* source, double* destination, int n) noexcept;

}  // namespace orvantesco
