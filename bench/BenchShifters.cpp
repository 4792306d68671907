// The frequency shifter, the ring modulator and the pitch shifter over one vector of 32 samples of
// one channel, each beside the plain loop that says the same; and sine and cosine of a vector.
#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <vector>

#include "fx/HilbertShifter.h"
#include "fx/MVPitchShifter.h"
#include "fx/RingMod.h"
#include "fx/kernels/SinCos.h"

namespace orvantesco {
namespace {

using Vector = std::array<double, kVectorLength>;

Vector tone() {
  Vector vector{};
  for (size_t i = 0; i < vector.size(); ++i)
    vector[i] = std::sin(1.0 + 0.1 * static_cast<double>(i));
  return vector;
}

template <class Work>
void overVectors(benchmark::State& state, Work work) {
  const Vector in = tone();
  Vector out{};
  for (auto _ : state) {
    work(in, out);
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
}

/// A block with its five parameters, at rest; with a source at control 0, on the move.
void runBlock(benchmark::State& state, DSPShell& block, const std::array<double, 5>& values,
              bool moves) {
  double source[kVectorLength] = {};
  const double depth = 0.05;
  for (size_t k = 0; k < values.size(); ++k) block.setParam(static_cast<int>(k), values[k]);
  block.setModSource(0, moves ? source : nullptr);
  block.setModDepth(0, &depth);
  Vector settle = tone();
  for (int i = 0; i < 5000; ++i) block.process(settle.data(), nullptr);
  overVectors(state, [&](const Vector& in, Vector& out) {
    source[0] = source[0] > 1.0 ? 0.0 : source[0] + 0.01;
    Vector copy = in;
    block.process(copy.data(), out.data());
  });
}

void frequencyShifter(benchmark::State& state) {
  HilbertShifter shifter(false);
  runBlock(state, shifter, {0.7, 100.0, 0.3, 0.0, 1.0}, state.range(0) != 0);
}
BENCHMARK(frequencyShifter)->Arg(0)->Arg(1);

void ringModulator(benchmark::State& state) {
  RingMod modulator(false);
  runBlock(state, modulator, {0.7, 0.4, 1.0, 0.0, 1.0}, state.range(0) != 0);
}
BENCHMARK(ringModulator)->Arg(0)->Arg(1);

void pitchShifter(benchmark::State& state) {
  MVPitchShifter shifter(false, state.range(1) != 0);
  runBlock(state, shifter, {0.4, 0.1, 25.75, 0.0, 1.0}, state.range(0) != 0);
}
BENCHMARK(pitchShifter)->Args({0, 0})->Args({1, 0})->Args({0, 1});

struct PlainSection {
  double b0, b1, b2, a1, a2;
  double s1 = 0.0, s2 = 0.0;
  double step(double x) {
    const double y = b0 * x + s1;
    s1 = (s2 + b1 * x) - a1 * y;
    s2 = b2 * x - a2 * y;
    return y;
  }
};

struct PlainFrequencyShifter {
  std::vector<PlainSection> highpass{6, {0.99, -1.98, 0.99, -1.98, 0.981}};
  std::vector<PlainSection> chainA{8, {0.7, 0.0, -1.0, 0.0, -0.7}};
  std::vector<PlainSection> chainB{8, {0.6, 0.0, -1.0, 0.0, -0.6}};
  Vector back{};
  double memory = 0.0, phase = 0.0;

  void run(const Vector& in, Vector& out) {
    for (size_t i = 0; i < in.size(); ++i) {
      double x = in[i] - 0.2 * back[i];
      for (PlainSection& section : highpass) x = section.step(x);
      double a = x, b = x;
      for (PlainSection& section : chainA) a = section.step(a);
      for (PlainSection& section : chainB) b = section.step(b);
      std::swap(a, memory);
      phase += 0.01;
      if (phase > 6.28) phase -= 6.28;
      out[i] = back[i] = a * std::sin(phase) + b * std::cos(phase);
    }
  }
};

void plainFrequencyShifter(benchmark::State& state) {
  PlainFrequencyShifter plain;
  overVectors(state, [&](const Vector& in, Vector& out) { plain.run(in, out); });
}
BENCHMARK(plainFrequencyShifter);

void plainRingModulator(benchmark::State& state) {
  double phase = 0.0;
  const double a = 0.36, gain = std::sqrt(1.0 - a * a);
  overVectors(state, [&](const Vector& in, Vector& out) {
    for (size_t i = 0; i < in.size(); ++i) {
      phase += 0.003;
      if (phase >= 2.0) phase -= 2.0;
      const double x = (phase + 0.1) * 3.141592653589793;
      out[i] = in[i] * std::sin(x) / ((1.0 + a * a) - 2.0 * a * std::cos(x)) * gain;
    }
  });
}
BENCHMARK(plainRingModulator);

struct PlainPitchShifter {
  std::vector<PlainSection> antiAlias{4, {0.4, 0.8, 0.4, 0.4, 0.2}};
  std::vector<double> buffer = std::vector<double>(65536, 0.0);
  double phase = 0.0, size = 0.0;
  std::array<double, 2> taps{};
  int writeIndex = 0;

  static double wrapped(double p) { return p >= 2.0 ? p - 2.0 : p < 0.0 ? p + 2.0 : p; }
  void read(double& tap, double delay) const {
    const int k = static_cast<int>(delay);
    const double f = 1.0 - (delay - k);
    const auto at = [this](int i) { return buffer[static_cast<size_t>(i & 0xffff)]; };
    tap = (at(writeIndex - k) - tap) * f * f + at(writeIndex - k - 1);
  }
  void run(const Vector& in, Vector& out) {
    for (size_t i = 0; i < in.size(); ++i) {
      double x = in[i];
      for (PlainSection& section : antiAlias) x = section.step(x);
      buffer[static_cast<size_t>(writeIndex++ & 0xffff)] = x;
      size = 0.99 * size + 0.01 * 1135.575;
      phase = wrapped(phase - 0.33 / std::max(size, 1.0));
      read(taps[0], size * phase);
      read(taps[1], size * wrapped(phase + 1.0));
      const double w = 1.0 - std::fabs(phase - 1.0);
      out[i] = (1.0 - w) * taps[1] + w * taps[0];
    }
  }
};

void plainPitchShifter(benchmark::State& state) {
  PlainPitchShifter plain;
  overVectors(state, [&](const Vector& in, Vector& out) { plain.run(in, out); });
}
BENCHMARK(plainPitchShifter);

void sineAndCosine(benchmark::State& state) {
  Vector cosine{};
  overVectors(state, [&](const Vector& in, Vector& out) {
    vecSinCos(in.data(), out.data(), cosine.data());
    benchmark::DoNotOptimize(cosine.data());
  });
}
BENCHMARK(sineAndCosine);

void plainSineAndCosine(benchmark::State& state) {
  Vector cosine{};
  overVectors(state, [&](const Vector& in, Vector& out) {
    for (size_t i = 0; i < in.size(); ++i) {
      out[i] = std::sin(in[i]);
      cosine[i] = std::cos(in[i]);
    }
    benchmark::DoNotOptimize(cosine.data());
  });
}
BENCHMARK(plainSineAndCosine);

}  // namespace
}  // namespace orvantesco
