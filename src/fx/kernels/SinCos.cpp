#include "fx/kernels/SinCos.h"

#include <cmath>

#include "fx/kernels/Level.h"
#include "fx/kernels/SinCosLevels.h"

namespace orvantesco {

namespace {

bool runAtLevelInForce(const double* src, double* sinDst, double* cosDst) noexcept {
#if defined(__x86_64__)
  const kernels::Level level = kernels::levelInForce();
  if (level == kernels::Level::kAvx2) return kernels::sinCosAvx2(src, sinDst, cosDst);
  if (level == kernels::Level::kSse2) return kernels::sinCosSse2(src, sinDst, cosDst);
#endif
  return kernels::sinCosScalar(src, sinDst, cosDst);
}

}  // namespace

void vecSinCos(const double* src, double* sinDst, double* cosDst) noexcept {
  if (runAtLevelInForce(src, sinDst, cosDst)) return;
  for (int i = 0; i < kVectorLength; ++i) {
    const double angle = src[i];
    sinDst[i] = std::sin(angle);
    cosDst[i] = std::cos(angle);
  }
}

}  // namespace orvantesco
