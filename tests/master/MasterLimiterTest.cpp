#include "master/MasterLimiter.h"

#include <gtest/gtest.h>

#include "master/LimiterModel.h"

namespace orvantesco {
namespace {

using testing_support::kEngineRates;
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
  for (double rate : kEngineRates) {
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

TEST(MasterLimiter, HearsTheLeftChannelWherePeaksAreEqual) {
  Stereo in{Signal(3200, 0.5), Signal(3200, 0.0)};
  for (size_t i = 0; i < in.right.size(); i += kVectorLength) in.right[i] = -0.5;
  for (int mode : {MasterLimiter::kSlowII, MasterLimiter::kFast}) {
    const Stereo expected = LimiterModel(mode, 20.0).run(in);
    EXPECT_LT(largestDifference(limited(mode, 20.0, in), expected), 1e-12) << mode;
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

TEST(MasterLimiter, IsItsModelThroughFadesFromModeToMode) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    MasterLimiter limiter;
    limiter.setBoostDb(9.0);
    LimiterModel model(MasterLimiter::kSlowI, 9.0);
    // Long enough to finish, into the way down, and into the way up.
    for (const auto& [mode, vectors] : {std::pair{3, 700}, {2, 30}, {1, 700}, {2, 200}, {3, 700}}) {
      limiter.setMode(mode, true);
      model.fadeTo(mode);
      const Stereo in = programme(vectors);
      EXPECT_LT(largestDifference(runStereo(limiter, in), model.run(in)), 1e-12)
          << mode << " at " << rate;
      EXPECT_EQ(limiter.modeAsked(), mode);
    }
    EXPECT_EQ(limiter.modeInForce(), MasterLimiter::kFast);
  }
}

TEST(MasterLimiter, FadesOutOver50MsChangesAndFadesBack) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    MasterLimiter limiter;
    limiter.setMode(MasterLimiter::kFast, false);
    const Signal steady(1000 * kVectorLength, 0.01);
    runStereo(limiter, Stereo{steady, steady});
    limiter.setMode(MasterLimiter::kSlowII, true);
    EXPECT_EQ(limiter.modeInForce(), MasterLimiter::kFast);
    const Signal out = runStereo(limiter, Stereo{steady, steady}).left;
    const auto silent = std::find(out.begin(), out.end(), 0.0) - out.begin();
    EXPECT_NEAR(static_cast<double>(silent) / rate, 0.05, 0.001) << rate;
    const auto full =
        std::find_if(out.begin() + silent, out.end(), [](double x) { return x > 0.0104; });
    EXPECT_NEAR(static_cast<double>(full - out.begin()) / rate, 0.1, 0.002) << rate;
    EXPECT_NEAR(out.back(), 0.01 * 1.05, 1e-12);
    EXPECT_EQ(limiter.modeInForce(), MasterLimiter::kSlowII);
  }
}

TEST(MasterLimiter, StartsInTheFirstModeAndHoldsOneThatIsNone) {
  MasterLimiter limiter;
  EXPECT_EQ(limiter.modeInForce(), MasterLimiter::kSlowI);
  limiter.setMode(0, false);
  EXPECT_EQ(limiter.modeInForce(), MasterLimiter::kSlowI);
  limiter.setMode(99, false);
  EXPECT_EQ(limiter.modeInForce(), MasterLimiter::kFast);
}

TEST(MasterLimiter, ModesOfTwoInstancesAreTheirOwn) {
  MasterLimiter one, other;
  one.setMode(MasterLimiter::kFast, false);
  const Stereo in = stereoNoise(300, 0.5);
  EXPECT_EQ(largestDifference(runStereo(other, in), limited(MasterLimiter::kSlowI, 0.0, in)), 0.0);
}

TEST(MasterLimiter, HoldsABoostThatIsOutOfRange) {
  const Stereo in = stereoNoise(100, 0.2);
  const auto sameAs = [&](double asked, double held) {
    return largestDifference(limited(MasterLimiter::kFast, asked, in),
                             limited(MasterLimiter::kFast, held, in)) == 0.0;
  };
  EXPECT_TRUE(sameAs(-10.0, 0.0));
  EXPECT_TRUE(sameAs(100.0, 36.0));
  EXPECT_TRUE(sameAs(kNaN, 0.0));
  EXPECT_FALSE(sameAs(12.0, 0.0));
}

TEST(MasterLimiter, AmplifiesNothingWhileItStarts) {
  for (int mode : kModes) {
    const Stereo out = limited(mode, 0.0, stereoNoise(20, 0.1));
    EXPECT_LE(peakOf(out.left), mode == MasterLimiter::kSlowI ? 0.14 : 0.105) << mode;
  }
}

TEST(MasterLimiter, ResetLeavesNothingOfWhatWasHeard) {
  for (int mode : kModes) {
    MasterLimiter used;
    used.setMode(mode, false);
    used.setBoostDb(30.0);
    runStereo(used, programme(500));
    used.reset();
    const Stereo in = programme(300);
    EXPECT_EQ(largestDifference(runStereo(used, in), limited(mode, 30.0, in)), 0.0) << mode;
  }
}

TEST(MasterLimiter, IsAsNewAfterAChangeOfRate) {
  for (int mode : kModes) {
    MasterLimiter used;
    used.setMode(mode, false);
    used.setBoostDb(18.0);
    runStereo(used, programme(500));
    used.setMode(mode, true);  // a fade on its way is over then
    runStereo(used, programme(20));
    ScopedRate scope(96000.0);
    used.rateChanged();
    used.reset();
    const Stereo in = programme(800);
    EXPECT_EQ(largestDifference(runStereo(used, in), limited(mode, 18.0, in)), 0.0) << mode;
  }
}

TEST(MasterLimiter, IsFiniteAgainAfterWhatIsNoNumber) {
  for (int mode : kModes) {
    for (double bad : {kNaN, kInfinity, -kInfinity, 1e300, 1e100, 1e6}) {
      Stereo in = stereoNoise(4000, 0.5);
      in.left[400] = bad;
      in.right[700] = -bad;
      const Stereo out = limited(mode, 36.0, in);
      EXPECT_TRUE(testing_support::allFinite(out.left)) << mode << " " << bad;
      EXPECT_TRUE(testing_support::allFinite(out.right)) << mode << " " << bad;
      EXPECT_LT(peakOf({out.left.end() - 3200, out.left.end()}), 2.0) << mode << " " << bad;
      EXPECT_GT(peakOf({out.left.end() - 3200, out.left.end()}), 0.1) << mode << " " << bad;
    }
  }
}

TEST(MasterLimiter, WorksInPlaceAsOutOfPlace) {
  for (int mode : kModes) {
    MasterLimiter limiter;
    limiter.setMode(mode, false);
    limiter.setBoostDb(20.0);
    Stereo signal = programme(200);
    const Stereo expected = limited(mode, 20.0, signal);
    for (size_t at = 0; at < signal.left.size(); at += kVectorLength) {
      limiter.process(&signal.left[at], &signal.right[at], nullptr, nullptr);
    }
    EXPECT_EQ(largestDifference(signal, expected), 0.0) << mode;
  }
}

}  // namespace
}  // namespace orvantesco
