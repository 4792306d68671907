#include "host/binding/PluginBypass.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "params/ParamIndex.h"
#include "support/EngineRig.h"

namespace orvantesco {
namespace {

constexpr double rate = 48000.0;
constexpr int fadeFrames = 480;

/// An effect behind a bypass, and a host that drives both.
struct BypassRig {
  explicit BypassRig(int longestBlock = 512) {
    bypass.prepare(longestBlock, rate);
    rig.set(kDryLevel, 100.0);
  }

  /// Plays a part of `audio` in place in blocks.
  void play(StereoBuffer& audio, std::size_t first, std::size_t end, bool bypassed,
            std::size_t length = 100) {
    for (std::size_t at = first; at < end; at += length) {
      block(audio, at, std::min(length, end - at), bypassed);
    }
  }

  void block(StereoBuffer& audio, std::size_t at, std::size_t frames, bool bypassed) {
    double* channels[] = {audio.left.data() + at, audio.right.data() + at};
    AudioBlock block;
    block.inputs = channels;
    block.inputCount = 2;
    block.outputs = channels;
    block.outputCount = 2;
    block.frames = static_cast<int>(frames);
    block.bypass = bypassed;
    bypass.process(block);
    rig.host.advance(block.frames);
  }

  int latency() const { return rig.effect.latency; }

  EngineRig rig{rate};
  PluginBypass bypass{rig.effect};
};

StereoBuffer sine(std::size_t frames, double hz = 440.0, double amplitude = 0.5) {
  StereoBuffer audio(frames);
  for (std::size_t i = 0; i < frames; ++i) {
    const double phase = 2.0 * M_PI * hz * static_cast<double>(i) / rate;
    audio.left[i] = amplitude * std::sin(phase);
    audio.right[i] = amplitude * std::cos(phase);
  }
  return audio;
}

/// Largest difference between `out` and `in` as it is `delay` frames late, in [first, end).
double differenceFrom(const StereoBuffer& in, const StereoBuffer& out, int delay, std::size_t first,
                      std::size_t end) {
  double largest = 0.0;
  for (std::size_t i = first; i < end; ++i) {
    const auto from = i - static_cast<std::size_t>(delay);
    largest = std::max(largest, std::abs(out.left[i] - in.left[from]));
    largest = std::max(largest, std::abs(out.right[i] - in.right[from]));
  }
  return largest;
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

TEST(PluginBypass, LeavesARunningEffectAloneBitForBit) {
  const StereoBuffer input = noise(20000);
  StereoBuffer plain = input;
  EngineRig alone{rate};
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
  StereoBuffer audio = noise(96000);
  std::fill(audio.left.begin() + 20000, audio.left.end(), 0.0);
  std::fill(audio.right.begin() + 20000, audio.right.end(), 0.0);
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
  StereoBuffer audio = noise(96000);
  std::fill(audio.left.begin() + 20000, audio.left.end(), 0.0);
  std::fill(audio.right.begin() + 20000, audio.right.end(), 0.0);
  rig.play(audio, 0, audio.size(), false);
  EXPECT_GT(peak(audio, 30000, audio.size()), 0.01);
}

TEST(PluginBypass, PassesAMonoInputToBothOutputs) {
  EngineRig rig{rate};
  PluginBypass bypass(rig.effect);
  bypass.prepare(256, rate);
  const StereoBuffer input = noise(4096);
  StereoBuffer out(input.size());
  for (std::size_t at = 0; at < input.size(); at += 256) {
    double* in[] = {const_cast<double*>(input.left.data()) + at};
    double* outputs[] = {out.left.data() + at, out.right.data() + at};
    AudioBlock block;
    block.inputs = in;
    block.inputCount = 1;
    block.outputs = outputs;
    block.outputCount = 2;
    block.frames = 256;
    block.bypass = true;
    bypass.process(block);
  }
  StereoBuffer twice(input.size());
  twice.left = twice.right = input.left;
  EXPECT_EQ(differenceFrom(twice, out, rig.effect.latency, fadeFrames, out.size()), 0.0);
}

TEST(PluginBypass, TakesSeparateAndCrossedBuffersAlike) {
  const StereoBuffer input = noise(6000);
  const auto run = [&](bool crossed) {
    EngineRig rig{rate};
    PluginBypass bypass(rig.effect);
    bypass.prepare(128, rate);
    StereoBuffer in = input;
    StereoBuffer apart(input.size());
    StereoBuffer result(input.size());
    for (std::size_t at = 0; at + 100 <= in.size(); at += 100) {
      double* inputs[] = {in.left.data() + at, in.right.data() + at};
      double* outputs[] = {apart.left.data() + at, apart.right.data() + at};
      double* turned[] = {in.right.data() + at, in.left.data() + at};
      AudioBlock block;
      block.inputs = inputs;
      block.inputCount = 2;
      block.outputs = crossed ? turned : outputs;
      block.outputCount = 2;
      block.frames = 100;
      block.bypass = at >= 2000 && at < 4000;
      bypass.process(block);
      std::copy_n(block.outputs[0], 100, result.left.begin() + static_cast<long>(at));
      std::copy_n(block.outputs[1], 100, result.right.begin() + static_cast<long>(at));
    }
    return result;
  };
  const StereoBuffer separate = run(false);
  const StereoBuffer crossed = run(true);
  EXPECT_EQ(separate.left, crossed.left);
  EXPECT_EQ(separate.right, crossed.right);
}

TEST(PluginBypass, TakesBlocksLongerThanItWasPreparedFor) {
  const auto run = [](std::size_t length) {
    BypassRig rig(256);
    StereoBuffer audio = noise(20000);
    rig.play(audio, 0, 10000, false, length);
    rig.play(audio, 10000, 15000, true, length);
    rig.play(audio, 15000, audio.size(), false, length);
    return audio;
  };
  const StereoBuffer small = run(250);
  const StereoBuffer large = run(5000);
  EXPECT_EQ(small.left, large.left);
  EXPECT_EQ(small.right, large.right);
}

TEST(PluginBypass, AsksForThePositionOfTheHostsBlockInEveryPiece) {
  struct Host : HostPort {
    double sampleRate() const noexcept override { return rate; }
    void transportAt(int frame, HostTimeInfo& info) const noexcept override {
      info = {};
      frames.push_back(frame);
    }
    mutable std::vector<int> frames;
  } host;
  Orvantesco effect(host);
  PluginBypass bypass(effect);
  bypass.prepare(64, rate);
  StereoBuffer audio(1024);
  double* channels[] = {audio.left.data(), audio.right.data()};
  AudioBlock block;
  block.inputs = block.outputs = channels;
  block.inputCount = block.outputCount = 2;
  block.frames = 256;
  block.bypass = true;
  bypass.process(block);
  EXPECT_EQ(host.frames, (std::vector<int>{31, 63, 95, 127, 159, 191, 223, 255}));
}

TEST(PluginBypass, ReportsTheLatencyBeforeTheFirstBlock) {
  for (const double at : {44100.0, 48000.0, 96000.0}) {
    EngineRig rig{at};
    PluginBypass bypass(rig.effect);
    bypass.prepare(512, at);
    const int before = rig.host.latencySamples();
    StereoBuffer audio(512);
    rig.block(audio, 0, 512);
    EXPECT_EQ(rig.host.latencySamples(), before);
    EXPECT_EQ(before, 32 + static_cast<int>(std::lround(at * 0.001)));
  }
}

TEST(PluginBypass, ForgetsWhatSoundsAtAReset) {
  BypassRig rig;
  rig.rig.set(kFeedback, 95.0);
  StereoBuffer audio = noise(60000);
  std::fill(audio.left.begin() + 20000, audio.left.end(), 0.0);
  std::fill(audio.right.begin() + 20000, audio.right.end(), 0.0);
  rig.play(audio, 0, 20000, false);
  rig.bypass.reset();
  rig.play(audio, 20000, audio.size(), false);
  EXPECT_LT(peak(audio, 20100, audio.size()), 1e-9);
}

}  // namespace
}  // namespace orvantesco
