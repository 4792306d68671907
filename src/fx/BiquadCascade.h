#pragma once

#include "fx/BiquadDesign.h"
#include "fx/Lanes.h"
#include "fx/VectorLength.h"

namespace orvantesco {

/// Second-order sections in sequence over vectors of exactly 32 samples: what a sweepable filter
/// runs. The memory is that of the transposed direct form II,
///
///     y = b0 x + p,   p' = q + c1 x - a1 p,   q' = c2 x - a2 p,   ck = bk - ak b0,
///
/// but four samples are taken at once, with the recursion solved ahead (C. Burrus, "Block
/// realization of digital filters", 1972): only one product and two sums per four samples wait
/// for the memory, where the plain form waits for three operations in each sample. That differs
/// from the plain form by roundings, a few 1e-16 of its memory, and by as much in its poles.
///
/// Before the first design it passes its input. For signals cut at other places use the kernels'
/// filters, whose bits do not depend on the cut.
class BiquadCascade {
 public:
  static constexpr int kMaxSections = 12;
  /// Sections that may differ; the others repeat them in turn.
  static constexpr int kMaxDistinct = 3;

  /// `count` (1..12) sections, repeating the `distinct` (1..3) given ones. The memory stays.
  void design(const BiquadSection* sections, int distinct, int count) noexcept;
  void clear() noexcept;

  /// One vector; `out` may be `in`, and must not overlap it otherwise.
  void process(const double* in, double* out) noexcept;

 private:
  /// Three pairs of lanes: outputs 0 and 1, outputs 2 and 3, and the next memory p, q.
  struct Rows {
    Lanes first{};
    Lanes second{};
    Lanes memory{};
  };
  /// What each of the four inputs and of the two memories adds to all of them.
  struct Section {
    Rows fromInput[4];
    Rows fromP;
    Rows fromQ;
  };

  static Rows delayed(const double* y, Lanes memory, int delay) noexcept;
  static Section solved(const BiquadSection& section) noexcept;
  static Lanes run(const Section& section, Lanes memory, const double* in, double* out) noexcept;

  Section distinctSections[kMaxDistinct];
  int distinctCount = 1;
  int sectionCount = 0;
  Lanes memories[kMaxSections] = {};
};

}  // namespace orvantesco
