#pragma once

#include "fx/kernels/IirState.h"
#include "fx/kernels/PackLoop.h"

namespace orvantesco::kernels {

/// Up to four sections, each in its lane, as a wavefront: at step t lane j works on sample t - 2j,
/// its input being what lane j - 1 gave two steps before. All sections run at once, and each does
/// with each sample exactly what it would do alone. Two steps and not one, so that the way from
/// lane to lane is over when the result is needed.
template <class P>
class Wavefront {
 public:
  Wavefront(IirBiquadGroup& groupToRun, int sections) noexcept
      : skew(2 * (sections - 1)), group(groupToRun) {
    static_assert(P::kLanes == kIirGroupSections);
    b0 = P::load(group.b0);
    b1 = P::load(group.b1);
    b2 = P::load(group.b2);
    a1 = P::load(group.a1);
    a2 = P::load(group.a2);
    s1 = P::load(group.s1);
    s2 = P::load(group.s2);
    y = yBefore = P::all(0.0);
  }

  void keep() const noexcept {
    s1.store(group.s1);
    s2.store(group.s2);
  }

  /// One step with all lanes at work: takes src[t], gives dst[t - skew].
  [[gnu::always_inline]] void step(const double* src, double* dst, int t) noexcept {
    advance(
        P::all(src[t]), [](P next, P) __attribute__((always_inline)) { return next; });
    give(dst, t);
  }

  /// One step at an end of the vector of n: only lanes with a sample inside it move on.
  [[gnu::always_inline]] void edge(const double* src, double* dst, int t, int n) noexcept {
    const int begun = t / 2 < P::kLanes ? t / 2 + 1 : P::kLanes;
    const int done = t < n ? 0 : (t - n) / 2 + 1;
    const P active = P::both(P::loadMask(kActive + P::kLanes - begun),
                             P::loadMask(kActive + 2 * P::kLanes - done));
    advance(
        P::all(t < n ? src[t] : 0.0), [=](P next, P now) __attribute__((always_inline)) {
          return P::select(active, next, now);
        });
    if (t >= skew) give(dst, t);
  }

  const int skew;

 private:
  static constexpr long long kActive[3 * kIirGroupSections] = {-1, -1, -1, -1, 0,  0,
                                                               0,  0,  -1, -1, -1, -1};

  template <class Settle>
  [[gnu::always_inline]] void advance(P x, Settle settle) noexcept {
    const P in = P::shiftUp(yBefore, x);
    yBefore = y;
    y = b0 * in + s1;
    s1 = settle((s2 + b1 * in) - a1 * y, s1);
    s2 = settle(b2 * in - a2 * y, s2);
  }

  /// By way of memory, since the last section's lane is known only at run time.
  [[gnu::always_inline]] void give(double* dst, int t) noexcept {
    alignas(32) double outputs[P::kLanes];
    y.store(outputs);
    dst[t - skew] = outputs[skew / 2];
  }

  IirBiquadGroup& group;
  P b0, b1, b2, a1, a2;
  P s1, s2, y, yBefore;
};

/// One section alone: nothing to run beside it, so plain numbers.
template <class P>
class LoneSection {
 public:
  explicit LoneSection(IirBiquadGroup& groupToRun) noexcept
      : group(groupToRun),
        b0(group.b0[0]),
        b1(group.b1[0]),
        b2(group.b2[0]),
        a1(group.a1[0]),
        a2(group.a2[0]),
        s1(group.s1[0]),
        s2(group.s2[0]) {}

  void keep() const noexcept {
    group.s1[0] = s1;
    group.s2[0] = s2;
  }

  [[gnu::always_inline]] double step(double x) noexcept {
    const double y = b0 * x + s1;
    s1 = (s2 + b1 * x) - a1 * y;
    s2 = b2 * x - a2 * y;
    return y;
  }

 private:
  IirBiquadGroup& group;
  double b0, b1, b2, a1, a2;
  double s1, s2;
};

}  // namespace orvantesco::kernels
