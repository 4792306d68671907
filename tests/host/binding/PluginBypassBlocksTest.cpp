// Blocks and buffers of every kind that a host may hand to a bypass.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "host/binding/BypassRig.h"

namespace orvantesco {
namespace {

TEST(PluginBypassBlocks, PassesAMonoInputToBothOutputs) {
  EngineRig rig{rate};
  PluginBypass bypass(rig.effect);
  bypass.prepare(256, rate, false);
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

TEST(PluginBypassBlocks, TakesSeparateAndCrossedBuffersAlike) {
  const StereoBuffer input = noise(6000);
  const auto run = [&](bool crossed) {
    EngineRig rig{rate};
    PluginBypass bypass(rig.effect);
    bypass.prepare(128, rate, false);
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

TEST(PluginBypassBlocks, TakesBlocksLongerThanItWasPreparedFor) {
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

TEST(PluginBypassBlocks, AsksForThePositionOfTheHostsBlockInEveryPiece) {
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
  bypass.prepare(64, rate, false);
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

TEST(PluginBypassBlocks, ReportsTheLatencyBeforeTheFirstBlock) {
  for (const double at : {44100.0, 48000.0, 96000.0}) {
    EngineRig rig{at};
    PluginBypass bypass(rig.effect);
    bypass.prepare(512, at, false);
    const int before = rig.host.latencySamples();
    StereoBuffer audio(512);
    rig.block(audio, 0, 512);
    EXPECT_EQ(rig.host.latencySamples(), before);
    EXPECT_EQ(before, 32 + static_cast<int>(std::lround(at * 0.001)));
  }
}

}  // namespace
}  // namespace orvantesco
