#include "fx/kernels/PackScalar.h"
#include "fx/kernels/SinCosBody.h"

namespace orvantesco::kernels {

bool sinCosScalar(const double* src, double* sinDst, double* cosDst) noexcept {
  return SinCosBody<scalar::Pack<double, 4>>::run(src, sinDst, cosDst);
}

}  // namespace orvantesco::kernels
