#pragma once

#include <memory>

#include "fx/BiquadDesign.h"
#include "fx/DirectDesign.h"
#include "fx/Kernels.h"

namespace orvantesco {

/// One recursive filter of the kernels with the storage it needs: a cascade of up to 12 sections
/// or a direct form of order up to 12. A new design keeps the filter's memory, so that a sweep
/// runs on; after each vector the memory is kept out of the denormal range.
///
/// Memory is taken by the constructor alone. Before the first design it passes its input.
class IirFilter {
 public:
  static constexpr int kMaxSections = 12;

  IirFilter();
  IirFilter(const IirFilter&) = delete;
  IirFilter& operator=(const IirFilter&) = delete;

  /// `sections` of them, 1..12. A b0 of exactly 0, which no cascade can hold, becomes 1e-20. Taps
  /// that are refused (a0 of 0, a count out of range) leave the design in force as it is.
  bool designCascade(const BiquadSection* sections, int count) noexcept;
  /// A Butterworth or Chebyshev filter in direct form. False, and the design in force stays, where
  /// the design is out of range.
  bool designDirect(const DirectDesign& design) noexcept;

  void clear() noexcept { iirSetDelayLine(state, nullptr); }

  /// n samples; `out` may be `in`.
  void process(const double* in, double* out, int n) noexcept;
  /// Two filters of one form side by side, in place: their chains of latencies overlap.
  static void processPair(IirFilter& first, double* firstInOut, IirFilter& second,
                          double* secondInOut, int n) noexcept;

  /// The delay line: two doubles a section, or as many as the order; zeros behind it.
  static constexpr int kMaxMemory = 2 * kMaxSections;
  void copyMemory(double* dst) const noexcept;

 private:
  struct Release {
    void operator()(void* storage) const noexcept { vecFree(storage); }
  };

  void flushDenormal() noexcept;

  std::unique_ptr<void, Release> storage;
  IirState* state = nullptr;
};

}  // namespace orvantesco
