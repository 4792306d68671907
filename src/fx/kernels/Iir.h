#pragma once

#include "fx/kernels/KernelTable.h"
#include "fx/kernels/Status.h"

// Recursive filters in transposed direct form II (Oppenheim and Schafer, Discrete-Time Signal
// Processing, 6.3), as one direct form of order 1 to 12 or as a cascade of second-order sections:
//
//   y = b0 x + s[0],   s[k] = (s[k + 1] + b[k + 1] x) - a[k + 1] y,   s[order] = 0
//
// evaluated in just this order of roundings everywhere, so that a signal filtered in pieces of
// any length, through any processor level, alone or in a pair, gives the same bits. The delay
// line that is exchanged is s: order doubles, or two for each section.
//
// A filter owns nothing: taps, delay line and buffer belong to the caller, the handle points into
// the buffer and dies with it. No operation here allocates; one filter is for one thread.

namespace orvantesco {

/// The state of one filter inside its caller's buffer.
struct IirState;

/// The kinds of design, for the argument `type`.
enum IirDesignType : int { kButterworth = 0, kChebyshev1 = 1 };

constexpr int kIirMaxOrder = 12;

/// Stores the bytes of work space of a design, 16800, for order 1 to 12; any other order gives
/// kErrorDesignOrder and stores nothing. Such a block also holds the state of a direct form.
int iirDesignBufferSize(int order, int* size) noexcept;

/// Writes the 2 x (order + 1) direct-form taps B0 ... Border, A0 ... Aorder of a low-pass.
///
/// Analogue prototype through the bilinear transform, corner prewarped (Parks and Burrus, Digital
/// Filter Design, ch. 7). A0 is 1. Computed in long double: each tap is within 4 ulp.
/// \param freq    corner as a fraction of the sample rate, above 0 and below 0.5: -3.01 dB for
///                Butterworth, the edge of the ripple for Chebyshev
/// \param ripple  dB, above 0 and at most 29 (Chebyshev; ignored otherwise). Even orders lie
///                at -ripple at 0 Hz (high-pass: at half the rate), odd orders at 0 dB.
/// \return kStatusOk, or a negative status with the taps left as they were
int iirDesignLowpass(double freq, double ripple, int order, double* taps, int type,
                     void* buffer) noexcept;

/// The same for a high-pass.
int iirDesignHighpass(double freq, double ripple, int order, double* taps, int type,
                      void* buffer) noexcept;

/// Stores the bytes that the state of a cascade needs (of a direct form too).
int iirBiquadStateSize(int numBiquads, int* size) noexcept;

/// Builds a direct form of `order` 1 to 12 in `buffer`, from taps in the order that the designs
/// write, divided by A0 here, with `delayLine` (order doubles; null for silence) as its memory.
/// On any error the handle becomes null, which the other operations refuse.
int iirInitDirect(IirState** state, const double* taps, int order, const double* delayLine,
                  void* buffer) noexcept;

/// Builds a cascade from 6 taps for each section, b0, b1, b2, a0, a1, a2, divided by a0 here.
/// A section whose a0 or b0 is 0 is refused with kErrorZero.
int iirInitBiquads(IirState** state, const double* taps, int numBiquads, const double* delayLine,
                   void* buffer) noexcept;

/// Copies the delay line out: order, or 2 x numBiquads, doubles. A few nanoseconds.
inline int iirGetDelayLine(const IirState* state, double* dst) noexcept {
  if (state == nullptr || dst == nullptr) return kErrorNull;
  kernels::active.iirGetDelayLine.get()(*state, dst);
  return kStatusOk;
}

/// Copies src into the delay line; null clears it. A few nanoseconds.
inline int iirSetDelayLine(IirState* state, const double* src) noexcept {
  if (state == nullptr) return kErrorNull;
  kernels::active.iirSetDelayLine.get()(*state, src);
  return kStatusOk;
}

/// Runs n samples through the filter; src may be dst.
inline int iirFilter(const double* src, double* dst, int n, IirState* state) noexcept {
  if (const int error = kernels::checkArguments(n, src, dst, state)) return error;
  kernels::active.iirFilter.get()(src, dst, n, *state);
  return kStatusOk;
}

inline int iirFilterInPlace(double* srcDst, int n, IirState* state) noexcept {
  return iirFilter(srcDst, srcDst, n, state);
}

/// Two filters on two separate vectors, with the bits of two calls of iirFilterInPlace. Where
/// both are of one form and size their chains of latencies overlap, so that a stereo pair costs
/// little more than one channel.
// Two filters and one length: a pair of arguments each. NOLINTNEXTLINE(readability-function-size)
inline int iirFilterPair(double* srcDstA, IirState* stateA, double* srcDstB, IirState* stateB,
                         int n) noexcept {
  if (const int error = kernels::checkArguments(n, srcDstA, stateA, srcDstB, stateB)) return error;
  kernels::active.iirFilterPair.get()(srcDstA, *stateA, srcDstB, *stateB, n);
  return kStatusOk;
}

}  // namespace orvantesco
