// Every effect of the catalogue: time per vector of 32 samples of one channel, with its knobs in
// the middle, while noise sounds and in the silence behind it. A silence that takes longer than the
// sound means denormals.

#include <benchmark/benchmark.h>

#include <array>
#include <memory>
#include <string>

#include "../tests/support/EngineRig.h"
#include "core/DenormalGuard.h"
#include "fx/EffectCatalogue.h"
#include "fx/EffectFactory.h"
#include "fx/RateValues.h"

namespace orvantesco {
namespace {

constexpr int kVectors = 64;

std::shared_ptr<DSPShell> build(int typeId) {
  auto effect = createEffect(typeId, false, nullptr);
  for (int k = 0; k < kFxParamCount; ++k) {
    double position = 0.5, control = 0.0;
    fxParamScale(typeId, k, &position, &control);
    effect->setParam(k, control);
  }
  return effect;
}

void Effect(benchmark::State& state, int typeId, bool silent) {
  setRateValues(48000.0);
  const DenormalGuard guard;
  const auto effect = build(typeId);
  StereoBuffer sound = noise(static_cast<std::size_t>(kVectors) * kVectorLength);
  std::array<double, kVectorLength> in{}, out{};
  std::size_t at = 0;
  const auto next = [&] {
    std::copy_n(&sound.left[at], kVectorLength, in.data());
    at = (at + kVectorLength) % sound.size();
    effect->process(in.data(), out.data());
  };
  for (int i = 0; i < 1000; ++i) next();
  if (silent) std::fill(sound.left.begin(), sound.left.end(), 0.0);
  // Long enough for every tail to have sunk below what a double tells from nothing.
  if (silent) {
    for (int i = 0; i < 30000; ++i) next();
  }
  for (auto _ : state) {
    next();
    benchmark::DoNotOptimize(out.data());
  }
}

const bool kRegistered = [] {
  for (int id = 1; id < 64; ++id) {
    if (!effectExists(id)) continue;
    const std::string name = "Effect/" + std::to_string(id) + " " + effectRecord(id).menuName;
    benchmark::RegisterBenchmark((name + "/sound").c_str(), Effect, id, false);
    benchmark::RegisterBenchmark((name + "/silence").c_str(), Effect, id, true);
  }
  return true;
}();

}  // namespace
}  // namespace orvantesco
