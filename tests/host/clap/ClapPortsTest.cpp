// Audio ports and what a host may hand over as their buffers.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "host/clap/ClapRender.h"

namespace orvantesco {
namespace {

const clap_plugin_audio_ports_t& portsOf(const ClapInstance& instance) {
  return extensionOf<clap_plugin_audio_ports_t>(instance.plugin, CLAP_EXT_AUDIO_PORTS);
}

const ClapPluginAudioPortsConfig& layoutsOf(const ClapInstance& instance) {
  return extensionOf<ClapPluginAudioPortsConfig>(instance.plugin, kClapAudioPortsConfigId);
}

clap_audio_port_info_t portAt(const ClapInstance& instance, std::uint32_t place, bool isInput) {
  clap_audio_port_info_t info{};
  EXPECT_TRUE(portsOf(instance).get(instance.plugin, place, isInput, &info));
  return info;
}

TEST(ClapPorts, AreStereoWithASideChainAtFirst) {
  const ClapInstance instance;
  EXPECT_EQ(portsOf(instance).count(instance.plugin, true), 2u);
  EXPECT_EQ(portsOf(instance).count(instance.plugin, false), 1u);
  const auto main = portAt(instance, 0, true);
  EXPECT_TRUE(main.flags & CLAP_AUDIO_PORT_IS_MAIN);
  EXPECT_TRUE(main.flags & CLAP_AUDIO_PORT_SUPPORTS_64BITS);
  EXPECT_EQ(main.channel_count, 2u);
  EXPECT_EQ(main.in_place_pair, 0u);
  EXPECT_STREQ(main.port_type, CLAP_PORT_STEREO);
  const auto side = portAt(instance, 1, true);
  EXPECT_EQ(side.channel_count, 1u);
  EXPECT_FALSE(side.flags & CLAP_AUDIO_PORT_IS_MAIN);
  EXPECT_EQ(side.in_place_pair, CLAP_INVALID_ID);
  EXPECT_EQ(portAt(instance, 0, false).channel_count, 2u);
  clap_audio_port_info_t none{};
  EXPECT_FALSE(portsOf(instance).get(instance.plugin, 2, true, &none));
  EXPECT_FALSE(portsOf(instance).get(instance.plugin, 1, false, &none));
}

TEST(ClapPorts, AgreeWithEachLayoutThatIsOffered) {
  const ClapInstance instance;
  ASSERT_EQ(layoutsOf(instance).count(instance.plugin), 4u);
  for (std::uint32_t place = 0; place < 4; ++place) {
    ClapAudioPortsConfig layout{};
    ASSERT_TRUE(layoutsOf(instance).get(instance.plugin, place, &layout));
    ASSERT_TRUE(layoutsOf(instance).select(instance.plugin, layout.id));
    EXPECT_EQ(portsOf(instance).count(instance.plugin, true), layout.input_port_count);
    EXPECT_EQ(portAt(instance, 0, true).channel_count, layout.main_input_channel_count);
    EXPECT_EQ(portAt(instance, 0, false).channel_count, layout.main_output_channel_count);
  }
}

TEST(ClapPorts, ChangeOnlyWhileItRests) {
  ClapInstance instance;
  EXPECT_FALSE(layoutsOf(instance).select(instance.plugin, 77));
  instance.activate();
  EXPECT_FALSE(layoutsOf(instance).select(instance.plugin, 1));
  instance.deactivate();
  EXPECT_TRUE(layoutsOf(instance).select(instance.plugin, 1));
}

/// One block of 256 frames of a process call that a test has bent.
template <class Bend>
clap_process_status playBent(ClapInstance& instance, std::array<std::vector<double>, 2>& out,
                             Bend bend) {
  constexpr std::uint32_t frames = 256;
  const StereoBuffer sound = noise(frames);
  std::array<double*, 2> in{const_cast<double*>(sound.left.data()),
                            const_cast<double*>(sound.right.data())};
  for (auto& channel : out) channel.assign(frames, 77.0);
  std::array<double*, 2> to{out[0].data(), out[1].data()};
  std::array<clap_audio_buffer_t, 2> inputs{};
  inputs[0].data64 = in.data();
  inputs[0].channel_count = 2;
  clap_audio_buffer_t output{};
  output.data64 = to.data();
  output.channel_count = 2;
  output.constant_mask = 3;
  clap_process_t block{};
  block.frames_count = frames;
  block.audio_inputs = inputs.data();
  block.audio_inputs_count = 2;
  block.audio_outputs = &output;
  block.audio_outputs_count = 1;
  bend(block, inputs, output);
  const clap_process_status status = instance.process(block);
  EXPECT_EQ(output.constant_mask, 0u);
  return status;
}

bool isFinite(const std::vector<double>& samples) {
  return std::all_of(samples.begin(), samples.end(), [](double x) { return std::isfinite(x); });
}

TEST(ClapPorts, SurviveWhateverIsMissing) {
  ClapInstance instance;
  instance.start();
  std::array<std::vector<double>, 2> out;
  using Inputs = std::array<clap_audio_buffer_t, 2>;
  const auto playsOn = [&](auto bend) {
    EXPECT_NE(playBent(instance, out, bend), CLAP_PROCESS_ERROR);
    EXPECT_TRUE(isFinite(out[0]) && isFinite(out[1]));
  };
  double* none[] = {nullptr, nullptr};
  playsOn([](clap_process_t&, Inputs&, clap_audio_buffer_t&) {});
  playsOn(
      [](clap_process_t& block, Inputs&, clap_audio_buffer_t&) { block.audio_inputs = nullptr; });
  playsOn(
      [](clap_process_t& block, Inputs&, clap_audio_buffer_t&) { block.audio_inputs_count = 0; });
  playsOn(
      [](clap_process_t& block, Inputs&, clap_audio_buffer_t&) { block.audio_inputs_count = 1; });
  playsOn([](clap_process_t&, Inputs& in, clap_audio_buffer_t&) { in[0].channel_count = 1; });
  playsOn([](clap_process_t&, Inputs& in, clap_audio_buffer_t&) { in[0].data64 = nullptr; });
  playsOn([&](clap_process_t&, Inputs& in, clap_audio_buffer_t&) { in[0].data64 = none; });
  playsOn([](clap_process_t&, Inputs& in, clap_audio_buffer_t&) { in[0].constant_mask = 3; });
  playsOn([](clap_process_t&, Inputs&, clap_audio_buffer_t& output) { output.channel_count = 1; });
  playsOn([](clap_process_t&, Inputs&, clap_audio_buffer_t& output) { output.data64 = nullptr; });
  playsOn([&](clap_process_t&, Inputs&, clap_audio_buffer_t& output) { output.data64 = none; });
  playsOn([](clap_process_t& block, Inputs&, clap_audio_buffer_t&) { block.transport = nullptr; });
}

TEST(ClapPorts, OfAHostWithoutOutputChannelsRunOn) {
  ClapInstance instance;
  instance.start();
  std::array<std::vector<double>, 2> out;
  playBent(instance, out,
           [](auto&, auto&, clap_audio_buffer_t& output) { output.channel_count = 1; });
  EXPECT_TRUE(std::all_of(out[1].begin(), out[1].end(), [](double x) { return x == 77.0; }));
}

TEST(ClapPorts, MayHaveDifferentWidths) {
  ClapInstance instance;
  instance.start();
  std::array<float, 256> narrow{};
  narrow.fill(77.0f);
  float* to[] = {narrow.data(), narrow.data()};
  std::array<std::vector<double>, 2> out;
  playBent(instance, out, [&](auto&, auto&, clap_audio_buffer_t& output) {
    output.data64 = nullptr;
    output.data32 = to;
  });
  EXPECT_TRUE(
      std::all_of(narrow.begin(), narrow.end(), [](float x) { return std::abs(x) < 2.0f; }));
}

}  // namespace
}  // namespace orvantesco
