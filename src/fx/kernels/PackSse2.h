#pragma once

#include <emmintrin.h>

namespace orvantesco::kernels::sse2 {

/// Four doubles in two registers; the operations are described in PackScalar.h.
struct Doubles {
  using Value = double;
  static constexpr int kLanes = 4;
  __m128d lo, hi;

  static Doubles load(const double* p) noexcept { return {_mm_loadu_pd(p), _mm_loadu_pd(p + 2)}; }
  static Doubles loadPart(const double* p, int count) noexcept {
    return of(count > 0 ? p[0] : 0.0, count > 1 ? p[1] : 0.0, count > 2 ? p[2] : 0.0,
              count > 3 ? p[3] : 0.0);
  }
  static Doubles all(double x) noexcept { return {_mm_set1_pd(x), _mm_set1_pd(x)}; }
  static Doubles of(double x0, double x1, double x2, double x3) noexcept {
    return {_mm_setr_pd(x0, x1), _mm_setr_pd(x2, x3)};
  }
  void store(double* p) const noexcept {
    _mm_storeu_pd(p, lo);
    _mm_storeu_pd(p + 2, hi);
  }
  template <int I>
  double get() const noexcept {
    const __m128d half = I < 2 ? lo : hi;
    return _mm_cvtsd_f64(I % 2 == 0 ? half : _mm_unpackhi_pd(half, half));
  }

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

  static Doubles shiftDown(Doubles a) noexcept {
    return {_mm_shuffle_pd(a.lo, a.hi, 1), _mm_shuffle_pd(a.hi, _mm_setzero_pd(), 1)};
  }
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

struct Level {
  using Doubles = sse2::Doubles;
  using Floats = sse2::Floats;
};

}  // namespace orvantesco::kernels::sse2
