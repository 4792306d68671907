// How loud the limiter can get: what its gain law promises, for steps, sines and noise at every
// boost, in every mode, at every rate.

#include <gtest/gtest.h>

#include <functional>

#include "master/LimiterModel.h"
#include "master/MasterLimiter.h"

namespace orvantesco {
namespace {

using testing_support::kRates;
using testing_support::peakOf;
using testing_support::PlainFollower;
using testing_support::runStereo;
using testing_support::ScopedRate;
using testing_support::Signal;
using testing_support::Stereo;
using testing_support::stereoNoise;

constexpr double kHardCeiling = 1.0 / 1.09;
constexpr int kVectors = 600;

struct NamedSignal {
  const char* name;
  Stereo signal;
};

Stereo drawn(const std::function<std::pair<double, double>(double seconds)>& draw) {
  Stereo signal;
  for (int i = 0; i < kVectors * kVectorLength; ++i) {
    const auto [left, right] = draw(i / sampleRate);
    signal.left.push_back(left);
    signal.right.push_back(right);
  }
  return signal;
}

std::vector<NamedSignal> signals() {
  const auto step = [](double t) { return t < 0.02 ? 0.001 : (t < 0.1 ? 1.0 : -0.3); };
  const auto sine = [](double hz) {
    return [hz](double t) {
      const double y = std::sin(6.283185307179586 * hz * t);
      return std::pair{y, 0.6 * y};
    };
  };
  return {{"steps", drawn([&](double t) {
             return std::pair{step(t), step(t)};
           })},
          {"steps on the right", drawn([&](double t) {
             return std::pair{0.2, step(t + 0.01)};
           })},
          {"sine of 60 Hz", drawn(sine(60.0))},
          {"sine of 997 Hz", drawn(sine(997.0))},
          {"sine of 9 kHz", drawn(sine(9000.0))},
          {"noise", stereoNoise(kVectors, 1.0)},
          {"sparse peaks", drawn([](double t) {
             const bool isPeak = std::fmod(t, 0.011) * sampleRate < 1.0;
             return std::pair{isPeak ? 1.0 : 0.01, isPeak ? 1.0 : -0.01};
           })}};
}

/// What part of its height a single peak has brought the soft limit's follower to when it comes
/// out of the look-ahead.
double partOfAPeak() {
  const auto rate = [](double seconds) { return std::exp(-1.0 / (sampleRate * seconds)); };
  PlainFollower follower{1.0, 1.0};
  double t = follower.tick(2.0, rate(0.0005), 0.0, rate(0.003));
  for (int i = 0; i < static_cast<int>(sampleRate / 1000.0); ++i) {
    t = follower.tick(1.0, rate(0.0005), 0.0, rate(0.003));
  }
  return t - 1.0;
}

/// The largest magnitude of what the limiter has heard, as it leaves it.
double loudestHeard(int mode, const Stereo& in, const Stereo& out) {
  if (mode == MasterLimiter::kSlowI) {
    Signal sum(out.left);
    for (size_t i = 0; i < sum.size(); ++i) sum[i] += out.right[i];
    return peakOf(sum);
  }
  const auto lookahead = static_cast<size_t>(sampleRate / 1000.0);
  double loudest = 0.0;
  for (size_t at = 0; at < in.left.size(); at += kVectorLength) {
    const auto first = static_cast<std::ptrdiff_t>(at);
    const auto peak = [&](const Signal& signal) {
      return peakOf({signal.begin() + first, signal.begin() + first + kVectorLength});
    };
    const Signal& heard = peak(in.right) > peak(in.left) ? out.right : out.left;
    const size_t end = std::min(at + lookahead + kVectorLength, heard.size());
    for (size_t i = at + lookahead; i < end; ++i) {
      loudest = std::max(loudest, std::fabs(heard[i]));
    }
  }
  return loudest;
}

TEST(LimiterCeiling, HoldsForStepsSinesAndNoiseAtEveryBoostModeAndRate) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    const double softCeiling = 1.0 / partOfAPeak();
    for (const auto& [name, in] : signals()) {
      for (int mode : {1, 2, 3}) {
        const double ceiling = mode == MasterLimiter::kSlowI ? softCeiling : kHardCeiling;
        for (double boostDb = 0.0; boostDb <= 36.0; boostDb += 6.0) {
          MasterLimiter limiter;
          limiter.setMode(mode, false);
          limiter.setBoostDb(boostDb);
          const Stereo out = runStereo(limiter, in);
          EXPECT_LE(loudestHeard(mode, in, out), ceiling + 1e-12)
              << name << ", mode " << mode << ", " << boostDb << " dB, " << rate << " Hz";
        }
      }
    }
  }
}

TEST(LimiterCeiling, IsReachedByWhatIsDrivenHard) {
  const Stereo sine = drawn([](double t) {
    const double y = std::sin(6000.0 * t);
    return std::pair{y, y};
  });
  for (int mode : {MasterLimiter::kSlowII, MasterLimiter::kFast}) {
    MasterLimiter limiter;
    limiter.setMode(mode, false);
    limiter.setBoostDb(36.0);
    const Stereo out = runStereo(limiter, sine);
    EXPECT_GT(peakOf({out.left.end() - 3200, out.left.end()}), 0.98 * kHardCeiling) << mode;
  }
}

TEST(LimiterCeiling, StandsExactlyUnderASteadySignalInFast) {
  for (double boostDb : {6.0, 36.0}) {
    MasterLimiter limiter;
    limiter.setMode(MasterLimiter::kFast, false);
    limiter.setBoostDb(boostDb);
    const Signal steady(static_cast<size_t>(kVectors * kVectorLength), 0.9);
    EXPECT_NEAR(runStereo(limiter, Stereo{steady, steady}).left.back(), kHardCeiling, 1e-12);
  }
}

// Well below it: levelling grips hardest where peak and mean agree, as in what does not move.
TEST(LimiterCeiling, IsNeverAboveHalfForASteadyMonoSignalInSlowI) {
  struct Row {
    Stereo in;
    double atLeast;
  };
  const Signal constant(static_cast<size_t>(kVectors * kVectorLength), 0.9);
  const Row rows[] = {{{constant, constant}, 0.03},
                      {drawn([](double t) {
                         const double y = 0.9 * std::sin(6000.0 * t);
                         return std::pair{y, y};
                       }),
                       0.1}};
  for (const auto& [in, atLeast] : rows) {
    for (double boostDb : {0.0, 12.0, 36.0}) {
      MasterLimiter limiter;
      limiter.setBoostDb(boostDb);
      for (int i = 0; i < 8; ++i) runStereo(limiter, in);
      const double loudest = peakOf(runStereo(limiter, in).left);
      EXPECT_LE(loudest, 0.5 + 1e-12) << boostDb;
      EXPECT_GT(loudest, atLeast) << boostDb;
    }
  }
}

TEST(LimiterCeiling, SlowIDoesNotHearWhatIsOppositeInBothChannels) {
  MasterLimiter limiter;
  limiter.setBoostDb(20.0);
  Stereo in = stereoNoise(kVectors, 0.5);
  for (size_t i = 0; i < in.left.size(); ++i) in.right[i] = -in.left[i];
  EXPECT_NEAR(peakOf(runStereo(limiter, in).left), 1.4 * 10.0 * peakOf(in.left), 1e-2);
}

}  // namespace
}  // namespace orvantesco
