#pragma once

#include "fx/Kernels.h"

namespace orvantesco {

enum class FilterBand { lowpass, highpass };

/// A classic design of a recursive filter in direct form.
struct DirectDesign {
  IirDesignType type = kButterworth;
  FilterBand band = FilterBand::lowpass;
  int order = 4;          ///< 1..12
  double corner = 0.0;    ///< fraction of the sample rate, above 0 and below 0.5
  double rippleDb = 0.0;  ///< Chebyshev: above 0, at most 29
};

inline constexpr int kDirectTapCount = 2 * (kIirMaxOrder + 1);

/// Writes B0 ... Border, A0 ... Aorder; false, and nothing written, for a design out of range.
/// Neither allocates nor locks: it may run on the audio thread.
bool writeDirectTaps(const DirectDesign& design, double* taps) noexcept;

}  // namespace orvantesco
