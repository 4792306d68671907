// Events of a block in whatever order and number a host sends them.

#include <gtest/gtest.h>

#include <cmath>
#include <utility>
#include <vector>

#include "host/clap/ClapParameters.h"
#include "host/clap/ClapRender.h"

namespace orvantesco {
namespace {

/// A block of silence in 64 bits.
void playSilence(ClapInstance& instance, int frames = 512) {
  ClapPlan plan;
  plan.blocks = {frames};
  throughClap(instance, StereoBuffer(static_cast<std::size_t>(frames)), plan);
}

/// Where the feedback of the first two slots stands after a block of 512 frames with these events.
std::pair<double, double> feedbackAfter(const std::vector<ClapMove>& events) {
  ClapInstance instance;
  instance.start();
  for (const ClapMove& event : events) instance.in.value(event.frame, event.id, event.value);
  playSilence(instance);
  return {instance.value(kFeedback), instance.value(kFeedback + 1)};
}

TEST(ClapEvents, AtOneFrameTheLastOneStands) {
  std::vector<ClapMove> events;
  for (int i = 0; i <= 100; ++i) events.push_back({40, kFeedback, i / 100.0});
  EXPECT_EQ(feedbackAfter(events).first, 1.0);
}

TEST(ClapEvents, OutOfOrderTheListsOrderStands) {
  const auto [first, second] = feedbackAfter(
      {{400, kFeedback, 0.1}, {3, kFeedback, 0.2}, {200, kFeedback + 1, 0.3}, {0, kFeedback, 0.4}});
  EXPECT_EQ(first, 0.4);
  EXPECT_EQ(second, 0.3);
}

TEST(ClapEvents, BeyondTheBlockAreNotLost) {
  const auto [first, second] =
      feedbackAfter({{512, kFeedback, 0.1}, {4000000000u, kFeedback + 1, 0.2}});
  EXPECT_EQ(first, 0.1);
  EXPECT_EQ(second, 0.2);
}

TEST(ClapEvents, OfABlockWithoutFramesCount) {
  ClapInstance instance;
  instance.start();
  instance.in.value(0, kFeedback, 0.1);
  clap_audio_buffer_t output{};
  clap_process_t block{};
  block.audio_outputs = &output;
  block.audio_outputs_count = 1;
  EXPECT_NE(instance.process(block), CLAP_PROCESS_ERROR);
  EXPECT_EQ(instance.value(kFeedback), 0.1);
}

TEST(ClapEvents, ByTheThousandsAllArrive) {
  ClapInstance instance;
  instance.start(48000.0, 4096);
  for (std::uint32_t i = 0; i < 20000; ++i) {
    instance.in.value(i / 5, i % 1095, (i * 2654435761u % 1000) / 999.0);
  }
  for (clap_id id = 0; id < 4; ++id) instance.in.value(4095, kFeedback + id, 0.5 + 0.1 * id);
  playSilence(instance, 4096);
  for (clap_id id = 0; id < 4; ++id) {
    EXPECT_EQ(instance.value(kFeedback + id), 0.5 + 0.1 * id);
  }
}

TEST(ClapEvents, OfForeignKindsAreLeftAlone) {
  ClapInstance instance;
  instance.start();
  const double before = instance.value(kFeedback);
  instance.in.value(0, kFeedback, 0.1);
  instance.in.last().space_id = 77;
  instance.in.value(0, kFeedback, 0.1);
  instance.in.last().type = CLAP_EVENT_MIDI;
  instance.in.value(0, kFeedback, 0.1);
  instance.in.last().type = CLAP_EVENT_PARAM_MOD;
  instance.in.value(0, kFeedback, 0.1);
  instance.in.last().size = sizeof(clap_event_header_t);
  playSilence(instance);
  EXPECT_EQ(instance.value(kFeedback), before);
}

TEST(ClapEvents, OfAHostThatSendsHolesArePassedOver) {
  ClapInstance instance;
  clap_input_events_t holes{};
  holes.size = [](const clap_input_events_t*) { return 3u; };
  holes.get = [](const clap_input_events_t*, std::uint32_t) -> const clap_event_header_t* {
    return nullptr;
  };
  instance.params().flush(instance.plugin, &holes, nullptr);
  holes.get = nullptr;
  instance.params().flush(instance.plugin, &holes, nullptr);
  EXPECT_EQ(instance.host.lines(), std::vector<std::string>{});
}

/// In a bypass the dry signal passes as late as the effect reports.
TEST(ClapEvents, TheBypassPassesTheDrySignalInTime) {
  ClapInstance instance;
  instance.in.value(0, ClapParameters::bypassId, 1.0);
  instance.flush();
  instance.start();
  const StereoBuffer sound = noise(24000);
  const StereoBuffer heard = throughClap(instance, sound, {});
  const std::size_t late =
      extensionOf<clap_plugin_latency_t>(instance.plugin, CLAP_EXT_LATENCY).get(instance.plugin);
  EXPECT_EQ(late, 80u);
  // What is still running when it is switched on fades out first.
  for (std::size_t i = 2000; i < sound.size(); ++i) {
    ASSERT_EQ(heard.left[i], sound.left[i - late]) << i;
    ASSERT_EQ(heard.right[i], sound.right[i - late]) << i;
  }
}

/// It comes on at the frame of its event, and without a step.
TEST(ClapEvents, TheBypassFadesFromItsFrameOn) {
  ClapInstance instance;
  ClapInstance other;
  for (auto* one : {&instance, &other}) {
    one->in.value(0, kDryLevel, 0.0);
    one->flush();
    one->start();
  }
  const StereoBuffer sound = noise(24000, 0.1);
  ClapPlan plan;
  const StereoBuffer effect = throughClap(other, sound, plan);
  plan.moves = {{12001, ClapParameters::bypassId, 1.0}};
  const StereoBuffer heard = throughClap(instance, sound, plan);
  std::size_t differs = 0;
  while (differs < heard.size() && heard.left[differs] == effect.left[differs]) ++differs;
  EXPECT_GE(differs, 12001u);
  EXPECT_LT(differs, 12010u);
  EXPECT_NEAR(heard.left[12010], effect.left[12010], 0.01);
}

}  // namespace
}  // namespace orvantesco
