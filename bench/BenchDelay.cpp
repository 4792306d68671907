// Delays: time per call of 32 samples. `frame` is the time for each of them, so a pair's is the
// time of a stereo frame. `Plain...` is the loop that anybody would write, the base of the ratios.

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <random>
#include <vector>

#include "delay/QLMMultiDelay.h"
#include "delay/RingDelay.h"
#include "fx/RateValues.h"

namespace orvantesco {
namespace {

constexpr int n = kVectorLength;
constexpr double kRate = 48000.0;

void countFrames(benchmark::State& state) {
  state.counters["frame"] =
      benchmark::Counter(static_cast<double>(state.iterations()) * n,
                         benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

const std::vector<double>& noise() {
  static const std::vector<double> samples = [] {
    std::mt19937 engine(1);
    std::uniform_real_distribution<double> uniform(-1.0, 1.0);
    std::vector<double> all(n * 64);
    for (double& x : all) x = uniform(engine);
    return all;
  }();
  return samples;
}

/// A delay of eight seconds, written all over.
class FullDelay {
 public:
  explicit FullDelay(int mode = QLMMultiDelay::kTapped, bool isRight = false) : delay(isRight) {
    setRateValues(kRate);
    delay.resize(maxDelay);
    delay.setDelayMode(mode);
    for (int at = 0; at < maxDelay; at += n) write();
    delay.snapTapGlide();
  }

  void write() { delay.writeBlock(&noise()[static_cast<size_t>(block++ % 64) * n], n); }

  QLMMultiDelay delay;

 private:
  int block = 0;
};

/// Sample by sample, with its index brought into the ring each time: 16 taps, settled.
struct PlainTaps {
  PlainTaps() : ring(static_cast<size_t>(kRate * 8) + 1000, 0.25) {}

  void read(int tap, double d, double* out) {
    const int length = static_cast<int>(ring.size());
    for (int i = 0; i < n; ++i) {
      const int whole = static_cast<int>(d);
      const double f = d - whole;
      int p = i - whole + position;
      if (p < 0) p += length;
      const int q = p > 0 ? p - 1 : length - 1;
      double& y = memory[static_cast<size_t>(tap)];
      y = (ring[static_cast<size_t>(p)] - y) * (1.0 - f) / (1.0 + f) + ring[static_cast<size_t>(q)];
      out[i] = y;
    }
  }

  void advance() { position = (position + n) % (static_cast<int>(ring.size()) - n); }

  std::vector<double> ring;
  std::array<double, 16> memory{};
  int position = 0;
};

double timeOf(int tap) { return 9000.3 + 22000.7 * tap; }

void BM_PlainTap(benchmark::State& state) {
  PlainTaps taps;
  double out[n];
  for (auto _ : state) {
    taps.read(0, timeOf(0), out);
    taps.advance();
    benchmark::DoNotOptimize(out);
  }
  countFrames(state);
}
BENCHMARK(BM_PlainTap);

void BM_PlainTwoTimesSixteenTaps(benchmark::State& state) {
  PlainTaps left, right;
  double out[n];
  for (auto _ : state) {
    for (int tap = 0; tap < 16; ++tap) {
      left.read(tap, timeOf(tap), out);
      benchmark::DoNotOptimize(out);
      right.read(tap, timeOf(tap), out);
      benchmark::DoNotOptimize(out);
    }
    left.advance();
    right.advance();
  }
  countFrames(state);
}
BENCHMARK(BM_PlainTwoTimesSixteenTaps);

/// Where the times of the taps go from block to block.
enum Motion { kWhole, kSettled, kGliding };

double timeAt(Motion motion, int tap, int block) {
  if (motion == kWhole) return std::floor(timeOf(tap));
  if (motion == kSettled) return timeOf(tap);
  return timeOf(tap) + (block % 2000 < 1000 ? 0.0 : 4000.0);
}

void BM_ReadTap(benchmark::State& state) {
  FullDelay full;
  int block = 0;
  for (auto _ : state) {
    const double time = timeAt(static_cast<Motion>(state.range(0)), 0, block++);
    benchmark::DoNotOptimize(full.delay.readTap(time, n, 0));
    full.write();
  }
  countFrames(state);
}
BENCHMARK(BM_ReadTap)->ArgName("motion")->Arg(kWhole)->Arg(kSettled)->Arg(kGliding);

void readPair(benchmark::State& state, int mode) {
  FullDelay left(mode), right(mode, true);
  for (FullDelay* side : {&left, &right}) {
    side->delay.setLowpass(5000.0 / kRate);
    side->delay.setHighpass(100.0 / kRate);
  }
  int block = 0;
  for (auto _ : state) {
    const auto motion = static_cast<Motion>(state.range(0));
    QLMMultiDelay::readTapPair(left.delay, timeAt(motion, 0, block), right.delay,
                               timeAt(motion, 1, block), n);
    ++block;
    benchmark::DoNotOptimize(left.delay.result());
    benchmark::DoNotOptimize(right.delay.result());
    left.write();
    right.write();
  }
  countFrames(state);
}

void BM_ReadTapPair(benchmark::State& state) { readPair(state, QLMMultiDelay::kTapped); }
BENCHMARK(BM_ReadTapPair)->ArgName("motion")->Arg(kWhole)->Arg(kSettled)->Arg(kGliding);

void BM_ReadTapPairBothFilters(benchmark::State& state) {
  readPair(state, QLMMultiDelay::kForward);
}
BENCHMARK(BM_ReadTapPairBothFilters)->ArgName("motion")->Arg(kSettled)->Arg(kGliding);

/// `count` taps a side, as a slot reads them.
void BM_ReadTapsBothSides(benchmark::State& state) {
  FullDelay left, right(QLMMultiDelay::kTapped, true);
  const auto motion = static_cast<Motion>(state.range(0));
  const int count = static_cast<int>(state.range(1));
  std::array<QLMMultiDelay::TapRead, 16> reads;
  int block = 0;
  for (auto _ : state) {
    for (FullDelay* side : {&left, &right}) {
      for (int tap = 0; tap < count; ++tap) {
        reads[static_cast<size_t>(tap)] = {timeAt(motion, tap, block), tap};
      }
      side->delay.readTaps(reads.data(), count, n);
      benchmark::DoNotOptimize(reads);
      side->write();
    }
    ++block;
  }
  countFrames(state);
}
BENCHMARK(BM_ReadTapsBothSides)
    ->ArgNames({"motion", "taps"})
    ->ArgsProduct({{kWhole, kSettled, kGliding}, {1, 4, 16}});

void BM_ReadMode(benchmark::State& state, int mode) {
  FullDelay full(mode);
  full.delay.setGrainSpeed(0.3);
  for (auto _ : state) {
    benchmark::DoNotOptimize(full.delay.readTap(20000.5, n, 0));
    full.write();
  }
  countFrames(state);
}
BENCHMARK_CAPTURE(BM_ReadMode, backward, QLMMultiDelay::kBackward);
BENCHMARK_CAPTURE(BM_ReadMode, grain, QLMMultiDelay::kGrain);

void BM_ReadRaw(benchmark::State& state) {
  FullDelay full;
  std::array<double, n> sum{};
  int back = 0;
  for (auto _ : state) {
    back = (back + 977) % 100000;
    const double* raw = full.delay.readRaw(back, n);
    for (int i = 0; i < n; ++i) sum[static_cast<size_t>(i)] += 0.3 * raw[i];
    benchmark::DoNotOptimize(sum);
  }
  countFrames(state);
}
BENCHMARK(BM_ReadRaw);

void BM_WriteBlock(benchmark::State& state) {
  FullDelay full;
  for (auto _ : state) full.write();
  countFrames(state);
}
BENCHMARK(BM_WriteBlock);

/// Should not depend on the length, in samples.
void BM_ResetFullDelay(benchmark::State& state) {
  setRateValues(kRate);
  QLMMultiDelay delay;
  delay.resize(static_cast<int>(state.range(0)));
  for (int at = 0; at < state.range(0); at += n) delay.writeBlock(noise().data(), n);
  for (auto _ : state) {
    delay.reset();
    benchmark::ClobberMemory();
  }
}
BENCHMARK(BM_ResetFullDelay)->Arg(48000)->Arg(385000)->Arg(769000);

void BM_RingDelayRead(benchmark::State& state) {
  RingDelay line;
  line.resize(24000);
  for (auto _ : state) {
    line.write(noise().data(), n);
    benchmark::DoNotOptimize(line.read(1000.0, n));
  }
  countFrames(state);
}
BENCHMARK(BM_RingDelayRead);

void BM_RingDelayReadModulated(benchmark::State& state) {
  RingDelay line;
  line.resize(24000);
  for (auto _ : state) {
    line.write(noise().data(), n);
    benchmark::DoNotOptimize(line.readModulated(1000.5, n));
  }
  countFrames(state);
}
BENCHMARK(BM_RingDelayReadModulated);

}  // namespace
}  // namespace orvantesco
