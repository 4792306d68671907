#pragma once

#include "fx/kernels/PackLoop.h"
#include "fx/kernels/SinCosLevels.h"

namespace orvantesco::kernels {

/// The pair of series over packs P of doubles; see SinCos.h.
template <class P>
struct SinCosBody {
  static bool run(const double* src, double* sinDst, double* cosDst) noexcept {
    P inRange = P::equal(P::all(0.0), P::all(0.0));
    eachPack<P, kVectorLength>(
        kVectorLength, [&](In<P>, int i) __attribute__((always_inline)) {
          const P x = P::load(src + i);
          inRange = P::both(inRange, P::atMost(P::absolute(x), P::all(kSinCosRange)));
        });
    if (!P::every(inRange)) return false;
    for (int i = 0; i < kVectorLength; i += P::kLanes) one(src + i, sinDst + i, cosDst + i);
    return true;
  }

 private:
  /// Added and taken off again, it leaves the nearest whole number: 1.5 * 2^52.
  static constexpr double kToWhole = 0x1.8p52;

  // pi/2 as a sum. The first two have 33 bits, so that their products with up to 2^20 are exact.
  static constexpr double kQuarterHigh = 0x1.921fb544p+0;
  static constexpr double kQuarterMiddle = 0x1.0b4611a6p-34;
  static constexpr double kQuarterLow = 0x1.3198a2e037073p-69;
  static constexpr double kQuartersPerRadian = 0x1.45f306dc9c883p-1;

  [[gnu::always_inline]] static P nearest(P x) noexcept {
    return (x + P::all(kToWhole)) - P::all(kToWhole);
  }

  /// c[0] + c[1] x + c[2] x^2 ...
  template <int count>
  [[gnu::always_inline]] static P polynomial(const double (&c)[count], P x) noexcept {
    P sum = P::all(c[count - 1]);
    unrolled<count - 1>([&](int i) __attribute__((always_inline)) {
      sum = sum * x + P::all(c[count - 2 - i]);
    });
    return sum;
  }

  [[gnu::always_inline]] static P negatedWhere(P mask, P x) noexcept {
    return P::select(mask, P::all(0.0) - x, x);
  }

  [[gnu::always_inline]] static void one(const double* src, double* sinDst,
                                         double* cosDst) noexcept {
    // (-1)^i / (2i + 3)! and (-1)^i / (2i + 4)!: sin x = x - x^3 (...), cos x = 1 - x^2/2 + x^4
    // (...)
    static constexpr double kSine[] = {
        1.0 / 6.0,        -1.0 / 120.0,        1.0 / 5040.0,         -1.0 / 362880.0,
        1.0 / 39916800.0, -1.0 / 6227020800.0, 1.0 / 1307674368000.0};
    static constexpr double kCosine[] = {
        1.0 / 24.0,        -1.0 / 720.0,         1.0 / 40320.0,         -1.0 / 3628800.0,
        1.0 / 479001600.0, -1.0 / 87178291200.0, 1.0 / 20922789888000.0};
    const P x = P::load(src);
    const P quarters = nearest(x * P::all(kQuartersPerRadian));
    const P angle = ((x - quarters * P::all(kQuarterHigh)) - quarters * P::all(kQuarterMiddle)) -
                    quarters * P::all(kQuarterLow);
    const P square = angle * angle;
    const P sine = angle - (angle * square) * polynomial(kSine, square);
    const P cosine =
        (P::all(1.0) - square * P::all(0.5)) + (square * square) * polynomial(kCosine, square);

    // Quarter turns beyond whole turns: -2..2, where 2 and -2 are the same.
    const P rest = quarters - nearest(quarters * P::all(0.25)) * P::all(4.0);
    const P odd = P::equal(P::absolute(rest), P::all(1.0));
    const P half = P::equal(P::absolute(rest), P::all(2.0));
    const P first = P::equal(rest, P::all(1.0));
    const P last = P::equal(rest, P::all(-1.0));
    negatedWhere(P::either(half, last), P::select(odd, cosine, sine)).store(sinDst);
    negatedWhere(P::either(half, first), P::select(odd, sine, cosine)).store(cosDst);
  }
};

}  // namespace orvantesco::kernels
