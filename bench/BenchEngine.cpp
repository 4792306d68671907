// The whole engine: nanoseconds a stereo frame and real-time factor at 48000 Hz, blocks of 256.

#include <benchmark/benchmark.h>

#include "../tests/support/EngineRig.h"
#include "params/ParamIndex.h"

namespace orvantesco {
namespace {

constexpr int kBlock = 256;
constexpr double kRate = 48000.0;

void reportPerFrame(benchmark::State& state) {
  const auto frames = static_cast<double>(state.iterations()) * kBlock;
  state.counters["ns_per_frame"] =
      benchmark::Counter(frames * 1e-9, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
  state.counters["realtime_factor"] =
      benchmark::Counter(frames / kRate, benchmark::Counter::kIsRate);
}

/// Feeds block after block of noise to `process`, which works in place.
template <class Process>
void runBlocks(benchmark::State& state, Process process) {
  const StereoBuffer input = noise(1u << 15);
  StereoBuffer audio(kBlock);
  std::size_t at = 0;
  for (auto _ : state) {
    std::copy_n(&input.left[at], kBlock, audio.left.begin());
    std::copy_n(&input.right[at], kBlock, audio.right.begin());
    at = (at + kBlock) % input.size();
    process(audio);
    benchmark::DoNotOptimize(audio.left.data());
    benchmark::ClobberMemory();
  }
  reportPerFrame(state);
}

void run(benchmark::State& state, EngineRig& rig) {
  rig.warmUp(1.0);
  runBlocks(state, [&rig](StereoBuffer& audio) { rig.block(audio, 0, kBlock); });
}

/// What the frame loop costs at the very least: two copies in, two out.
void Engine_CopyOnly(benchmark::State& state) {
  runBlocks(state, [](const StereoBuffer&) {});
}
BENCHMARK(Engine_CopyOnly);

void Engine_SlotsForward(benchmark::State& state) {
  EngineRig rig(kRate);
  for (int slot = 0; slot < 4; ++slot) {
    rig.set(kSlotOn + slot, slot < state.range(0));
    rig.set(kTimebase + slot, 0);
    rig.set(kDelayTimeL + slot, 250.3);
    rig.set(kDelayTimeR + slot, 375.7);
    rig.set(kDelayHipass + slot, 100);
    rig.set(kDelayLopass + slot, 7500);
  }
  run(state, rig);
}
BENCHMARK(Engine_SlotsForward)->ArgName("slots")->Arg(0)->Arg(1)->Arg(4);

void Engine_SlotInMode(benchmark::State& state) {
  EngineRig rig(kRate);
  rig.set(kDelayMode, static_cast<double>(state.range(0)));
  run(state, rig);
}
BENCHMARK(Engine_SlotInMode)->ArgName("mode")->DenseRange(0, 3);

/// Taps a side, swell in percent.
void Engine_Tapped(benchmark::State& state) {
  EngineRig rig(kRate);
  rig.set(kDelayMode, 3);
  rig.set(kDelayTaps, static_cast<double>(state.range(0) - 1));
  rig.set(kDelayTapsSwell, static_cast<double>(state.range(1)));
  rig.set(kDelayTapsTime, 50.3);
  run(state, rig);
}
BENCHMARK(Engine_Tapped)->ArgNames({"taps", "swell"})->ArgsProduct({{1, 4, 16}, {0, 100}});

}  // namespace
}  // namespace orvantesco
