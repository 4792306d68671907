#pragma once

#include <immintrin.h>

namespace orvantesco::kernels::avx2 {

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

/// Four doubles in one register; the operations are described in PackScalar.h.
struct Doubles {
  using Value = double;
  using Pair = avx2::Pair;
  static constexpr int kLanes = 4;
  __m256d v;

  static Doubles load(const double* p) noexcept { return {_mm256_loadu_pd(p)}; }
  static Doubles loadPart(const double* p, int count) noexcept {
    const __m256i lane = _mm256_setr_epi64x(0, 1, 2, 3);
    return {_mm256_maskload_pd(p, _mm256_cmpgt_epi64(_mm256_set1_epi64x(count), lane))};
  }
  static Doubles loadMask(const long long* p) noexcept {
    return {_mm256_loadu_pd(reinterpret_cast<const double*>(p))};
  }
  static Doubles all(double x) noexcept { return {_mm256_set1_pd(x)}; }
  void store(double* p) const noexcept { _mm256_storeu_pd(p, v); }
  double first() const noexcept { return _mm256_cvtsd_f64(v); }

  friend Doubles operator+(Doubles a, Doubles b) noexcept { return {_mm256_add_pd(a.v, b.v)}; }
  friend Doubles operator-(Doubles a, Doubles b) noexcept { return {_mm256_sub_pd(a.v, b.v)}; }
  friend Doubles operator*(Doubles a, Doubles b) noexcept { return {_mm256_mul_pd(a.v, b.v)}; }
  friend Doubles operator/(Doubles a, Doubles b) noexcept { return {_mm256_div_pd(a.v, b.v)}; }

  static Doubles larger(Doubles a, Doubles b) noexcept { return {_mm256_max_pd(a.v, b.v)}; }
  static Doubles smaller(Doubles a, Doubles b) noexcept { return {_mm256_min_pd(a.v, b.v)}; }
  static Doubles absolute(Doubles a) noexcept {
    return {_mm256_andnot_pd(_mm256_set1_pd(-0.0), a.v)};
  }
  static Doubles squareRoot(Doubles a) noexcept { return {_mm256_sqrt_pd(a.v)}; }
  static Doubles below(Doubles a, Doubles b) noexcept {
    return {_mm256_cmp_pd(a.v, b.v, _CMP_LT_OQ)};
  }
  static Doubles atMost(Doubles a, Doubles b) noexcept {
    return {_mm256_cmp_pd(a.v, b.v, _CMP_LE_OQ)};
  }
  static Doubles equal(Doubles a, Doubles b) noexcept {
    return {_mm256_cmp_pd(a.v, b.v, _CMP_EQ_OQ)};
  }
  static Doubles either(Doubles m, Doubles k) noexcept { return {_mm256_or_pd(m.v, k.v)}; }
  static Doubles both(Doubles m, Doubles k) noexcept { return {_mm256_and_pd(m.v, k.v)}; }
  static Doubles select(Doubles mask, Doubles a, Doubles b) noexcept {
    return {_mm256_blendv_pd(b.v, a.v, mask.v)};
  }
  static bool any(Doubles mask) noexcept { return _mm256_movemask_pd(mask.v) != 0; }
  static bool every(Doubles mask) noexcept { return _mm256_movemask_pd(mask.v) == 15; }

  static double sum(Doubles a) noexcept {
    const __m128d pair = _mm_add_pd(_mm256_castpd256_pd128(a.v), _mm256_extractf128_pd(a.v, 1));
    return _mm_cvtsd_f64(_mm_add_sd(pair, _mm_unpackhi_pd(pair, pair)));
  }
  static double largest(Doubles a) noexcept {
    const __m128d pair = _mm_max_pd(_mm256_castpd256_pd128(a.v), _mm256_extractf128_pd(a.v, 1));
    return _mm_cvtsd_f64(_mm_max_sd(pair, _mm_unpackhi_pd(pair, pair)));
  }

  // What the recursive filters move about, for lanes numbered 0 to 3.
  static Doubles join(Pair low, Pair high) noexcept { return {_mm256_set_m128d(high.v, low.v)}; }
  Pair low() const noexcept { return {_mm256_castpd256_pd128(v)}; }
  Pair high() const noexcept { return {_mm256_extractf128_pd(v, 1)}; }
  /// {a0, b0, a2, b2}
  static Doubles zipEven(Doubles a, Doubles b) noexcept { return {_mm256_unpacklo_pd(a.v, b.v)}; }
  /// {a1, b1, a3, b3}
  static Doubles zipOdd(Doubles a, Doubles b) noexcept { return {_mm256_unpackhi_pd(a.v, b.v)}; }
  /// {a1, b0, a3, b2}
  static Doubles oddThenEven(Doubles a, Doubles b) noexcept {
    return {_mm256_shuffle_pd(a.v, b.v, 0b0101)};
  }
  /// {a2, a3, 0, 0}
  static Doubles highThenZero(Doubles a) noexcept {
    return {_mm256_permute2f128_pd(a.v, a.v, 0x81)};
  }
  /// {first0, a0, a1, a2}
  static Doubles shiftUp(Doubles a, Doubles first) noexcept {
    const __m256d lower = _mm256_insertf128_pd(first.v, _mm256_castpd256_pd128(a.v), 1);
    return {_mm256_shuffle_pd(lower, a.v, 0b0100)};
  }
  /// a3 in lane 0; what the others hold is not said
  static Doubles lastToFirst(Doubles a) noexcept {
    const __m128d upper = _mm256_extractf128_pd(a.v, 1);
    return {_mm256_castpd128_pd256(_mm_unpackhi_pd(upper, upper))};
  }
};

/// Eight floats in one register.
struct Floats {
  using Value = float;
  static constexpr int kLanes = 8;
  __m256 v;

  static Floats load(const float* p) noexcept { return {_mm256_loadu_ps(p)}; }
  static Floats loadPart(const float* p, int count) noexcept {
    const __m256i lane = _mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7);
    return {_mm256_maskload_ps(p, _mm256_cmpgt_epi32(_mm256_set1_epi32(count), lane))};
  }
  static Floats all(float x) noexcept { return {_mm256_set1_ps(x)}; }
  void store(float* p) const noexcept { _mm256_storeu_ps(p, v); }

  friend Floats operator+(Floats a, Floats b) noexcept { return {_mm256_add_ps(a.v, b.v)}; }
  friend Floats operator-(Floats a, Floats b) noexcept { return {_mm256_sub_ps(a.v, b.v)}; }
  friend Floats operator*(Floats a, Floats b) noexcept { return {_mm256_mul_ps(a.v, b.v)}; }
  friend Floats operator/(Floats a, Floats b) noexcept { return {_mm256_div_ps(a.v, b.v)}; }

  static float sum(Floats a) noexcept {
    __m128 x = _mm_add_ps(_mm256_castps256_ps128(a.v), _mm256_extractf128_ps(a.v, 1));
    x = _mm_add_ps(x, _mm_movehl_ps(x, x));
    return _mm_cvtss_f32(_mm_add_ss(x, _mm_shuffle_ps(x, x, 1)));
  }
};

}  // namespace orvantesco::kernels::avx2
