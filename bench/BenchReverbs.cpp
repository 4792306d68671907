// The reverbs of the master section over one vector of 32 stereo frames, each beside the plain
// loop that says the same. `frames` counts frames, so its inverse is the time of one.
#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <memory>
#include <vector>

#include "BenchVector.h"
#include "delay/MLPF1a.h"
#include "delay/MSVRAP1ModDelayLine.h"
#include "delay/MSinOsc.h"
#include "delay/RingDelay.h"
#include "fx/IppBiquad.h"
#include "master/AFdnReverb.h"
#include "master/Ambience.h"

namespace orvantesco {
namespace {

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

template <class Block>
void setAmbience(Block& ambience, double drift) {
  const double values[] = {2.2, 0.7, drift, 0.7};
  for (int i = 0; i < 4; ++i) ambience.setParam(i, values[i]);
}

/// Percent of the drift.
void ambience(benchmark::State& state) {
  Ambience block;
  setAmbience(block, static_cast<double>(state.range(0)) * 0.01);
  runStereo(state, block);
}
BENCHMARK(ambience)->Arg(0)->Arg(30);

/// The same network with its four lines one after the other.
class PlainAmbience {
 public:
  PlainAmbience() {
    for (RingDelay& line : lines) line.resize(60000);
    for (IppBiquad* filter : {&left, &right}) filter->setCutoff(0.7);
  }

  void process(const double* inL, const double* inR, double* outL, double* outR) {
    static constexpr double kLength[] = {9453.4, 3671.8, 6056.6, 7878.2};
    for (int n = 0; n < kVectorLength; ++n) feed[0][n] += inL[n];
    for (int n = 0; n < kVectorLength; ++n) feed[1][n] += inR[n];
    left.process(feed[0], nullptr);
    right.process(feed[1], nullptr);
    swing += 0.003;
    const double* r[4];
    for (int i = 0; i < 4; ++i) {
      lines[i].write(feed[i], kVectorLength);
      r[i] = lines[i].readModulated(kLength[i] + (i < 2 ? 50.0 * std::sin(swing) : 0.0),
                                    kVectorLength);
    }
    for (int n = 0; n < kVectorLength; ++n) {
      const double sum = -0.5 * (r[0][n] + r[1][n] + r[2][n] + r[3][n]);
      for (int i = 0; i < 4; ++i) feed[i][n] = (r[i][n] + sum) * -0.7;
      outL[n] = 2.0 * r[0][n];
      outR[n] = 2.0 * r[1][n];
    }
  }

 private:
  double swing = 0.0;
  RingDelay lines[4];
  IppBiquad left{false, kLowpassFilter, 1};
  IppBiquad right{false, kLowpassFilter, 1};
  double feed[4][kVectorLength] = {};
};

void plainAmbience(benchmark::State& state) {
  PlainAmbience block;
  runStereo(state, block);
}
BENCHMARK(plainAmbience);

}  // namespace
}  // namespace orvantesco
