#pragma once

#include "fx/kernels/KernelTable.h"
#include "fx/kernels/Status.h"

// Magnitudes, limits and the figures that are taken of a whole vector. An element is replaced
// only where a comparison says so, and comparisons with NaN are false: a NaN element stays.

namespace orvantesco {

/// dst[i] = |src[i]|.
inline int vecAbs(const double* src, double* dst, int n) noexcept {
  if (const int error = kernels::checkArguments(n, src, dst)) return error;
  kernels::active.absolute.of(n)(src, dst, n);
  return kStatusOk;
}

inline int vecAbsInPlace(double* srcDst, int n) noexcept { return vecAbs(srcDst, srcDst, n); }

/// srcDst[i] = max(srcDst[i], level).
inline int vecClampBelowInPlace(double* srcDst, int n, double level) noexcept {
  if (const int error = kernels::checkArguments(n, srcDst)) return error;
  kernels::active.clampBelow.of(n)(srcDst, level, srcDst, n);
  return kStatusOk;
}

/// srcDst[i] = min(srcDst[i], level).
inline int vecClampAboveInPlace(double* srcDst, int n, double level) noexcept {
  if (const int error = kernels::checkArguments(n, srcDst)) return error;
  kernels::active.clampAbove.of(n)(srcDst, level, srcDst, n);
  return kStatusOk;
}

/// An element below level becomes value; level itself stays.
inline int vecThresholdLowInPlace(double* srcDst, int n, double level, double value) noexcept {
  if (const int error = kernels::checkArguments(n, srcDst)) return error;
  kernels::active.thresholdLow.of(n)(srcDst, level, value, srcDst, n);
  return kStatusOk;
}

/// An element above level becomes value; level itself stays.
inline int vecThresholdHighInPlace(double* srcDst, int n, double level, double value) noexcept {
  if (const int error = kernels::checkArguments(n, srcDst)) return error;
  kernels::active.thresholdHigh.of(n)(srcDst, level, value, srcDst, n);
  return kStatusOk;
}

/// Both of the above in one pass, each element tested as it was; with levels 0 and 0 and values
/// -1 and 1 this is the sign. A levelLow above levelHigh is refused with kErrorThresholds.
// Two levels with a value each belong together. NOLINTNEXTLINE(readability-function-size)
inline int vecThresholdBothInPlace(double* srcDst, int n, double levelLow, double valueLow,
                                   double levelHigh, double valueHigh) noexcept {
  if (const int error = kernels::checkArguments(n, srcDst)) return error;
  if (levelLow > levelHigh) return kErrorThresholds;
  kernels::active.thresholdBoth.of(n)(srcDst, n, levelLow, valueLow, levelHigh, valueHigh);
  return kStatusOk;
}

/// srcDst[i] = min(src[i], srcDst[i]).
inline int vecMinEveryInPlace(const double* src, double* srcDst, int n) noexcept {
  if (const int error = kernels::checkArguments(n, src, srcDst)) return error;
  kernels::active.smaller.of(n)(src, srcDst, srcDst, n);
  return kStatusOk;
}

/// srcDst[i] = max(src[i], srcDst[i]).
inline int vecMaxEveryInPlace(const double* src, double* srcDst, int n) noexcept {
  if (const int error = kernels::checkArguments(n, src, srcDst)) return error;
  kernels::active.larger.of(n)(src, srcDst, srcDst, n);
  return kStatusOk;
}

/// *result = the largest |src[i]|; NaN elements are passed over (see vecStaysWithin).
inline int vecMaxAbs(const double* src, int n, double* result) noexcept {
  if (const int error = kernels::checkArguments(n, src, result)) return error;
  *result = kernels::active.maxAbs.of(n)(src, n);
  return kStatusOk;
}

/// *result = sum of src / n. The sum runs in 16 partial sums (element i in sum i mod 16) that are
/// then added in a fixed tree, at every processor level.
inline int vecMean(const double* src, int n, double* result) noexcept {
  if (const int error = kernels::checkArguments(n, src, result)) return error;
  *result = kernels::active.sum.of(n)(src, n) / n;
  return kStatusOk;
}

/// *result = sum of src, in float, with the partial sums of vecMean; hint is 0.
inline int vecSumF(const float* src, int n, float* result, int /*hint*/) noexcept {
  if (const int error = kernels::checkArguments(n, src, result)) return error;
  *result = kernels::active.sumFloat.of(n)(src, n);
  return kStatusOk;
}

/// Whether every |src[i]| is at most limit, false also for a NaN: the runaway test of the blocks.
/// True for a null or empty vector.
inline bool vecStaysWithin(const double* src, int n, double limit) noexcept {
  if (kernels::checkArguments(n, src)) return true;
  return kernels::active.staysWithin.of(n)(src, n, limit);
}

}  // namespace orvantesco
