#pragma once

#include "fx/BiquadDesign.h"
#include "fx/Kernels.h"
#include "fx/kernels/IirState.h"

namespace orvantesco {

/// Up to eight second-order sections that are all alike, in sequence, run by the kernels' cascade:
/// four sections of a chain work side by side, which pays from about four on. For fewer sections,
/// or different ones, use `BiquadCascade`.
///
/// A new design keeps the memory, so that a sweep runs on. Before the first one it passes its
/// input. After each vector the memory is kept out of the denormal range. Audio thread.
class SectionChain {
 public:
  static constexpr int kMaxSections = 8;

  SectionChain() = default;
  SectionChain(const SectionChain&) = delete;
  SectionChain& operator=(const SectionChain&) = delete;

  /// `count` (1..8) times the section, whose b0 and a0 must not be 0: the design in force stays
  /// then.
  void design(const BiquadSection& section, int count) noexcept;
  void clear() noexcept { iirSetDelayLine(state, nullptr); }

  /// One vector of 32; `out` may be `in`.
  void process(const double* in, double* out) noexcept;

 private:
  static constexpr int kGroups = kMaxSections / kIirGroupSections;

  void flushDenormals() noexcept;

  alignas(IirState) unsigned char storage[sizeof(IirState) + kGroups * sizeof(IirBiquadGroup)] = {};
  IirState* state = nullptr;
};

}  // namespace orvantesco
