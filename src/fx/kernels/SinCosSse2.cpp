#if defined(__x86_64__)

#include "fx/kernels/PackSse2.h"
#include "fx/kernels/SinCosBody.h"

namespace orvantesco::kernels {

bool sinCosSse2(const double* src, double* sinDst, double* cosDst) noexcept {
  return SinCosBody<sse2::Doubles>::run(src, sinDst, cosDst);
}

}  // namespace orvantesco::kernels

#endif
