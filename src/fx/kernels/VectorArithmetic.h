#pragma once

#include "fx/kernels/KernelTable.h"
#include "fx/kernels/Status.h"

// Sums, products and quotients. Of the two operands of a difference, the SECOND array is the
// minuend throughout: vecSub(a, b, dst) is b - a, vecSubInPlace(src, srcDst) is srcDst - src.

namespace orvantesco {

/// dst[i] = a[i] + b[i].
inline int vecAdd(const double* a, const double* b, double* dst, int n) noexcept {
  if (const int error = kernels::checkArguments(n, a, b, dst)) return error;
  kernels::active.add.of(n)(a, b, dst, n);
  return kStatusOk;
}

/// srcDst[i] += src[i].
inline int vecAddInPlace(const double* src, double* srcDst, int n) noexcept {
  return vecAdd(srcDst, src, srcDst, n);
}

/// dst[i] = src[i] + val; val 0 copies.
inline int vecAddConst(const double* src, double val, double* dst, int n) noexcept {
  if (const int error = kernels::checkArguments(n, src, dst)) return error;
  kernels::active.addConst.of(n)(src, val, dst, n);
  return kStatusOk;
}

/// srcDst[i] += val; val 0 does nothing.
inline int vecAddConstInPlace(double val, double* srcDst, int n) noexcept {
  return vecAddConst(srcDst, val, srcDst, n);
}

inline int vecAddConstInPlaceF(float val, float* srcDst, int n) noexcept {
  if (const int error = kernels::checkArguments(n, srcDst)) return error;
  kernels::active.addConstFloat.of(n)(srcDst, val, srcDst, n);
  return kStatusOk;
}

/// dst[i] = b[i] - a[i].
inline int vecSub(const double* a, const double* b, double* dst, int n) noexcept {
  if (const int error = kernels::checkArguments(n, a, b, dst)) return error;
  kernels::active.subtract.of(n)(a, b, dst, n);
  return kStatusOk;
}

/// srcDst[i] -= src[i].
inline int vecSubInPlace(const double* src, double* srcDst, int n) noexcept {
  return vecSub(src, srcDst, srcDst, n);
}

/// dst[i] = src[i] - val.
inline int vecSubConst(const double* src, double val, double* dst, int n) noexcept {
  return vecAddConst(src, -val, dst, n);
}

/// srcDst[i] -= val; val 0 does nothing.
inline int vecSubConstInPlace(double val, double* srcDst, int n) noexcept {
  return vecAddConst(srcDst, -val, srcDst, n);
}

/// srcDst[i] = val - srcDst[i].
inline int vecSubFromConstInPlace(double val, double* srcDst, int n) noexcept {
  if (const int error = kernels::checkArguments(n, srcDst)) return error;
  kernels::active.subtractFromConst.of(n)(srcDst, val, srcDst, n);
  return kStatusOk;
}

/// dst[i] = a[i] * b[i].
inline int vecMul(const double* a, const double* b, double* dst, int n) noexcept {
  if (const int error = kernels::checkArguments(n, a, b, dst)) return error;
  kernels::active.multiply.of(n)(a, b, dst, n);
  return kStatusOk;
}

inline int vecMulF(const float* a, const float* b, float* dst, int n) noexcept {
  if (const int error = kernels::checkArguments(n, a, b, dst)) return error;
  kernels::active.multiplyFloat.of(n)(a, b, dst, n);
  return kStatusOk;
}

/// srcDst[i] *= src[i].
inline int vecMulInPlace(const double* src, double* srcDst, int n) noexcept {
  return vecMul(srcDst, src, srcDst, n);
}

/// dst[i] = src[i] * val; val 1 copies, val 0 writes exact zeros, over NaN and infinities too.
inline int vecMulConst(const double* src, double val, double* dst, int n) noexcept {
  if (const int error = kernels::checkArguments(n, src, dst)) return error;
  kernels::active.scaleOrClear.of(n)(src, val, dst, n);
  return kStatusOk;
}

inline int vecMulConstF(const float* src, float val, float* dst, int n) noexcept {
  if (const int error = kernels::checkArguments(n, src, dst)) return error;
  kernels::active.scaleOrClearFloat.of(n)(src, val, dst, n);
  return kStatusOk;
}

/// srcDst[i] *= val; val 1 does nothing, val 0 writes exact zeros.
inline int vecMulConstInPlace(double val, double* srcDst, int n) noexcept {
  return vecMulConst(srcDst, val, srcDst, n);
}

/// dst[i] += a[i] * b[i]; the product is rounded before it is added.
inline int vecAddProduct(const double* a, const double* b, double* dst, int n) noexcept {
  if (const int error = kernels::checkArguments(n, a, b, dst)) return error;
  kernels::active.addProduct.of(n)(a, b, dst, n);
  return kStatusOk;
}

/// dst[i] += src[i] * val; val 0 leaves a dst as it is where src is finite.
inline int vecAddProductConst(const double* src, double val, double* dst, int n) noexcept {
  if (const int error = kernels::checkArguments(n, src, dst)) return error;
  kernels::active.addScaled.of(n)(src, val, dst, n);
  return kStatusOk;
}

inline int vecAddProductConstF(const float* src, float val, float* dst, int n) noexcept {
  if (const int error = kernels::checkArguments(n, src, dst)) return error;
  kernels::active.addScaledFloat.of(n)(src, val, dst, n);
  return kStatusOk;
}

/// srcDst[i] = srcDst[i] / src[i]; a zero divisor gives the IEEE result and a warning.
inline int vecDivInPlace(const double* src, double* srcDst, int n) noexcept {
  if (const int error = kernels::checkArguments(n, src, srcDst)) return error;
  return kernels::active.divide.of(n)(src, srcDst, n);
}

/// srcDst[i] *= 1 / val; val 0 is refused with kErrorZero.
inline int vecDivConstInPlace(double val, double* srcDst, int n) noexcept {
  if (const int error = kernels::checkArguments(n, srcDst)) return error;
  if (val == 0.0) return kErrorZero;
  kernels::active.scale.of(n)(srcDst, 1.0 / val, srcDst, n);
  return kStatusOk;
}

/// dst[i] = val / src[i], the constant over the vector.
inline int vecConstDivF(const float* src, float val, float* dst, int n) noexcept {
  if (const int error = kernels::checkArguments(n, src, dst)) return error;
  kernels::active.constDivFloat.of(n)(src, val, dst, n);
  return kStatusOk;
}

/// dst[i] = src[i] * src[i].
inline int vecSquare(const double* src, double* dst, int n) noexcept {
  return vecMul(src, src, dst, n);
}

inline int vecSquareInPlace(double* srcDst, int n) noexcept {
  return vecMul(srcDst, srcDst, srcDst, n);
}

/// srcDst[i] = sqrt(srcDst[i]); a negative element becomes NaN and gives a warning.
inline int vecSqrtInPlace(double* srcDst, int n) noexcept {
  if (const int error = kernels::checkArguments(n, srcDst)) return error;
  return kernels::active.squareRoot.of(n)(srcDst, n);
}

}  // namespace orvantesco
