#include "master/AFdnReverb.h"

#include <gtest/gtest.h>

#include "master/FdnFixture.h"

namespace orvantesco {
namespace {

using namespace testing_support;

Stereo modelled(const FdnLayout& layout, const FdnSetting& setting, const Stereo& in) {
  return FdnModel(layout.lines, layout.modulated, sampleRate).run(setting, in);
}

TEST(AFdnReverb, IsTheNetworkSampleBySample) {
  const FdnSetting settings[] = {
      {5.64, 2205.0, 0.123, 0.93}, {1.0, 0.0, 0.6, 0.0}, {30.0, 17.0, 0.0, 0.5}};
  const Stereo in = stereoNoise(300, 1.0);
  for (const double rate : kEngineRates) {
    const ScopedRate scope(rate);
    for (const FdnLayout& layout : kFdnLayouts) {
      for (const FdnSetting& setting : settings) {
        const Stereo out = sounded(layout, setting, in);
        EXPECT_LE(largestDifference(out, modelled(layout, setting, in)), 1e-12)
            << rate << " " << layout.lines << " " << setting.decaySeconds;
        EXPECT_GT(largestMagnitude(out), 0.1);
      }
    }
  }
}

TEST(AFdnReverb, ANewOneHasTwelveSecondsAnd25MillisecondsOfPreDelay) {
  for (const double rate : kRates) {
    const ScopedRate scope(rate);
    AFdnReverb reverb(16, 7, 1);
    const Stereo in = stereoNoise(300, 1.0);
    // The knob that gives the damping of a new block does so to the last bit of a float or two.
    EXPECT_LE(largestDifference(runStereo(reverb, in), modelled({16, 7, 1}, {}, in)), 1e-5);
  }
}

TEST(AFdnReverb, EveryProcessorLevelGivesTheSameBits) {
  const Stereo in = stereoNoise(300, 1.0);
  const FdnSetting setting{3.0, 500.0, 0.1, 0.8};
  for (const FdnLayout& layout : kFdnLayouts) {
    const Stereo best = sounded(layout, setting, in);
    for (const auto level : {kernels::Level::kScalar, kernels::Level::kSse2}) {
      const ScopedLevel scope(level);
      if (!scope.isThere) continue;
      EXPECT_EQ(largestDifference(sounded(layout, setting, in), best), 0.0) << nameOf(level);
    }
  }
}

TEST(AFdnReverb, FirstEchoComesBehindPreDelayAndShortestLine) {
  const int shortest[] = {919, 601};
  for (size_t k = 0; k < 2; ++k) {
    const Stereo out =
        sounded({kFdnLayouts[k].lines, 0, 0}, {10.0, 250.0, 0.0, 0.0}, stereoImpulse(50));
    const auto first = static_cast<size_t>(250 + shortest[k]);
    EXPECT_LT(levelDb(out, 0, first), -200.0);
    EXPECT_GT(out.left[first], 0.1);
    EXPECT_EQ(out.left[first], out.right[first]);
  }
}

TEST(AFdnReverb, PreDelayLastsAsLongAtEveryRate) {
  for (const double rate : kEngineRates) {
    const ScopedRate scope(rate);
    const Stereo a = sounded({10, 0, 4}, {2.0, 0.0, 0.0, 0.0}, stereoImpulse(900));
    const Stereo b = sounded({10, 0, 4}, {2.0, 8820.0, 0.0, 0.0}, stereoImpulse(900));
    const auto shift = static_cast<size_t>(0.2 * rate);
    double largest = 0.0;
    for (size_t i = 0; i + shift < a.left.size(); ++i) {
      largest = std::max(largest, std::fabs(a.left[i] - b.left[i + shift]));
    }
    EXPECT_LT(largest, 1e-15) << rate;
  }
}

/// Sample at which the first echo comes; without pre-delay, that of the shortest line.
size_t firstEcho(AFdnReverb& reverb) {
  reverb.setParam(2, 0.0);
  const Stereo out = runStereo(reverb, stereoImpulse(400));
  const auto isSounding = [](double x) { return std::fabs(x) > 1e-3; };
  return static_cast<size_t>(std::find_if(out.left.begin(), out.left.end(), isSounding) -
                             out.left.begin());
}

TEST(AFdnReverb, PreDelayIsRoundedOnceAndToTheSampleThatIsMeant) {
  struct Row {
    double rate, knob;
    size_t samples;
  };
  // 35 ms; 145 ms, as the product of a knob and the rate comes out; a fraction of a sample.
  const Row rows[] = {{48000.0, 1543.5, 1680},
                      {48000.0, 144.99999999999997 * 44.1, 6960},
                      {96000.0, 1102.9, 2400},
                      {44100.0, 1102.9, 1102}};
  for (const Row& row : rows) {
    const ScopedRate scope(row.rate);
    AFdnReverb without(10, 0, 4), with(10, 0, 4);
    without.setParam(1, 0.0);
    with.setParam(1, row.knob);
    EXPECT_EQ(firstEcho(with) - firstEcho(without), row.samples) << row.rate << " " << row.knob;
  }
}

TEST(AFdnReverb, TheLongestPreDelayOfTheHallIsHeardInFull) {
  const ScopedRate scope(96000.0);
  const Stereo out = sounded({16, 7, 1}, {2.0, 22050.0, 0.0, 0.0}, stereoImpulse(1700));
  const size_t first = 48000 + 2000 - 7;
  EXPECT_LT(levelDb(out, 0, first), -200.0);
  EXPECT_GT(levelDb(out, first, first + 1000), -60.0);
}

TEST(AFdnReverb, AfterAChangeOfRateItIsANewOneAtThatRate) {
  const FdnSetting setting{3.0, 1000.0, 0.2, 0.7};
  for (const FdnLayout& layout : kFdnLayouts) {
    AFdnReverb used(layout.lines, layout.modulated, layout.layout);
    apply(setting, used);
    runStereo(used, stereoNoise(201, 1.0));
    const ScopedRate scope(96000.0);
    used.rateChanged();
    used.reset();
    const Stereo in = stereoNoise(300, 1.0, 7);
    EXPECT_EQ(largestDifference(runStereo(used, in), sounded(layout, setting, in)), 0.0);
  }
}

TEST(AFdnReverb, ResetAndBypassDropTheTail) {
  for (const bool byBypass : {false, true}) {
    AFdnReverb reverb(16, 7, 1);
    apply({30.0, 0.0, 0.0, 0.0}, reverb);
    EXPECT_GT(largestMagnitude(runStereo(reverb, stereoNoise(300, 1.0))), 0.1);
    if (byBypass) {
      reverb.setBypass(true);
      reverb.setBypass(false);
    } else {
      reverb.reset();
    }
    EXPECT_LT(largestMagnitude(runStereo(reverb, stereoSilence(200))), 1e-13);
  }
}

TEST(AFdnReverb, BypassedItWritesNothing) {
  AFdnReverb reverb(10, 2, 4);
  reverb.setBypass(true);
  const Stereo in = stereoNoise(4, 1.0);
  EXPECT_EQ(largestDifference(runInPlace(reverb, in), in), 0.0);
}

TEST(AFdnReverb, InPlaceGivesTheSame) {
  AFdnReverb apart(10, 2, 4), inPlace(10, 2, 4);
  const Stereo in = stereoNoise(100, 1.0);
  EXPECT_EQ(largestDifference(runStereo(apart, in), runInPlace(inPlace, in)), 0.0);
}

TEST(AFdnReverb, HearsTheSumOfBothInputs) {
  AFdnReverb both(10, 2, 4), opposed(10, 2, 4);
  Stereo in = stereoNoise(100, 1.0);
  in.right = in.left;
  EXPECT_GT(largestMagnitude(runStereo(both, in)), 0.1);
  for (double& sample : in.right) sample = -sample;
  EXPECT_LT(largestMagnitude(runStereo(opposed, in)), 1e-13);
}

TEST(AFdnReverb, TheHighPassTakesTheLowFrequencies) {
  const auto level = [](double highPass) {
    Stereo in = stereoSilence(1500);
    for (size_t i = 0; i < in.left.size(); ++i) {
      in.left[i] = in.right[i] = std::sin(0.01 * static_cast<double>(i));
    }
    return levelDb(sounded({10, 2, 4}, {1.0, 0.0, highPass, 0.0}, in), 30000, 48000);
  };
  // A tone of 70 Hz below a corner of 2000 Hz: five octaves at 12 dB each, nearly.
  EXPECT_LT(level(0.6156), level(0.0) - 50.0);
}

TEST(AFdnReverb, SilenceEndsInNeitherNoiseNorDenormalNumbers) {
  AFdnReverb reverb(16, 7, 1);
  apply({1.0, 0.0, 0.0, 1.0}, reverb);
  runStereo(reverb, stereoImpulse(10));
  // Decaying by 60 dB a second it would pass the smallest normal float after some 13 seconds.
  for (int i = 0; i < 15; ++i) runStereo(reverb, stereoSilence(1400));
  const Stereo out = runStereo(reverb, stereoSilence(200));
  int denormal = 0;
  for (const double x : out.left) denormal += x != 0.0 && std::fabs(x) < 1.2e-38 ? 1 : 0;
  EXPECT_EQ(denormal, 0);
  EXPECT_LT(largestMagnitude(out), 1e-17);
  EXPECT_GT(largestMagnitude(out), 1e-25);
}

TEST(AFdnReverb, IsFiniteAfterNoNumbersAndImpulsesOfAnyHeight) {
  for (const double bad : {kNaN, kInfinity, -kInfinity, 1e300, 1e9, 1e6}) {
    AFdnReverb reverb(16, 7, 1);
    apply({30.0, 0.0, 0.0, 0.0}, reverb);
    Stereo in = stereoNoise(200, 1.0);
    in.left[777] = bad;
    EXPECT_LE(largestMagnitude(runStereo(reverb, in)), 1e8) << bad;
    if (std::fabs(bad) <= 1e6) continue;
    // What cannot be kept is dropped, with the tail that it is in.
    EXPECT_LT(largestMagnitude(runStereo(reverb, stereoNoise(200, 1.0))), 20.0) << bad;
  }
}

TEST(AFdnReverb, LongOverloadIsHeld) {
  AFdnReverb reverb(16, 7, 1);
  apply({30.0, 0.0, 0.0, 0.0}, reverb);
  Stereo in = stereoNoise(1500, 1.0);
  for (double& sample : in.left) sample *= 9e7;
  EXPECT_LE(largestMagnitude(runStereo(reverb, in)), 1e8);
}

TEST(AFdnReverb, ParametersThatAreNoNumbersChangeNothing) {
  AFdnReverb plain(10, 2, 4), asked(10, 2, 4);
  for (int index = -1; index < 6; ++index) asked.setParam(index, kNaN);
  asked.setParam(4, 0.5);
  const Stereo in = stereoNoise(100, 1.0);
  EXPECT_EQ(largestDifference(runStereo(plain, in), runStereo(asked, in)), 0.0);
}

}  // namespace
}  // namespace orvantesco
