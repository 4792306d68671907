// The equaliser and the limiter of the master section over one stereo vector of 32 frames, each
// beside the plain loop that says the same.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "master/EQ_ST.h"
#include "master/MasterLimiter.h"

namespace orvantesco {
namespace {

using Vector = std::array<double, kVectorLength>;

/// A signal of many vectors, so that no branch learns it by heart.
struct Programme {
  static constexpr size_t kVectors = 512;

  Programme() : left(kVectors), right(kVectors) {
    unsigned state = 1;
    for (size_t v = 0; v < kVectors; ++v) {
      for (size_t i = 0; i < kVectorLength; ++i) {
        state = state * 1664525U + 1013904223U;
        const double noise = static_cast<double>(state) / 2147483648.0 - 1.0;
        left[v][i] = 0.8 * std::sin(0.05 * static_cast<double>(v * kVectorLength + i)) * noise;
        right[v][i] = 0.5 * noise;
      }
    }
  }

  std::vector<Vector> left, right;
};

/// Time per frame: nanoseconds of a vector over 32.
void countFrames(benchmark::State& state) {
  state.counters["ns/frame"] =
      benchmark::Counter(static_cast<double>(state.iterations()) * kVectorLength * 1e-9,
                         benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

template <class Work>
void overProgramme(benchmark::State& state, Work work) {
  static Programme programme;
  Vector outL{}, outR{};
  size_t v = 0;
  for (auto _ : state) {
    work(programme.left[v], programme.right[v], outL, outR);
    v = (v + 1) % Programme::kVectors;
    benchmark::DoNotOptimize(outL.data());
    benchmark::DoNotOptimize(outR.data());
    benchmark::ClobberMemory();
  }
  countFrames(state);
}

void masterLimiter(benchmark::State& state) {
  MasterLimiter limiter;
  limiter.setMode(static_cast<int>(state.range(0)), false);
  limiter.setBoostDb(12.0);
  overProgramme(state, [&](Vector& inL, Vector& inR, Vector& outL, Vector& outR) {
    limiter.process(inL.data(), inR.data(), outL.data(), outR.data());
  });
}
BENCHMARK(masterLimiter)
    ->Arg(MasterLimiter::kSlowI)
    ->Arg(MasterLimiter::kSlowII)
    ->Arg(MasterLimiter::kFast);

struct PlainFollower {
  double slow = 1.0, fast = 1.0;
  double tick(double x, double rise, double fall, double hold) {
    if (!(std::fabs(x) > 1e-15)) return x;
    if (x < fast) x = (fast - x) * hold + x;
    fast = x;
    x = (slow - x) * (x > slow ? rise : fall) + x;
    slow = x;
    return x;
  }
};

/// The limiter as one reads it: frame by frame.
struct PlainLimiter {
  int mode = 1;
  double boost = 3.98, meanSquare = 1.0;
  PlainFollower followers[5];
  double lefts[256] = {}, rights[256] = {}, sums[256] = {};
  unsigned at = 0;

  void run(const Vector& inL, const Vector& inR, Vector& outL, Vector& outR) {
    double peakL = 0.0, peakR = 0.0;
    for (size_t i = 0; i < kVectorLength; ++i) {
      peakL = std::max(peakL, std::fabs(inL[i]));
      peakR = std::max(peakR, std::fabs(inR[i]));
    }
    for (size_t i = 0; i < kVectorLength; ++i) {
      double left = inL[i] * boost;
      double right = inR[i] * boost;
      double sum = mode == 1 ? left + right : 1.09 * (peakR > peakL ? right : left);
      if (mode < 3) level(left, right, sum);
      at = (at + 1) & 255;
      lefts[at] = left;
      rights[at] = right;
      sums[at] = sum;
      const unsigned from = (at - 44) & 255;
      const double t = std::max(1.0, std::fabs(sum));
      double gain = 1.0 / followers[3].tick(t, 0.9556, 0.0, 0.99247);
      if (mode > 1) {
        const double over = std::max(1.0, std::fabs(gain * sums[from]));
        gain /= followers[4].tick(over, 0.0, 0.0, 0.99247);
      }
      outL[i] = gain * lefts[from];
      outR[i] = gain * rights[from];
    }
  }

  void level(double& left, double& right, double& sum) {
    double t = followers[0].tick(sum, 0.0, 0.999977, 0.997735);
    meanSquare += (sum * sum - meanSquare) * 4.535e-5;
    if (mode == 1) t *= 0.708;
    const double slowEnvelope = 1.0 / std::max(0.25, t - std::sqrt(meanSquare) + 1.0);
    const double shape = mode == 1 ? 5.0 : 1.5;
    t = std::max(1.0, std::fabs(slowEnvelope * shape * sum));
    double gain = (shape * 0.1 + 0.9) / followers[1].tick(t, 0.999773, 0.999977, 0.997735);
    sum *= gain;
    t = std::max(1.0, std::fabs(slowEnvelope * sum));
    const double again = 1.0 / followers[2].tick(t, 0.998867, 0.999773, 0.997735);
    sum *= again * again;
    gain *= again * again;
    left *= gain;
    right *= gain;
  }
};

void plainLimiter(benchmark::State& state) {
  PlainLimiter limiter;
  limiter.mode = static_cast<int>(state.range(0));
  overProgramme(state, [&](Vector& inL, Vector& inR, Vector& outL, Vector& outR) {
    limiter.run(inL, inR, outL, outR);
  });
}
BENCHMARK(plainLimiter)->Arg(1)->Arg(2)->Arg(3);

void masterEqualiser(benchmark::State& state) {
  EQ_ST eq(static_cast<int>(state.range(0)));
  const double gains[] = {1.2, 900.0, 0.7, 0.8};
  for (int i = 0; i < 4; ++i) eq.setParam(i, gains[i]);
  overProgramme(state, [&](Vector& inL, Vector& inR, Vector& outL, Vector& outR) {
    eq.process(inL.data(), inR.data(), outL.data(), outR.data());
  });
}
BENCHMARK(masterEqualiser)->Arg(EQ_M::kFixEq)->Arg(EQ_M::kTwoBandEq)->Arg(EQ_M::kShelfEq);

/// Two or three sections a channel, one sample after the other.
struct PlainEqualiser {
  int sections = 2;
  double p[6] = {}, q[6] = {};

  double tick(double x, int channel) {
    for (int k = 0; k < sections; ++k) {
      const int at = 3 * channel + k;
      const double y = 1.01 * x + p[at];
      p[at] = (-1.9 * x + q[at]) - -1.9 * y;
      q[at] = 0.91 * x - 0.92 * y;
      x = y;
    }
    return x;
  }
};

void plainEqualiser(benchmark::State& state) {
  PlainEqualiser eq;
  eq.sections = static_cast<int>(state.range(0));
  overProgramme(state, [&](Vector& inL, Vector& inR, Vector& outL, Vector& outR) {
    for (size_t i = 0; i < kVectorLength; ++i) {
      outL[i] = eq.tick(inL[i], 0);
      outR[i] = eq.tick(inR[i], 1);
    }
  });
}
BENCHMARK(plainEqualiser)->Arg(3)->Arg(2);

}  // namespace
}  // namespace orvantesco
