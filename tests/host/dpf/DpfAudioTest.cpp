#include "host/dpf/DpfAudio.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <numeric>

namespace orvantesco {
namespace {

constexpr std::size_t frames = 8;
using Channel = std::array<float, frames>;

Channel countingFrom(float first) {
  Channel channel{};
  std::iota(channel.begin(), channel.end(), first);
  return channel;
}

/// As if the effect swapped the channels.
void swapChannels(const AudioBlock& block) {
  std::copy_n(block.inputs[0], block.frames, block.outputs[1]);
  std::copy_n(block.inputs[1], block.frames, block.outputs[0]);
}

TEST(DpfAudio, TakesAndGivesAPieceWhereItStandsInTheBlock) {
  DpfAudio audio;
  audio.prepare(3);
  const Channel left = countingFrom(10), right = countingFrom(20);
  Channel outLeft{}, outRight{};
  const std::array<const float*, 3> inputs{left.data(), right.data(), nullptr};
  const std::array<float*, 2> outputs{outLeft.data(), outRight.data()};
  const AudioBlock block = audio.take(inputs.data(), {3, 2});
  EXPECT_EQ(block.frames, 2);
  EXPECT_EQ(block.firstFrame, 3);
  swapChannels(block);
  audio.give(outputs.data(), {3, 2});
  EXPECT_EQ(outLeft, (Channel{0, 0, 0, 23, 24, 0, 0, 0}));
  EXPECT_EQ(outRight, (Channel{0, 0, 0, 13, 14, 0, 0, 0}));
}

TEST(DpfAudio, KeepsInputsWholeWhereTheyAreTheOutputs) {
  DpfAudio audio;
  audio.prepare(frames);
  Channel left = countingFrom(10), right = countingFrom(20);
  const std::array<const float*, 3> inputs{left.data(), right.data(), nullptr};
  const std::array<float*, 2> outputs{left.data(), right.data()};
  swapChannels(audio.take(inputs.data(), {0, frames}));
  audio.give(outputs.data(), {0, frames});
  EXPECT_EQ(left, countingFrom(20));
  EXPECT_EQ(right, countingFrom(10));
}

TEST(DpfAudio, TakesASideChainOnlyWhereThereIsOne) {
  DpfAudio audio;
  audio.prepare(frames);
  const Channel left = countingFrom(1), side = countingFrom(5);
  const std::array<const float*, 3> without{left.data(), left.data(), nullptr};
  EXPECT_EQ(audio.take(without.data(), {0, frames}).sideChain, nullptr);
  const std::array<const float*, 3> with{left.data(), left.data(), side.data()};
  const AudioBlock block = audio.take(with.data(), {0, frames});
  ASSERT_NE(block.sideChain, nullptr);
  EXPECT_TRUE(std::equal(side.begin(), side.end(), block.sideChain));
}

TEST(DpfAudio, ReadsAnUnconnectedInputAsSilence) {
  DpfAudio audio;
  audio.prepare(frames);
  const Channel right = countingFrom(1);
  const std::array<const float*, 3> full{right.data(), right.data(), nullptr};
  audio.take(full.data(), {0, frames});
  const std::array<const float*, 3> inputs{nullptr, right.data(), nullptr};
  const AudioBlock block = audio.take(inputs.data(), {0, frames});
  EXPECT_TRUE(
      std::all_of(block.inputs[0], block.inputs[0] + frames, [](double x) { return x == 0; }));
}

TEST(DpfAudio, HasRoomForOneFrameAtLeast) {
  DpfAudio audio;
  audio.prepare(0);
  EXPECT_EQ(audio.longestPiece(), 1);
}

}  // namespace
}  // namespace orvantesco
