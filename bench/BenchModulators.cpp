// The update of all modulators, which has a microsecond with all fourteen on and 40 ns with none,
// and each of them alone.

#include <benchmark/benchmark.h>

#include <cmath>

#include "../tests/support/EngineRig.h"
#include "../tests/support/ModulatorSettings.h"
#include "../tests/support/OrvantescoProbe.h"
#include "mod/ArpGate.h"
#include "mod/Envelope.h"
#include "mod/LogicUnit.h"
#include "mod/MultiLFO.h"
#include "mod/WaveLFO.h"
#include "mod/WaveTable.h"

namespace orvantesco {
namespace {

struct Vector {
  alignas(64) double values[kVectorLength] = {};
  Vector() {
    for (int i = 0; i < kVectorLength; ++i) values[i] = 0.7 * std::sin(0.3 * i);
  }
};

void waveLfo(benchmark::State& state) {
  WaveLFO lfo;
  lfo.setWave(waveList[static_cast<std::size_t>(state.range(0))]);
  lfo.setRate(2.0);
  lfo.setGlide(10.0);
  Vector out;
  for (auto _ : state) {
    lfo.process(out.values);
    benchmark::DoNotOptimize(out.values);
  }
}
BENCHMARK(waveLfo)->Arg(0)->Arg(26);

void arpGate(benchmark::State& state) {
  ArpGate gate;
  for (int step = 0; step < ArpGate::kSteps; ++step) gate.setLevel(step, step / 15.0);
  gate.setGlide(50.0);
  gate.setStepsPerBeat(8.0);
  Vector out;
  for (auto _ : state) {
    gate.process({0.0, 200.0}, out.values);
    benchmark::DoNotOptimize(out.values);
  }
}
BENCHMARK(arpGate);

void envelope(benchmark::State& state) {
  Envelope block;
  block.setFollower(state.range(0) == 0);
  block.setThreshold(0.5);
  Vector in;
  Vector out;
  for (auto _ : state) {
    block.process(in.values, out.values);
    benchmark::DoNotOptimize(out.values);
  }
}
BENCHMARK(envelope)->Arg(0)->Arg(1);

void logicUnit(benchmark::State& state) {
  LogicUnit unit;
  Vector a;
  Vector b;
  unit.setType(static_cast<LogicUnit::Type>(state.range(0)));
  unit.setOperand(0, {a.values, 0.5});
  unit.setOperand(1, {b.values, -0.7});
  unit.setSmooth(20.0);
  unit.setDepth(1.0);
  Vector out;
  for (auto _ : state) {
    unit.process(out.values);
    benchmark::DoNotOptimize(out.values);
  }
}
BENCHMARK(logicUnit)->DenseRange(0, LogicUnit::kTypes - 1);

void multiLfo(benchmark::State& state) {
  MultiLFO lfo;
  lfo.setRate(67.0);
  for (auto _ : state) {
    lfo.process();
    benchmark::DoNotOptimize(lfo.mainMod().data());
  }
}
BENCHMARK(multiLfo);

void updateAll(benchmark::State& state) {
  EngineRig rig;
  if (state.range(0) != 0) switchOnModulators(rig);
  StereoBuffer audio = noise(4800);
  rig.render(audio);
  const OrvantescoProbe probe{rig.effect};
  for (auto _ : state) {
    probe.updateModulators();
    benchmark::ClobberMemory();
  }
}
BENCHMARK(updateAll)->Arg(0)->Arg(1);

}  // namespace
}  // namespace orvantesco
