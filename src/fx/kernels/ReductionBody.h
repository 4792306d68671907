#pragma once

#include "fx/kernels/PackLoop.h"

namespace orvantesco::kernels {

/// The operations that take one figure of a whole vector, over packs P of double or float; built
/// twice, as VectorBody is.
template <class P, int length>
struct ReductionBody {
  using T = typename P::Value;

  static T maxAbs(const T* src, int n) noexcept {
    P packs = P::all(T(0));
    One<P> single{T(0)};
    const auto note = [&]<class V>(V x) __attribute__((always_inline)) {
      if constexpr (V::kLanes == 1) {
        single = V::larger(V::absolute(x), single);
      } else {
        packs = V::larger(V::absolute(x), packs);
      }
    };
    eachPack<P, length>(
        n, [&]<class V>(In<V>, int i) __attribute__((always_inline)) { note(V::load(src + i)); });
    const T largest = P::largest(packs);
    return largest > single.x ? largest : single.x;
  }

  static bool staysWithin(const T* src, int n, T limit) noexcept {
    P packs = P::equal(P::all(limit), P::all(limit));
    bool singles = limit == limit;
    const auto note = [&]<class V>(V x) __attribute__((always_inline)) {
      const auto fits = V::atMost(V::absolute(x), V::all(limit));
      if constexpr (V::kLanes == 1) {
        singles = singles && fits;
      } else {
        packs = V::both(packs, fits);
      }
    };
    eachPack<P, length>(
        n, [&]<class V>(In<V>, int i) __attribute__((always_inline)) { note(V::load(src + i)); });
    return singles && P::every(packs);
  }

  /// Element i goes to partial sum i mod 16. The partial sums start at +0, so that adding the +0
  /// of an absent element changes none of them.
  static T sum(const T* src, int count) noexcept {
    const int n = length == kAnyLength ? count : length;
    P part[kParts];
    unrolled<kParts>([&](int j) __attribute__((always_inline)) { part[j] = P::all(T(0)); });
    const int whole = n / kPartialSums * kPartialSums;
    for (int i = 0; i < whole; i += kPartialSums) {
      unrolled<kParts>([&](int j) __attribute__((always_inline)) {
        part[j] = part[j] + P::load(src + i + j * P::kLanes);
      });
    }
    if (whole < n) {
      unrolled<kParts>([&](int j) __attribute__((always_inline)) {
        part[j] = part[j] + loadUpTo(src, whole + j * P::kLanes, n);
      });
    }
    if constexpr (kParts == 2) {
      return P::sum(part[0] + part[1]);
    } else {
      return P::sum((part[0] + part[1]) + (part[2] + part[3]));
    }
  }

 private:
  static constexpr int kPartialSums = 16;
  static constexpr int kParts = kPartialSums / P::kLanes;
  static_assert(kParts == 2 || kParts == 4);

  static P loadUpTo(const T* src, int i, int n) noexcept {
    const int left = n - i;
    return left >= P::kLanes ? P::load(src + i) : P::loadPart(src + i, left);
  }
};

}  // namespace orvantesco::kernels
