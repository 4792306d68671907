// This file alone is compiled for AVX2; nothing of it runs before the processor was asked.
#if defined(__x86_64__)

#include "fx/kernels/PackAvx2.h"
#include "fx/kernels/SinCosBody.h"

namespace orvantesco::kernels {

bool sinCosAvx2(const double* src, double* sinDst, double* cosDst) noexcept {
  return SinCosBody<avx2::Doubles>::run(src, sinDst, cosDst);
}

}  // namespace orvantesco::kernels

#endif
