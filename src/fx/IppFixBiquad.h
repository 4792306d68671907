#pragma once

#include "fx/DirectFilter.h"
#include "fx/QLMFilter.h"

namespace orvantesco {

/// A filter of one fixed design in direct form: nothing moves it but `redesign`. For a corner
/// that a control moves use `IppBiquad`, whose sections stand it.
class IppFixBiquad : public QLMFilter {
 public:
  /// A Butterworth low-pass of order 4 at 0.49 of the sample rate.
  IppFixBiquad();

  /// A design by the numbers of `FixedDesign` (any other is the Butterworth low-pass), the order
  /// held within 1..12, the corner as a fraction of the sample rate, the Chebyshev designs with
  /// 0.5 dB of ripple. A design of the order in force keeps the memory, any other clears it. A
  /// corner outside of 0..0.5 changes nothing and gives false.
  bool redesign(int fixedDesign, int newOrder, double frequency) noexcept;

  void reset() noexcept override;
  void clearMemories() noexcept override;

  /// n samples of one channel. What runs away is cleared and silent.
  void filterInPlace(double* buffer, int n) noexcept;
  /// One vector of each channel through a pair of filters of one order, at little more than the
  /// price of one: the same bits as two calls of `filterInPlace`.
  static void filterPairInPlace(IppFixBiquad& left, double* leftBuffer, IppFixBiquad& right,
                                double* rightBuffer) noexcept;

 private:
  void dropRunaway(double* buffer, int n) noexcept;

  int order = 4;
  DirectFilter filter;
};

}  // namespace orvantesco
