#pragma once

#include "fx/kernels/IirState.h"
#include "fx/kernels/PackLoop.h"

// Direct forms in the registers of a processor, while one vector runs through them.

namespace orvantesco::kernels {

/// A direct form of up to four states in plain numbers: so few are soonest done without lanes.
template <class P>
class ShortRun {
 public:
  explicit ShortRun(const IirDirectForm& form) noexcept : b0(form.b0) {
    for (int k = 0; k < kSize; ++k) {
      b[k] = form.b[k];
      a[k] = form.a[k];
      s[k] = form.s[k];
    }
  }

  [[gnu::always_inline]] double step(double x) noexcept {
    const double y = b0 * x + s[0];
    unrolled<kSize>([&](int k) __attribute__((always_inline)) {
      s[k] = (s[k + 1] + b[k] * x) - a[k] * y;
    });
    return y;
  }

  void keep(IirDirectForm& form) const noexcept {
    P::join(Pair::of(s[0], s[1]), Pair::of(s[2], s[3])).store(form.s);
  }

 private:
  using Pair = typename P::Pair;
  static constexpr int kSize = 4;

  double b0;
  double b[kSize], a[kSize];
  double s[kSize + 1] = {};  // one more, always 0, for the last state to start from
};

/// A direct form of 4 * rows states, held in registers while a vector runs through it.
///
/// The first state is kept once more as a plain number: from y to the next y there lie only a
/// product and two sums then, and the lanes follow behind.
template <class P, int rows>
class DirectRun {
  static_assert(rows > 1);

 public:
  explicit DirectRun(const IirDirectForm& form) noexcept
      : b0(form.b0), b1(form.b[0]), a1(form.a[0]), first(form.s[0]) {
    unrolled<rows>([&](int r) __attribute__((always_inline)) {
      b[r] = P::load(form.b + 4 * r);
      a[r] = P::load(form.a + 4 * r);
      s[r] = P::load(form.s + 4 * r);
    });
  }

  [[gnu::always_inline]] double step(double x) noexcept {
    const double y = b0 * x + first;
    const P shifted = P::oddThenEven(s[0], P::highThenZero(s[0]));
    first = (s[1].first() + b1 * x) - a1 * y;
    const P xs = P::all(x);
    const P ys = P::all(y);
    unrolled<rows>([&](int r) __attribute__((always_inline)) {
      const P next = r + 1 < rows ? s[(r + 1) % rows] : shifted;
      s[r] = (next + b[r] * xs) - a[r] * ys;
    });
    return y;
  }

  void keep(IirDirectForm& form) const noexcept {
    unrolled<rows>([&](int r) __attribute__((always_inline)) { s[r].store(form.s + 4 * r); });
  }

 private:
  double b0, b1, a1;
  double first;
  P b[rows], a[rows], s[rows];
};

/// Two direct forms A and B side by side: with R = 2 * rows, row r holds the elements r and R + r
/// of both, in the lanes A, B, A, B. A step moves each row into the one before.
template <class P, int rows>
class DirectPairRun {
 public:
  DirectPairRun(const IirDirectForm& formA, const IirDirectForm& formB) noexcept
      : b0(Pair::of(formA.b0, formB.b0)), first(Pair::of(formA.s[0], formB.s[0])) {
    zip(formA.b, formB.b, b);
    zip(formA.a, formB.a, a);
    zip(formA.s, formB.s, s);
  }

  [[gnu::always_inline]] void step(double* srcDstA, double* srcDstB) noexcept {
    const Pair x = Pair::of(*srcDstA, *srcDstB);
    const Pair y = b0 * x + first;
    first = (s[1].low() + b[0].low() * x) - a[0].low() * y;
    const P xs = P::join(x, x);
    const P ys = P::join(y, y);
    const P last = P::highThenZero(s[0]);
    unrolled<kRows>([&](int r) __attribute__((always_inline)) {
      const P next = r + 1 < kRows ? s[(r + 1) % kRows] : last;
      s[r] = (next + b[r] * xs) - a[r] * ys;
    });
    *srcDstA = y.first();
    *srcDstB = y.second();
  }

  void keep(IirDirectForm& formA, IirDirectForm& formB) const noexcept {
    unrolled<rows>([&](int r) __attribute__((always_inline)) {
      P::zipEven(s[r], s[rows + r]).store(formA.s + 4 * r);
      P::zipOdd(s[r], s[rows + r]).store(formB.s + 4 * r);
    });
  }

 private:
  using Pair = typename P::Pair;
  static constexpr int kRows = 2 * rows;

  static void zip(const double* fromA, const double* fromB, P* zipped) noexcept {
    unrolled<rows>([&](int r) __attribute__((always_inline)) {
      const P rowA = P::load(fromA + 4 * r);
      const P rowB = P::load(fromB + 4 * r);
      zipped[r] = P::zipEven(rowA, rowB);
      zipped[rows + r] = P::zipOdd(rowA, rowB);
    });
  }

  Pair b0, first;
  P b[kRows], a[kRows], s[kRows];
};

}  // namespace orvantesco::kernels
