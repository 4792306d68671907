// Latency, tail and the advice whether to go on.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "host/clap/ClapParameters.h"
#include "host/clap/ClapPlugin.h"
#include "host/clap/ClapRender.h"

namespace orvantesco {
namespace {

std::uint32_t latencyOf(const ClapInstance& instance) {
  return extensionOf<clap_plugin_latency_t>(instance.plugin, CLAP_EXT_LATENCY).get(instance.plugin);
}

std::uint32_t tailOf(const ClapInstance& instance) {
  return extensionOf<ClapPluginTail>(instance.plugin, kClapTailId).get(instance.plugin);
}

/// A block of 512 frames of one value on both inputs.
clap_process_status play(ClapInstance& instance, double value, double* loudest = nullptr) {
  std::vector<double> in(512, value);
  std::vector<double> left(512), right(512);
  double* from[] = {in.data(), in.data()};
  double* to[] = {left.data(), right.data()};
  clap_audio_buffer_t input{};
  input.data64 = from;
  input.channel_count = 2;
  clap_audio_buffer_t output{};
  output.data64 = to;
  output.channel_count = 2;
  clap_process_t block{};
  block.frames_count = 512;
  block.audio_inputs = &input;
  block.audio_inputs_count = 1;
  block.audio_outputs = &output;
  block.audio_outputs_count = 1;
  const clap_process_status status = instance.process(block);
  if (loudest != nullptr) {
    *loudest = 0.0;
    for (const double x : left) *loudest = std::max(*loudest, std::abs(x));
  }
  return status;
}

TEST(ClapLatency, IsKnownAsSoonAsTheRateIs) {
  ClapInstance instance;
  instance.activate(48000.0);
  EXPECT_EQ(latencyOf(instance), 80u);
  instance.deactivate();
  const int before = instance.host.latencyChanges;
  instance.activate(192000.0);
  EXPECT_EQ(latencyOf(instance), 128u);
  EXPECT_EQ(instance.host.latencyChanges, before + 1);
  instance.deactivate();
  instance.activate(192000.0);
  EXPECT_EQ(instance.host.latencyChanges, before + 1);
  EXPECT_EQ(instance.host.restarts, 0);
}

TEST(ClapLatency, IsWhatTheDrySignalTakes) {
  ClapInstance instance;
  instance.in.value(0, kSlotOn, 0);
  instance.in.value(0, kLimiterOn, 0);
  instance.flush();
  instance.start();
  StereoBuffer click(12000);
  throughClap(instance, click, {});
  click.left[100] = 1.0;
  const StereoBuffer heard = throughClap(instance, click, {});
  const auto peak = std::max_element(heard.left.begin(), heard.left.end());
  EXPECT_EQ(peak - heard.left.begin(), 100 + latencyOf(instance));
}

TEST(ClapTail, GrowsWithTheFeedback) {
  ClapInstance instance;
  instance.activate();
  instance.in.value(0, kFeedback, 0.1);
  instance.flush();
  const std::uint32_t little = tailOf(instance);
  EXPECT_GT(little, latencyOf(instance));
  instance.in.value(0, kFeedback, 0.5);
  instance.flush();
  EXPECT_GT(tailOf(instance), little);
  // 160 % of feedback never ends.
  instance.in.value(0, kFeedback, 1.0);
  instance.flush();
  EXPECT_EQ(tailOf(instance), static_cast<std::uint32_t>(std::numeric_limits<std::int32_t>::max()));
}

TEST(ClapTail, KeepsTheHostAwakeAsLongAsItSounds) {
  ClapInstance instance;
  instance.in.value(0, kFeedback, 0.1);
  instance.flush();
  instance.start();
  for (int i = 0; i < 50; ++i) EXPECT_EQ(play(instance, 0.5), CLAP_PROCESS_CONTINUE);
  bool asleep = false;
  double loudest = 1.0;
  for (int i = 0; i < 6000 && !asleep; ++i) {
    const clap_process_status status = play(instance, 0.0, &loudest);
    asleep = status == CLAP_PROCESS_SLEEP;
    EXPECT_NE(status, CLAP_PROCESS_ERROR);
    EXPECT_FALSE(asleep && loudest > 1e-9);
  }
  EXPECT_TRUE(asleep);
  EXPECT_EQ(play(instance, 0.5), CLAP_PROCESS_CONTINUE);
  EXPECT_EQ(play(instance, 0.0), CLAP_PROCESS_TAIL);
}

TEST(ClapTail, WithoutEndIsNeverSleptThrough) {
  ClapInstance instance;
  instance.in.value(0, kFeedback, 1.0);
  instance.flush();
  instance.start();
  for (int i = 0; i < 1000; ++i) ASSERT_EQ(play(instance, 0.0), CLAP_PROCESS_CONTINUE);
}

TEST(ClapTail, OfABypassIsTheLatencyWhateverTheFeedback) {
  ClapInstance instance;
  instance.in.value(0, kFeedback, 1.0);
  instance.in.value(0, ClapParameters::bypassId, 1.0);
  instance.flush();
  instance.start();
  play(instance, 0.5);
  EXPECT_EQ(tailOf(instance), latencyOf(instance));
  clap_process_status last = CLAP_PROCESS_CONTINUE;
  for (int i = 0; i < 5; ++i) last = play(instance, 0.0);
  EXPECT_EQ(last, CLAP_PROCESS_SLEEP);
  instance.in.value(0, ClapParameters::bypassId, 0.0);
  for (int i = 0; i < 5; ++i) last = play(instance, 0.0);
  EXPECT_EQ(last, CLAP_PROCESS_CONTINUE);
}

TEST(ClapTail, OfWhatIsLoadedWakesTheHost) {
  ClapInstance instance;
  instance.start();
  EXPECT_EQ(instance.host.processRequests, 0);
  ASSERT_TRUE(instance.load(instance.state()));
  EXPECT_EQ(instance.host.processRequests, 1);
}

TEST(ClapTail, IsNoneOfSettingsThatMove) {
  ClapInstance instance;
  instance.start();
  play(instance, 0.0);
  EXPECT_EQ(play(instance, 0.0), CLAP_PROCESS_TAIL);
  instance.in.value(0, kFeedback, 0.2);
  EXPECT_EQ(play(instance, 0.0), CLAP_PROCESS_CONTINUE);
  EXPECT_EQ(play(instance, 0.0), CLAP_PROCESS_TAIL);
}

TEST(ClapTail, FollowsTheTempo) {
  ClapInstance instance;
  instance.start();
  const StereoBuffer silence(4096);
  throughClap(instance, silence, {.tempo = 120.0});
  const std::uint32_t fast = tailOf(instance);
  throughClap(instance, silence, {.tempo = 60.0});
  EXPECT_NEAR(tailOf(instance), 2.0 * fast, 0.2 * fast);
}

TEST(ClapTail, IsToldAnewWhereItHasChanged) {
  ClapInstance instance;
  instance.start();
  play(instance, 0.0);
  play(instance, 0.0);
  EXPECT_EQ(instance.host.tailChanges, 1);
  play(instance, 0.0);
  EXPECT_EQ(instance.host.tailChanges, 1);
  // A knob of the plug-in's own counts as one of the host's.
  auto& effect = ClapPlugin::behind(instance.plugin)->parts()->effect;
  effect.SetParameterFromGUI(kFeedback, 0.2);
  play(instance, 0.0);
  play(instance, 0.0);
  EXPECT_EQ(instance.host.tailChanges, 2);
}

}  // namespace
}  // namespace orvantesco
