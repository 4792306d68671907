#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <map>
#include <memory>

#include "fx/DSPShell.h"
#include "fx/FxTestSupport.h"

namespace orvantesco::testing_support {

/// What a modulator adds to a control in each vector, depth included.
using Modulation = std::function<double(int)>;
using Modulations = std::map<int, Modulation>;

/// A block with the modulation vectors that it reads.
class ModulatedBlock {
 public:
  ModulatedBlock(DSPShell& shell, Modulations all) : block(shell), modulations(std::move(all)) {
    for (const auto& [control, modulation] : modulations) {
      block.setModSource(control, &sources[control * 32]);
      block.setModDepth(control, &kDepth);
    }
  }

  void process(double* in, double* out) {
    for (const auto& [control, modulation] : modulations) {
      sources[control * 32] = modulation(vector) / kDepth;
    }
    ++vector;
    block.process(in, out);
  }

 private:
  static constexpr double kDepth = 0.5;

  DSPShell& block;
  Modulations modulations;
  double sources[DSPShell::kControlCount * 32] = {};
  int vector = 0;
};

inline double valueOf(const Modulations& modulations, int control, int vector) {
  const auto found = modulations.find(control);
  return found == modulations.end() ? 0.0 : found->second(vector);
}

/// Builds a block with all parameters set.
using Maker = std::function<std::unique_ptr<DSPShell>()>;

/// After a change of rate a block is as one built at that rate, its modulation included.
inline void expectFreshAfterRateChange(const Maker& make) {
  const Modulations modulations{{0, [](int v) { return 0.1 * std::sin(0.1 * v); }}};
  const auto kept = make();
  ModulatedBlock keptRun(*kept, modulations);
  run(keptRun, noise(101));
  ScopedRate scope(96000.0);
  kept->rateChanged();
  kept->reset();
  ModulatedBlock again(*kept, modulations);
  const auto fresh = make();
  ModulatedBlock freshRun(*fresh, modulations);
  const Signal in = noise(150, 9);
  EXPECT_TRUE(run(again, in) == run(freshRun, in));
}

/// In place and out of place, one channel or two: the left samples are the same.
inline void expectOneResultFromEveryCall(const Maker& make) {
  const auto apart = make(), inPlace = make(), pair = make();
  const Signal in = noise(40);
  const Signal expected = run(*apart, in);
  Signal left = in, right = noise(40, 3), outL(in.size()), outR(in.size(), 0.0);
  const Signal rightBefore = right;
  for (size_t at = 0; at < in.size(); at += kVectorLength) {
    pair->process(&left[at], &right[at], &outL[at], &outR[at]);
    inPlace->process(&left[at], nullptr);
  }
  EXPECT_TRUE(left == expected);
  EXPECT_TRUE(outL == expected);
  EXPECT_TRUE(right == rightBefore);
}

/// Switched off it writes nothing; switched on again it is silent in silence.
inline void expectNoTailAfterBypass(const Maker& make) {
  const auto block = make();
  run(*block, noise(100));
  Signal silence(40 * kVectorLength, 0.0);
  EXPECT_FALSE(run(*block, silence) == silence) << "it had a tail";
  run(*block, noise(100));
  block->setBypass(true);
  Signal out(kVectorLength, 0.125);
  block->process(silence.data(), out.data());
  EXPECT_EQ(out, Signal(kVectorLength, 0.125));
  block->setBypass(false);
  EXPECT_TRUE(run(*block, silence) == silence);
}

/// What is no number or beyond every level silences one vector and leaves nothing behind.
inline void expectFreshAfterBadInput(const Maker& make) {
  for (double bad : {std::numeric_limits<double>::quiet_NaN(), HUGE_VAL, -1e13}) {
    const auto hurt = make(), fresh = make();
    run(*hurt, noise(30));
    Signal hit = noise(1);
    hit[7] = bad;
    EXPECT_TRUE(run(*hurt, hit) == Signal(kVectorLength, 0.0)) << bad;
    const Signal in = noise(60, 5);
    EXPECT_TRUE(run(*hurt, in) == run(*fresh, in)) << bad;
  }
}

/// An impulse of a million stays finite and is gone after `vectors` of silence.
inline void expectLoudImpulseDiesAway(const Maker& make, int vectors) {
  const auto block = make();
  Signal loud = impulse(vectors);
  loud[0] = 1e6;
  const Signal out = run(*block, loud);
  EXPECT_TRUE(std::all_of(out.begin(), out.end(), [](double s) { return std::isfinite(s); }));
  EXPECT_LT(std::fabs(out.back()), 1e-6);
}

/// Parameters that are no numbers change nothing.
inline void expectParametersThatAreNoNumbersIgnored(const Maker& make) {
  const auto spoilt = make(), fresh = make();
  for (int i = -1; i < 6; ++i) {
    spoilt->setParam(i, std::numeric_limits<double>::quiet_NaN());
    spoilt->setParam(i, HUGE_VAL);
  }
  const Signal in = noise(50);
  EXPECT_TRUE(run(*spoilt, in) == run(*fresh, in));
}

/// A control whose source goes away returns to its knob at the next vector.
inline void expectKnobAfterSourceGoesAway(const Maker& make, int control) {
  const auto driven = make(), plain = make();
  const double source[kVectorLength] = {0.3};
  const double depth = 1.0;
  driven->setModSource(control, source);
  driven->setModDepth(control, &depth);
  Signal silence(20 * kVectorLength, 0.0);
  run(*driven, silence);
  driven->setModSource(control, nullptr);
  run(*driven, Signal(2000 * kVectorLength, 0.0));
  run(*plain, Signal(2020 * kVectorLength, 0.0));
  const Signal in = noise(60);
  EXPECT_LT(largestDifference(run(*driven, in), run(*plain, in)), 1e-11) << control;
}

}  // namespace orvantesco::testing_support
