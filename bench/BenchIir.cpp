// The recursive filters at each processor level: ns per sample ("items" are samples of one
// channel, so a pair counts two), the exchange of delay lines, and designs.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "fx/Kernels.h"
#include "fx/kernels/Level.h"

namespace orvantesco {
namespace {

using kernels::Level;

/// A filter with its storage and the vector that it works on.
class Subject {
 public:
  explicit Subject(const std::vector<double>& taps, int order, int sections) {
    int size = 0;
    iirBiquadStateSize(sections > 0 ? sections : 1, &size);
    buffer = allocBytes(size);
    if (sections > 0) {
      iirInitBiquads(&state, taps.data(), sections, nullptr, buffer);
    } else {
      iirInitDirect(&state, taps.data(), order, nullptr, buffer);
    }
    for (int i = 0; i < kVectorLength; ++i) source[i] = std::sin(0.7 * i);
  }
  ~Subject() { vecFree(buffer); }
  Subject(const Subject&) = delete;
  Subject& operator=(const Subject&) = delete;

  alignas(64) double source[kVectorLength] = {};
  alignas(64) double x[kVectorLength] = {};
  alignas(64) double line[24] = {};
  IirState* state = nullptr;

 private:
  std::uint8_t* buffer = nullptr;
};

Subject directOf(int order) {
  std::vector<double> taps(static_cast<size_t>(2 * (order + 1)));
  std::uint8_t work[1] = {};
  iirDesignLowpass(15000.0 / 48000.0, 0.0, order, taps.data(), kButterworth, work);
  return Subject(taps, order, 0);
}

Subject cascadeOf(int sections) {
  std::vector<double> taps;
  for (int i = 0; i < sections; ++i) {
    const double w = 0.01 * (i + 1), alpha = std::sin(w) / 1.4, c = std::cos(w);
    for (const double tap : {(1 - c) / 2, 1 - c, (1 - c) / 2, 1 + alpha, -2 * c, 1 - alpha}) {
      taps.push_back(tap);
    }
  }
  return Subject(taps, 0, sections);
}

void finish(benchmark::State& state, int samples) {
  state.SetItemsProcessed(state.iterations() * samples);
  state.counters["ns/sample"] =
      benchmark::Counter(static_cast<double>(state.iterations() * samples) * 1e-9,
                         benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
  kernels::forgetLevel();
}

template <class Make>
void addFilter(const std::string& name, Make make) {
  for (const Level level : {Level::kScalar, Level::kSse2, Level::kAvx2}) {
    const std::string at = std::string("/") + kernels::nameOf(level);
    benchmark::RegisterBenchmark((name + at).c_str(), [=](benchmark::State& state) {
      if (!kernels::forceLevel(level)) return state.SkipWithError("not on this processor");
      Subject subject = make();
      for (auto iteration : state) {
        iirFilter(subject.source, subject.x, kVectorLength, subject.state);
        benchmark::ClobberMemory();
      }
      finish(state, kVectorLength);
    });
    benchmark::RegisterBenchmark((name + "/pair" + at).c_str(), [=](benchmark::State& state) {
      if (!kernels::forceLevel(level)) return state.SkipWithError("not on this processor");
      Subject left = make(), right = make();
      for (auto iteration : state) {
        vecCopy(left.source, left.x, kVectorLength);
        vecCopy(right.source, right.x, kVectorLength);
        iirFilterPair(left.x, left.state, right.x, right.state, kVectorLength);
        benchmark::ClobberMemory();
      }
      finish(state, 2 * kVectorLength);
    });
  }
}

/// The plain loop of a direct form, one channel.
void loopOrder12(benchmark::State& state) {
  double taps[26], s[13] = {}, x[kVectorLength], y[kVectorLength];
  std::uint8_t work[1] = {};
  iirDesignLowpass(15000.0 / 48000.0, 0.0, 12, taps, kButterworth, work);
  for (int i = 0; i < kVectorLength; ++i) x[i] = std::sin(0.7 * i);
  for (auto iteration : state) {
    for (int i = 0; i < kVectorLength; ++i) {
      y[i] = taps[0] * x[i] + s[0];
      for (int k = 0; k < 12; ++k) s[k] = (s[k + 1] + taps[k + 1] * x[i]) - taps[14 + k] * y[i];
    }
    benchmark::DoNotOptimize(y);
    benchmark::ClobberMemory();
  }
  finish(state, kVectorLength);
}
BENCHMARK(loopOrder12)->Name("iir order 12/loop");

template <class Make>
void addExchange(const std::string& name, Make make) {
  benchmark::RegisterBenchmark((name + "/set delay line").c_str(), [=](benchmark::State& state) {
    Subject subject = make();
    for (auto iteration : state) {
      iirSetDelayLine(subject.state, subject.line);
      benchmark::ClobberMemory();
    }
  });
  benchmark::RegisterBenchmark((name + "/get delay line").c_str(), [=](benchmark::State& state) {
    Subject subject = make();
    for (auto iteration : state) {
      iirGetDelayLine(subject.state, subject.line);
      benchmark::ClobberMemory();
    }
  });
  benchmark::RegisterBenchmark((name + "/as blocks call it").c_str(), [=](benchmark::State& state) {
    Subject subject = make();
    for (auto iteration : state) {
      iirSetDelayLine(subject.state, subject.line);
      iirFilter(subject.source, subject.x, kVectorLength, subject.state);
      iirGetDelayLine(subject.state, subject.line);
      subject.line[0] += 1e-15;
      subject.line[0] -= 1e-15;
      benchmark::ClobberMemory();
    }
    finish(state, kVectorLength);
  });
}

void designOf(benchmark::State& state, int type) {
  double taps[26];
  std::uint8_t work[1] = {};
  double freq = 0.1;
  for (auto iteration : state) {
    iirDesignLowpass(freq, 0.5, static_cast<int>(state.range(0)), taps, type, work);
    benchmark::DoNotOptimize(taps);
    freq = freq < 0.4 ? freq + 1e-4 : 0.1;
  }
}
BENCHMARK_CAPTURE(designOf, butterworth, kButterworth)->Name("design butterworth")->Arg(4)->Arg(12);
BENCHMARK_CAPTURE(designOf, chebyshev, kChebyshev1)->Name("design chebyshev")->Arg(4)->Arg(12);

void initOrder12(benchmark::State& state) {
  double taps[26];
  std::uint8_t work[1] = {};
  iirDesignLowpass(0.3, 0.0, 12, taps, kButterworth, work);
  int size = 0;
  iirBiquadStateSize(1, &size);
  std::vector<std::uint8_t> buffer(static_cast<size_t>(size));
  IirState* filter = nullptr;
  for (auto iteration : state) {
    iirInitDirect(&filter, taps, 12, nullptr, buffer.data());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(initOrder12)->Name("init order 12");

[[maybe_unused]] const bool registered = [] {
  for (const int order : {4, 12}) {
    const std::string name = "iir order " + std::to_string(order);
    addFilter(name, [=] { return directOf(order); });
    addExchange(name, [=] { return directOf(order); });
  }
  for (const int sections : {1, 2, 3, 4, 6, 8, 12}) {
    const std::string name = "cascade of " + std::to_string(sections);
    addFilter(name, [=] { return cascadeOf(sections); });
    addExchange(name, [=] { return cascadeOf(sections); });
  }
  return true;
}();

}  // namespace
}  // namespace orvantesco
