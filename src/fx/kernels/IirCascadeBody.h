#pragma once

#include "fx/kernels/IirState.h"
#include "fx/kernels/PackLoop.h"

namespace orvantesco::kernels {

/// The places of the lanes in a group, to compare with.
inline constexpr double kLaneIndex[kIirGroupSections] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};

/// A group of sections, each in its lane, as a wavefront: at step t lane j works on sample t - j,
/// its input being what lane j - 1 gave at step t - 1. So all sections run at once, and each does
/// with each sample exactly what it would do alone.
template <class P, int sections>
struct Wavefront {
  static constexpr int kPacks = (sections + P::kLanes - 1) / P::kLanes;
  static constexpr int kSkew = sections - 1;  ///< steps from an input to its output

  explicit Wavefront(const IirBiquadGroup& group) noexcept {
    unrolled<kPacks>([&](int g) __attribute__((always_inline)) {
      const int at = g * P::kLanes;
      b0[g] = P::load(group.b0 + at);
      b1[g] = P::load(group.b1 + at);
      b2[g] = P::load(group.b2 + at);
      a1[g] = P::load(group.a1 + at);
      a2[g] = P::load(group.a2 + at);
      s1[g] = P::load(group.s1 + at);
      s2[g] = P::load(group.s2 + at);
      y[g] = P::all(0.0);
    });
  }

  void keep(IirBiquadGroup& group) const noexcept {
    unrolled<kPacks>([&](int g) __attribute__((always_inline)) {
      s1[g].store(group.s1 + g * P::kLanes);
      s2[g].store(group.s2 + g * P::kLanes);
    });
  }

  /// One step with all lanes at work.
  [[gnu::always_inline]] void step(double x) noexcept {
    advance(
        x, [](int, P next, P) __attribute__((always_inline)) { return next; });
  }

  /// One step at the ends of the vector: only lanes with a sample t - j inside 0..n-1 move on.
  [[gnu::always_inline]] void stepAtEdge(double x, int t, int n) noexcept {
    const P last = P::all(t);
    const P beforeFirst = P::all(t - n);
    advance(
        x, [&](int g, P next, P now) __attribute__((always_inline)) {
          const P lane = P::load(kLaneIndex + g * P::kLanes);
          const P active = P::both(P::atMost(lane, last), P::below(beforeFirst, lane));
          return P::select(active, next, now);
        });
  }

  [[gnu::always_inline]] double output() const noexcept {
    return y[kPacks - 1].template get<kSkew % P::kLanes>();
  }

 private:
  /// From the last pack to the first, since each takes what its neighbour gave one step before.
  template <class Settle>
  [[gnu::always_inline]] void advance(double x, Settle settle) noexcept {
    unrolled<kPacks>([&](int reverse) __attribute__((always_inline)) {
      const int g = kPacks - 1 - reverse;
      const P first = g == 0 ? P::all(x) : P::lastToFirst(y[(g + kPacks - 1) % kPacks]);
      const P in = P::shiftUp(y[g], first);
      y[g] = b0[g] * in + s1[g];
      s1[g] = settle(g, (s2[g] + b1[g] * in) - a1[g] * y[g], s1[g]);
      s2[g] = settle(g, b2[g] * in - a2[g] * y[g], s2[g]);
    });
  }

  P b0[kPacks], b1[kPacks], b2[kPacks], a1[kPacks], a2[kPacks];
  P s1[kPacks], s2[kPacks], y[kPacks];
};

/// One section alone: nothing to run beside it, so plain numbers.
template <class P>
struct LoneSection {
  explicit LoneSection(const IirBiquadGroup& group) noexcept
      : b0(group.b0[0]),
        b1(group.b1[0]),
        b2(group.b2[0]),
        a1(group.a1[0]),
        a2(group.a2[0]),
        s1(group.s1[0]),
        s2(group.s2[0]) {}

  [[gnu::always_inline]] double step(double x) noexcept {
    const double y = b0 * x + s1;
    s1 = (s2 + b1 * x) - a1 * y;
    s2 = b2 * x - a2 * y;
    return y;
  }

  void keep(IirBiquadGroup& group) const noexcept {
    group.s1[0] = s1;
    group.s2[0] = s2;
  }

  double b0, b1, b2, a1, a2;
  double s1, s2;
};

template <class P>
struct IirCascadeBody {
  static void filter(const double* src, double* dst, int n, IirState& state) noexcept {
    const double* from = src;
    for (int done = 0; done < state.sections; done += kIirGroupSections) {
      runGroup(from, dst, n, *state.groupAt(done / kIirGroupSections), state.sections - done);
      from = dst;
    }
  }

  /// Both cascades have the same number of sections.
  static void filterPair(double* a, IirState& stateA, double* b, IirState& stateB, int n) noexcept {
    for (int done = 0; done < stateA.sections; done += kIirGroupSections) {
      const int g = done / kIirGroupSections;
      runGroupPair({a, stateA.groupAt(g)}, {b, stateB.groupAt(g)}, n, stateA.sections - done);
    }
  }

  static void setDelayLine(IirState& state, const double* src) noexcept {
    const int length = src == nullptr ? 0 : state.sections * 2;
    for (int done = 0; done < state.sections; done += P::kLanes) {
      const auto element = [=](int k) __attribute__((always_inline)) {
        return done * 2 + k < length ? src[done * 2 + k] : 0.0;
      };
      IirBiquadGroup& group = *state.groupAt(done / kIirGroupSections);
      const int lane = done % kIirGroupSections;
      P::of(element(0), element(2), element(4), element(6)).store(group.s1 + lane);
      P::of(element(1), element(3), element(5), element(7)).store(group.s2 + lane);
    }
  }

 private:
  struct Channel {
    double* srcDst;
    IirBiquadGroup* group;
  };

  static void runGroup(const double* src, double* dst, int n, IirBiquadGroup& group,
                       int sections) noexcept {
    using Run = void (*)(const double*, double*, int, IirBiquadGroup&) noexcept;
    static constexpr Run kRuns[kIirGroupSections] = {runLone, run<2>,  run<3>,  run<4>,
                                                     run<5>,  run<6>,  run<7>,  run<8>,
                                                     run<9>,  run<10>, run<11>, run<12>};
    const int count = sections < kIirGroupSections ? sections : kIirGroupSections;
    kRuns[count - 1](src, dst, n, group);
  }

  static void runGroupPair(Channel a, Channel b, int n, int sections) noexcept {
    using Run = void (*)(Channel, Channel, int) noexcept;
    static constexpr Run kRuns[kIirGroupSections] = {
        runLonePair, runPair<2>, runPair<3>, runPair<4>,  runPair<5>,  runPair<6>,
        runPair<7>,  runPair<8>, runPair<9>, runPair<10>, runPair<11>, runPair<12>};
    const int count = sections < kIirGroupSections ? sections : kIirGroupSections;
    kRuns[count - 1](a, b, n);
  }

  static void runLone(const double* src, double* dst, int n, IirBiquadGroup& group) noexcept {
    LoneSection<P> section(group);
    for (int i = 0; i < n; ++i) dst[i] = section.step(src[i]);
    section.keep(group);
  }

  static void runLonePair(Channel a, Channel b, int n) noexcept {
    LoneSection<P> sectionA(*a.group);
    LoneSection<P> sectionB(*b.group);
    for (int i = 0; i < n; ++i) {
      a.srcDst[i] = sectionA.step(a.srcDst[i]);
      b.srcDst[i] = sectionB.step(b.srcDst[i]);
    }
    sectionA.keep(*a.group);
    sectionB.keep(*b.group);
  }

  template <int sections>
  static void run(const double* src, double* dst, int n, IirBiquadGroup& group) noexcept {
    using Wave = Wavefront<P, sections>;
    Wave wave(group);
    for (int t = 0; t < n + Wave::kSkew; ++t) {
      const double x = t < n ? src[t] : 0.0;
      if (t >= Wave::kSkew && t < n) {
        wave.step(x);
      } else {
        wave.stepAtEdge(x, t, n);
      }
      if (t >= Wave::kSkew) dst[t - Wave::kSkew] = wave.output();
    }
    wave.keep(group);
  }

  template <int sections>
  static void runPair(Channel a, Channel b, int n) noexcept {
    run<sections>(a.srcDst, a.srcDst, n, *a.group);
    run<sections>(b.srcDst, b.srcDst, n, *b.group);
  }
};

}  // namespace orvantesco::kernels
