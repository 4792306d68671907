#pragma once

#include <array>
#include <bit>
#include <cstdint>

#include "fx/VectorLength.h"
#include "mod/WaveRecord.h"

namespace orvantesco {

inline constexpr int kEntryMask = WaveRecord::kLength - 1;

/// Whether two values from 0 up have the same exponent.
inline bool inSameBinade(double a, double b) noexcept {
  const auto exponentOf = [](double x) { return std::bit_cast<std::uint64_t>(x) >> 52; };
  return exponentOf(a) == exponentOf(b);
}

/// Where a phase that meets no end is after each of 32 steps of inc.
///
/// The phase is the running sum, to the bit. Where all 32 sums have the same exponent, each is a
/// multiple of the same unit, so that every addition of inc is rounded by the same amount: what
/// it adds is one constant, and the products of that constant are exact. Then no sum has to wait
/// for the one before it. The exception is an inc that lies midway between two units: from a first
/// sum that is an odd multiple, two steps are rounded to different sides.
struct PhaseRun {
  double first;
  double step;
  double last;
  bool isEven;

  PhaseRun(double start, double inc) noexcept : first(start + inc) {
    const double second = first + inc;
    step = second - first;
    last = first + (kVectorLength - 1) * step;
    isEven = (second + inc) - second == step && inSameBinade(first, last);
  }
};

/// Places in a table of one cycle, 0..4095.
using WaveEntries = std::array<int, kVectorLength>;

/// What to do with a position to come to the entry of the table that is read.
struct EntryRule {
  int shift;
  int flip;  ///< all bits for a wave that runs backwards
  int of(double position) const noexcept {
    return ((static_cast<int>(position) + shift) & kEntryMask) ^ flip;
  }
};

inline constexpr std::array<double, kVectorLength> kCount = [] {
  std::array<double, kVectorLength> count{};
  for (std::size_t i = 0; i < count.size(); ++i) count[i] = static_cast<double>(i);
  return count;
}();

/// The entries that a phase (0..4096) passes in 32 steps of inc, at least 0, where it meets no end;
/// the phase moves on.
inline void passEntries(double inc, EntryRule rule, double& phase, WaveEntries& entries) noexcept {
  const PhaseRun run(phase, inc);
  if (run.isEven) {
    for (std::size_t i = 0; i < entries.size(); ++i) {
      entries[i] = rule.of(run.first + kCount[i] * run.step);
    }
    phase = run.last;
    return;
  }
  double position = phase;
  for (int& entry : entries) entry = rule.of(position += inc);
  phase = position;
}

}  // namespace orvantesco
