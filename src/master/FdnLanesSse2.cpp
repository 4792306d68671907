// Four lines a vector: what every x86-64 processor can do. The operations are described in
// FdnLanesScalar.cpp.
#if defined(__x86_64__)

#include <emmintrin.h>

#include "master/FdnLanesBody.h"

namespace orvantesco {

namespace {

struct FourFloats {
  static constexpr int kLanes = 4;
  __m128 v;

  static FourFloats load(const float* p) noexcept { return {_mm_loadu_ps(p)}; }
  static FourFloats all(float x) noexcept { return {_mm_set1_ps(x)}; }
  void store(float* p) const noexcept { _mm_storeu_ps(p, v); }

  friend FourFloats operator+(FourFloats a, FourFloats b) noexcept {
    return {_mm_add_ps(a.v, b.v)};
  }
  friend FourFloats operator-(FourFloats a, FourFloats b) noexcept {
    return {_mm_sub_ps(a.v, b.v)};
  }
  friend FourFloats operator*(FourFloats a, FourFloats b) noexcept {
    return {_mm_mul_ps(a.v, b.v)};
  }
};

struct Sse2Lanes {
  using Floats = FourFloats;

  static void loadColumns(const float* const* rows, int at, Floats (&columns)[4]) noexcept {
#pragma GCC unroll 4
    for (int k = 0; k < 4; ++k) columns[k] = Floats::load(rows[k] + at);
    _MM_TRANSPOSE4_PS(columns[0].v, columns[1].v, columns[2].v, columns[3].v);
  }

  static void storeColumns(const Floats (&columns)[4], float (*rows)[kVectorLength],
                           int at) noexcept {
    Floats turned[4] = {columns[0], columns[1], columns[2], columns[3]};
    _MM_TRANSPOSE4_PS(turned[0].v, turned[1].v, turned[2].v, turned[3].v);
#pragma GCC unroll 4
    for (int k = 0; k < 4; ++k) turned[k].store(rows[k] + at);
  }

  static Floats larger(Floats a, Floats b) noexcept { return {_mm_max_ps(a.v, b.v)}; }
  static Floats smaller(Floats a, Floats b) noexcept { return {_mm_min_ps(a.v, b.v)}; }
};

}  // namespace

void runFdnSse2(FdnVector& vector) noexcept { FdnLanesBody<Sse2Lanes>::run(vector); }

}  // namespace orvantesco

#endif
