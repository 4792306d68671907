#pragma once

#include "fx/kernels/IirCascadeBody.h"
#include "fx/kernels/IirDirectBody.h"

namespace orvantesco::kernels {

/// The recursive filters of either form over a level's pack of doubles.
template <class P>
struct IirBody {
  using Direct = IirDirectBody<P>;
  using Cascade = IirCascadeBody<P>;

  static void iirFilter(const double* src, double* dst, int n, IirState& state) noexcept {
    if (state.order > 0) return Direct::filter(src, dst, n, state);
    Cascade::filter(src, dst, n, state);
  }

  static void iirFilterPair(double* a, IirState& stateA, double* b, IirState& stateB,
                            int n) noexcept {
    const bool alike = stateA.rows == stateB.rows && stateA.sections == stateB.sections;
    if (!alike || &stateA == &stateB) {
      iirFilter(a, a, n, stateA);
      iirFilter(b, b, n, stateB);
      return;
    }
    if (stateA.order > 0) return Direct::filterPair(a, stateA, b, stateB, n);
    Cascade::filterPair(a, stateA, b, stateB, n);
  }

  static void iirSetDelayLine(IirState& state, const double* src) noexcept {
    if (state.order > 0) return Direct::setDelayLine(state, src);
    Cascade::setDelayLine(state, src);
  }

  static void iirGetDelayLine(const IirState& state, double* dst) noexcept {
    if (state.order > 0) return Direct::getDelayLine(state, dst);
    Cascade::getDelayLine(state, dst);
  }
};

}  // namespace orvantesco::kernels
