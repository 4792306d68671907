#include "delay/RingDelayQuad.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "DelayTestSupport.h"
#include "delay/RingDelay.h"
#include "fx/kernels/Level.h"

namespace orvantesco {
namespace {

using testing_support::kRates;
using testing_support::largestDifference;
using testing_support::noise;
using testing_support::ScopedRate;
using testing_support::Signal;

constexpr int kLines = RingDelayQuad::kLines;
constexpr int kCapacities[kLines] = {1024, 4096, 256, 2048};
using Delays = std::array<double, kLines>;
using Outputs = std::array<Signal, kLines>;

void allocate(RingDelayQuad& quad) {
  for (int i = 0; i < kLines; ++i) quad.allocate(i, kCapacities[i]);
}

/// One vector of each line, which all get other signals.
void step(RingDelayQuad& quad, const Outputs& in, size_t at, const Delays& delays, Outputs& out) {
  for (int i = 0; i < kLines; ++i) quad.write(i, &in[static_cast<size_t>(i)][at]);
  quad.read(delays);
  for (int i = 0; i < kLines; ++i) {
    const double* samples = quad.samples(i);
    Signal& to = out[static_cast<size_t>(i)];
    to.insert(to.end(), samples, samples + kVectorLength);
  }
}

Outputs fourSignals(int vectors) {
  return {noise(vectors, 1), noise(vectors, 2), noise(vectors, 3), noise(vectors, 4)};
}

/// Delays that now stand, now leap, now move with every vector, apart from whole samples.
std::vector<Delays> wanderings(int vectors) {
  std::mt19937 engine(5);
  std::vector<Delays> all;
  Delays now{};
  for (int v = 0; v < vectors; ++v) {
    for (size_t i = 0; i < kLines; ++i) {
      const auto longest = static_cast<unsigned>(kCapacities[i] - 3 * kVectorLength);
      if (v % 40 == static_cast<int>(7 * i))
        now[i] = static_cast<unsigned>(engine()) % longest + 0.37;
      if (v % 200 > 120) now[i] = std::fabs(now[i] + 0.8 * std::sin(0.1 * v));
    }
    all.push_back(now);
  }
  return all;
}

// The bound: these glides come to rest 2e-13 of their way before its end, 8e-10 samples at 4000,
// where the single line goes on to the last bit; noise moves by up to 2 a sample.
TEST(RingDelayQuad, GivesWhatFourSingleLinesGiveOverManyTurns) {
  constexpr int kVectors = 1500;
  const Outputs in = fourSignals(kVectors);
  const std::vector<Delays> delays = wanderings(kVectors);
  for (const double rate : kRates) {
    const ScopedRate scope(rate);
    RingDelayQuad quad;
    allocate(quad);
    RingDelay single[kLines];
    for (int i = 0; i < kLines; ++i) single[i].resize(kCapacities[i]);
    Outputs out, expected;
    for (size_t v = 0; v < kVectors; ++v) {
      step(quad, in, v * kVectorLength, delays[v], out);
      for (size_t i = 0; i < kLines; ++i) {
        single[i].write(&in[i][v * kVectorLength], kVectorLength);
        const double* read = single[i].readModulated(delays[v][i], kVectorLength);
        expected[i].insert(expected[i].end(), read, read + kVectorLength);
      }
    }
    for (size_t i = 0; i < kLines; ++i) {
      EXPECT_LT(largestDifference(out[i], expected[i]), 5e-9) << rate << " Hz, line " << i;
    }
  }
}

TEST(RingDelayQuad, EveryProcessorLevelGivesTheSameBits) {
  constexpr int kVectors = 400;
  const Outputs in = fourSignals(kVectors);
  const std::vector<Delays> delays = wanderings(kVectors);
  const auto heard = [&] {
    RingDelayQuad quad;
    allocate(quad);
    Outputs out;
    for (size_t v = 0; v < kVectors; ++v) step(quad, in, v * kVectorLength, delays[v], out);
    return out;
  };
  const Outputs best = heard();
  for (const auto level : {kernels::Level::kScalar, kernels::Level::kSse2}) {
    const Outputs lower = kernels::forceLevel(level) ? heard() : best;
    EXPECT_EQ(lower, best);
    kernels::forgetLevel();
  }
}

TEST(RingDelayQuad, StandingAtWholeSamplesItGivesTheSamplesThemselves) {
  const Outputs in = fourSignals(300);
  RingDelayQuad quad;
  allocate(quad);
  const Delays delays{700.0, 32.0, 100.0, 1500.0};
  Outputs out;
  for (size_t v = 0; v < 300; ++v) step(quad, in, v * kVectorLength, delays, out);
  for (size_t i = 0; i < kLines; ++i) {
    const auto back = static_cast<size_t>(delays[i]);
    int wrong = 0;
    for (size_t n = 200 * kVectorLength; n < out[i].size(); ++n) {
      wrong += out[i][n] == in[i][n - back] ? 0 : 1;
    }
    EXPECT_EQ(wrong, 0) << i;
  }
}

TEST(RingDelayQuad, HoldsDelaysWithinItsLines) {
  constexpr double kHuge = 1e300;
  for (const double delay : {kHuge, -kHuge, std::nan(""), static_cast<double>(INFINITY)}) {
    RingDelayQuad quad;
    allocate(quad);
    const Outputs in = fourSignals(300);
    Outputs out;
    const Delays delays{delay, delay, delay, delay};
    for (size_t v = 0; v < 300; ++v) step(quad, in, v * kVectorLength, delays, out);
    const double held =
        delay > 0.0 ? static_cast<double>(kCapacities[2] - 2 * kVectorLength) : 4.41;
    for (size_t i = 0; i < kLines; ++i) {
      EXPECT_TRUE(
          std::all_of(out[i].begin(), out[i].end(), [](double y) { return std::fabs(y) < 30.0; }));
    }
    const auto back = static_cast<size_t>(held);
    double error = 0.0;
    for (size_t n = 9000; n < out[2].size() && delay > 0.0; ++n) {
      error = std::max(error, std::fabs(out[2][n] - in[2][n - back]));
    }
    EXPECT_EQ(error, 0.0) << delay;
  }
}

TEST(RingDelayQuad, ClearedItIsSilent) {
  const Outputs in = fourSignals(300);
  const Outputs silence{Signal(9600, 0.0), Signal(9600, 0.0), Signal(9600, 0.0), Signal(9600, 0.0)};
  RingDelayQuad quad;
  allocate(quad);
  const Delays delays{700.3, 3000.0, 100.5, 1500.25};
  Outputs out;
  for (size_t v = 0; v < 300; ++v) step(quad, in, v * kVectorLength, delays, out);
  quad.clear();
  out = {};
  for (size_t v = 0; v < 300; ++v) step(quad, silence, v * kVectorLength, delays, out);
  EXPECT_EQ(out, silence);
}

}  // namespace
}  // namespace orvantesco
