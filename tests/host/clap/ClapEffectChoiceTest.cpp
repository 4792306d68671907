// Effects that a person chooses with a host's own controls, and those that automation leaves alone.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/clap/ClapRender.h"
#include "presets/FactoryPresets.h"

namespace orvantesco {
namespace {

constexpr double kFilter = 1.0;
constexpr double kShifter = 14.0;

/// What the host sends of the type of slot 1 before the delay.
void sendType(ClapInstance& instance, double type, std::uint32_t flags) {
  instance.in.value(0, kFxTypePre, type);
  instance.in.last().flags = flags;
  instance.flush();
}

/// How many settings the plug-in told the host to have moved: a chosen effect brings its own.
std::size_t movedByTurnOfMainThread(ClapInstance& instance) {
  instance.out.told.clear();
  instance.runMainThread();
  instance.flush();
  return instance.out.told.size();
}

bool loadShipped(const ClapInstance& instance, const std::string& key) {
  const auto& loading = extensionOf<ClapPluginPresetLoad>(instance.plugin, kClapPresetLoadId);
  return loading.from_location(instance.plugin, kClapPresetInPlugin, nullptr, key.c_str());
}

std::string firstShipped() {
  const FactoryPreset& preset = factoryPresets().front();
  return std::string(preset.folder) + "/" + std::string(preset.name);
}

bool builds(ClapInstance& instance) { return movedByTurnOfMainThread(instance) > 5; }

TEST(ClapEffectChoice, OfAPersonBuildsAndAutomationDoesNot) {
  const auto soundWith = [](std::uint32_t flags) {
    ClapInstance instance;
    instance.in.value(0, kFxOnPre, 1);
    instance.in.value(0, kDryLevel, 0.0);
    instance.start();
    sendType(instance, kShifter, flags);
    instance.runMainThread();
    EXPECT_EQ(instance.value(kFxTypePre), kShifter);
    return throughClap(instance, noise(72000), {});
  };
  const StereoBuffer plain = soundWith(0);
  const StereoBuffer chosen = soundWith(CLAP_EVENT_IS_LIVE);
  EXPECT_FALSE(plain.left == chosen.left);
}

TEST(ClapEffectChoice, WhileItPlaysIsBuiltOnTheMainThread) {
  ClapInstance instance;
  instance.start();
  sendType(instance, kShifter, CLAP_EVENT_IS_LIVE);
  EXPECT_GT(instance.host.callbacks, 0);
  EXPECT_TRUE(builds(instance));
}

TEST(ClapEffectChoice, OfWhatAutomationLeftInTheKnobBuilds) {
  ClapInstance instance;
  instance.start();
  sendType(instance, kShifter, 0);
  EXPECT_FALSE(builds(instance));
  EXPECT_EQ(instance.value(kFxTypePre), kShifter);
  sendType(instance, kShifter, CLAP_EVENT_IS_LIVE);
  EXPECT_TRUE(builds(instance));
}

TEST(ClapEffectChoice, OfTheEffectThatRunsKeepsItsSettings) {
  ClapInstance instance;
  instance.start();
  sendType(instance, kShifter, CLAP_EVENT_IS_LIVE);
  ASSERT_TRUE(builds(instance));
  instance.in.value(0, kFxParam1, 0.123);
  instance.flush();
  // A host that brings the value back, and one that went elsewhere by automation in between.
  sendType(instance, kShifter, CLAP_EVENT_IS_LIVE);
  EXPECT_FALSE(builds(instance));
  sendType(instance, kFilter, 0);
  sendType(instance, kShifter, CLAP_EVENT_IS_LIVE);
  EXPECT_FALSE(builds(instance));
  EXPECT_NEAR(instance.value(kFxParam1), 0.123, 1e-12);
}

TEST(ClapEffectChoice, TheLastOfManyInOneTurnCounts) {
  ClapInstance instance;
  instance.start();
  sendType(instance, kFilter, CLAP_EVENT_IS_LIVE);
  sendType(instance, 0.0, CLAP_EVENT_IS_LIVE);
  EXPECT_FALSE(builds(instance));
  sendType(instance, kFilter, CLAP_EVENT_IS_LIVE);
  sendType(instance, kShifter, CLAP_EVENT_IS_LIVE);
  EXPECT_TRUE(builds(instance));
  sendType(instance, kShifter, CLAP_EVENT_IS_LIVE);
  EXPECT_FALSE(builds(instance));
}

TEST(ClapEffectChoice, AfterAStateMeansTheEffectsOfTheState) {
  ClapInstance one;
  sendType(one, kShifter, CLAP_EVENT_IS_LIVE);
  one.runMainThread();
  ClapInstance other;
  ASSERT_TRUE(other.load(one.state()));
  sendType(other, kShifter, CLAP_EVENT_IS_LIVE);
  EXPECT_FALSE(builds(other));
  sendType(other, 0.0, CLAP_EVENT_IS_LIVE);
  EXPECT_TRUE(builds(other));
}

/// What a choice that waited through a load would make of what is loaded, and of the automation
/// that moves a knob behind it.
void expectNothingWaitsBehind(ClapInstance& instance) {
  const auto loaded = instance.state();
  sendType(instance, kFilter, 0);
  EXPECT_FALSE(builds(instance));
  sendType(instance, 0.0, 0);
  EXPECT_EQ(instance.state(), loaded);
}

TEST(ClapEffectChoice, ThatWaitsIsOverWithALoadedState) {
  const ClapInstance fresh;
  ClapInstance instance;
  instance.start();
  sendType(instance, kShifter, CLAP_EVENT_IS_LIVE);
  ASSERT_TRUE(instance.load(fresh.state()));
  EXPECT_EQ(instance.state(), fresh.state());
  expectNothingWaitsBehind(instance);
}

TEST(ClapEffectChoice, ThatWaitsIsOverWithALoadedPreset) {
  ClapInstance instance;
  instance.start();
  sendType(instance, kShifter, CLAP_EVENT_IS_LIVE);
  ASSERT_TRUE(loadShipped(instance, firstShipped()));
  sendType(instance, kFilter, 0);
  EXPECT_FALSE(builds(instance));
}

TEST(ClapEffectChoice, ThatWaitsOutlivesALoadThatFails) {
  ClapInstance instance;
  instance.start();
  sendType(instance, kShifter, CLAP_EVENT_IS_LIVE);
  EXPECT_FALSE(instance.load(std::vector<std::uint8_t>(100)));
  EXPECT_FALSE(loadShipped(instance, "no such/preset"));
  EXPECT_TRUE(builds(instance));
}

TEST(ClapEffectChoice, IsWhatTheHostSendsWhileNothingPlays) {
  ClapInstance instance;
  sendType(instance, kShifter, 0);
  EXPECT_TRUE(builds(instance));
  instance.start();
  sendType(instance, kFilter, 0);
  EXPECT_FALSE(builds(instance));
}

TEST(ClapEffectChoice, WakesTheHost) {
  ClapInstance instance;
  instance.start();
  sendType(instance, kShifter, CLAP_EVENT_IS_LIVE);
  EXPECT_EQ(instance.host.processRequests, 0);
  instance.runMainThread();
  EXPECT_EQ(instance.host.processRequests, 1);
}

/// What the knobs of the master effect stand at, once all four stood elsewhere and the effect was
/// chosen with these flags.
std::vector<double> masterKnobsAfter(std::uint32_t flags) {
  constexpr double elsewhere = 0.123;
  ClapInstance instance;
  instance.start();
  for (clap_id knob = 0; knob < 4; ++knob) {
    instance.in.value(0, kMasterFxParam + knob, elsewhere);
  }
  instance.in.value(0, kMasterFx, 1.0);
  instance.in.last().flags = flags;
  instance.flush();
  instance.runMainThread();
  EXPECT_EQ(instance.value(kMasterFx), 1.0);
  std::vector<double> knobs;
  for (clap_id knob = 0; knob < 4; ++knob) knobs.push_back(instance.value(kMasterFxParam + knob));
  return knobs;
}

TEST(ClapEffectChoice, OfTheMasterEffectTakesItsKnobsAlong) {
  const std::vector<double> elsewhere(4, 0.123);
  EXPECT_THAT(masterKnobsAfter(0), testing::Pointwise(testing::DoubleNear(1e-12), elsewhere));
  const auto chosen = masterKnobsAfter(CLAP_EVENT_IS_LIVE);
  for (const double knob : chosen) EXPECT_GT(std::abs(knob - 0.123), 0.01);
}

TEST(ClapEffectChoice, ThatIsNoNumberIsNone) {
  ClapInstance instance;
  instance.start();
  sendType(instance, kShifter, 0);
  sendType(instance, std::numeric_limits<double>::quiet_NaN(), CLAP_EVENT_IS_LIVE);
  EXPECT_FALSE(builds(instance));
}

}  // namespace
}  // namespace orvantesco
