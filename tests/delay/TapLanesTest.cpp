#include "delay/TapLanes.h"

#include <cmath>

#include "DelayTestSupport.h"
#include "fx/kernels/Level.h"

namespace orvantesco {
namespace {

using kernels::Level;
using testing_support::noise;
using testing_support::Signal;

constexpr int kMostTaps = 18;

struct Bench {
  Signal ring = noise(400, 5);
  TapGlide glide;
  std::vector<Signal> outputs{kMostTaps, Signal(kVectorLength, 0.0)};

  Bench() { glide.setRate(48000.0); }
};

/// The levels that this machine has, each with its loops.
std::vector<std::pair<std::string, const TapLanes*>> lanesHere() {
  std::vector<std::pair<std::string, const TapLanes*>> all{{"scalar", &kTapLanesScalar}};
#if defined(__x86_64__)
  if (kernels::supports(Level::kSse2)) all.emplace_back("SSE2", &kTapLanesSse2);
  if (kernels::supports(Level::kAvx2)) all.emplace_back("AVX2", &kTapLanesAvx2);
#endif
  return all;
}

std::vector<Signal> plainSettled(const std::vector<SettledTap>& taps) {
  std::vector<Signal> expected;
  for (const SettledTap& tap : taps) {
    Signal out(kVectorLength);
    double y = tap.memory;
    for (int i = 0; i < kVectorLength; ++i) {
      y = (tap.coefficient * tap.samples[i + 1] + tap.samples[i]) - tap.coefficient * y;
      out[static_cast<size_t>(i)] = y;
    }
    expected.push_back(out);
  }
  return expected;
}

std::vector<Signal> plainMoving(const std::vector<MovingTap>& taps, const TapGlide& glide) {
  std::vector<Signal> expected;
  for (const MovingTap& tap : taps) {
    Signal out(kVectorLength);
    double y = tap.memory;
    for (int i = 0; i < kVectorLength; ++i) {
      const double d = glide.powers[i] * tap.start + tap.pull * glide.sums[i];
      const double f = d - std::floor(d);
      const double c = (1.0 - f) / (1.0 + f);
      const double* pair = tap.newest + i - static_cast<int>(d);
      y = (c * pair[1] + pair[0]) - c * y;
      out[static_cast<size_t>(i)] = y;
    }
    expected.push_back(out);
  }
  return expected;
}

TEST(TapLanes, SettledTapsGiveTheBitsOfAPlainLoopAtEveryLevelAndCount) {
  for (const auto& [name, lanes] : lanesHere()) {
    for (int count = 1; count <= kMostTaps; ++count) {
      Bench bench;
      std::vector<SettledTap> taps;
      for (int k = 0; k < count; ++k) {
        taps.push_back({&bench.ring[static_cast<size_t>(k * 611 + 3)], 0.05 * k, 0.3 - 0.1 * k,
                        bench.outputs[static_cast<size_t>(k)].data()});
      }
      lanes->readSettled(taps.data(), count);
      const std::vector<Signal> expected = plainSettled(taps);
      bench.outputs.resize(static_cast<size_t>(count));
      EXPECT_EQ(bench.outputs, expected) << name << ", " << count << " taps";
    }
  }
}

TEST(TapLanes, MovingTapsGiveTheBitsOfAPlainLoopAtEveryLevelAndCount) {
  for (const auto& [name, lanes] : lanesHere()) {
    for (int count = 1; count <= kMostTaps; ++count) {
      Bench bench;
      std::vector<MovingTap> taps;
      for (int k = 0; k < count; ++k) {
        const double target = 40.25 + 500.0 * k;
        taps.push_back({&bench.ring[12000], 700.5 + 371.3 * k, bench.glide.gain * target,
                        0.3 - 0.1 * k, bench.outputs[static_cast<size_t>(k)].data()});
      }
      lanes->readMoving(taps.data(), count, bench.glide);
      const std::vector<Signal> expected = plainMoving(taps, bench.glide);
      bench.outputs.resize(static_cast<size_t>(count));
      EXPECT_EQ(bench.outputs, expected) << name << ", " << count << " taps";
    }
  }
}

TEST(TapLanes, RowsAreAddedWithTheBitsOfAPlainLoopAtEveryLevelAndCount) {
  for (const auto& [name, lanes] : lanesHere()) {
    for (int count = 1; count <= kMostTaps; ++count) {
      Bench bench;
      std::vector<EchoRow> rows;
      Signal expected = noise(1, 8);
      Signal samples = expected;
      for (int k = 0; k < count; ++k) {
        rows.push_back({&bench.ring[static_cast<size_t>(k * 611 + 3)], 0.45 - 0.03 * k});
        for (size_t i = 0; i < expected.size(); ++i) {
          expected[i] = expected[i] + rows.back().samples[i] * rows.back().gain;
        }
      }
      lanes->addRows(rows.data(), count, samples.data());
      EXPECT_EQ(samples, expected) << name << ", " << count << " rows";
    }
  }
}

TEST(TapLanes, TheLevelInForceDecidesWhatRuns) {
#if defined(__x86_64__)
  const Level before = kernels::levelInForce();
  ASSERT_TRUE(kernels::forceLevel(Level::kScalar));
  EXPECT_EQ(&tapLanesFor(16), &kTapLanesScalar);
  ASSERT_TRUE(kernels::forceLevel(Level::kSse2));
  EXPECT_EQ(&tapLanesFor(16), &kTapLanesSse2);
  if (kernels::forceLevel(Level::kAvx2)) {
    EXPECT_EQ(&tapLanesFor(16), &kTapLanesAvx2);
    EXPECT_EQ(&tapLanesFor(2), &kTapLanesSse2) << "two taps fill two lanes";
  }
  kernels::forceLevel(before);
#endif
}

}  // namespace
}  // namespace orvantesco
