// The life of an instance: order of calls, threads, and calls that no host should make.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

#include "fx/RateValues.h"
#include "host/clap/ClapInstance.h"
#include "host/clap/ClapRender.h"

namespace orvantesco {
namespace {

TEST(ClapLifecycle, NothingWorksBeforeInitAndNothingFalls) {
  ClapInstance raw{ClapInstance::Raw{}};
  EXPECT_FALSE(raw.activate());
  EXPECT_FALSE(raw.startProcessing());
  EXPECT_EQ(raw.params().count(raw.plugin), 0u);
  double value = 0.0;
  EXPECT_FALSE(raw.params().get_value(raw.plugin, 0, &value));
  raw.in.value(0, 0, 1.0);
  raw.flush();
  raw.reset();
  raw.plugin->on_main_thread(raw.plugin);
  ClapSink sink;
  EXPECT_FALSE(raw.save(sink));
  EXPECT_FALSE(raw.load(std::vector<std::uint8_t>(100)));
  clap_process_t block{};
  EXPECT_EQ(raw.process(block), CLAP_PROCESS_ERROR);
}

TEST(ClapLifecycle, EachStageComesOnceAndInItsOrder) {
  ClapInstance instance;
  EXPECT_FALSE(instance.plugin->init(instance.plugin));
  EXPECT_FALSE(instance.startProcessing());
  EXPECT_TRUE(instance.activate());
  EXPECT_FALSE(instance.plugin->activate(instance.plugin, 48000.0, 1, 512));
  StereoBuffer sound(64);
  EXPECT_EQ(throughClap(instance, sound, {}).left[0], 77.0);
  EXPECT_TRUE(instance.startProcessing());
  EXPECT_FALSE(instance.startProcessing());
  EXPECT_EQ(throughClap(instance, sound, {}).left[0], 0.0);
  instance.stopProcessing();
  instance.stopProcessing();
  EXPECT_EQ(throughClap(instance, sound, {}).left[0], 77.0);
  instance.deactivate();
  instance.deactivate();
  EXPECT_TRUE(instance.activate());
}

TEST(ClapLifecycle, RatesAndLengthsThatAreNoneAreRefused) {
  ClapInstance instance;
  const auto* const plugin = instance.plugin;
  for (const double rate : {0.0, -48000.0, std::nan(""), std::numeric_limits<double>::infinity()}) {
    EXPECT_FALSE(plugin->activate(plugin, rate, 1, 512)) << rate;
  }
  EXPECT_FALSE(plugin->activate(plugin, 48000.0, 1, 0));
  EXPECT_FALSE(plugin->activate(plugin, 48000.0, 64, 32));
  EXPECT_TRUE(instance.activate(48000.0, std::numeric_limits<std::int32_t>::max()));
}

TEST(ClapLifecycle, NullsAreRefused) {
  const ClapInstance instance;
  const auto* const plugin = instance.plugin;
  EXPECT_FALSE(plugin->init(nullptr));
  plugin->destroy(nullptr);
  EXPECT_FALSE(plugin->activate(nullptr, 48000.0, 1, 512));
  EXPECT_EQ(plugin->process(nullptr, nullptr), CLAP_PROCESS_ERROR);
  EXPECT_EQ(plugin->process(plugin, nullptr), CLAP_PROCESS_ERROR);
  EXPECT_EQ(plugin->get_extension(plugin, nullptr), nullptr);
  EXPECT_EQ(plugin->get_extension(plugin, "clap.note-ports"), nullptr);
  EXPECT_FALSE(instance.params().get_info(plugin, 0, nullptr));
  EXPECT_FALSE(instance.params().get_value(plugin, 0, nullptr));
  EXPECT_FALSE(instance.params().value_to_text(plugin, 0, 0.0, nullptr, 10));
  EXPECT_FALSE(instance.params().text_to_value(plugin, 0, nullptr, nullptr));
  instance.params().flush(plugin, nullptr, nullptr);
  const auto& state = extensionOf<clap_plugin_state_t>(plugin, CLAP_EXT_STATE);
  EXPECT_FALSE(state.save(plugin, nullptr));
  EXPECT_FALSE(state.load(plugin, nullptr));
}

TEST(ClapLifecycle, ABlockWithoutOutputIsAnErrorAndStillTakesItsEvents) {
  ClapInstance instance;
  instance.start();
  clap_process_t block{};
  block.frames_count = 64;
  instance.in.value(3, kFeedback, 0.25);
  EXPECT_EQ(instance.process(block), CLAP_PROCESS_ERROR);
  EXPECT_EQ(instance.value(kFeedback), 0.25);
  instance.stopProcessing();
  instance.in.value(3, kFeedback, 0.75);
  EXPECT_EQ(instance.process(block), CLAP_PROCESS_ERROR);
  EXPECT_EQ(instance.value(kFeedback), 0.75);
}

TEST(ClapLifecycle, ABlockOfNoFramesCarriesEvents) {
  ClapInstance instance;
  instance.start();
  clap_process_t block{};
  instance.in.value(0, kLfoSync, 1.0);
  EXPECT_NE(instance.process(block), CLAP_PROCESS_ERROR);
  EXPECT_EQ(instance.value(kLfoSync), 1.0);
  ASSERT_EQ(instance.out.told.size(), 1u);
  EXPECT_EQ(instance.out.told[0].id, static_cast<clap_id>(kLfoRate));
}

TEST(ClapLifecycle, AHostWithoutExtensionsIsHostEnough) {
  ClapInstance instance{ClapInstance::Raw{}};
  instance.host.isBare = true;
  ASSERT_TRUE(instance.plugin->init(instance.plugin));
  instance.start();
  instance.in.value(3, kFeedback, 0.9);
  const StereoBuffer sound = throughClap(instance, noise(4800), {});
  EXPECT_TRUE(
      std::all_of(sound.left.begin(), sound.left.end(), [](double x) { return std::isfinite(x); }));
  EXPECT_TRUE(instance.load(instance.state()));
  EXPECT_TRUE(instance.host.lines().empty());
}

#ifndef NDEBUG
TEST(ClapLifecycle, ACallOnTheWrongThreadIsReportedAndStillServed) {
  ClapInstance instance;
  EXPECT_TRUE(instance.host.lines().empty());
  instance.activate();
  EXPECT_TRUE(instance.plugin->start_processing(instance.plugin));
  EXPECT_EQ(instance.host.lines(),
            std::vector<std::string>{"5: start_processing belongs on the audio thread"});
}

TEST(ClapLifecycle, ProperCallsAreNotReported) {
  ClapInstance instance;
  instance.start();
  instance.in.value(0, kFeedback, 0.25);
  throughClap(instance, noise(1000), {});
  instance.flush();
  instance.reset();
  instance.load(instance.state());
  instance.stopProcessing();
  instance.deactivate();
  instance.flush();
  EXPECT_EQ(instance.host.lines(), std::vector<std::string>{});
}
#endif

TEST(ClapLifecycle, ActivatingPutsItsOwnRateBackInForce) {
  ClapInstance instance;
  instance.start(48000.0);
  const StereoBuffer sound = noise(24000);
  throughClap(instance, sound, {});
  instance.stopProcessing();
  instance.deactivate();
  {
    ClapInstance passing;
    passing.activate(96000.0);
  }
  instance.start(48000.0);
  EXPECT_EQ(sampleRate, 48000.0);
  EXPECT_EQ(initialisedRate, 48000.0);
}

}  // namespace
}  // namespace orvantesco
