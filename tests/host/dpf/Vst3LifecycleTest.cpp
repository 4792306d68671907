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

/// What a host hears that plays 0.4 s from beat 3 on, in blocks that are no whole vectors.
std::vector<float> bounce(Vst3Host& host) {
  std::vector<float> heard;
  v3_process_context context{};
  context.state = V3_PROCESS_CTX_PLAYING | V3_PROCESS_CTX_PROJECT_TIME_VALID |
                  V3_PROCESS_CTX_TEMPO_VALID | V3_PROCESS_CTX_TIME_SIG_VALID;
  context.sample_rate = rateHz;
  context.bpm = 137.0;
  context.time_sig_numerator = context.time_sig_denom = 4;
  for (unsigned b = 0; b < 65; ++b) {
    Vst3Block block(299);
    block.in = {noise(299, b), noise(299, b + 1000)};
    context.project_time_quarters = 3.0 + b * 299 * context.bpm / (60.0 * rateHz);
    context.project_time_in_samples =
        static_cast<std::int64_t>(context.project_time_quarters * 60.0 / context.bpm * rateHz);
    block.context = &context;
    host.process(block);
    heard.insert(heard.end(), block.out[0].begin(), block.out[0].end());
  }
  return heard;
}

TEST_F(Vst3Lifecycle, PlaysTheSameInASecondBounce) {
  direct.set(kGateOn, 1.0);
  direct.set(kGateSync, 1.0);
  direct.set(kLevelModSource, 5.0);
  direct.set(kLevelModDepth, 50.0);
  direct.set(kLfoOn, 1.0);
  direct.set(kDelayTimeLModSource, 1.0);
  direct.set(kDelayTimeLModDepth, 20.0);
  ASSERT_TRUE(host.setState(vst3StreamOf(stateText(direct.effect))));
  host.activate(rateHz, longestBlock);
  const std::vector<float> first = bounce(host);
  EXPECT_GT(peakOf(first), 0.1);
  for (int times = 0; times < 2; ++times) {
    host.deactivate();
    host.activate(rateHz, longestBlock);
    EXPECT_TRUE(bounce(host) == first);
  }
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
