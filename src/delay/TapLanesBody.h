#pragma once

#include "delay/TapLanes.h"

namespace orvantesco {

// Each group's constructor fills its lanes by a loop, and its spare vector is only ever written.
// NOLINTBEGIN(cppcoreguidelines-pro-type-member-init)

/// The loops of TapLanes over the vectors of one processor level. `Lanes` names its pack of
/// doubles (`Doubles`, see fx/kernels/PackScalar.h) and turns samples of several sources into
/// packs and back (see TapLanesScalar.cpp).
template <class Lanes>
struct TapLanesBody {
  using Doubles = typename Lanes::Doubles;
  static constexpr int kWidth = Doubles::kLanes;

  /// Taps `first`... of a list, one a lane; past its end the last tap again, into a spare vector.
  template <class Tap>
  struct Group {
    const Tap* taps[kWidth];
    double* outputs[kWidth];
    alignas(64) double spare[kVectorLength];

    Group(const Tap* list, int count, int first) noexcept {
#pragma GCC unroll 4
      for (int k = 0; k < kWidth; ++k) {
        const bool isTap = first + k < count;
        taps[k] = list + (isTap ? first + k : count - 1);
        outputs[k] = isTap ? taps[k]->output : spare;
      }
    }

    Doubles gather(double Tap::*member) const noexcept {
      double values[kWidth];
#pragma GCC unroll 4
      for (int k = 0; k < kWidth; ++k) values[k] = taps[k]->*member;
      return Doubles::load(values);
    }

    void gather(const double* Tap::*member, const double* (&pointers)[kWidth]) const noexcept {
#pragma GCC unroll 4
      for (int k = 0; k < kWidth; ++k) pointers[k] = taps[k]->*member;
    }
  };

  /// The recursion of a settled group, apart from its pointers so that it stays in registers.
  struct SettledState {
    Doubles c, y, before;

    [[gnu::always_inline]] Doubles step(Doubles now) noexcept {
      y = (c * now + before) - c * y;
      before = now;
      return y;
    }
  };

  struct SettledGroup : Group<SettledTap> {
    const double* samples[kWidth];

    SettledGroup(const SettledTap* list, int count, int first) noexcept
        : Group<SettledTap>(list, count, first) {
      this->gather(&SettledTap::samples, samples);
    }

    SettledState state() const noexcept {
      double values[kWidth];
#pragma GCC unroll 4
      for (int k = 0; k < kWidth; ++k) values[k] = samples[k][0];
      return {this->gather(&SettledTap::coefficient), this->gather(&SettledTap::memory),
              Doubles::load(values)};
    }

    /// kWidth samples of every tap, from sample i on.
    [[gnu::always_inline]] void advance(SettledState& state, int i) const noexcept {
      Doubles rows[kWidth];
      Lanes::loadRows(samples, i + 1, rows);
#pragma GCC unroll 4
      for (int j = 0; j < kWidth; ++j) rows[j] = state.step(rows[j]);
      Lanes::storeRows(rows, this->outputs, i);
    }
  };

  /// The recursion of a moving group. The delay is carried with its sign turned, which is exact,
  /// so that its whole part is the offset of a load.
  struct MovingState {
    Doubles start, pull, y;

    [[gnu::always_inline]] Doubles step(const double* const (&newest)[kWidth], int i,
                                        const TapGlide& glide) noexcept {
      const Doubles one = Doubles::all(1.0);
      const Doubles d = Doubles::all(glide.powers[i]) * start + pull * Doubles::all(glide.sums[i]);
      int whole[kWidth];
      const Doubles f = d - Lanes::truncate(d, whole);
      const Doubles c = (one + f) / (one - f);
      const double* pairs[kWidth];
#pragma GCC unroll 4
      for (int k = 0; k < kWidth; ++k) pairs[k] = newest[k] + i + whole[k];
      Doubles before, now;
      Lanes::loadPairs(pairs, before, now);
      y = (c * now + before) - c * y;
      return y;
    }
  };

  struct MovingGroup : Group<MovingTap> {
    const double* newest[kWidth];

    MovingGroup(const MovingTap* list, int count, int first) noexcept
        : Group<MovingTap>(list, count, first) {
      this->gather(&MovingTap::newest, newest);
    }

    MovingState state() const noexcept {
      const Doubles minus = Doubles::all(-1.0);
      return {minus * this->gather(&MovingTap::start), minus * this->gather(&MovingTap::pull),
              this->gather(&MovingTap::memory)};
    }

    [[gnu::always_inline]] void advance(MovingState& state, int i,
                                        const TapGlide& glide) const noexcept {
      Doubles rows[kWidth];
#pragma GCC unroll 4
      for (int j = 0; j < kWidth; ++j) rows[j] = state.step(newest, i + j, glide);
      Lanes::storeRows(rows, this->outputs, i);
    }
  };

  /// Four groups in turn: while one waits for its recursion the others work.
  static void readSettledFour(const SettledTap* taps, int count, int first) noexcept {
    const SettledGroup a(taps, count, first);
    const SettledGroup b(taps, count, first + kWidth);
    const SettledGroup c(taps, count, first + 2 * kWidth);
    const SettledGroup d(taps, count, first + 3 * kWidth);
    SettledState stateA = a.state();
    SettledState stateB = b.state();
    SettledState stateC = c.state();
    SettledState stateD = d.state();
    for (int i = 0; i < kVectorLength; i += kWidth) {
      a.advance(stateA, i);
      b.advance(stateB, i);
      c.advance(stateC, i);
      d.advance(stateD, i);
    }
  }

  static void readSettledTwo(const SettledTap* taps, int count, int first) noexcept {
    const SettledGroup a(taps, count, first);
    const SettledGroup b(taps, count, first + kWidth);
    SettledState stateA = a.state();
    SettledState stateB = b.state();
    for (int i = 0; i < kVectorLength; i += kWidth) {
      a.advance(stateA, i);
      b.advance(stateB, i);
    }
  }

  static void readSettledOne(const SettledTap* taps, int count, int first) noexcept {
    const SettledGroup group(taps, count, first);
    SettledState state = group.state();
    for (int i = 0; i < kVectorLength; i += kWidth) group.advance(state, i);
  }

  static void readSettled(const SettledTap* taps, int count) noexcept {
    int first = 0;
    for (; count - first > 3 * kWidth; first += 4 * kWidth) readSettledFour(taps, count, first);
    for (; count - first > kWidth; first += 2 * kWidth) readSettledTwo(taps, count, first);
    if (first < count) readSettledOne(taps, count, first);
  }

  static void readMoving(const MovingTap* taps, int count, const TapGlide& glide) noexcept {
    for (int first = 0; first < count; first += kWidth) {
      const MovingGroup group(taps, count, first);
      MovingState state = group.state();
      for (int i = 0; i < kVectorLength; i += kWidth) group.advance(state, i, glide);
    }
  }

  /// Eight packs at a time: what stays in registers while the rows pass by.
  static void addRows(const EchoRow* rows, int count, double* samples) noexcept {
    constexpr int kPacks = 8;
    for (int at = 0; at < kVectorLength; at += kPacks * kWidth) {
      Doubles sums[kPacks];
#pragma GCC unroll 8
      for (int k = 0; k < kPacks; ++k) sums[k] = Doubles::load(samples + at + k * kWidth);
      for (int r = 0; r < count; ++r) {
        const double* const row = rows[r].samples + at;
        const Doubles gain = Doubles::all(rows[r].gain);
#pragma GCC unroll 8
        for (int k = 0; k < kPacks; ++k) sums[k] = sums[k] + Doubles::load(row + k * kWidth) * gain;
      }
#pragma GCC unroll 8
      for (int k = 0; k < kPacks; ++k) sums[k].store(samples + at + k * kWidth);
    }
  }
};

// NOLINTEND(cppcoreguidelines-pro-type-member-init)

}  // namespace orvantesco
