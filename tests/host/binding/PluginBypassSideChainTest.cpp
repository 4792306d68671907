// The bypass of an effect that listens to a side chain.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "host/binding/PluginBypass.h"
#include "params/ParamIndex.h"
#include "support/EngineRig.h"

namespace orvantesco {
namespace {

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

/// At other rates the fades take other numbers of frames; the side chain follows every cut.
TEST(PluginBypass, LeavesASideChainWholeAtAnotherRate) {
  constexpr double otherRate = 96000.0;
  const StereoBuffer input = noise(60000);
  const StereoBuffer side = noise(60000, 0.9, 5);
  const auto heardInBlocksOf = [&](std::size_t length) {
    EngineRig rig{otherRate};
    PluginBypass bypass{rig.effect};
    bypass.prepare(512, otherRate, false);
    rig.set(kEnvOn, 1);
    rig.set(kEnvSource, 15);
    rig.set(kPanningModSource, 9);
    rig.set(kPanningModDepth, 100.0);
    rig.set(kDelayTimeL, 10.0);
    rig.set(kDelayTimeR, 10.0);
    StereoBuffer audio = input;
    std::vector<double> sideIn = side.left;
    for (std::size_t at = 0; at < audio.size(); at += length) {
      double* channels[] = {audio.left.data() + at, audio.right.data() + at};
      AudioBlock block;
      block.inputs = block.outputs = channels;
      block.inputCount = block.outputCount = 2;
      block.sideChain = sideIn.data() + at;
      block.frames = static_cast<int>(std::min(length, audio.size() - at));
      block.bypass = at >= 20000 && at < 30000;
      bypass.process(block);
    }
    return audio;
  };
  // 20000 and 30000 are whole numbers of blocks of either length.
  const StereoBuffer small = heardInBlocksOf(100);
  const StereoBuffer large = heardInBlocksOf(2000);
  EXPECT_TRUE(small.left == large.left && small.right == large.right);
  EXPECT_EQ(differenceFrom(input, small, 32 + 96, 20000 + 960 + 128, 30000), 0.0);
  EXPECT_GT(differenceFrom(input, small, 32 + 96, 40000, 60000), 0.01);
}

}  // namespace
}  // namespace orvantesco
