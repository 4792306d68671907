// The filters that are effects of their own over one vector of 32 samples, each beside the plain
// loop that says the same.
#include <benchmark/benchmark.h>

#include <array>
#include <cmath>

#include "BenchVector.h"
#include "fx/LPHP.h"
#include "fx/QLMSVF.h"
#include "fx/VARILPHP.h"

namespace orvantesco {
namespace {

template <class Block>
void runSettled(benchmark::State& state, Block& block) {
  Vector in = tone(1.0), out{};
  for (int i = 0; i < 5000; ++i) block.process(in.data(), out.data());
  for (auto _ : state) {
    block.process(in.data(), out.data());
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
}

void stateVariable(benchmark::State& state) {
  QLMSVF filter;
  filter.setParam(0, 0.5);
  filter.setParam(1, 0.7);
  filter.setParam(3, static_cast<double>(state.range(0)));
  runSettled(state, filter);
}
BENCHMARK(stateVariable)->Arg(kSvfLowpass)->Arg(kSvfBandpass)->Arg(kSvfPlainLowpass);

struct PlainStateVariable {
  static double saturated(double x) {
    const double u = x * x;
    return x * (((u + 378.0) * u + 17325.0) * u + 135135.0) /
           (((28.0 * u + 3150.0) * u + 62370.0) * u + 135135.0);
  }
  double resonant(double x) {
    const double hp = (x - k1 * s1a - s1b) * h1 + 1e-15 - 1e-15;
    const double bp = hp * g + s1a;
    const double lp = bp * g + s1b;
    s1a = saturated(hp * g + bp);
    s1b = bp * g + lp;
    return lp;
  }
  double linear(double x) {
    const double hp = (x - k2 * s2a - s2b) * h2 + 1e-15 - 1e-15;
    const double bp = hp * g + s2a;
    const double lp = bp * g + s2b;
    s2a = hp * g + bp;
    s2b = bp * g + lp;
    return lp;
  }
  double g = 0.07, k1 = 0.3, h1 = 1.0 / 1.021, k2 = 1.07, h2 = 1.0 / 1.0749;
  double s1a = 0.0, s1b = 0.0, s2a = 0.0, s2b = 0.0;
};

void plainStateVariable(benchmark::State& state) {
  PlainStateVariable filter;
  Vector in = tone(1.0), out{};
  for (auto _ : state) {
    for (size_t i = 0; i < kVectorLength; ++i) out[i] = filter.resonant(in[i]);
    for (double& sample : out) sample = filter.linear(sample);
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(plainStateVariable);

void drivenPair(benchmark::State& state) {
  LPHP pair;
  pair.setParam(0, 0.3);
  pair.setParam(1, 0.7);
  pair.setParam(2, 0.5);
  pair.setParam(3, static_cast<double>(state.range(0)));
  runSettled(state, pair);
}
BENCHMARK(drivenPair)->Arg(LPHP::k24DbSeries)->Arg(LPHP::k24DbParallel)->Arg(LPHP::k72DbSeries);

void variablePair(benchmark::State& state) {
  VARILPHP pair;
  pair.setParam(0, 0.3);
  pair.setParam(1, static_cast<double>(state.range(0)));
  pair.setParam(2, 0.7);
  pair.setParam(3, static_cast<double>(state.range(0)));
  runSettled(state, pair);
}
BENCHMARK(variablePair)->Arg(0)->Arg(3);

/// A drive and four sections, the slope of 24 dB in series.
struct PlainDrivenPair {
  struct Section {
    double tick(double x) {
      const double y = b0 * x + s1;
      s1 = (b1 * x + s2) - a1 * y;
      s2 = b0 * x - a2 * y;
      return y;
    }
    double b0 = 0.01, b1 = 0.02, a1 = -1.8, a2 = 0.84;
    double s1 = 0.0, s2 = 0.0;
  };
  double driven(double sample) {
    const double x = sample * 5.0;
    const double t = std::sqrt(x * x + 1.0);
    const double y = (x + xBefore) / (t + tBefore);
    xBefore = x;
    tBefore = t;
    return y * 0.5714;
  }
  double xBefore = 0.0, tBefore = 1.0;
  Section sections[4];
};

void plainDrivenPair(benchmark::State& state) {
  PlainDrivenPair pair;
  Vector in = tone(1.0), out{};
  for (auto _ : state) {
    for (size_t i = 0; i < kVectorLength; ++i) out[i] = pair.driven(in[i]);
    for (PlainDrivenPair::Section& section : pair.sections) {
      for (double& sample : out) sample = section.tick(sample);
    }
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(plainDrivenPair);

}  // namespace
}  // namespace orvantesco
