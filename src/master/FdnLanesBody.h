#pragma once

#include "master/FdnLanes.h"

namespace orvantesco {

// Vectors that a loop fills are not cleared before.
// NOLINTBEGIN(cppcoreguidelines-pro-type-member-init)

/// The operation of FdnLanes.h over the vectors of one processor level. `Lanes` names its pack of
/// floats and turns rows of samples into columns, one for each sample, and back.
template <class Lanes>
struct FdnLanesBody {
  using Floats = typename Lanes::Floats;
  static constexpr int kWidth = Floats::kLanes;
  using Rows = float[FdnVector::kMaxLines][kVectorLength];

  static constexpr float kLimit = 1e8F;

  /// Recursions of kWidth lines over kWidth samples from `at` on.
  [[gnu::always_inline]] static void damp(FdnVector& v, int line, int at, Rows& rows) noexcept {
    Floats columns[kWidth];
    Lanes::loadColumns(v.now + line, at, columns);
    runDamping(v, line, columns);
    Lanes::storeColumns(columns, rows + line, at);
  }

  [[gnu::always_inline]] static void interpolateAndDamp(FdnVector& v, int line, int at,
                                                        Rows& rows) noexcept {
    Floats columns[kWidth];
    Floats later[kWidth];
    Lanes::loadColumns(v.now + line, at, columns);
    Lanes::loadColumns(v.next + line, at, later);
    Floats y = Floats::load(v.allPassState + line);
    Floats f = Floats::load((at > v.tick ? v.fractionFrom : v.fractionBefore) + line);
    const int turn = v.tick - at;
#pragma GCC unroll 8
    for (int k = 0; k < kWidth; ++k) {
      if (k == turn) f = Floats::load(v.fractionFrom + line);
      y = columns[k] + (later[k] - y) * f;
      columns[k] = y;
    }
    y.store(v.allPassState + line);
    runDamping(v, line, columns);
    Lanes::storeColumns(columns, rows + line, at);
  }

  [[gnu::always_inline]] static void runDamping(FdnVector& v, int line,
                                                Floats (&columns)[kWidth]) noexcept {
    const Floats gain = Floats::load(v.gain + line);
    const Floats coefficient = Floats::load(v.coefficient + line);
    Floats z = Floats::load(v.dampingState + line);
#pragma GCC unroll 8
    for (int k = 0; k < kWidth; ++k) {
      z = gain * columns[k] - coefficient * z;
      columns[k] = z;
    }
    z.store(v.dampingState + line);
  }

  struct Sums {
    Floats left, right, all;

    /// Lines i and i + 1, the right side with one sign.
    [[gnu::always_inline]] void add(const Rows& rows, int i, int at, bool rightIsPlus) noexcept {
      const Floats even = Floats::load(rows[i] + at);
      const Floats odd = Floats::load(rows[i + 1] + at);
      left = (left + even) - odd;
      right = rightIsPlus ? (right + even) + odd : (right - even) - odd;
      all = (all + even) + odd;
    }
  };

  /// Outputs and line inputs of kWidth samples from `at` on.
  [[gnu::always_inline]] static void mix(const FdnVector& v, const Rows& rows, int at) noexcept {
    const Floats zero = Floats::all(0.0F);
    Sums sums{zero, zero, zero};
    for (int i = 0; i < v.lines; i += 4) {
      sums.add(rows, i, at, true);
      if (i + 2 < v.lines) sums.add(rows, i + 2, at, false);
    }
    sums.left.store(v.left + at);
    sums.right.store(v.right + at);
    const Floats s = Floats::all(v.scale) * sums.all;
    const Floats feed = Floats::load(v.feed + at);
    const auto give = [&](int from, int to) {
      held((Floats::load(rows[from] + at) + s) + feed).store(v.to[to] + at);
    };
    for (int i = 1; i < v.lines; ++i) give(i, i - 1);
    give(0, v.lines - 1);
  }

  [[gnu::always_inline]] static Floats held(Floats x) noexcept {
    return Lanes::smaller(Lanes::larger(x, Floats::all(-kLimit)), Floats::all(kLimit));
  }

  static void run(FdnVector& v) noexcept {
    alignas(64) Rows rows;
    for (int at = 0; at < kVectorLength; at += kWidth) {
      int line = 0;
      for (; line < v.modulated; line += kWidth) interpolateAndDamp(v, line, at, rows);
      for (; line < v.lines; line += kWidth) damp(v, line, at, rows);
    }
    for (int at = 0; at < kVectorLength; at += kWidth) mix(v, rows, at);
  }
};

// NOLINTEND(cppcoreguidelines-pro-type-member-init)

}  // namespace orvantesco
