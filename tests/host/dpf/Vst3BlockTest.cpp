// Blocks of unusual lengths, and what they bring of parameters.

#include <gtest/gtest.h>

#include <functional>

#include "host/dpf/DirectEffect.h"
#include "host/dpf/DpfState.h"
#include "host/dpf/Vst3Host.h"

namespace orvantesco {
namespace {

constexpr double mostFeedback = 160.0;  ///< percent
constexpr double mostWet = 100.0;

Vst3Block noiseBlock(std::size_t frames, unsigned seed) {
  Vst3Block block(frames);
  block.in = {noise(frames, 2 * seed), noise(frames, 2 * seed + 1)};
  return block;
}

/// An effect with quick echoes, and the plug-in with its settings.
class Vst3BlockTest : public testing::Test {
 protected:
  Vst3BlockTest() {
    direct.setQuickEchoes();
    direct.host.setRunning(false);
    load(host);
  }

  void load(Vst3Host& other) {
    ASSERT_TRUE(other.setState(vst3StreamOf(stateText(direct.effect))));
  }
  void load(Vst3Host& other, int announced) {
    load(other);
    other.activate(rateHz, announced);
  }
  void activate() {
    direct.effect.startAnew();
    host.activate(rateHz, longestBlock);
  }

  /// Plays noise through both, whose values `move` sets ahead of a block and with it. Returns the
  /// largest difference of the left outputs.
  double playBoth(const std::function<void(unsigned, Vst3Block&)>& move) {
    double most = 0.0;
    for (unsigned b = 0; b < 60; ++b) {
      Vst3Block block = noiseBlock(longestBlock, b);
      move(b, block);
      direct.process(block);
      host.process(block);
      most = std::max(most, differenceOf(block.out[0], direct.out[0]));
    }
    return most;
  }

  /// What a session of the plug-in holds now.
  double saved(int index) {
    OfflineHost offline;
    Orvantesco effect(offline);
    EXPECT_TRUE(restoreStateText(effect, vst3StateTextIn(host.state()).c_str()));
    return effect.GetParam(index)->value();
  }

  DirectEffect direct;
  Vst3Host host;
};

TEST_F(Vst3BlockTest, MayBeLongerThanWasTold) {
  Vst3Host told;
  load(host, 64);
  load(told, 4096);
  for (unsigned b = 0; b < 4; ++b) {
    Vst3Block block = noiseBlock(4096, b), same = noiseBlock(4096, b);
    host.process(block);
    told.process(same);
    EXPECT_EQ(block.out, same.out);
    EXPECT_GT(peakOf(block.out[0]), 0.1);
  }
}

TEST_F(Vst3BlockTest, TakesAutomationAtItsStart) {
  activate();
  // These positions and what they stand for are floats, so both get the same number.
  const double automated = playBoth([this](unsigned b, Vst3Block& block) {
    const double position = static_cast<double>(b / 10 % 4) * 0.25;
    block.changes = {{vst3IdOf(kWetLevel), 0, position}};
    direct.set(kWetLevel, mostWet * position);
  });
  EXPECT_LT(automated, 1e-6);
  // The same automation is heard: a plug-in that misses it differs.
  const double missed = playBoth([this](unsigned b, Vst3Block&) {
    direct.set(kWetLevel, mostWet * static_cast<double>(b / 10 % 4) * 0.25);
  });
  EXPECT_GT(missed, 0.01);
}

TEST_F(Vst3BlockTest, TakesTheLastOfSeveralPointsAtItsStart) {
  activate();
  const double most = playBoth([this](unsigned b, Vst3Block& block) {
    const double position = static_cast<double>(b / 10 % 4) * 0.25;
    block.changes = {{vst3IdOf(kWetLevel), 0, 1.0 - position},
                     {vst3IdOf(kFeedback), 0, 0.5},
                     {vst3IdOf(kWetLevel), 0, position}};
    direct.set(kWetLevel, mostWet * position);
    direct.set(kFeedback, mostFeedback * 0.5);
  });
  EXPECT_LT(most, 1e-6);
}

TEST_F(Vst3BlockTest, CountsWhatComesWithinItFromTheNextOneOn) {
  activate();
  double next = 0.5;
  const double most = playBoth([this, &next](unsigned b, Vst3Block& block) {
    direct.set(kWetLevel, mostWet * (b == 0 ? 0.25 : next));
    next = static_cast<double>(b / 10 % 4) * 0.25;
    if (b == 0) block.changes.push_back({vst3IdOf(kWetLevel), 0, 0.25});
    block.changes.push_back({vst3IdOf(kWetLevel), 7, 1.0 - next});
    block.changes.push_back({vst3IdOf(kWetLevel), 100, next});
  });
  EXPECT_LT(most, 1e-6);
}

/// One parameter that an older session knows must not take the others' automation with it.
TEST_F(Vst3BlockTest, PassesOverAParameterThatDoesNotExist) {
  activate();
  Vst3Block block = noiseBlock(longestBlock, 1);
  block.changes = {{5000, 0, 0.5}, {vst3IdOf(kFeedback), 0, 0.25}};
  host.process(block);
  EXPECT_EQ(host.normalized(vst3IdOf(kFeedback)), 0.25);
}

TEST_F(Vst3BlockTest, TakesChangesWithoutFrames) {
  activate();
  Vst3Block flush(0);
  flush.changes = {{vst3IdOf(kFeedback), 0, 0.125},
                   {vst3IdOf(kFeedback), 0, 0.25},
                   {vst3IdOf(kWetLevel), 0, 0.5}};
  host.process(flush);
  EXPECT_EQ(host.normalized(vst3IdOf(kFeedback)), 0.25);
  EXPECT_EQ(saved(kFeedback), 0.25 * mostFeedback);
  EXPECT_EQ(saved(kWetLevel), 0.5 * mostWet);
}

TEST_F(Vst3BlockTest, IsNotNeededForAChangeWhileNothingPlays) {
  EXPECT_EQ(host.setNormalized(vst3IdOf(kFeedback), 0.25), V3_OK);
  EXPECT_EQ(host.normalized(vst3IdOf(kFeedback)), 0.25);
  EXPECT_EQ(saved(kFeedback), 0.25 * mostFeedback);
}

/// While it plays, blocks bring the changes; a host's controls only show them, and may be late.
TEST_F(Vst3BlockTest, AloneBringsChangesWhileItPlays) {
  activate();
  host.setNormalized(vst3IdOf(kFeedback), 0.25);
  EXPECT_EQ(saved(kFeedback), 50.0);
}

/// An LFO that goes from Hz to notes takes its rate along. A host that then sends the rate that it
/// still shows means it.
TEST_F(Vst3BlockTest, TakesAValueAgainThatTheEffectHasMovedMeanwhile) {
  activate();
  const auto send = [this](int index, double position) {
    Vst3Block block = noiseBlock(longestBlock, 1);
    block.changes = {{vst3IdOf(index), 0, position}};
    host.process(block);
  };
  send(kLfoRate, 2.0 / 500.0);
  send(kLfoSync, 1.0);
  const double moved = saved(kLfoRate);
  ASSERT_NE(moved, 2.0);
  EXPECT_NEAR(host.normalized(vst3IdOf(kLfoRate)), moved / 500.0, 1e-7);
  send(kLfoRate, 2.0 / 500.0);
  EXPECT_EQ(saved(kLfoRate), 2.0);
}

TEST_F(Vst3BlockTest, SaysNothingWhereAHostHearsNoOutputs) {
  activate();
  Vst3Block block = noiseBlock(longestBlock, 1), flush(0);
  block.hearsOutputs = flush.hearsOutputs = false;
  testing::internal::CaptureStderr();
  host.process(block);
  host.process(flush);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace orvantesco
