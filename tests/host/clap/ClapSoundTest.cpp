// What a host hears is what the effect alone gives, bit for bit.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "host/clap/ClapRender.h"
#include "presets/PresetReader.h"
#include "presets/StateChunk.h"

namespace orvantesco {
namespace {

/// Settings with much going on and nothing left to chance: echoes, an LFO in tempo, a gate.
std::vector<std::uint8_t> busyState() {
  ClapInstance instance;
  instance.in.value(0, kSlotOn + 1, 1);
  instance.in.value(0, kDelayMode + 1, 3);
  instance.in.value(0, kLfoSync, 1);
  instance.in.value(0, kFeedbackModSource, 1);
  instance.in.value(0, kFeedbackModDepth, 0.8);
  instance.in.value(0, kLevelModSource + 1, 5);
  instance.in.value(0, kLevelModDepth + 1, 0.2);
  instance.flush();
  return instance.state();
}

void expectSame(const StereoBuffer& a, const StereoBuffer& b) {
  EXPECT_TRUE(a.left == b.left);
  EXPECT_TRUE(a.right == b.right);
}

/// The host announces its longest block, or another length.
StereoBuffer throughFresh(const std::vector<std::uint8_t>& state, const StereoBuffer& sound,
                          const ClapPlan& plan, int announcedFrames = 0) {
  ClapInstance instance;
  EXPECT_TRUE(instance.load(state));
  if (plan.mono) {
    const auto& layouts =
        extensionOf<ClapPluginAudioPortsConfig>(instance.plugin, kClapAudioPortsConfigId);
    EXPECT_TRUE(layouts.select(instance.plugin, 2));
  }
  instance.start(plan.rateHz, announcedFrames > 0 ? announcedFrames : plan.longest());
  return throughClap(instance, sound, plan);
}

/// What the plan gives through the plug-in is what the effect alone gives.
void expectTheEffectsOwn(const ClapPlan& plan, int announcedFrames = 0) {
  const auto state = busyState();
  const StereoBuffer sound = noise(20000);
  expectSame(throughFresh(state, sound, plan, announcedFrames), withoutClap(state, sound, plan));
}

double loudest(const StereoBuffer& sound) {
  double most = 0.0;
  for (const double x : sound.left) most = std::max(most, std::abs(x));
  return most;
}

class ClapSoundAtRate : public testing::TestWithParam<double> {};

TEST_P(ClapSoundAtRate, IsTheEffectsOwnInBlocksOfAnyLength) {
  const auto state = busyState();
  ClapPlan plan;
  plan.rateHz = GetParam();
  plan.blocks = {1, 2, 3, 31, 32, 33, 64, 100, 255, 480, 513, 1024, 4095, 4097, 16384};
  plan.tempo = 137.0;
  plan.startBeats = 3.7;
  const StereoBuffer sound = noise(60000);
  const StereoBuffer heard = throughFresh(state, sound, plan);
  expectSame(heard, withoutClap(state, sound, plan));
  EXPECT_GT(loudest(heard), 0.01);
}

INSTANTIATE_TEST_SUITE_P(Rates, ClapSoundAtRate,
                         testing::Values(8000.0, 22050.0, 44100.0, 48000.0, 96000.0, 192000.0,
                                         768000.0));

TEST(ClapSound, AnswersToMovesAtTheirFrames) {
  const auto state = busyState();
  ClapPlan plan;
  plan.blocks = {512, 37, 1000};
  std::mt19937 random(7);
  const auto draw = [&random](std::uint32_t below) {
    return static_cast<std::uint32_t>(random()) % below;
  };
  for (std::uint32_t frame = 0; frame < 48000; frame += draw(300)) {
    const double position = draw(1000000) / 1000000.0;
    plan.moves.push_back({frame, kFeedback + draw(4), position});
    if (draw(2) == 0) plan.moves.push_back({frame, kDelayTimeL, position});
  }
  const StereoBuffer sound = noise(48000);
  const StereoBuffer heard = throughFresh(state, sound, plan);
  expectSame(heard, withoutClap(state, sound, plan));
  ClapPlan still = plan;
  still.moves.clear();
  EXPECT_FALSE(heard.left == throughFresh(state, sound, still).left);
}

std::vector<std::uint8_t> stateOfShipped(const std::string& key) {
  const ClapInstance instance;
  const auto& loading = extensionOf<ClapPluginPresetLoad>(instance.plugin, kClapPresetLoadId);
  EXPECT_TRUE(loading.from_location(instance.plugin, kClapPresetInPlugin, nullptr, key.c_str()));
  return instance.state();
}

/// Noise and then silence, in which nothing but the echoes sounds.
StereoBuffer burst(std::size_t noiseFrames, std::size_t frames) {
  StereoBuffer sound = noise(noiseFrames);
  sound.left.resize(frames);
  sound.right.resize(frames);
  return sound;
}

/// The largest difference from a frame on.
double differenceFrom(const StereoBuffer& a, const StereoBuffer& b, std::size_t first) {
  double most = 0.0;
  for (std::size_t i = first; i < a.size(); ++i) {
    most = std::max({most, std::abs(a.left[i] - b.left[i]), std::abs(a.right[i] - b.right[i])});
  }
  return most;
}

class ClapSoundOfShipped : public testing::TestWithParam<const char*> {};

/// With automation and a side chain, for three seconds.
TEST_P(ClapSoundOfShipped, IsTheEffectsOwn) {
  constexpr std::size_t behind = 49000;  // the dry signal is over
  const StereoBuffer sound = burst(48000, 144000);
  StereoBuffer side = noise(48000, 0.8, 99);
  side.left.resize(144000);
  const auto state = stateOfShipped(GetParam());
  ClapPlan plan;
  plan.blocks = {256};
  plan.side = side.left.data();
  const StereoBuffer still = throughFresh(state, sound, plan);
  EXPECT_GT(differenceFrom(still, StereoBuffer(still.size()), behind), 1e-3) << "echoes";
  plan.moves = {{777, kFeedback, 0.3}, {50021, kWetLevel, 0.5}, {52001, kFeedback + 2, 0.6}};
  const StereoBuffer heard = throughFresh(state, sound, plan);
  EXPECT_GT(differenceFrom(heard, still, behind), 1e-3) << "moves";
  expectSame(heard, withoutClap(state, sound, plan));
}

INSTANTIATE_TEST_SUITE_P(Presets, ClapSoundOfShipped,
                         testing::Values("Echo/Dub Quarter", "Filter Delays/Singing Filter",
                                         "Modulated/Rhythm Gate", "Ducking/Sidechain Pump"));

TEST(ClapSound, OfAShippedPresetHearsTheSideChain) {
  const StereoBuffer sound = noise(72000);
  const StereoBuffer side = noise(72000, 0.8, 99);
  const auto state = stateOfShipped("Ducking/Sidechain Pump");
  ClapPlan plan;
  const StereoBuffer alone = throughFresh(state, sound, plan);
  plan.side = side.left.data();
  EXPECT_GT(differenceFrom(throughFresh(state, sound, plan), alone, 0), 1e-3);
}

TEST(ClapSound, HearsTheSideChain) {
  const StereoBuffer sound = noise(72000);
  StereoBuffer side = noise(72000, 0.9, 5);
  ClapInstance setting;
  setting.in.value(0, kEnvOn, 1);
  setting.in.value(0, kEnvThreshold, 0.0);
  setting.in.value(0, kEnvSource, 15);
  setting.in.value(0, kLevelModSource, 9);
  setting.in.value(0, kLevelModDepth, 0.0);
  setting.flush();
  const auto state = setting.state();
  ClapPlan plan;
  const StereoBuffer without = throughFresh(state, sound, plan);
  plan.side = side.left.data();
  expectSame(throughFresh(state, sound, plan), withoutClap(state, sound, plan));
  EXPECT_FALSE(throughFresh(state, sound, plan).left == without.left);
}

TEST(ClapSound, IsTheSameInPlace) {
  const auto state = busyState();
  const StereoBuffer sound = noise(20000);
  ClapPlan plan;
  plan.blocks = {300};
  const StereoBuffer apart = throughFresh(state, sound, plan);
  plan.inPlace = true;
  expectSame(throughFresh(state, sound, plan), apart);
}

TEST(ClapSound, OfAMonoInputIsTheEffectsOwn) { expectTheEffectsOwn({.mono = true}); }

/// In 32 bits it is the same sound, rounded where it enters and where it leaves.
TEST(ClapSound, In32BitsDiffersByTheRoundingAlone) {
  const auto state = busyState();
  StereoBuffer sound = noise(20000);
  for (auto* channel : {&sound.left, &sound.right}) {
    for (double& x : *channel) x = static_cast<float>(x);
  }
  ClapPlan plan;
  StereoBuffer wide = throughFresh(state, sound, plan);
  for (auto* channel : {&wide.left, &wide.right}) {
    for (double& x : *channel) x = static_cast<float>(x);
  }
  plan.wide = false;
  expectSame(throughFresh(state, sound, plan), wide);
  plan.inPlace = true;
  expectSame(throughFresh(state, sound, plan), wide);
}

TEST(ClapSound, ABlockBeyondTheAnnouncedLengthIsTakenInPieces) {
  expectTheEffectsOwn({.blocks = {5000}}, 64);
}

}  // namespace
}  // namespace orvantesco
