#pragma once

#include "fx/kernels/SinCos.h"

namespace orvantesco::kernels {

/// The loop of vecSinCos at one processor level; false, with nothing written, where an angle is
/// out of range.
using SinCosLoop = bool(const double* src, double* sinDst, double* cosDst) noexcept;

SinCosLoop sinCosScalar;
SinCosLoop sinCosSse2;  ///< x86-64
SinCosLoop sinCosAvx2;  ///< x86-64, only where the processor has AVX2

}  // namespace orvantesco::kernels
