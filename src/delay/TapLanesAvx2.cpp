// Four taps a vector. This file alone is compiled for AVX2; nothing of it runs before the
// processor was asked. The operations are described in TapLanesScalar.cpp.
#if defined(__x86_64__)

#include "delay/TapLanesBody.h"
#include "fx/kernels/PackAvx2.h"

namespace orvantesco {

namespace {

struct Avx2Lanes {
  using Doubles = kernels::avx2::Doubles;

  static Doubles truncate(Doubles v, int (&whole)[4]) noexcept {
    const __m128i ints = _mm256_cvttpd_epi32(v.v);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(whole), ints);
    return {_mm256_cvtepi32_pd(ints)};
  }

  static void loadPairs(const double* const (&pairs)[4], Doubles& first, Doubles& second) noexcept {
    const __m256d even = loadHalves(pairs[0], pairs[2]);
    const __m256d odd = loadHalves(pairs[1], pairs[3]);
    first = {_mm256_unpacklo_pd(even, odd)};
    second = {_mm256_unpackhi_pd(even, odd)};
  }

  static void loadRows(const double* const (&from)[4], int i, Doubles (&rows)[4]) noexcept {
    const auto pairs = [&](int at, Doubles& first, Doubles& second) {
      loadPairs({from[0] + at, from[1] + at, from[2] + at, from[3] + at}, first, second);
    };
    pairs(i, rows[0], rows[1]);
    pairs(i + 2, rows[2], rows[3]);
  }

  static void storeRows(const Doubles (&rows)[4], double* const (&to)[4], int i) noexcept {
    storePairs(rows[0].v, rows[1].v, to, i);
    storePairs(rows[2].v, rows[3].v, to, i + 2);
  }

 private:
  static __m256d loadHalves(const double* low, const double* high) noexcept {
    return _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_loadu_pd(low)), _mm_loadu_pd(high), 1);
  }

  static void storePairs(__m256d first, __m256d second, double* const (&to)[4], int i) noexcept {
    const __m256d even = _mm256_unpacklo_pd(first, second);
    const __m256d odd = _mm256_unpackhi_pd(first, second);
    _mm_storeu_pd(to[0] + i, _mm256_castpd256_pd128(even));
    _mm_storeu_pd(to[1] + i, _mm256_castpd256_pd128(odd));
    _mm_storeu_pd(to[2] + i, _mm256_extractf128_pd(even, 1));
    _mm_storeu_pd(to[3] + i, _mm256_extractf128_pd(odd, 1));
  }
};

}  // namespace

constinit const TapLanes kTapLanesAvx2 = {TapLanesBody<Avx2Lanes>::readSettled,
                                          TapLanesBody<Avx2Lanes>::readMoving,
                                          TapLanesBody<Avx2Lanes>::addRows};

}  // namespace orvantesco

#endif
