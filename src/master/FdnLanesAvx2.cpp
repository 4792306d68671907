// Eight lines a vector. This file alone is compiled for AVX2; nothing of it runs before the
// processor was asked. The operations are described in FdnLanesScalar.cpp.
#if defined(__x86_64__)

#include "fx/kernels/PackAvx2.h"
#include "master/FdnLanesBody.h"

namespace orvantesco {

namespace {

struct Avx2Lanes {
  using Floats = kernels::avx2::Floats;

  [[gnu::always_inline]] static void loadColumns(const float* const* rows, int at,
                                                 Floats (&columns)[8]) noexcept {
    loadFour(rows, at, columns);
    loadFour(rows, at + 4, columns + 4);
  }

  [[gnu::always_inline]] static void storeColumns(const Floats (&columns)[8],
                                                  float (*rows)[kVectorLength], int at) noexcept {
    storeFour(columns, rows, at);
    storeFour(columns + 4, rows, at + 4);
  }

  static Floats larger(Floats a, Floats b) noexcept { return {_mm256_max_ps(a.v, b.v)}; }
  static Floats smaller(Floats a, Floats b) noexcept { return {_mm256_min_ps(a.v, b.v)}; }

 private:
  static __m256 loadHalves(const float* low, const float* high) noexcept {
    return _mm256_insertf128_ps(_mm256_castps128_ps256(_mm_loadu_ps(low)), _mm_loadu_ps(high), 1);
  }

  [[gnu::always_inline]] static void loadFour(const float* const* rows, int at,
                                              Floats* columns) noexcept {
    const __m256 a = loadHalves(rows[0] + at, rows[4] + at);
    const __m256 b = loadHalves(rows[1] + at, rows[5] + at);
    const __m256 c = loadHalves(rows[2] + at, rows[6] + at);
    const __m256 d = loadHalves(rows[3] + at, rows[7] + at);
    turn(a, b, c, d, columns);
  }

  [[gnu::always_inline]] static void storeFour(const Floats* columns, float (*rows)[kVectorLength],
                                               int at) noexcept {
    Floats turned[4];
    turn(columns[0].v, columns[1].v, columns[2].v, columns[3].v, turned);
#pragma GCC unroll 4
    for (int k = 0; k < 4; ++k) {
      _mm_storeu_ps(rows[k] + at, _mm256_castps256_ps128(turned[k].v));
      _mm_storeu_ps(rows[k + 4] + at, _mm256_extractf128_ps(turned[k].v, 1));
    }
  }

  /// Both halves at once: four rows of four become four columns of four.
  /// Four registers in, an array out. NOLINTNEXTLINE(readability-function-size)
  [[gnu::always_inline]] static void turn(__m256 a, __m256 b, __m256 c, __m256 d,
                                          Floats* turned) noexcept {
    const __m256 lowAb = _mm256_unpacklo_ps(a, b);
    const __m256 highAb = _mm256_unpackhi_ps(a, b);
    const __m256 lowCd = _mm256_unpacklo_ps(c, d);
    const __m256 highCd = _mm256_unpackhi_ps(c, d);
    turned[0].v = _mm256_shuffle_ps(lowAb, lowCd, 0x44);
    turned[1].v = _mm256_shuffle_ps(lowAb, lowCd, 0xee);
    turned[2].v = _mm256_shuffle_ps(highAb, highCd, 0x44);
    turned[3].v = _mm256_shuffle_ps(highAb, highCd, 0xee);
  }
};

}  // namespace

void runFdnAvx2(FdnVector& vector) noexcept { FdnLanesBody<Avx2Lanes>::run(vector); }

}  // namespace orvantesco

#endif
