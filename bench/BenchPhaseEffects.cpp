// The phaser, the phase filter, the comb and the compressor over one vector of 32 samples, each
// beside the plain loop that says the same.
#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <vector>

#include "fx/Comb.h"
#include "fx/Compressor.h"
#include "fx/PhaseFilter.h"
#include "fx/PhaserC.h"

namespace orvantesco {
namespace {

using Vector = std::array<double, kVectorLength>;

Vector tone() {
  Vector vector{};
  for (size_t i = 0; i < vector.size(); ++i) vector[i] = std::sin(0.1 * static_cast<double>(i));
  return vector;
}

void give(DSPShell& block, const std::array<double, 5>& values) {
  for (int k = 0; k < 5; ++k) block.setParam(k, values[static_cast<size_t>(k)]);
}

template <class Body>
void measure(benchmark::State& state, Body&& body) {
  Vector in = tone(), out{};
  for (int i = 0; i < 3000; ++i) body(in, out);
  for (auto _ : state) {
    body(in, out);
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
}

void phaser(benchmark::State& state) {
  PhaserC block;
  give(block, {0.5, 1.0, static_cast<double>(state.range(0)), 0.0, 0.5});
  measure(state, [&](Vector& in, Vector& out) { block.process(in.data(), out.data()); });
}
BENCHMARK(phaser)->Arg(2)->Arg(8);

void phaserSwept(benchmark::State& state) {
  PhaserC block;
  double source[kVectorLength] = {};
  const double depth = 1.0;
  give(block, {0.5, 1.0, 8.0, 0.0, 0.5});
  block.setModSource(0, source);
  block.setModDepth(0, &depth);
  measure(state, [&](Vector& in, Vector& out) {
    source[0] = source[0] > 0.5 ? 0.0 : source[0] + 0.01;
    block.process(in.data(), out.data());
  });
}
BENCHMARK(phaserSwept);

struct PlainPhaser {
  void run(const Vector& in, Vector& out) {
    for (size_t n = 0; n < in.size(); ++n) {
      double x = in[n] + fed;
      for (size_t i = 0; i < 8; ++i) {
        const double y = a[i] * x + b[i] * x1[i] + x2[i] - (a[i] * y2[i] + b[i] * y1[i]);
        x2[i] = x1[i];
        x1[i] = x;
        y2[i] = y1[i];
        y1[i] = y;
        x = y;
      }
      fed = x * 0.67;
      out[n] = (x * 0.5 + in[n] * 0.5) * 1.5;
    }
  }
  std::array<double, 8> a{}, b{}, x1{}, x2{}, y1{}, y2{};
  double fed = 0.0;
};

void plainPhaser(benchmark::State& state) {
  PlainPhaser plain;
  for (int i = 0; i < 8; ++i) {
    const auto [a, b] = phaserTaps(i, 2.1);
    plain.a[static_cast<size_t>(i)] = a;
    plain.b[static_cast<size_t>(i)] = b;
  }
  measure(state, [&](Vector& in, Vector& out) { plain.run(in, out); });
}
BENCHMARK(plainPhaser);

void phaseFilter(benchmark::State& state) {
  PhaseFilter block;
  give(block, {0.5, 0.5, 0.0, 1.0, 1.0});
  measure(state, [&](Vector& in, Vector& out) { block.process(in.data(), out.data()); });
}
BENCHMARK(phaseFilter);

void plainPhaseFilter(benchmark::State& state) {
  double kept[8] = {}, delay[8] = {}, k = 0.0;
  measure(state, [&](Vector& in, Vector& out) {
    for (size_t n = 0; n < in.size(); ++n) {
      k = 0.9375 * 0.1 + 0.9 * k;
      kept[0] = kept[7] * 0.4 + in[n];
      for (size_t i = 1; i < 8; ++i) {
        const double old = delay[i - 1];
        delay[i - 1] = kept[i - 1];
        kept[i] = (kept[i - 1] + kept[i]) * k - old;
      }
      out[n] = kept[7] * 0.74;
    }
  });
}
BENCHMARK(plainPhaseFilter);

void comb(benchmark::State& state) {
  Comb block;
  give(block, {0.51, 0.5, 0.2, 0.8, 0.0});
  measure(state, [&](Vector& in, Vector& out) { block.process(in.data(), out.data()); });
}
BENCHMARK(comb);

struct PlainBiquad {
  double tick(double x) {
    const double y = 0.2 * x + s1;
    s1 = 0.4 * x + s2 + 0.9 * y;
    s2 = 0.2 * x - 0.3 * y;
    return y;
  }
  double s1 = 0.0, s2 = 0.0;
};

struct PlainComb {
  void run(const Vector& in, Vector& out) {
    for (size_t n = 0; n < in.size(); ++n) ring[(at + n) & 0xffff] = in[n] + round[n];
    for (size_t n = 0; n < in.size(); ++n) {
      d = 0.97 * d + 0.03 * 201.1;
      const auto whole = static_cast<size_t>(d);
      const double f = d - static_cast<double>(whole);
      const size_t p = at + n - whole;
      last = (1.0 - f) / (1.0 + f) * (ring[p & 0xffff] - last) + ring[(p - 1) & 0xffff];
      out[n] = highpass.tick(lowpass.tick(last)) + in[n];
      round[n] = std::tanh(out[n] * -0.25) * 1.66;
    }
    at += in.size();
  }
  std::vector<double> ring = std::vector<double>(65536);
  Vector round{};
  PlainBiquad lowpass, highpass;
  size_t at = 0;
  double d = 0.0, last = 0.0;
};

void plainComb(benchmark::State& state) {
  PlainComb plain;
  measure(state, [&](Vector& in, Vector& out) { plain.run(in, out); });
}
BENCHMARK(plainComb);

void compressor(benchmark::State& state) {
  Compressor block;
  give(block, {0.1, 4.0, 10.0, 100.0, 0.1});
  double drift = 0.0;
  measure(state, [&](Vector& in, Vector& out) {
    // A level that moves asks for a logarithm and an exponential in every vector.
    drift = drift > 1.0 ? 0.0 : drift + 0.01;
    in[3] = drift;
    block.process(in.data(), out.data());
  });
}
BENCHMARK(compressor);

struct PlainCompressor {
  void run(const Vector& in, Vector& out) {
    double sum = 0.0;
    for (size_t n = 0; n < in.size(); ++n) {
      ring[(at + n) & 1023] = in[n];
      sum += in[n] * in[n];
    }
    square = 0.015 * sum / 32.0 + 0.985 * square + 1e-9;
    const double over =
        std::fmax(0.0, std::log(std::sqrt(square - 1e-9) / 0.1) * 8.685889638065037);
    level = over < level ? level * 0.977 : std::fmin(level * 1.25, over);
    level = std::fmax(level, 0.0018);
    const double trim = std::exp(2.4 * 0.1151292546497);
    gain = 0.99 * gain + 0.01 * trim * std::exp(-level * 0.75 * 0.1151292546497);
    for (size_t n = 0; n < in.size(); ++n) out[n] = ring[(at + n - 441) & 1023] * gain;
    at += in.size();
  }
  std::vector<double> ring = std::vector<double>(1024);
  size_t at = 0;
  double square = 0.0, level = 0.0, gain = 0.0;
};

void plainCompressor(benchmark::State& state) {
  PlainCompressor plain;
  double drift = 0.0;
  measure(state, [&](Vector& in, Vector& out) {
    drift = drift > 1.0 ? 0.0 : drift + 0.01;
    in[3] = drift;
    plain.run(in, out);
  });
}
BENCHMARK(plainCompressor);

}  // namespace
}  // namespace orvantesco
