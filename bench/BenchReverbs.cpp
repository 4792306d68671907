// The reverbs of the master section over one vector of 32 stereo frames, each beside the plain
// loop that says the same. `frames` counts frames, so its inverse is the time of one.
#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <memory>
#include <vector>

#include "delay/MLPF1a.h"
#include "delay/MSVRAP1ModDelayLine.h"
#include "delay/MSinOsc.h"
#include "fx/IppBiquad.h"
#include "master/AFdnReverb.h"

namespace orvantesco {
namespace {

using Vector = std::array<double, kVectorLength>;

Vector tone(double phase) {
  Vector vector{};
  for (int i = 0; i < kVectorLength; ++i)
    vector[static_cast<size_t>(i)] = std::sin(phase + 0.1 * i);
  return vector;
}

/// Runs a stereo block, from its thousandth vector on.
template <class Block>
void runStereo(benchmark::State& state, Block& block) {
  Vector inL = tone(0.0), inR = tone(1.0), outL{}, outR{};
  const auto step = [&] { block.process(inL.data(), inR.data(), outL.data(), outR.data()); };
  for (int i = 0; i < 1000; ++i) step();
  for (auto _ : state) {
    step();
    benchmark::DoNotOptimize(outL.data());
    benchmark::ClobberMemory();
  }
  state.counters["frame"] = benchmark::Counter(
      kVectorLength, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void reverb16(benchmark::State& state) {
  AFdnReverb reverb(16, 7, 1);
  runStereo(state, reverb);
}
BENCHMARK(reverb16);

void room10(benchmark::State& state) {
  AFdnReverb reverb(10, 2, 4);
  runStereo(state, reverb);
}
BENCHMARK(room10);

/// The network of `AFdnReverb` sample by sample, out of the single-sample lines.
class PlainNetwork {
 public:
  PlainNetwork(int lines, int modulated) : count(lines), swung(modulated) {
    for (int i = 0; i < lines; ++i) {
      damping[i].setCoefficients(0.9F, -0.08F);
      if (i < modulated) {
        auto& line = *swinging.emplace_back(std::make_unique<MSVRAP1ModDelayLine>());
        auto& oscillator = *oscillators.emplace_back(std::make_unique<MSinOsc>());
        oscillator.setFrequency(2.0F, 882.0F, 45.0F * static_cast<float>(i));
        line.setModulator(&oscillator);
        line.setMaxDelay(3000);
        line.setCentreDelay(919 + 29 * i);
        line.setModDepth(6);
      } else {
        auto& line = *still.emplace_back(std::make_unique<MDelayLine>());
        line.setDelay(919 + 29 * i);
        line.setMaxDelay(3000);
      }
    }
  }

  void process(const double* inL, const double* inR, double* outL, double* outR) {
    double mono[kVectorLength];
    for (int n = 0; n < kVectorLength; ++n) mono[n] = inL[n] + inR[n] + 1e-15;
    highPass.process(mono, nullptr);
    for (int n = 0; n < kVectorLength; ++n)
      step(static_cast<float>(mono[n] * 0.1667), outL[n], outR[n]);
  }

 private:
  void step(float in, double& outL, double& outR) {
    float out[16];
    float left = 0.0F, right = 0.0F, sum = 0.0F;
    for (int i = 0; i < count; ++i) {
      const auto k = static_cast<size_t>(i);
      const float v =
          i < swung ? swinging[k]->process(0.0F) : still[k - static_cast<size_t>(swung)]->read();
      out[i] = damping[i].process(v);
      left += (i & 1) != 0 ? -out[i] : out[i];
      right += (i & 2) != 0 ? -out[i] : out[i];
      sum += out[i];
    }
    const float s = -2.0F / static_cast<float>(count) * sum;
    for (int i = 0; i < count; ++i) {
      const auto k = static_cast<size_t>(i);
      const float next = out[i + 1 < count ? i + 1 : 0] + s + in;
      if (i < swung) {
        swinging[k]->write(next);
      } else {
        still[k - static_cast<size_t>(swung)]->write(next);
      }
    }
    outL = static_cast<double>(left);
    outR = static_cast<double>(right);
  }

  int count;
  int swung;
  IppBiquad highPass{false, kHighpassFilter, 1};
  MLPF1a damping[16];
  std::vector<std::unique_ptr<MSVRAP1ModDelayLine>> swinging;
  std::vector<std::unique_ptr<MSinOsc>> oscillators;
  std::vector<std::unique_ptr<MDelayLine>> still;
};

void plainReverb16(benchmark::State& state) {
  PlainNetwork network(16, 7);
  runStereo(state, network);
}
BENCHMARK(plainReverb16);

void plainRoom10(benchmark::State& state) {
  PlainNetwork network(10, 2);
  runStereo(state, network);
}
BENCHMARK(plainRoom10);

}  // namespace
}  // namespace orvantesco
