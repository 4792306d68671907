// The decay of the delay network, measured, and its energy.
#include <gtest/gtest.h>

#include "master/FdnFixture.h"
#include "master/FdnGains.h"

namespace orvantesco {
namespace {

using namespace testing_support;

TEST(FdnGains, OneSecondAtALineOf919SamplesIsTheTextbookGain) {
  const FdnLineGain line = fdnLineGain({1.0, 0.99}, 919.0, 44100.0);
  const double atZeroHz = line.gain / (1.0 + line.coefficient);
  EXPECT_NEAR(atZeroHz, std::pow(10.0, -3.0 * 919.0 / 44100.0), 1e-15);
}

TEST(FdnGains, NoSettingLetsALineFallMuteOrFreezeOrGrow) {
  for (const double rate : {32000.0, 44100.0, 96000.0}) {
    for (const double decay : {1.0, 4.0, 30.0}) {
      for (const double damping : {0.99, 0.5, 0.1}) {
        const FdnLineGain line = fdnLineGain({1.0 / decay, damping}, 1361.0, rate);
        const double lowest = line.gain / (1.0 + line.coefficient);
        const double highest = line.gain / (1.0 - line.coefficient);
        EXPECT_GT(lowest, 0.1);
        EXPECT_LT(lowest, 1.0);
        EXPECT_GT(highest, 0.001);
        EXPECT_LT(highest, 1.0);
        EXPECT_GE(line.coefficient, -0.98);
      }
    }
  }
}

/// Seconds to -60 dB of low noise, from the slope between two moments of the tail.
double measuredDecay(const FdnLayout& layout, double decaySeconds) {
  const auto vectors = static_cast<int>(0.9 * decaySeconds * sampleRate / kVectorLength);
  Stereo in = stereoSilence(vectors);
  const Signal burst = noise(100);
  double low = 0.0;
  for (size_t i = 0; i < burst.size(); ++i) in.left[i] = low += 0.05 * (burst[i] - low);
  const Stereo out = sounded(layout, {decaySeconds, 0.0, 0.0, 0.0}, in);
  const size_t from = out.left.size() / 4;
  const size_t window = out.left.size() / 6;
  const size_t last = out.left.size() - window;
  const double fall = levelDb(out, from, from + window) - levelDb(out, last, out.left.size());
  return 60.0 * static_cast<double>(last - from) / sampleRate / fall;
}

TEST(FdnDecay, LastsAsTheGainFormulaSays) {
  for (const double rate : kRates) {
    const ScopedRate scope(rate);
    for (const FdnLayout& layout : kFdnLayouts) {
      for (const double decay : {1.0, 2.0}) {
        // At other rates than 44100 Hz the formula goes but half the way.
        const double expected = decay * 2.0 * rate / (rate + 44100.0);
        EXPECT_NEAR(measuredDecay(layout, decay) / expected, 1.0, 0.05)
            << rate << " " << layout.lines << " " << decay;
      }
    }
  }
}

TEST(FdnDecay, DampingTakesTheHighFrequenciesFirst) {
  const auto highShare = [](double damping) {
    const Stereo out = sounded(kFdnLayouts[0], {4.0, 0.0, 0.0, damping}, stereoImpulse(1500));
    double high = 0.0, all = 0.0;
    for (size_t i = 24000; i < out.left.size(); ++i) {
      const double difference = out.left[i] - out.left[i - 1];
      high += difference * difference;
      all += out.left[i] * out.left[i];
    }
    return high / all;
  };
  EXPECT_LT(highShare(0.5), 0.5 * highShare(0.0));
  EXPECT_LT(highShare(1.0), 0.5 * highShare(0.5));
}

/// Change of level over four seconds at a decay of thirty years.
double lossDb(const FdnLayout& layout) {
  const Stereo out = sounded(layout, {1e9, 0.0, 0.0, 0.0}, stereoImpulse(7000));
  EXPECT_GT(levelDb(out, 20000, 60000), -60.0);
  return levelDb(out, 20000, 60000) - levelDb(out, 184000, 224000);
}

TEST(FdnDecay, WithoutLossTheEnergyNeitherGrowsNorShrinks) {
  for (const FdnLayout& layout : kFdnLayouts) {
    EXPECT_NEAR(lossDb({layout.lines, 0, 0}), 0.0, 0.2) << layout.lines;
  }
}

// A read position that jumps is no longer an all-pass, so energy comes and goes a little: far less
// than the longest decay takes, which is 2 dB a second.
TEST(FdnDecay, SwingingLinesHardlyChangeTheEnergy) {
  for (const FdnLayout& layout : kFdnLayouts) {
    EXPECT_NEAR(lossDb(layout), 0.0, 0.8) << layout.lines;
  }
}

}  // namespace
}  // namespace orvantesco
