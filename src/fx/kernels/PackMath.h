#pragma once

#include <cstring>

#include "fx/kernels/PackLoop.h"

// Transcendental functions over packs of four doubles. They use additions, products, quotients and
// whole-number bit work alone, so every processor level gives the same bits; a NaN goes through.
// The polynomials are Taylor's, cut where the next term is below the last bit: the arguments have
// been reduced so far that a fitted polynomial would save one or two terms.

namespace orvantesco::kernels {

/// 1.5 * 2^52: a double of a magnitude below 2^51, added to it, loses its fraction (to the nearest
/// whole number, half to even) and shows the whole part in its last bits.
constexpr double kRoundingShift = 6755399441055744.0;

constexpr double kLog2OfE = 1.4426950408889634;
/// ln 2 in two parts; the first has so few bits that its product with a small whole number is
/// exact.
constexpr double kLn2High = 0x1.62e42feep-1;
constexpr double kLn2Low = 0x1.a39ef35793c76p-33;

/// The bits of a pack of four doubles. Only ever a local: handed over by value, such a vector would
/// travel differently at each processor level.
using Words = unsigned long long __attribute__((vector_size(32)));

/// Applies `change` to the bits of a pack.
template <class P, class Change>
[[gnu::always_inline]] inline P withBits(P x, Change change) noexcept {
  static_assert(sizeof(P) == sizeof(Words));
  Words words;
  std::memcpy(&words, &x, sizeof words);
  change(words);
  std::memcpy(&x, &words, sizeof words);
  return x;
}

/// Applies `change` to the bits of x, which may look at those of y.
template <class P, class Change>
[[gnu::always_inline]] inline P withBitsOf(P x, P y, Change change) noexcept {
  Words words;
  std::memcpy(&words, &y, sizeof words);
  return withBits(
      x, [&](Words & own) __attribute__((always_inline)) { change(own, words); });
}

/// c[0] + c[1] x + c[2] x^2 + ..., the even and the odd powers in two chains side by side.
template <class P, int terms>
[[gnu::always_inline]] inline P polynomial(P x, const double (&c)[terms]) noexcept {
  const P square = x * x;
  P last = P::all(c[terms - 1]);
  P other = P::all(c[terms - 2]);
  unrolled<terms - 2>([&](int i) __attribute__((always_inline)) {
    const P next = last * square + P::all(c[terms - 3 - i]);
    last = other;
    other = next;
  });
  return last * x + other;
}

/// e^x - 1 for x within 0..700, within 4e-16 of the result: 2^k e^r with |r| <= ln(2) / 2.
template <class P>
[[gnu::always_inline]] inline P expMinusOne(P x) noexcept {
  // 1/2!, 1/3!, ...: the term behind is below 2e-17 of the sum.
  constexpr double c[] = {1.0 / 2,         1.0 / 6,          1.0 / 24,          1.0 / 120,
                          1.0 / 720,       1.0 / 5040,       1.0 / 40320,       1.0 / 362880,
                          1.0 / 3628800.0, 1.0 / 39916800.0, 1.0 / 479001600.0, 1.0 / 6227020800.0};
  const P shifted = x * P::all(kLog2OfE) + P::all(kRoundingShift);
  const P k = shifted - P::all(kRoundingShift);
  const P r = (x - k * P::all(kLn2High)) - k * P::all(kLn2Low);
  const P part = r + r * r * polynomial(r, c);
  const P power =
      withBitsOf(P::all(1.0), shifted, [](Words& one, const Words& whole) { one += whole << 52; });
  return power * part + (power - P::all(1.0));
}

/// tanh of any x, within 4e-16 of the result: E / (E + 2) with E = e^(2|x|) - 1, which keeps
/// small results exact where (1 - e) / (1 + e) would not.
template <class P>
[[gnu::always_inline]] inline P hyperbolicTangent(P x) noexcept {
  constexpr double kLargest = 40.0;  // from here on the result is 1
  const P e = expMinusOne(P::smaller(P::all(kLargest), P::absolute(x) * P::all(2.0)));
  return withBitsOf(e / (e + P::all(2.0)), x, [](Words& result, const Words& argument) {
    result |= argument & (1ULL << 63);
  });
}

/// ln x for normal x > 0 (not for NaN: the result is some number), within 3e-16 of max(1, result):
/// k ln 2 + 2 artanh s with s = (m - 1) / (m + 1), m = x / 2^k within sqrt(1/2)..sqrt(2).
template <class P>
[[gnu::always_inline]] inline P logarithm(P x) noexcept {
  // 2/3, 2/5, ...: |s| < 0.172, the term behind is below 1e-17 of the sum.
  constexpr double c[] = {2.0 / 3,  2.0 / 5,  2.0 / 7,  2.0 / 9, 2.0 / 11,
                          2.0 / 13, 2.0 / 15, 2.0 / 17, 2.0 / 19};
  constexpr unsigned long long kRootOfHalf = 0x3fe6a09e667f3bcdULL;
  constexpr unsigned long long kOne = 0x3ff0000000000000ULL;
  constexpr unsigned long long kMantissa = 0x000fffffffffffffULL;
  constexpr unsigned long long kTwoTo52 = 0x4330000000000000ULL;
  const P moved = withBits(x, [](Words& words) { words += kOne - kRootOfHalf; });
  const P m = withBits(moved, [](Words& words) { words = (words & kMantissa) + kRootOfHalf; });
  const P k = withBits(moved, [](Words& words) { words = (words >> 52) | kTwoTo52; }) -
              P::all(4503599627370496.0 + 1023.0);
  const P s = (m - P::all(1.0)) / (m + P::all(1.0));
  const P z = s * s;
  return k * P::all(kLn2High) + ((s + s) + (s * z * polynomial(z, c) + k * P::all(kLn2Low)));
}

/// sin(pi f) for f within -0.5..0.5, within 3e-16.
template <class P>
[[gnu::always_inline]] inline P sineOfHalfTurn(P f) noexcept {
  // 1, -1/3!, 1/5!, ...: the term behind is below 2e-18.
  constexpr double c[] = {-1.0 / 6,
                          1.0 / 120,
                          -1.0 / 5040,
                          1.0 / 362880,
                          -1.0 / 39916800.0,
                          1.0 / 6227020800.0,
                          -1.0 / 1307674368000.0,
                          1.0 / 355687428096000.0,
                          -1.0 / 121645100408832000.0,
                          1.0 / 51090942171709440000.0};
  const P y = f * P::all(3.14159265358979323846);
  const P z = y * y;
  return y + y * z * polynomial(z, c);
}

/// Turns the sign of x where the whole part that `shifted` shows is odd.
template <class P>
[[gnu::always_inline]] inline P negatedWhereOdd(P x, P shifted) noexcept {
  return withBitsOf(x, shifted, [](Words& result, const Words& whole) { result ^= whole << 63; });
}

/// sin(pi x) for |x| < 2^51, within 3e-16: exact at whole and half x.
template <class P>
[[gnu::always_inline]] inline P sineOfTurns(P x) noexcept {
  const P shifted = x + P::all(kRoundingShift);
  return negatedWhereOdd(sineOfHalfTurn(x - (shifted - P::all(kRoundingShift))), shifted);
}

/// cos(pi x) for |x| < 2^51, within 3e-16.
template <class P>
[[gnu::always_inline]] inline P cosineOfTurns(P x) noexcept {
  const P shifted = x + P::all(kRoundingShift);
  const P f = P::absolute(x - (shifted - P::all(kRoundingShift)));
  return negatedWhereOdd(sineOfHalfTurn(P::all(0.5) - f), shifted);
}

}  // namespace orvantesco::kernels
