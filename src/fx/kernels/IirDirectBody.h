#pragma once

#include "fx/kernels/IirDirectRun.h"
#include "fx/kernels/IirState.h"
#include "fx/kernels/PackLoop.h"

namespace orvantesco::kernels {

/// Direct forms of every order.
template <class P>
struct IirDirectBody {
  static void filter(const double* src, double* dst, int n, IirState& state) noexcept {
    if (state.rows == 1) return run<ShortRun<P>>(src, dst, n, state.direct);
    if (state.rows == 2) return run<DirectRun<P, 2>>(src, dst, n, state.direct);
    run<DirectRun<P, 3>>(src, dst, n, state.direct);
  }

  static void filterPair(double* a, IirState& stateA, double* b, IirState& stateB, int n) noexcept {
    if (stateA.rows == 1) return runPair<1>(a, stateA.direct, b, stateB.direct, n);
    if (stateA.rows == 2) return runPair<2>(a, stateA.direct, b, stateB.direct, n);
    runPair<3>(a, stateA.direct, b, stateB.direct, n);
  }

  static void setDelayLine(IirState& state, const double* src) noexcept {
    if (state.rows == 1) return set<1>(state, src);
    if (state.rows == 2) return set<2>(state, src);
    set<3>(state, src);
  }

  static void getDelayLine(const IirState& state, double* dst) noexcept {
    if (state.rows == 1) return get<1>(state, dst);
    if (state.rows == 2) return get<2>(state, dst);
    get<3>(state, dst);
  }

 private:
  /// The rows are built in registers: the filter that reads them next would have to wait for
  /// elements stored one by one.
  template <int rows>
  static void set(IirState& state, const double* src) noexcept {
    const int order = src == nullptr ? 0 : state.order;
    const auto element = [=](int k) __attribute__((always_inline)) {
      return k < order ? src[k] : 0.0;
    };
    unrolled<rows>([&](int r) __attribute__((always_inline)) {
      const auto low = P::Pair::of(element(r), element(rows + r));
      const auto high = P::Pair::of(element(2 * rows + r), element(3 * rows + r));
      P::join(low, high).store(state.direct.s + 4 * r);
    });
  }

  template <int rows>
  static void get(const IirState& state, double* dst) noexcept {
    const double* s = state.direct.s;
    const int order = state.order;
    unrolled<4 * rows>([=](int k) __attribute__((always_inline)) {
      if (k < order) dst[k] = s[iirPlace(k, rows)];
    });
  }

  template <class Run>
  static void run(const double* src, double* dst, int n, IirDirectForm& form) noexcept {
    Run filter(form);
    for (int i = 0; i < n; ++i) dst[i] = filter.step(src[i]);
    filter.keep(form);
  }

  template <int rows>
  static void runPair(double* a, IirDirectForm& formA, double* b, IirDirectForm& formB,
                      int n) noexcept {
    DirectPairRun<P, rows> pair(formA, formB);
    for (int i = 0; i < n; ++i) pair.step(a + i, b + i);
    pair.keep(formA, formB);
  }
};

}  // namespace orvantesco::kernels
