// Two taps a vector: what every x86-64 processor can do. The operations are described in
// TapLanesScalar.cpp.
#if defined(__x86_64__)

#include <emmintrin.h>

#include "delay/TapLanesBody.h"

namespace orvantesco {

namespace {

/// One register. (The kernels' pack of this level is two of them: too wide for a pair of taps.)
struct TwoDoubles {
  static constexpr int kLanes = 2;
  __m128d v;

  static TwoDoubles load(const double* p) noexcept { return {_mm_loadu_pd(p)}; }
  static TwoDoubles all(double x) noexcept { return {_mm_set1_pd(x)}; }
  void store(double* p) const noexcept { _mm_storeu_pd(p, v); }

  friend TwoDoubles operator+(TwoDoubles a, TwoDoubles b) noexcept {
    return {_mm_add_pd(a.v, b.v)};
  }
  friend TwoDoubles operator-(TwoDoubles a, TwoDoubles b) noexcept {
    return {_mm_sub_pd(a.v, b.v)};
  }
  friend TwoDoubles operator*(TwoDoubles a, TwoDoubles b) noexcept {
    return {_mm_mul_pd(a.v, b.v)};
  }
  friend TwoDoubles operator/(TwoDoubles a, TwoDoubles b) noexcept {
    return {_mm_div_pd(a.v, b.v)};
  }
};

struct Sse2Lanes {
  using Doubles = TwoDoubles;

  static Doubles truncate(Doubles v, int (&whole)[2]) noexcept {
    const __m128i ints = _mm_cvttpd_epi32(v.v);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(whole), ints);
    return {_mm_cvtepi32_pd(ints)};
  }

  static void loadPairs(const double* const (&pairs)[2], Doubles& first, Doubles& second) noexcept {
    const __m128d a = _mm_loadu_pd(pairs[0]);
    const __m128d b = _mm_loadu_pd(pairs[1]);
    first = {_mm_unpacklo_pd(a, b)};
    second = {_mm_unpackhi_pd(a, b)};
  }

  static void loadRows(const double* const (&from)[2], int i, Doubles (&rows)[2]) noexcept {
    loadPairs({from[0] + i, from[1] + i}, rows[0], rows[1]);
  }

  static void storeRows(const Doubles (&rows)[2], double* const (&to)[2], int i) noexcept {
    _mm_storeu_pd(to[0] + i, _mm_unpacklo_pd(rows[0].v, rows[1].v));
    _mm_storeu_pd(to[1] + i, _mm_unpackhi_pd(rows[0].v, rows[1].v));
  }
};

}  // namespace

constinit const TapLanes kTapLanesSse2 = {TapLanesBody<Sse2Lanes>::readSettled,
                                          TapLanesBody<Sse2Lanes>::readMoving,
                                          TapLanesBody<Sse2Lanes>::addRows};

}  // namespace orvantesco

#endif
