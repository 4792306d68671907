// Activation is for threads that may wait; processing is turned on and off on the audio thread.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "host/dpf/DirectEffect.h"
#include "host/dpf/DpfState.h"
#include "host/dpf/Vst3Host.h"

namespace orvantesco {
namespace {

class Vst3Lifecycle : public testing::Test {
 protected:
  Vst3Lifecycle() {
    direct.setQuickEchoes();
    EXPECT_TRUE(host.setState(vst3StreamOf(stateText(direct.effect))));
  }

  void playNoise(unsigned blocks) {
    for (unsigned b = 0; b < blocks; ++b) {
      Vst3Block block(longestBlock);
      block.in = {noise(longestBlock, b), noise(longestBlock, b + 1000)};
      host.process(block);
    }
  }

  /// The loudest sample of the next tenth of a second without input.
  double peakOfSilence() {
    double peak = 0.0;
    for (unsigned b = 0; b < 20; ++b) {
      Vst3Block block(longestBlock);
      host.process(block);
      peak = std::max(peak, peakOf(block.out[0]));
    }
    return peak;
  }

  DirectEffect direct;
  Vst3Host host;
};

/// Another instance at another rate leaves much to do for an activation.
TEST_F(Vst3Lifecycle, TurnsProcessingOffAndOnWithoutTakingMemoryOrWaiting) {
  host.activate(rateHz, longestBlock);
  playNoise(50);
  Vst3Host other;
  other.activate(2.0 * rateHz, longestBlock);
  host.heapAndLocks = 0;
  for (int times = 0; times < 3; ++times) {
    host.setProcessing(false);
    host.setProcessing(true);
    playNoise(5);
  }
  EXPECT_EQ(host.heapAndLocks, 0);
}

TEST_F(Vst3Lifecycle, SoundsOnWhereNothingIsTurnedOff) {
  host.activate(rateHz, longestBlock);
  playNoise(20);
  EXPECT_GT(peakOfSilence(), 0.05);
}

TEST_F(Vst3Lifecycle, IsSilentWhenProcessingWasTurnedOffAndOn) {
  host.activate(rateHz, longestBlock);
  playNoise(20);
  host.setProcessing(false);
  host.setProcessing(true);
  EXPECT_LT(peakOfSilence(), 1e-9);
}

TEST_F(Vst3Lifecycle, PlaysNothingBeforeItIsActivatedButTakesItsChanges) {
  Vst3Block block(longestBlock);
  block.in = {noise(longestBlock, 1), noise(longestBlock, 2)};
  for (auto& channel : block.out) channel.assign(longestBlock, 1.0F);
  block.changes = {{vst3IdOf(kFeedback), 0, 0.25}};
  host.process(block);
  EXPECT_EQ(host.heapAndLocks, 0);
  EXPECT_EQ(peakOf(block.out[0]) + peakOf(block.out[1]), 0.0);
  EXPECT_EQ(host.normalized(vst3IdOf(kFeedback)), 0.25);
  host.activate(rateHz, longestBlock);
  playNoise(20);
  EXPECT_GT(peakOfSilence(), 0.01);
}

TEST_F(Vst3Lifecycle, TellsHowLongItSoundsOn) {
  host.activate(rateHz, longestBlock);
  const auto frames = static_cast<std::uint32_t>(std::ceil(direct.effect.tailSeconds() * rateHz));
  // Twenty milliseconds at half the level each: 90 dB take fifteen of them.
  EXPECT_GE(frames, 15 * 960U);
  EXPECT_LE(frames, 2 * 15 * 960U);
  EXPECT_EQ(host.tail(), frames + host.latency());
  Vst3Block flush(0);
  flush.changes = {{vst3IdOf(kFeedback), 0, 1.0}};
  host.process(flush);
  EXPECT_EQ(host.tail(), std::numeric_limits<std::uint32_t>::max());
  flush.changes = {{vst3IdOf(kNumParams), 0, 1.0}};
  host.process(flush);
  EXPECT_EQ(host.tail(), host.latency());
}

}  // namespace
}  // namespace orvantesco
