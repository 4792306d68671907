#pragma once

#include "fx/kernels/IirState.h"
#include "fx/kernels/Wavefront.h"

namespace orvantesco::kernels {

/// Cascades of any number of sections.
template <class P>
struct IirCascadeBody {
  static void filter(const double* src, double* dst, int n, IirState& state) noexcept {
    const double* from = src;
    for (int done = 0; done < state.sections; from = dst) {
      IirBiquadGroup* group = state.groupAt(done / kIirGroupSections);
      const int left = state.sections - done;
      if (left == 1) {
        runLone(from, dst, n, *group);
        done += 1;
      } else if (left > kIirGroupSections && n >= kShortestForTwo) {
        runTwoGroups(from, dst, n, group, inGroup(left - kIirGroupSections));
        done += 2 * kIirGroupSections;
      } else {
        runGroup(from, dst, n, *group, inGroup(left));
        done += kIirGroupSections;
      }
    }
  }

  /// Both cascades have the same number of sections.
  static void filterPair(double* a, IirState& stateA, double* b, IirState& stateB, int n) noexcept {
    for (int done = 0; done < stateA.sections; done += kIirGroupSections) {
      IirBiquadGroup& groupA = *stateA.groupAt(done / kIirGroupSections);
      IirBiquadGroup& groupB = *stateB.groupAt(done / kIirGroupSections);
      const int left = stateA.sections - done;
      if (left == 1) {
        runLonePair(a, groupA, b, groupB, n);
      } else {
        runGroupPair({a, groupA, inGroup(left)}, {b, groupB, inGroup(left)}, n);
      }
    }
  }

  static void setDelayLine(IirState& state, const double* src) noexcept {
    const int known = src == nullptr ? 0 : state.sections;
    for (int i = 0; i < state.sections; i += P::kLanes) {
      const auto pairAt = [=](int k) __attribute__((always_inline)) {
        return k < known ? Pair::load(src + 2 * k) : Pair::of(0.0, 0.0);
      };
      const P even = P::join(pairAt(i), pairAt(i + 2));
      const P odd = P::join(pairAt(i + 1), pairAt(i + 3));
      IirBiquadGroup& group = *state.groupAt(i / kIirGroupSections);
      P::zipEven(even, odd).store(group.s1);
      P::zipOdd(even, odd).store(group.s2);
    }
  }

  static void getDelayLine(const IirState& state, double* dst) noexcept {
    for (int i = 0; i < state.sections; i += P::kLanes) {
      const IirBiquadGroup& group = *state.groupAt(i / kIirGroupSections);
      const P s1 = P::load(group.s1);
      const P s2 = P::load(group.s2);
      const P even = P::zipEven(s1, s2);
      const P odd = P::zipOdd(s1, s2);
      const auto storePair =
          [ =, last = state.sections ](int k, Pair pair) __attribute__((always_inline)) {
        if (k < last) pair.store(dst + 2 * k);
      };
      storePair(i, even.low());
      storePair(i + 1, odd.low());
      storePair(i + 2, even.high());
      storePair(i + 3, odd.high());
    }
  }

 private:
  using Pair = typename P::Pair;

  /// The way of a full group plus the two steps to the next: what one wave lies behind another.
  static constexpr int kLag = 2 * kIirGroupSections;
  /// From here on the second wave has all lanes at work before the first one's begin to rest.
  static constexpr int kShortestForTwo = kLag + 2 * (kIirGroupSections - 1);

  struct Channel {
    double* srcDst;
    IirBiquadGroup& group;
    int sections;
  };

  static int inGroup(int sectionsLeft) noexcept {
    return sectionsLeft < kIirGroupSections ? sectionsLeft : kIirGroupSections;
  }

  static void runLone(const double* src, double* dst, int n, IirBiquadGroup& group) noexcept {
    LoneSection<P> section(group);
    for (int i = 0; i < n; ++i) dst[i] = section.step(src[i]);
    section.keep();
  }

  static void runLonePair(double* a, IirBiquadGroup& groupA, double* b, IirBiquadGroup& groupB,
                          int n) noexcept {
    LoneSection<P> sectionA(groupA);
    LoneSection<P> sectionB(groupB);
    for (int i = 0; i < n; ++i) {
      a[i] = sectionA.step(a[i]);
      b[i] = sectionB.step(b[i]);
    }
    sectionA.keep();
    sectionB.keep();
  }

  static void runGroup(const double* src, double* dst, int n, IirBiquadGroup& group,
                       int sections) noexcept {
    Wavefront<P> wave(group, sections);
    const int skew = wave.skew;
    int t = 0;
    for (; t < skew; ++t) wave.edge(src, dst, t, n);
    for (; t < n; ++t) wave.step(src, dst, t);
    for (; t < n + skew; ++t) wave.edge(src, dst, t, n);
    wave.keep();
  }

  static void runGroupPair(const Channel& a, const Channel& b, int n) noexcept {
    Wavefront<P> waveA(a.group, a.sections);
    Wavefront<P> waveB(b.group, b.sections);
    const int skew = waveA.skew;
    const auto edges = [&](int t) __attribute__((always_inline)) {
      waveA.edge(a.srcDst, a.srcDst, t, n);
      waveB.edge(b.srcDst, b.srcDst, t, n);
    };
    int t = 0;
    for (; t < skew; ++t) edges(t);
    for (; t < n; ++t) {
      waveA.step(a.srcDst, a.srcDst, t);
      waveB.step(b.srcDst, b.srcDst, t);
    }
    for (; t < n + skew; ++t) edges(t);
    waveA.keep();
    waveB.keep();
  }

  /// A full group and the next one, kLag steps behind it on what it left in dst.
  static void runTwoGroups(const double* src, double* dst, int n, IirBiquadGroup* groups,
                           int sectionsOfSecond) noexcept {
    Wavefront<P> first(groups[0], kIirGroupSections);
    Wavefront<P> second(groups[1], sectionsOfSecond);
    const auto firstEdge = [&](int t) __attribute__((always_inline)) {
      first.edge(src, dst, t, n);
    };
    const auto firstStep = [&](int t) __attribute__((always_inline)) { first.step(src, dst, t); };
    const auto secondEdge = [&](int t) __attribute__((always_inline)) {
      second.edge(dst, dst, t - kLag, n);
    };
    const auto secondStep = [&](int t) __attribute__((always_inline)) {
      second.step(dst, dst, t - kLag);
    };
    int t = 0;
    for (; t < first.skew; ++t) firstEdge(t);
    for (; t < kLag; ++t) firstStep(t);
    for (; t < kLag + second.skew; ++t) firstStep(t), secondEdge(t);
    for (; t < n; ++t) firstStep(t), secondStep(t);
    for (; t < n + first.skew; ++t) firstEdge(t), secondStep(t);
    for (; t < n + kLag; ++t) secondStep(t);
    for (; t < n + kLag + second.skew; ++t) secondEdge(t);
    first.keep();
    second.keep();
  }
};

}  // namespace orvantesco::kernels
