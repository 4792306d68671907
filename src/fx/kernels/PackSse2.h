#pragma once

#include <emmintrin.h>

namespace orvantesco::kernels::sse2 {

/// Two doubles, half a pack.
struct Pair {
  __m128d v;

  static Pair load(const double* p) noexcept { return {_mm_loadu_pd(p)}; }
  static Pair of(double x0, double x1) noexcept { return {_mm_setr_pd(x0, x1)}; }
  void store(double* p) const noexcept { _mm_storeu_pd(p, v); }
  double first() const noexcept { return _mm_cvtsd_f64(v); }
  double second() const noexcept { return _mm_cvtsd_f64(_mm_unpackhi_pd(v, v)); }
  friend Pair operator+(Pair a, Pair b) noexcept { return {_mm_add_pd(a.v, b.v)}; }
  friend Pair operator-(Pair a, Pair b) noexcept { return {_mm_sub_pd(a.v, b.v)}; }
  friend Pair operator*(Pair a, Pair b) noexcept { return {_mm_mul_pd(a.v, b.v)}; }
};

/// Four doubles in two registers; the operations are described in PackScalar.h.
struct Doubles {
  using Value = double;
  using Pair = sse2::Pair;
  static constexpr int kLanes = 4;
  __m128d lo, hi;

  static Doubles load(const double* p) noexcept { return {_mm_loadu_pd(p), _mm_loadu_pd(p + 2)}; }
  static Doubles loadPart(const double* p, int count) noexcept {
    const __m128d low = count > 1 ? _mm_loadu_pd(p) : count > 0 ? _mm_load_sd(p) : _mm_setzero_pd();
    return {low, count > 2 ? _mm_load_sd(p + 2) : _mm_setzero_pd()};  // never a whole pack
  }
  static Doubles loadMask(const long long* p) noexcept {
    return load(reinterpret_cast<const double*>(p));
  }
  static Doubles all(double x) noexcept { return {_mm_set1_pd(x), _mm_set1_pd(x)}; }
  void store(double* p) const noexcept {
    _mm_storeu_pd(p, lo);
    _mm_storeu_pd(p + 2, hi);
  }
  double first() const noexcept { return _mm_cvtsd_f64(lo); }

  friend Doubles operator+(Doubles a, Doubles b) noexcept {
    return {_mm_add_pd(a.lo, b.lo), _mm_add_pd(a.hi, b.hi)};
  }
  friend Doubles operator-(Doubles a, Doubles b) noexcept {
    return {_mm_sub_pd(a.lo, b.lo), _mm_sub_pd(a.hi, b.hi)};
  }
  friend Doubles operator*(Doubles a, Doubles b) noexcept {
    return {_mm_mul_pd(a.lo, b.lo), _mm_mul_pd(a.hi, b.hi)};
  }
  friend Doubles operator/(Doubles a, Doubles b) noexcept {
    return {_mm_div_pd(a.lo, b.lo), _mm_div_pd(a.hi, b.hi)};
  }

  static Doubles larger(Doubles a, Doubles b) noexcept {
    return {_mm_max_pd(a.lo, b.lo), _mm_max_pd(a.hi, b.hi)};
  }
  static Doubles smaller(Doubles a, Doubles b) noexcept {
    return {_mm_min_pd(a.lo, b.lo), _mm_min_pd(a.hi, b.hi)};
  }
  static Doubles absolute(Doubles a) noexcept {
    const __m128d sign = _mm_set1_pd(-0.0);
    return {_mm_andnot_pd(sign, a.lo), _mm_andnot_pd(sign, a.hi)};
  }
  static Doubles squareRoot(Doubles a) noexcept { return {_mm_sqrt_pd(a.lo), _mm_sqrt_pd(a.hi)}; }
  static Doubles below(Doubles a, Doubles b) noexcept {
    return {_mm_cmplt_pd(a.lo, b.lo), _mm_cmplt_pd(a.hi, b.hi)};
  }
  static Doubles atMost(Doubles a, Doubles b) noexcept {
    return {_mm_cmple_pd(a.lo, b.lo), _mm_cmple_pd(a.hi, b.hi)};
  }
  static Doubles equal(Doubles a, Doubles b) noexcept {
    return {_mm_cmpeq_pd(a.lo, b.lo), _mm_cmpeq_pd(a.hi, b.hi)};
  }
  static Doubles either(Doubles m, Doubles k) noexcept {
    return {_mm_or_pd(m.lo, k.lo), _mm_or_pd(m.hi, k.hi)};
  }
  static Doubles both(Doubles m, Doubles k) noexcept {
    return {_mm_and_pd(m.lo, k.lo), _mm_and_pd(m.hi, k.hi)};
  }
  static Doubles select(Doubles mask, Doubles a, Doubles b) noexcept {
    return either(both(mask, a), {_mm_andnot_pd(mask.lo, b.lo), _mm_andnot_pd(mask.hi, b.hi)});
  }
  static bool any(Doubles mask) noexcept {
    return _mm_movemask_pd(_mm_or_pd(mask.lo, mask.hi)) != 0;
  }
  static bool every(Doubles mask) noexcept {
    return _mm_movemask_pd(_mm_and_pd(mask.lo, mask.hi)) == 3;
  }

  static double sum(Doubles a) noexcept {
    const __m128d pair = _mm_add_pd(a.lo, a.hi);
    return _mm_cvtsd_f64(_mm_add_sd(pair, _mm_unpackhi_pd(pair, pair)));
  }
  static double largest(Doubles a) noexcept {
    const __m128d pair = _mm_max_pd(a.lo, a.hi);
    return _mm_cvtsd_f64(_mm_max_sd(pair, _mm_unpackhi_pd(pair, pair)));
  }

  // See PackAvx2.h.
  static Doubles join(Pair low, Pair high) noexcept { return {low.v, high.v}; }
  Pair low() const noexcept { return {lo}; }
  Pair high() const noexcept { return {hi}; }
  static Doubles zipEven(Doubles a, Doubles b) noexcept {
    return {_mm_unpacklo_pd(a.lo, b.lo), _mm_unpacklo_pd(a.hi, b.hi)};
  }
  static Doubles zipOdd(Doubles a, Doubles b) noexcept {
    return {_mm_unpackhi_pd(a.lo, b.lo), _mm_unpackhi_pd(a.hi, b.hi)};
  }
  static Doubles oddThenEven(Doubles a, Doubles b) noexcept {
    return {_mm_shuffle_pd(a.lo, b.lo, 1), _mm_shuffle_pd(a.hi, b.hi, 1)};
  }
  static Doubles highThenZero(Doubles a) noexcept { return {a.hi, _mm_setzero_pd()}; }
  static Doubles shiftUp(Doubles a, Doubles first) noexcept {
    return {_mm_unpacklo_pd(first.lo, a.lo), _mm_shuffle_pd(a.lo, a.hi, 1)};
  }
  static Doubles lastToFirst(Doubles a) noexcept { return {_mm_unpackhi_pd(a.hi, a.hi), a.hi}; }
};

/// Eight floats in two registers.
struct Floats {
  using Value = float;
  static constexpr int kLanes = 8;
  __m128 lo, hi;

  static Floats load(const float* p) noexcept { return {_mm_loadu_ps(p), _mm_loadu_ps(p + 4)}; }
  static Floats loadPart(const float* p, int count) noexcept {
    alignas(16) float lanes[kLanes] = {};
    for (int i = 0; i < count; ++i) lanes[i] = p[i];
    return load(lanes);
  }
  static Floats all(float x) noexcept { return {_mm_set1_ps(x), _mm_set1_ps(x)}; }
  void store(float* p) const noexcept {
    _mm_storeu_ps(p, lo);
    _mm_storeu_ps(p + 4, hi);
  }

  friend Floats operator+(Floats a, Floats b) noexcept {
    return {_mm_add_ps(a.lo, b.lo), _mm_add_ps(a.hi, b.hi)};
  }
  friend Floats operator-(Floats a, Floats b) noexcept {
    return {_mm_sub_ps(a.lo, b.lo), _mm_sub_ps(a.hi, b.hi)};
  }
  friend Floats operator*(Floats a, Floats b) noexcept {
    return {_mm_mul_ps(a.lo, b.lo), _mm_mul_ps(a.hi, b.hi)};
  }
  friend Floats operator/(Floats a, Floats b) noexcept {
    return {_mm_div_ps(a.lo, b.lo), _mm_div_ps(a.hi, b.hi)};
  }

  static float sum(Floats a) noexcept {
    __m128 x = _mm_add_ps(a.lo, a.hi);
    x = _mm_add_ps(x, _mm_movehl_ps(x, x));
    return _mm_cvtss_f32(_mm_add_ss(x, _mm_shuffle_ps(x, x, 1)));
  }
};

}  // namespace orvantesco::kernels::sse2
