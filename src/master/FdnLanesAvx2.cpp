// Eight lines a vector. This file alone is compiled for AVX2; nothing of it runs before the
// processor was asked. The operations are described in FdnLanesScalar.cpp.
#if defined(__x86_64__)

#include "fx/kernels/PackAvx2.h"
#include "master/FdnLanesBody.h"

namespace orvantesco {

namespace {

struct Avx2Lanes {
  using Floats = kernels::avx2::Floats;

  static void loadColumns(const float* const* rows, int at, Floats (&columns)[8]) noexcept {
    for (int half = 0; half < 2; ++half) {
      const int from = at + 4 * half;
      __m256 r[4];
      for (int k = 0; k < 4; ++k) r[k] = loadHalves(rows[k] + from, rows[k + 4] + from);
      turn(r);
      for (int k = 0; k < 4; ++k) columns[4 * half + k].v = r[k];
    }
  }

  static void storeColumns(const Floats (&columns)[8], float (*rows)[kVectorLength],
                           int at) noexcept {
    for (int half = 0; half < 2; ++half) {
      const int to = at + 4 * half;
      __m256 c[4];
      for (int k = 0; k < 4; ++k) c[k] = columns[4 * half + k].v;
      turn(c);
      for (int k = 0; k < 4; ++k) {
        _mm_storeu_ps(rows[k] + to, _mm256_castps256_ps128(c[k]));
        _mm_storeu_ps(rows[k + 4] + to, _mm256_extractf128_ps(c[k], 1));
      }
    }
  }

  static Floats larger(Floats a, Floats b) noexcept { return {_mm256_max_ps(a.v, b.v)}; }
  static Floats smaller(Floats a, Floats b) noexcept { return {_mm256_min_ps(a.v, b.v)}; }

 private:
  static __m256 loadHalves(const float* low, const float* high) noexcept {
    return _mm256_insertf128_ps(_mm256_castps128_ps256(_mm_loadu_ps(low)), _mm_loadu_ps(high), 1);
  }

  /// Both halves at once: four rows of four become four columns of four.
  static void turn(__m256 (&r)[4]) noexcept {
    const __m256 a = _mm256_unpacklo_ps(r[0], r[1]);
    const __m256 b = _mm256_unpackhi_ps(r[0], r[1]);
    const __m256 c = _mm256_unpacklo_ps(r[2], r[3]);
    const __m256 d = _mm256_unpackhi_ps(r[2], r[3]);
    r[0] = _mm256_shuffle_ps(a, c, 0x44);
    r[1] = _mm256_shuffle_ps(a, c, 0xee);
    r[2] = _mm256_shuffle_ps(b, d, 0x44);
    r[3] = _mm256_shuffle_ps(b, d, 0xee);
  }
};

}  // namespace

void runFdnAvx2(FdnVector& vector) noexcept { FdnLanesBody<Avx2Lanes>::run(vector); }

}  // namespace orvantesco

#endif
