#include "master/Ambience.h"

#include <gtest/gtest.h>

#include "master/AmbienceModel.h"

namespace orvantesco {
namespace {

using namespace testing_support;

void apply(const AmbienceSetting& setting, Ambience& ambience) {
  ambience.setParam(0, setting.size);
  ambience.setParam(1, setting.feedback);
  ambience.setParam(2, setting.drift);
  ambience.setParam(3, setting.damping);
}

Stereo sounded(const AmbienceSetting& setting, const Stereo& in) {
  Ambience ambience;
  apply(setting, ambience);
  return runStereo(ambience, in);
}

// A delay of 2e4 samples is known to 4e-12 samples in double, and noise moves by more than its
// height from sample to sample; feedback adds up some turns of that. The glide comes to rest
// 4e-9 samples before its end.
constexpr double kBound = 1e-8;

TEST(Ambience, IsTheNetworkSampleBySample) {
  const AmbienceSetting settings[] = {
      {2.3, 0.7, 0.3, 0.7}, {1.2, 0.998, 1.0, 1.0}, {5.2, 0.9, 0.0, 0.3}, {0.0, 0.5, 0.5, 0.9}};
  const Stereo in = stereoNoise(1200, 1.0);
  for (const double rate : kEngineRates) {
    const ScopedRate scope(rate);
    for (const AmbienceSetting& setting : settings) {
      const Stereo out = sounded(setting, in);
      EXPECT_LE(largestDifference(out, AmbienceModel(rate).run(setting, in)), kBound)
          << rate << " " << setting.size;
      EXPECT_GT(largestMagnitude(out), 0.1);
    }
  }
}

TEST(Ambience, ASlowToneThroughStandingLinesIsTheModelsMoreClosely) {
  Stereo in = stereoSilence(1200);
  for (size_t i = 0; i < in.left.size(); ++i) {
    in.left[i] = 0.5 * std::sin(0.02 * static_cast<double>(i));
    in.right[i] = 0.5 * std::sin(0.031 * static_cast<double>(i));
  }
  // Without glide at its end and with lines of whole samples nothing is left to round.
  const AmbienceSetting setting{2.0, 0.7, 0.0, 0.7};
  EXPECT_LE(largestDifference(sounded(setting, in), AmbienceModel(44100.0).run(setting, in)),
            1e-10);
}

TEST(Ambience, EveryProcessorLevelGivesTheSameBits) {
  const Stereo in = stereoNoise(2500, 1.0);
  const Stereo best = sounded({1.5, 0.9, 1.0, 0.8}, in);
  for (const auto level : {kernels::Level::kScalar, kernels::Level::kSse2}) {
    const ScopedLevel scope(level);
    if (!scope.isThere) continue;
    EXPECT_EQ(largestDifference(sounded({1.5, 0.9, 1.0, 0.8}, in), best), 0.0) << nameOf(level);
  }
}

/// Sample at which the left line's first echo is highest.
size_t firstEcho(const AmbienceSetting& setting) {
  Ambience ambience;
  apply(setting, ambience);
  runStereo(ambience, stereoSilence(400));
  const Stereo out = runStereo(ambience, stereoImpulse(900));
  const auto highest = std::max_element(out.left.begin(), out.left.end(), [](double a, double b) {
    return std::fabs(a) < std::fabs(b);
  });
  return static_cast<size_t>(highest - out.left.begin());
}

TEST(Ambience, SizeIsTheLengthOfTheLines) {
  for (const double rate : kRates) {
    const ScopedRate scope(rate);
    const auto expected = static_cast<size_t>(1.5 * 4297.0 * rate / 44100.0);
    const size_t echo = firstEcho({1.5, 0.0, 0.0, 1.0});
    EXPECT_GE(echo + 2, expected) << rate;
    EXPECT_LE(echo, expected + 2) << rate;
  }
}

TEST(Ambience, ASizeAboveSixIsHeldAtSix) {
  const Stereo in = stereoNoise(1200, 1.0);
  EXPECT_EQ(largestDifference(sounded({8.0, 0.5, 0.2, 0.9}, in), sounded({6.0, 0.5, 0.2, 0.9}, in)),
            0.0);
}

TEST(Ambience, DriftMovesTheSoundAndWithoutItItStandsStill) {
  const auto twoPassages = [](double drift) {
    Ambience ambience;
    apply({1.5, 0.5, drift, 0.9}, ambience);
    runStereo(ambience, stereoSilence(400));
    const Stereo first = runStereo(ambience, stereoImpulse(400));
    ambience.reset();
    return largestDifference(first, runStereo(ambience, stereoImpulse(400)));
  };
  EXPECT_LT(twoPassages(0.0), 1e-13);
  EXPECT_GT(twoPassages(1.0), 0.01);
}

/// Plays a click in both channels every `spacing` vectors for some time, and gives how far behind
/// each one its echo comes back on the left and on the right, in samples.
std::array<Signal, 2> echoesOfClicks(Ambience& ambience, int clicks, int spacing) {
  std::array<Signal, 2> distances;
  for (int click = 0; click < clicks; ++click) {
    const Stereo out = runStereo(ambience, stereoImpulse(spacing));
    for (size_t side = 0; side < 2; ++side) {
      const Signal& heard = side == 0 ? out.left : out.right;
      const auto highest = std::max_element(heard.begin(), heard.end(), [](double x, double y) {
        return std::fabs(x) < std::fabs(y);
      });
      distances[side].push_back(static_cast<double>(highest - heard.begin()));
    }
  }
  return distances;
}

TEST(Ambience, TheDriftOfBothLinesStaysWithinItsDepthForMinutes) {
  constexpr double kLengths[] = {4297.0, 1669.0};
  Ambience ambience;
  apply({1.2, 0.0, 1.0, 1.0}, ambience);
  runStereo(ambience, stereoSilence(400));
  const auto distances = echoesOfClicks(ambience, 800, 200);  // two minutes
  for (size_t side = 0; side < 2; ++side) {
    double highest = -1.0, lowest = 1.0;
    for (const double distance : distances[side]) {
      const double drift = (distance / kLengths[side] - 1.2) / 0.05;
      highest = std::max(highest, drift);
      lowest = std::min(lowest, drift);
    }
    EXPECT_LT(highest, 1.3) << side;
    EXPECT_GT(lowest, -1.3) << side;
    EXPECT_GT(highest, 0.5) << side;
    EXPECT_LT(lowest, -0.5) << side;
  }
}

TEST(Ambience, FullFeedbackWithOpenFiltersDecays) {
  for (const double size : {0.1, 1.2, 3.0}) {
    Ambience ambience;
    apply({size, 1.0, 0.0, 1.0}, ambience);
    runStereo(ambience, stereoNoise(200, 1.0));
    const Stereo tail = runStereo(ambience, stereoSilence(14000));
    EXPECT_LT(levelDb(tail, 400000, 448000), levelDb(tail, 100000, 148000) - 0.1) << size;
  }
}

TEST(Ambience, NothingRingsOnAtHalfTheRateWhenAGlideEnds) {
  Ambience ambience;
  apply({1.7, 0.3, 0.0, 0.5}, ambience);
  const Stereo in = stereoNoise(400, 1.0);
  runStereo(ambience, in);
  ambience.setParam(0, 2.0);  // whole samples
  runStereo(ambience, in);
  for (int i = 0; i < 30; ++i) runStereo(ambience, stereoSilence(300));
  EXPECT_LT(largestMagnitude(runStereo(ambience, stereoSilence(10))), 1e-15);
}

TEST(Ambience, AfterAChangeOfRateItIsANewOneAtThatRate) {
  const AmbienceSetting setting{1.4, 0.8, 0.6, 0.7};
  Ambience used;
  apply(setting, used);
  runStereo(used, stereoNoise(301, 1.0));
  const ScopedRate scope(96000.0);
  used.rateChanged();
  used.reset();
  const Stereo in = stereoNoise(600, 1.0, 7);
  EXPECT_EQ(largestDifference(runStereo(used, in), sounded(setting, in)), 0.0);
}

TEST(Ambience, ResetAndBypassDropTheTail) {
  for (const bool byBypass : {false, true}) {
    Ambience ambience;
    apply({1.2, 0.9, 0.3, 0.9}, ambience);
    EXPECT_GT(largestMagnitude(runStereo(ambience, stereoNoise(400, 1.0))), 0.1);
    if (byBypass) {
      ambience.setBypass(true);
      ambience.setBypass(false);
    } else {
      ambience.reset();
    }
    EXPECT_LT(largestMagnitude(runStereo(ambience, stereoSilence(400))), 1e-15);
  }
}

TEST(Ambience, InPlaceGivesTheSameAndBypassedItWritesNothing) {
  Ambience apart, inPlace;
  for (Ambience* ambience : {&apart, &inPlace}) apply({1.2, 0.9, 0.3, 0.9}, *ambience);
  const Stereo in = stereoNoise(300, 1.0);
  EXPECT_EQ(largestDifference(runStereo(apart, in), runInPlace(inPlace, in)), 0.0);
  inPlace.setBypass(true);
  EXPECT_EQ(largestDifference(runInPlace(inPlace, in), in), 0.0);
}

TEST(Ambience, SilenceEndsOutsideTheDenormalRange) {
  Ambience ambience;
  apply({0.0, 0.5, 0.0, 0.9}, ambience);
  runStereo(ambience, stereoImpulse(10));
  // With the shortest lines a feedback of a half passes the smallest double within a second.
  runStereo(ambience, stereoSilence(4000));
  const Stereo out = runStereo(ambience, stereoSilence(100));
  int denormal = 0;
  for (const double x : out.left) denormal += x != 0.0 && std::fabs(x) < 2.3e-308 ? 1 : 0;
  EXPECT_EQ(denormal, 0);
  EXPECT_GT(largestMagnitude(out), 1e-25);
  EXPECT_LT(largestMagnitude(out), 1e-17);
}

TEST(Ambience, IsFiniteAfterNoNumbersAndImpulsesOfAnyHeight) {
  for (const double bad : {kNaN, kInfinity, -kInfinity, 1e300, 1e9, 1e6}) {
    Ambience ambience;
    apply({1.2, 0.998, 0.3, 1.0}, ambience);
    Stereo in = stereoNoise(600, 1.0);
    in.left[777] = bad;
    in.right[1200] = bad;
    EXPECT_LE(largestMagnitude(runStereo(ambience, in)), 1e8) << bad;
    if (std::fabs(bad) <= 1e6) continue;
    EXPECT_LT(largestMagnitude(runStereo(ambience, stereoNoise(600, 1.0))), 50.0) << bad;
  }
}

TEST(Ambience, ParametersThatAreNoNumbersChangeNothing) {
  Ambience plain, asked;
  for (Ambience* ambience : {&plain, &asked}) apply({1.2, 0.9, 0.3, 0.9}, *ambience);
  for (int index = -1; index < 6; ++index) asked.setParam(index, kNaN);
  asked.setParam(4, 0.5);
  const Stereo in = stereoNoise(300, 1.0);
  EXPECT_EQ(largestDifference(runStereo(plain, in), runStereo(asked, in)), 0.0);
}

}  // namespace
}  // namespace orvantesco
