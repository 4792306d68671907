#pragma once

#include "fx/kernels/KernelTable.h"
#include "fx/kernels/Status.h"

namespace orvantesco {

/// dst[i] = val.
inline int vecSet(double val, double* dst, int n) noexcept {
  if (const int error = kernels::checkArguments(n, dst)) return error;
  kernels::active.fill.of(n)(val, dst, n);
  return kStatusOk;
}

inline int vecZero(double* dst, int n) noexcept { return vecSet(0.0, dst, n); }

inline int vecZeroF(float* dst, int n) noexcept {
  if (const int error = kernels::checkArguments(n, dst)) return error;
  kernels::active.fillFloat.of(n)(0.0f, dst, n);
  return kStatusOk;
}

/// dst[i] = src[i]; the ranges must not overlap in part.
inline int vecCopy(const double* src, double* dst, int n) noexcept {
  if (const int error = kernels::checkArguments(n, src, dst)) return error;
  kernels::active.copy.of(n)(src, dst, n);
  return kStatusOk;
}

inline int vecCopyF(const float* src, float* dst, int n) noexcept {
  if (const int error = kernels::checkArguments(n, src, dst)) return error;
  kernels::active.copyFloat.of(n)(src, dst, n);
  return kStatusOk;
}

/// As vecCopy, for ranges that may overlap in either direction.
inline int vecMove(const double* src, double* dst, int n) noexcept {
  if (const int error = kernels::checkArguments(n, src, dst)) return error;
  kernels::active.move.of(n)(src, dst, n);
  return kStatusOk;
}

}  // namespace orvantesco
