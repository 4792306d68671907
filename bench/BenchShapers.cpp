// The shapers and lofis over one vector of 32 samples, each beside the plain loop that says the
// same with the functions of the library.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "fx/FilterMode.h"
#include "fx/Lofi.h"
#include "fx/Shaper.h"

namespace orvantesco {
namespace {

using Vector = std::array<double, kVectorLength>;

Vector tone() {
  Vector vector{};
  for (size_t i = 0; i < kVectorLength; ++i)
    vector[i] = std::sin(1.0 + 0.1 * static_cast<double>(i));
  return vector;
}

template <class Step>
void eachVector(benchmark::State& state, Step step) {
  Vector in = tone(), out{};
  for (auto _ : state) {
    step(in.data(), out.data());
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
}

void settle(DSPShell& effect) {
  Vector in = tone(), out{};
  for (int i = 0; i < 20000; ++i) effect.process(in.data(), out.data());
}

void shaper(benchmark::State& state, int type, double filterKnob) {
  Shaper effect(false, type);
  effect.setParam(0, 0.6);
  effect.setParam(1, 0.7);
  effect.setParam(2, filterKnob);
  settle(effect);
  eachVector(state, [&](double* in, double* out) { effect.process(in, out); });
}
BENCHMARK_CAPTURE(shaper, saturate, kShaperSaturate, 0.0);
BENCHMARK_CAPTURE(shaper, saturateUnfiltered, kShaperSaturateFeedback, kFilterOff);
BENCHMARK_CAPTURE(shaper, rectify, kShaperRectify, 0.0);
BENCHMARK_CAPTURE(shaper, rectifyUnfiltered, kShaperRectifyFeedback, kFilterOff);
BENCHMARK_CAPTURE(shaper, destroy, kShaperDestroy, 0.0);
BENCHMARK_CAPTURE(shaper, noise, kShaperNoise, 0.0);
BENCHMARK_CAPTURE(shaper, lofi, kShaperLofi, 0.0);

void shaperModulated(benchmark::State& state, int type) {
  Shaper effect(false, type);
  const Vector source = tone();
  const double depth = 0.5;
  effect.setModSource(0, source.data());
  effect.setModDepth(0, &depth);
  settle(effect);
  eachVector(state, [&](double* in, double* out) { effect.process(in, out); });
}
BENCHMARK_CAPTURE(shaperModulated, saturate, kShaperSaturate);
BENCHMARK_CAPTURE(shaperModulated, rectify, kShaperRectify);
BENCHMARK_CAPTURE(shaperModulated, destroy, kShaperDestroy);

void waveShape(benchmark::State& state) {
  Shaper effect(false, kShaperWaveShape);
  effect.setParam(0, static_cast<double>(state.range(0)));
  settle(effect);
  eachVector(state, [&](double* in, double* out) { effect.process(in, out); });
}
BENCHMARK(waveShape)->Arg(kShaperTube)->Arg(kShaperSine3)->Arg(kShaperAsymmetric2);

void lofi(benchmark::State& state, double noise, double downsample, double bitcrush) {
  Lofi effect(false);
  const double knobs[] = {0.5, noise, downsample, bitcrush};
  for (int i = 0; i < 4; ++i) effect.setParam(i, knobs[i]);
  settle(effect);
  eachVector(state, [&](double* in, double* out) { effect.process(in, out); });
}
BENCHMARK_CAPTURE(lofi, driveAlone, 0.0, 0.0, 0.0);
BENCHMARK_CAPTURE(lofi, withoutNoise, 0.0, 0.2, 0.3);
BENCHMARK_CAPTURE(lofi, all, 0.3, 0.2, 0.3);

void plainSaturate(benchmark::State& state) {
  double x0 = 0.0, t0 = 0.0;
  eachVector(state, [&](const double* in, double* out) {
    for (int i = 0; i < kVectorLength; ++i) {
      const double x = in[i] * 7.0;
      const double t = std::sqrt(x * x + 1.0);
      out[i] = (x + x0) / (t + t0) * 0.5;
      x0 = x;
      t0 = t;
    }
  });
}
BENCHMARK(plainSaturate);

void plainRectify(benchmark::State& state) {
  double x0 = 0.0, f0 = 0.0;
  const double g = 7.0;
  eachVector(state, [&](const double* in, double* out) {
    for (int i = 0; i < kVectorLength; ++i) {
      const double a = std::fabs(in[i]) * g;
      const double f = (a - std::log1p(a)) * (g + 1.0) / (g * g);
      const double d = in[i] - x0;
      const double m = 0.5 * (in[i] + x0);
      const double y =
          std::fabs(d) > 0.01 ? (f - f0) / d : m * (g + 1.0) / (std::fabs(m) * g + 1.0);
      out[i] = std::clamp(y * 0.45, -1.0, 1.0);
      x0 = in[i];
      f0 = f;
    }
  });
}
BENCHMARK(plainRectify);

void plainDestroy(benchmark::State& state) {
  const double t = -0.28;
  double before = 0.0, held = 0.0;
  eachVector(state, [&](const double* in, double* out) {
    for (int i = 0; i < kVectorLength; ++i) {
      double whole = 0.0;
      const double x = in[i] * 10.0;
      const double f = std::modf((x - t) * t, &whole);
      const double y = std::fabs(std::fabs(4.0 * f * t) + 2.0 * t) + t;
      held = 0.9999 * held + y - before;
      before = y;
      out[i] = held;
    }
  });
}
BENCHMARK(plainDestroy);

void plainLofi(benchmark::State& state) {
  double phase = 0.0, hold = 0.0;
  eachVector(state, [&](const double* in, double* out) {
    const double rate = 1.0 - std::pow(0.2, 0.125) * 0.99;
    const double levels = std::exp2((1.0 - std::pow(0.3, 0.2)) * 22.0 + 2.0);
    for (int i = 0; i < kVectorLength; ++i) {
      const double y = std::tanh(in[i] * 4.5);
      phase += rate;
      if (phase >= 1.0) {
        phase -= 1.0;
        hold = y;
      }
      out[i] = std::nearbyint(hold * levels) / levels;
    }
  });
}
BENCHMARK(plainLofi);

void plainTanh(benchmark::State& state) {
  eachVector(state, [](const double* in, double* out) {
    for (int i = 0; i < kVectorLength; ++i) out[i] = std::tanh(in[i] * 4.5);
  });
}
BENCHMARK(plainTanh);

void plainSum(benchmark::State& state) {
  eachVector(state, [](const double* in, double* out) {
    for (int i = 0; i < kVectorLength; ++i) out[i] = in[i] + in[i];
  });
}
BENCHMARK(plainSum);

}  // namespace
}  // namespace orvantesco
