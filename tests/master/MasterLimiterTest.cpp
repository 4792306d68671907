#include "master/MasterLimiter.h"

#include <gtest/gtest.h>

#include "master/LimiterModel.h"

namespace orvantesco {
namespace {

using testing_support::kInfinity;
using testing_support::kNaN;
using testing_support::kRates;
using testing_support::largestDifference;
using testing_support::LimiterModel;
using testing_support::peakOf;
using testing_support::runStereo;
using testing_support::ScopedRate;
using testing_support::Signal;
using testing_support::Stereo;
using testing_support::stereoNoise;

constexpr int kModes[] = {MasterLimiter::kSlowI, MasterLimiter::kSlowII, MasterLimiter::kFast};

/// The output of a fresh limiter.
Stereo limited(int mode, double boostDb, const Stereo& in) {
  MasterLimiter limiter;
  limiter.setMode(mode, false);
  limiter.setBoostDb(boostDb);
  return runStereo(limiter, in);
}

/// Noise in bursts, a sine that swells, and silence between them; other on the right.
Stereo programme(int vectors) {
  Stereo signal = stereoNoise(vectors, 1.0, 11);
  for (size_t i = 0; i < signal.left.size(); ++i) {
    const double t = static_cast<double>(i) / sampleRate;
    const double burst = std::fmod(t, 0.13) < 0.03 ? 1.0 : 0.02;
    const double silence = std::fmod(t, 0.41) < 0.05 ? 0.0 : 1.0;
    signal.left[i] = silence * (burst * signal.left[i] + 0.7 * std::sin(400.0 * t) * t);
    signal.right[i] = silence * (1.2 * burst * signal.right[i] * std::fmod(t, 0.5) + 0.01);
  }
  return signal;
}

TEST(MasterLimiter, IsItsModelInEveryModeAtEveryRateAndBoost) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    for (int mode : kModes) {
      for (double boostDb : {0.0, 7.0, 36.0}) {
        const Stereo in = programme(1500);
        const Stereo expected = LimiterModel(mode, boostDb).run(in);
        EXPECT_LT(largestDifference(limited(mode, boostDb, in), expected), 1e-12)
            << mode << " at " << boostDb << " dB, " << rate << " Hz";
      }
    }
  }
}

TEST(MasterLimiter, FastPassesWhatLiesBelowFullScaleAMillisecondLate) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    const auto lookahead = static_cast<std::ptrdiff_t>(rate / 1000.0);
    const Stereo in = stereoNoise(100, 0.9);
    const Stereo out = limited(MasterLimiter::kFast, 0.0, in);
    EXPECT_TRUE(
        std::equal(in.left.begin(), in.left.end() - lookahead, out.left.begin() + lookahead))
        << rate;
    EXPECT_TRUE(
        std::equal(in.right.begin(), in.right.end() - lookahead, out.right.begin() + lookahead))
        << rate;
  }
}

}  // namespace
}  // namespace orvantesco
