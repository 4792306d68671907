#pragma once

#include "fx/kernels/IirState.h"
#include "fx/kernels/PackLoop.h"

namespace orvantesco::kernels {

/// A direct form of up to 4 * rows states, held in registers while a vector runs through it. The
/// states stand striped over the rows (see IirDirectForm), so a step costs one shift of lanes.
template <class P, int rows>
struct DirectRun {
  static_assert(P::kLanes == 4);
  static constexpr int kSize = 4 * rows;

  explicit DirectRun(const IirDirectForm& form) noexcept : b0(form.b0) {
    unrolled<rows>([&](int r) __attribute__((always_inline)) {
      b[r] = P::load(form.b + 4 * r);
      a[r] = P::load(form.a + 4 * r);
      s[r] = P::load(form.s + 4 * r);
    });
  }

  [[gnu::always_inline]] double step(double x) noexcept {
    const double y = b0 * x + s[0].template get<0>();
    const P xs = P::all(x);
    const P ys = P::all(y);
    const P shifted = P::shiftDown(s[0]);
    unrolled<rows>([&](int r) __attribute__((always_inline)) {
      const P next = r + 1 < rows ? s[(r + 1) % rows] : shifted;
      s[r] = (next + b[r] * xs) - a[r] * ys;
    });
    return y;
  }

  void keep(IirDirectForm& form) const noexcept {
    unrolled<rows>([&](int r) __attribute__((always_inline)) { s[r].store(form.s + 4 * r); });
  }

  double b0;
  P b[rows];
  P a[rows];
  P s[rows];
};

template <class P>
struct IirDirectBody {
  static void filter(const double* src, double* dst, int n, IirState& state) noexcept {
    if (state.rows == 1) return run<1>(src, dst, n, state.direct);
    if (state.rows == 2) return run<2>(src, dst, n, state.direct);
    run<3>(src, dst, n, state.direct);
  }

  static void filterPair(double* a, IirState& stateA, double* b, IirState& stateB, int n) noexcept {
    if (stateA.rows == 1) return runPair<1>(a, stateA.direct, b, stateB.direct, n);
    if (stateA.rows == 2) return runPair<2>(a, stateA.direct, b, stateB.direct, n);
    runPair<3>(a, stateA.direct, b, stateB.direct, n);
  }

  static void setDelayLine(IirState& state, const double* src) noexcept {
    const int rows = state.rows;
    const int order = src == nullptr ? 0 : state.order;
    const auto element = [=](int k) __attribute__((always_inline)) {
      return k < order ? src[k] : 0.0;
    };
    for (int r = 0; r < rows; ++r) {
      P::of(element(r), element(rows + r), element(2 * rows + r), element(3 * rows + r))
          .store(state.direct.s + 4 * r);
    }
  }

 private:
  template <int rows>
  static void run(const double* src, double* dst, int n, IirDirectForm& form) noexcept {
    DirectRun<P, rows> filter(form);
    for (int i = 0; i < n; ++i) dst[i] = filter.step(src[i]);
    filter.keep(form);
  }

  template <int rows>
  static void runPair(double* a, IirDirectForm& formA, double* b, IirDirectForm& formB,
                      int n) noexcept {
    DirectRun<P, rows> filterA(formA);
    DirectRun<P, rows> filterB(formB);
    for (int i = 0; i < n; ++i) {
      a[i] = filterA.step(a[i]);
      b[i] = filterB.step(b[i]);
    }
    filterA.keep(formA);
    filterB.keep(formB);
  }
};

}  // namespace orvantesco::kernels
