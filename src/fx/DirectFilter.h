#pragma once

#include <memory>

#include "fx/DirectDesign.h"
#include "fx/Kernels.h"

namespace orvantesco {

/// One recursive filter of the kernels in direct form, with the storage it needs. A new design
/// keeps the memory, so that a sweep runs on; after each call the memory is kept out of the
/// denormal range.
///
/// Memory is taken by the constructor alone. Before the first design it passes its input. For
/// second-order sections use `BiquadCascade`.
class DirectFilter {
 public:
  DirectFilter();
  DirectFilter(const DirectFilter&) = delete;
  DirectFilter& operator=(const DirectFilter&) = delete;

  /// False, and the design in force stays, where the design is out of range.
  bool design(const DirectDesign& design) noexcept;
  void clear() noexcept { iirSetDelayLine(state, nullptr); }

  /// n samples; `out` may be `in`.
  void process(const double* in, double* out, int n) noexcept;
  /// A filter and the samples it works on, in place.
  struct Channel {
    DirectFilter& filter;
    double* buffer;
  };
  /// n samples through each of two filters, side by side: with filters of one order their chains
  /// of latencies overlap.
  static void processPair(Channel first, Channel second, int n) noexcept;

 private:
  struct Release {
    void operator()(void* block) const noexcept { vecFree(block); }
  };

  void flushDenormal() noexcept;

  std::unique_ptr<void, Release> storage;
  IirState* state = nullptr;
};

}  // namespace orvantesco
