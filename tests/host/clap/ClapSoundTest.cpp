// What a host hears is what the effect alone gives, bit for bit.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "host/clap/ClapRender.h"
#include "presets/FactoryPresets.h"
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

/// With two slots and the LFO at tempo, eight shipped presets, automation and a side chain.
TEST(ClapSound, OfShippedPresetsIsTheEffectsOwn) {
  const StereoBuffer sound = noise(12000);
  const StereoBuffer side = noise(12000, 0.8, 99);
  ClapPlan plan;
  plan.blocks = {256};
  plan.side = side.left.data();
  plan.moves = {{777, kFeedback, 0.3}, {5000, kWetLevel, 0.9}, {9001, kFeedback + 2, 0.6}};
  const auto presets = factoryPresets();
  ASSERT_GE(presets.size(), 8u);
  for (std::size_t i = 0; i < 8; ++i) {
    const FactoryPreset& preset = presets[i * presets.size() / 8];
    ClapInstance instance;
    const auto& loading = extensionOf<ClapPluginPresetLoad>(instance.plugin, kClapPresetLoadId);
    const std::string key = std::string(preset.folder) + "/" + std::string(preset.name);
    ASSERT_TRUE(loading.from_location(instance.plugin, kClapPresetInPlugin, nullptr, key.c_str()));
    const auto state = instance.state();
    EXPECT_TRUE(throughFresh(state, sound, plan).left == withoutClap(state, sound, plan).left)
        << key;
  }
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
