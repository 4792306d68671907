#pragma once

namespace orvantesco {

/// What the operations return: 0, a negative error (nothing was written) or a positive warning.
/// Signal code does not test it; the values make the operations total.
enum KernelStatus : int {
  kStatusOk = 0,
  kWarningDivisionByZero = 2,  ///< a divisor was zero; the elements hold the IEEE result
  kWarningNegativeRoot = 3,    ///< an element was negative; its root is NaN
  kErrorLength = -6,           ///< a length below 1
  kErrorNull = -8,             ///< a null pointer
  kErrorZero = -10,            ///< a zero where a divisor is needed
  kErrorThresholds = -19,      ///< the low level lies above the high one
  kErrorOrder = -25,           ///< an order or a number of sections out of range
  kErrorDesignType = -204,     ///< neither Butterworth nor Chebyshev
  kErrorDesignCorner = -205,   ///< a corner outside the open range 0..0.5 of the rate
  kErrorDesignOrder = -206,    ///< an order outside 1..12
  kErrorDesignRipple = -207,   ///< a ripple outside the range above 0 dB up to 29 dB
};

namespace kernels {

/// The checks that all vector operations share, null before length.
template <class... Pointee>
[[gnu::always_inline]] constexpr int checkArguments(int n, const Pointee*... pointers) noexcept {
  const bool anyNull = (false || ... || (pointers == nullptr));
  if (anyNull) return kErrorNull;
  return n < 1 ? kErrorLength : kStatusOk;
}

}  // namespace kernels
}  // namespace orvantesco
