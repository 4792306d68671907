// The filters and the smoother over one vector of 32 samples, each beside the plain loop that says
// the same.
#include <benchmark/benchmark.h>

#include <array>
#include <cmath>

#include "BenchVector.h"
#include "fx/DCRemover.h"
#include "fx/IppBiquad.h"
#include "fx/IppFixBiquad.h"
#include "fx/Smoother.h"

namespace orvantesco {
namespace {

void settle(IppBiquad& filter) {
  Vector vector = tone(0.0);
  for (int i = 0; i < 5000; ++i) filter.process(vector.data(), nullptr);
}

void biquadStages(benchmark::State& state) {
  IppBiquad filter(false, kLowpassFilter, static_cast<int>(state.range(0)));
  filter.setCutoff(0.5);
  settle(filter);
  Vector in = tone(1.0), out{};
  for (auto _ : state) {
    filter.process(in.data(), out.data());
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(biquadStages)->Arg(1)->Arg(2)->Arg(4);

void biquadSweeping(benchmark::State& state) {
  IppBiquad filter(false, static_cast<int>(state.range(0)), 1);
  double source[kVectorLength] = {};
  const double depth = 0.2;
  filter.setCutoff(0.5);
  filter.setModSource(0, source);
  filter.setModDepth(0, &depth);
  Vector in = tone(1.0), out{};
  for (auto _ : state) {
    source[0] = source[0] > 1.0 ? 0.0 : source[0] + 0.01;
    filter.process(in.data(), out.data());
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(biquadSweeping)->Arg(kLowpassFilter)->Arg(kSteepLowpassFilter);

void plainBiquad(benchmark::State& state) {
  Vector in = tone(1.0), out{};
  double s1 = 0.0, s2 = 0.0;
  for (auto _ : state) {
    for (size_t i = 0; i < kVectorLength; ++i) {
      const double x = in[i];
      const double y = 0.01 * x + s1;
      s1 = (0.02 * x + s2) - -1.8 * y;
      s2 = 0.01 * x - 0.84 * y;
      out[i] = y;
    }
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(plainBiquad);

void inputFilterPair(benchmark::State& state) {
  IppFixBiquad left, right;
  left.redesign(kFixedButterworthLowpass, 12, 15000.0 / 44100.0);
  right.redesign(kFixedButterworthLowpass, 12, 15000.0 / 44100.0);
  const Vector source = tone(1.0);
  Vector l{}, r{};
  for (auto _ : state) {
    l = r = source;
    IppFixBiquad::filterPairInPlace(left, l.data(), right, r.data());
    benchmark::DoNotOptimize(l.data());
    benchmark::DoNotOptimize(r.data());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(inputFilterPair);

struct PlainDirectForm {
  void run(Vector& vector) {
    for (double& sample : vector) {
      const double x = sample;
      const double y = 0.05 * x + s[0];
      for (size_t k = 0; k < 12; ++k) s[k] = (s[k + 1] + b[k] * x) - a[k] * y;
      sample = y;
    }
  }
  double b[12] = {0.1, 0.2, 0.3, 0.2, 0.1, 0.05, 0.02, 0.01, 0.005, 0.002, 0.001, 0.0005};
  double a[12] = {0.3, 0.2, 0.1, 0.05, 0.02, 0.01, 0.005, 0.002, 0.001, 0.0005, 0.0002, 0.0001};
  double s[13] = {};
};

void plainInputFilterPair(benchmark::State& state) {
  PlainDirectForm left, right;
  const Vector source = tone(1.0);
  Vector l{}, r{};
  for (auto _ : state) {
    l = r = source;
    left.run(l);
    right.run(r);
    benchmark::DoNotOptimize(l.data());
    benchmark::DoNotOptimize(r.data());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(plainInputFilterPair);

void dcRemoverPair(benchmark::State& state) {
  DCRemover left, right;
  const Vector source = tone(1.0);
  Vector l{}, r{};
  for (auto _ : state) {
    l = r = source;
    DCRemover::processPair(left, l.data(), right, r.data());
    benchmark::DoNotOptimize(l.data());
    benchmark::DoNotOptimize(r.data());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(dcRemoverPair);

void plainDcRemoverPair(benchmark::State& state) {
  const Vector source = tone(1.0);
  Vector vectors[2]{};
  double x[2] = {}, y[2] = {};
  for (auto _ : state) {
    vectors[0] = vectors[1] = source;
    for (size_t channel = 0; channel < 2; ++channel) {
      for (double& sample : vectors[channel]) {
        y[channel] = 0.9999 * y[channel] + sample - x[channel];
        x[channel] = sample;
        sample = y[channel];
      }
    }
    benchmark::DoNotOptimize(vectors);
    benchmark::ClobberMemory();
  }
}
BENCHMARK(plainDcRemoverPair);

void smootherRampMoving(benchmark::State& state) {
  Smoother smoother(200.0);
  double target = 0.0;
  for (auto _ : state) {
    target = 1.0 - target;
    benchmark::DoNotOptimize(smoother.ramp(target));
    benchmark::ClobberMemory();
  }
}
BENCHMARK(smootherRampMoving);

void smootherRampAtRest(benchmark::State& state) {
  Smoother smoother(200.0);
  smoother.snap(0.5);
  for (auto _ : state) {
    benchmark::DoNotOptimize(smoother.ramp(0.5));
    benchmark::ClobberMemory();
  }
}
BENCHMARK(smootherRampAtRest);

void plainSmootherTicks(benchmark::State& state) {
  Smoother smoother(200.0);
  Vector out{};
  double target = 0.0;
  for (auto _ : state) {
    target = 1.0 - target;
    for (double& value : out) value = smoother.tick(target);
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(plainSmootherTicks);

}  // namespace
}  // namespace orvantesco
