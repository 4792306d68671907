#pragma once

#include "fx/kernels/IirState.h"

namespace orvantesco::kernels::scalar {

/// The recursive filters as the equations in Iir.h read: one section after another, one sample
/// after another. What the other levels must agree with.
struct Filters {
  static void iirFilter(const double* src, double* dst, int n, IirState& state) noexcept;
  static void iirFilterPair(double* a, IirState& stateA, double* b, IirState& stateB,
                            int n) noexcept;
  static void iirSetDelayLine(IirState& state, const double* src) noexcept;
  static void iirGetDelayLine(const IirState& state, double* dst) noexcept;
};

}  // namespace orvantesco::kernels::scalar
