// The bundle against an effect that is driven directly with the same settings, audio and transport.

#include <gtest/gtest.h>

#include "host/dpf/DirectEffect.h"
#include "host/dpf/DpfState.h"
#include "host/dpf/Lv2Host.h"
#include "params/ParamIndex.h"

namespace orvantesco {
namespace {

Lv2Block noiseBlock(std::size_t frames, unsigned seed) {
  Lv2Block block(frames);
  block.in = {noise(frames, 2 * seed), noise(frames, 2 * seed + 1)};
  return block;
}

class Lv2PlaysAPreset : public testing::TestWithParam<const char*> {};

/// The position is told once, in a bar's middle; from there on the plug-in counts bars and beats.
/// No bars of four, since one too many of those does not shift what repeats every two.
void playOn(const char* preset, const Lv2Position& start) {
  DirectEffect direct;
  direct.load(preset);
  Lv2Host host;
  ASSERT_TRUE(host.restore(stateText(direct.effect)));
  direct.host.setTempo(start.tempo);
  direct.host.setTimeSignature(static_cast<int>(start.beatsPerBar), start.beatUnit);
  direct.host.locate(start.quarterNotes);
  double peak = 0.0;
  for (unsigned b = 0; b < 900; ++b) {
    Lv2Block block = noiseBlock(b % 3 == 0 ? 256 : 97 + b % 50, b);
    direct.process(block);
    host.process(block, b == 0 ? &start : nullptr);
    for (std::size_t c = 0; c < 2; ++c) {
      ASSERT_LT(differenceOf(block.out[c], direct.out[c]), 1e-6) << "block " << b;
      peak = std::max(peak, peakOf(block.out[c]));
    }
  }
  EXPECT_GT(peak, 0.05);
}

TEST_P(Lv2PlaysAPreset, AsTheEffectItselfWhileTheTransportRunsOn) {
  playOn(GetParam(), {10.3, 133.0, 3.0F, 4});
}

/// The tempo counts quarter notes there too.
TEST_P(Lv2PlaysAPreset, AsTheEffectItselfInBarsOfOtherNotes) {
  playOn(GetParam(), {10.3, 133.0, 7.0F, 8});
  playOn(GetParam(), {10.3, 133.0, 3.0F, 2});
}

INSTANTIATE_TEST_SUITE_P(Factory, Lv2PlaysAPreset,
                         testing::Values("Basics/Default", "Filter Delays/Singing Filter",
                                         "Modulated/Rhythm Gate"));

TEST(Lv2Audio, KeepsTheStateThatWasRestoredThoughItsPortsAreFloats) {
  DirectEffect direct;
  direct.set(kFeedback, 100.0 / 3.0);
  const std::string state = stateText(direct.effect);
  Lv2Host host;
  host.restore(state);
  host.controls[kFeedback] = static_cast<float>(100.0 / 3.0);  // as a host restores it too
  Lv2Block block = noiseBlock(256, 1);
  host.process(block);
  EXPECT_EQ(host.save(), state);
}

/// An LFO that leaves Hz takes its rate along, which the port of the rate cannot follow.
TEST(Lv2Audio, KeepsTheStateThatWasRestoredThoughItsPortsAreOlder) {
  DirectEffect direct;
  direct.set(kLfoRate, 2.0);
  direct.set(kLfoSync, 1.0);
  ASSERT_NE(direct.effect.GetParam(kLfoRate)->value(), 2.0);
  const std::string state = stateText(direct.effect);
  Lv2Host host;
  host.controls[kLfoRate] = 2.0F;
  host.controls[kLfoSync] = 1.0F;
  host.restore(state);
  Lv2Block block = noiseBlock(256, 1);
  for (int b = 0; b < 3; ++b) host.process(block);
  EXPECT_EQ(host.save(), state);
  host.controls[kLfoRate] = 6.0F;
  direct.set(kLfoRate, 6.0);
  host.process(block);
  EXPECT_EQ(host.save(), stateText(direct.effect));
}

/// Of such a session the ports are all that is left.
TEST(Lv2Audio, TakesThePortsOfASessionWhoseStateItRefuses) {
  DirectEffect direct;
  direct.set(kFeedback, 55.0);
  const std::string whole = stateText(direct.effect);
  for (const std::string& text : {std::string("no base64!"), whole.substr(0, whole.size() / 2)}) {
    Lv2Host host;
    host.controls[kFeedback] = 55.0F;
    EXPECT_FALSE(host.restore(text));
    Lv2Block block = noiseBlock(256, 1);
    host.process(block);
    EXPECT_EQ(host.save(), whole) << text.size();
  }
}

TEST(Lv2Audio, TakesTheBypassFromItsPortThoughAStateWasRestored) {
  DirectEffect direct;
  Lv2Host host;
  host.controls.back() = 0.0F;
  host.restore(stateText(direct.effect));
  double dry = 0.0;
  for (unsigned b = 0; b < 10; ++b) {
    Lv2Block block = noiseBlock(256, 1);
    host.process(block);
    // The same block over and over, so the dry signal of the last one ends this one's latency.
    if (b < 5) continue;
    for (std::size_t i = 80; i < 256; ++i) {
      dry = std::max(dry, static_cast<double>(std::abs(block.out[0][i] - block.in[0][i - 80])));
    }
  }
  EXPECT_EQ(dry, 0.0);
}

/// Plays echoes whose level moves in the effect, and in the plug-in if its port moves too. Returns
/// the largest difference.
double playMoving(bool portMoves) {
  DirectEffect direct;
  direct.setQuickEchoes();
  direct.host.setRunning(false);
  const std::string state = stateText(direct.effect);
  EXPECT_TRUE(restoreStateText(direct.effect, state.c_str()));  // with its fade, as the plug-in
  Lv2Host host;
  host.restore(state);
  double most = 0.0;
  for (unsigned b = 0; b < 50; ++b) {
    const double level = 20.1 + b;
    direct.set(kWetLevel, level);
    if (portMoves) host.controls[kWetLevel] = static_cast<float>(level);
    Lv2Block block = noiseBlock(256, b);
    direct.process(block);
    host.process(block);
    most = std::max(most, differenceOf(block.out[0], direct.out[0]));
  }
  return most;
}

TEST(Lv2Audio, TakesThePortThatMoves) {
  EXPECT_LT(playMoving(true), 1e-6);
  EXPECT_GT(playMoving(false), 0.01);
}

/// Plays noise through an effect that ducks by its side chain, beside the effect itself.
std::vector<float> playDucked(bool connected) {
  DirectEffect direct;
  direct.load("Ducking/Sidechain Pump");
  direct.host.setRunning(false);
  Lv2Host host;
  host.restore(stateText(direct.effect));
  std::vector<float> heard;
  double most = 0.0;
  for (unsigned b = 0; b < 200; ++b) {
    Lv2Block block = noiseBlock(256, b);
    if (connected) block.side = noise(256, b + 2000);
    direct.process(block);
    host.process(block);
    most = std::max(most, differenceOf(block.out[0], direct.out[0]));
    heard.insert(heard.end(), block.out[0].begin(), block.out[0].end());
  }
  EXPECT_LT(most, 1e-6);
  return heard;
}

TEST(Lv2Audio, HearsTheSideChainWhereItsPortIsConnected) {
  EXPECT_FALSE(playDucked(true) == playDucked(false));
}

/// Whether a host keeps the values side by side or each at a place of its own.
TEST(Lv2Audio, TakesEveryPortThatMovesWhereverItLies) {
  for (const bool apart : {false, true}) {
    DirectEffect direct;
    Lv2Host host;
    if (apart) host.connectControlsApart();
    Lv2Block block = noiseBlock(64, 1);
    for (const int index : {0, kFeedback, kNumParams / 2, kNumParams - 1}) {
      const IParam& param = *direct.effect.GetParam(index);
      const double moved = param.value() == param.max() ? param.min() : param.max();
      host.process(block);
      host.controls[static_cast<std::size_t>(index)] = static_cast<float>(moved);
      host.process(block);
      direct.set(index, moved);
      EXPECT_EQ(host.save(), stateText(direct.effect)) << index;
    }
  }
}

TEST(Lv2Audio, PassesTheDrySignalLateWhileItIsNotEnabled) {
  Lv2Host host;
  host.controls.back() = 0.0F;
  std::vector<float> sent, heard;
  for (unsigned b = 0; b < 20; ++b) {
    Lv2Block block = noiseBlock(256, b);
    host.process(block);
    sent.insert(sent.end(), block.in[0].begin(), block.in[0].end());
    heard.insert(heard.end(), block.out[0].begin(), block.out[0].end());
  }
  ASSERT_EQ(host.latency(), 80);
  for (std::size_t i = 2000; i < heard.size(); ++i) ASSERT_EQ(heard[i], sent[i - 80]) << i;
}

}  // namespace
}  // namespace orvantesco
