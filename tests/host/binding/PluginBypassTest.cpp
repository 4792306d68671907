#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "host/binding/BypassRig.h"

namespace orvantesco {
namespace {

StereoBuffer sine(std::size_t frames, double hz = 440.0, double amplitude = 0.5) {
  StereoBuffer audio(frames);
  for (std::size_t i = 0; i < frames; ++i) {
    const double phase = 2.0 * M_PI * hz * static_cast<double>(i) / rate;
    audio.left[i] = amplitude * std::sin(phase);
    audio.right[i] = amplitude * std::cos(phase);
  }
  return audio;
}

/// Largest second difference: a sine of 440 Hz has 0.0017, a leap has its own height.
double sharpestBend(const std::vector<double>& x, std::size_t first, std::size_t end) {
  double sharpest = 0.0;
  for (std::size_t i = first + 2; i < end; ++i) {
    sharpest = std::max(sharpest, std::abs(x[i] - 2.0 * x[i - 1] + x[i - 2]));
  }
  return sharpest;
}

double peak(const StereoBuffer& audio, std::size_t first, std::size_t end) {
  double largest = 0.0;
  for (std::size_t i = first; i < end; ++i) {
    largest = std::max({largest, std::abs(audio.left[i]), std::abs(audio.right[i])});
  }
  return largest;
}

/// Noise of 20000 frames, and silence.
StereoBuffer burst(std::size_t frames) {
  StereoBuffer audio = noise(20000);
  audio.left.resize(frames);
  audio.right.resize(frames);
  return audio;
}

TEST(PluginBypass, LeavesARunningEffectAloneBitForBit) {
  const StereoBuffer input = noise(20000);
  StereoBuffer plain = input;
  EngineRig alone{rate};
  alone.effect.startAnew();
  alone.set(kDryLevel, 100.0);
  for (std::size_t at = 0; at < plain.size(); at += 500) alone.block(plain, at, 500);

  BypassRig rig;
  StereoBuffer through = input;
  rig.play(through, 0, through.size(), false, 500);
  EXPECT_EQ(through.left, plain.left);
  EXPECT_EQ(through.right, plain.right);
}

TEST(PluginBypass, PassesTheInputLateByTheLatencyAndNothingElse) {
  BypassRig rig;
  const StereoBuffer input = noise(8000);
  StereoBuffer audio = input;
  rig.play(audio, 0, audio.size(), true);
  EXPECT_TRUE(rig.bypass.isBypassed());
  EXPECT_GT(rig.latency(), 32);
  EXPECT_EQ(differenceFrom(input, audio, rig.latency(), fadeFrames, audio.size()), 0.0);
}

TEST(PluginBypass, ThatASessionBeginsWithLetsNothingOfTheEffectThrough) {
  BypassRig rig(512, true);
  EXPECT_TRUE(rig.bypass.isBypassed());
  const StereoBuffer input = noise(4000);
  StereoBuffer audio = input;
  rig.play(audio, 0, audio.size(), true);
  const auto latency = static_cast<std::size_t>(rig.latency());
  EXPECT_EQ(peak(audio, 0, latency), 0.0);
  EXPECT_EQ(differenceFrom(input, audio, rig.latency(), latency, audio.size()), 0.0);
}

TEST(PluginBypass, KnowsTheInputFromBeforeTheBypass) {
  // No gap of the latency's length where the bypass begins.
  BypassRig rig;
  rig.rig.set(kWetLevel, 0.0);
  const StereoBuffer input = noise(24000);
  StereoBuffer audio = input;
  rig.play(audio, 0, 12000, false, 37);
  rig.play(audio, 12000, audio.size(), true, 37);
  EXPECT_LT(differenceFrom(input, audio, rig.latency(), 11000, audio.size()), 1e-12);
}

TEST(PluginBypass, ReplacesOneSignalByTheSameWithoutATrace) {
  // With nothing but the dry signal the effect sounds like its own bypass, in every phase of both
  // fades, also where the host changes its mind within one.
  for (const std::size_t length : {1u, 7u, 64u, 333u}) {
    BypassRig rig;
    rig.rig.set(kWetLevel, 0.0);
    const StereoBuffer input = noise(30000);
    StereoBuffer audio = input;
    rig.play(audio, 0, 10000, false, length);
    rig.play(audio, 10000, 15000, true, length);
    rig.play(audio, 15000, 15200, false, length);
    rig.play(audio, 15200, 15300, true, length);
    rig.play(audio, 15300, 22000, false, length);
    rig.play(audio, 22000, 22100, true, length);
    rig.play(audio, 22100, audio.size(), false, length);
    EXPECT_LT(differenceFrom(input, audio, rig.latency(), 9000, audio.size()), 1e-12) << length;
  }
}

TEST(PluginBypass, DoesNotClickInEitherDirection) {
  BypassRig rig;
  rig.rig.set(kDelayTimeL, 50.0);
  rig.rig.set(kDelayTimeR, 70.0);
  rig.rig.set(kTimebase, 0.0);
  rig.rig.set(kFeedback, 60.0);
  StereoBuffer audio = sine(96000);
  rig.play(audio, 0, 24000, false);
  rig.play(audio, 24000, 48000, true);
  rig.play(audio, 48000, 72000, false);
  rig.play(audio, 72000, audio.size(), true);
  const double ofTheSound = sharpestBend(audio.left, 20000, 23900);
  EXPECT_LT(sharpestBend(audio.left, 23900, 96000), 2.0 * ofTheSound);
  EXPECT_LT(sharpestBend(audio.right, 23900, 96000), 2.0 * ofTheSound);
}

TEST(PluginBypass, BringsNoOldEchoBack) {
  BypassRig rig;
  rig.rig.set(kFeedback, 95.0);
  StereoBuffer audio = burst(96000);
  rig.play(audio, 0, 24000, false);
  rig.play(audio, 24000, 30000, true);
  EXPECT_EQ(peak(audio, 25000, 30000), 0.0);
  rig.play(audio, 30000, audio.size(), false);
  EXPECT_LT(peak(audio, 30000, audio.size()), 1e-9);
}

TEST(PluginBypass, KeepsTheEchoesOfARunningEffect) {
  // The same passage without a bypass does echo, so the test before this one can fail.
  BypassRig rig;
  rig.rig.set(kFeedback, 95.0);
  StereoBuffer audio = burst(96000);
  rig.play(audio, 0, audio.size(), false);
  EXPECT_GT(peak(audio, 30000, audio.size()), 0.01);
}

TEST(PluginBypass, ForgetsWhatSoundsAtAReset) {
  BypassRig rig;
  rig.rig.set(kFeedback, 95.0);
  StereoBuffer audio = burst(60000);
  rig.play(audio, 0, 20000, false);
  rig.bypass.reset();
  rig.play(audio, 20000, audio.size(), false);
  EXPECT_LT(peak(audio, 20100, audio.size()), 1e-9);
}

}  // namespace
}  // namespace orvantesco
