#pragma once

#include <cstddef>
#include <cstring>

#include "fx/kernels/PackLoop.h"
#include "fx/kernels/Status.h"

namespace orvantesco::kernels {

/// The vector operations that map elements to elements, over packs P of double or float. They are
/// built twice, for vectors of any length and for the one length that matters.
template <class P, int length>
struct VectorBody {
  using T = typename P::Value;

  static void fill(T val, T* dst, int n) noexcept {
    eachPack<P, length>(
        n, [=]<class V>(In<V>, int i)
               __attribute__((always_inline)) { V::all(val).store(dst + i); });
  }
  static void copy(const T* src, T* dst, int n) noexcept {
    map<P, length>(
        dst, n, [](auto x) { return x; }, src);
  }
  static void move(const T* src, T* dst, int n) noexcept {
    if constexpr (length == kAnyLength) {
      std::memmove(dst, src, sizeof(T) * static_cast<std::size_t>(n));
    } else {
      P packs[length / P::kLanes];  // all is read before any is written
      eachPack<P, length>(
          n, [&]<class V>(In<V>, int i)
                 __attribute__((always_inline)) { packs[i / P::kLanes] = V::load(src + i); });
      eachPack<P, length>(
          n, [&]<class V>(In<V>, int i)
                 __attribute__((always_inline)) { packs[i / P::kLanes].store(dst + i); });
    }
  }
  static void absolute(const T* src, T* dst, int n) noexcept {
    map<P, length>(
        dst, n, [](auto x) { return decltype(x)::absolute(x); }, src);
  }
  static void add(const T* a, const T* b, T* dst, int n) noexcept {
    map<P, length>(
        dst, n, [](auto x, auto y) { return x + y; }, a, b);
  }
  static void subtract(const T* a, const T* b, T* dst, int n) noexcept {
    map<P, length>(
        dst, n, [](auto x, auto y) { return y - x; }, a, b);
  }
  static void multiply(const T* a, const T* b, T* dst, int n) noexcept {
    map<P, length>(
        dst, n, [](auto x, auto y) { return x * y; }, a, b);
  }
  static void addProduct(const T* a, const T* b, T* dst, int n) noexcept {
    map<P, length>(
        dst, n, [](auto x, auto y, auto z) { return z + x * y; }, a, b, dst);
  }
  static void smaller(const T* a, const T* b, T* dst, int n) noexcept {
    map<P, length>(
        dst, n, [](auto x, auto y) { return decltype(x)::smaller(x, y); }, a, b);
  }
  static void larger(const T* a, const T* b, T* dst, int n) noexcept {
    map<P, length>(
        dst, n, [](auto x, auto y) { return decltype(x)::larger(x, y); }, a, b);
  }

  static void addConst(const T* src, T val, T* dst, int n) noexcept {
    if (val == T(0)) return copyUnlessSame(src, dst, n);
    map<P, length>(
        dst, n, [=](auto x) { return x + decltype(x)::all(val); }, src);
  }
  static void subtractFromConst(const T* src, T val, T* dst, int n) noexcept {
    map<P, length>(
        dst, n, [=](auto x) { return decltype(x)::all(val) - x; }, src);
  }
  static void scale(const T* src, T val, T* dst, int n) noexcept {
    map<P, length>(
        dst, n, [=](auto x) { return x * decltype(x)::all(val); }, src);
  }
  static void scaleOrClear(const T* src, T val, T* dst, int n) noexcept {
    // One comparison for both constants: only 0, 1 and infinity are their own squares.
    if (__builtin_expect(val * val == val, false)) return scaleBySquareOfItself(src, val, dst, n);
    scale(src, val, dst, n);
  }
  static void addScaled(const T* src, T val, T* dst, int n) noexcept {
    if (val == T(0)) return;
    map<P, length>(
        dst, n, [=](auto x, auto z) { return z + x * decltype(x)::all(val); }, src, dst);
  }
  static void constDiv(const T* src, T val, T* dst, int n) noexcept {
    map<P, length>(
        dst, n, [=](auto x) { return decltype(x)::all(val) / x; }, src);
  }

  static void clampBelow(const T* src, T level, T* dst, int n) noexcept {
    map<P, length>(
        dst, n, [=](auto x) { return decltype(x)::larger(decltype(x)::all(level), x); }, src);
  }
  static void clampAbove(const T* src, T level, T* dst, int n) noexcept {
    map<P, length>(
        dst, n, [=](auto x) { return decltype(x)::smaller(decltype(x)::all(level), x); }, src);
  }
  static void thresholdLow(const T* src, T level, T value, T* dst, int n) noexcept {
    map<P, length>(
        dst, n, [=](auto x) { return whereBelow(x, level, value, x); }, src);
  }
  static void thresholdHigh(const T* src, T level, T value, T* dst, int n) noexcept {
    map<P, length>(
        dst, n, [=](auto x) { return whereAbove(x, level, value, x); }, src);
  }
  static void thresholdBoth(T* srcDst, int n, T low, T lowValue, T high, T highValue) noexcept {
    map<P, length>(
        srcDst, n,
        [=](auto x) { return whereBelow(x, low, lowValue, whereAbove(x, high, highValue, x)); },
        srcDst);
  }

  static int divide(const T* src, T* srcDst, int n) noexcept {
    Found byZero;
    eachPack<P, length>(
        n, [&]<class V>(In<V>, int i) __attribute__((always_inline)) {
          const V divisor = V::load(src + i);
          byZero.note(V::equal(divisor, V::all(T(0))));
          (V::load(srcDst + i) / divisor).store(srcDst + i);
        });
    return byZero.once() ? kWarningDivisionByZero : kStatusOk;
  }
  static int squareRoot(T* srcDst, int n) noexcept {
    Found negative;
    eachPack<P, length>(
        n, [&]<class V>(In<V>, int i) __attribute__((always_inline)) {
          const V x = V::load(srcDst + i);
          negative.note(V::below(x, V::all(T(0))));
          V::squareRoot(x).store(srcDst + i);
        });
    return negative.once() ? kWarningNegativeRoot : kStatusOk;
  }

 private:
  /// Whether a comparison held for any element.
  struct Found {
    P packs = P::all(T(0));
    bool singles = false;
    void note(P mask) noexcept { packs = P::either(packs, mask); }
    void note(bool mask) noexcept { singles = singles || mask; }
    bool once() const noexcept { return singles || P::any(packs); }
  };

  [[gnu::noinline]] static void scaleBySquareOfItself(const T* src, T val, T* dst, int n) noexcept {
    if (val == T(0)) return fill(T(0), dst, n);
    if (val == T(1)) return copyUnlessSame(src, dst, n);
    scale(src, val, dst, n);
  }
  [[gnu::noinline]] static void copyUnlessSame(const T* src, T* dst, int n) noexcept {
    if (src != dst) copy(src, dst, n);
  }
  template <class V>
  static V whereBelow(V x, T level, T value, V otherwise) noexcept {
    return V::select(V::below(x, V::all(level)), V::all(value), otherwise);
  }
  template <class V>
  static V whereAbove(V x, T level, T value, V otherwise) noexcept {
    return V::select(V::below(V::all(level), x), V::all(value), otherwise);
  }
};

}  // namespace orvantesco::kernels
