#include "host/clap/ClapPorts.h"

#include <algorithm>
#include "host/clap/ClapText.h"

namespace orvantesco {
namespace {

constexpr clap_id kMainPort = 0;
constexpr clap_id kSideChainPort = 1;
constexpr std::uint32_t kOutputChannels = 2;

const char* typeOf(std::uint32_t channels) noexcept {
  return channels == 1 ? CLAP_PORT_MONO : CLAP_PORT_STEREO;
}

std::uint32_t inputsOf(const ClapPorts::Layout& layout) noexcept {
  return layout.sideChain ? 2 : 1;
}

void describeMain(std::uint32_t channels, const char* name, clap_audio_port_info_t& info) noexcept {
  info.id = kMainPort;
  putText(name, info.name);
  info.flags |= CLAP_AUDIO_PORT_IS_MAIN;
  info.channel_count = channels;
}

void describeSideChain(clap_audio_port_info_t& info) noexcept {
  info.id = kSideChainPort;
  putText("Side Chain", info.name);
  info.channel_count = 1;
  info.in_place_pair = CLAP_INVALID_ID;
}

}  // namespace

bool ClapPorts::select(clap_id id) noexcept {
  const auto* const found = std::find_if(layouts.begin(), layouts.end(),
                                         [id](const Layout& layout) { return layout.id == id; });
  if (found == layouts.end()) return false;
  chosen = static_cast<int>(found - layouts.begin());
  return true;
}

std::uint32_t ClapPorts::count(bool isInput) const noexcept {
  return isInput ? inputsOf(layout()) : 1;
}

bool ClapPorts::describe(std::uint32_t place, bool isInput,
                         clap_audio_port_info_t& info) const noexcept {
  if (place >= count(isInput)) return false;
  info = {};
  info.flags = CLAP_AUDIO_PORT_SUPPORTS_64BITS | CLAP_AUDIO_PORT_PREFERS_64BITS;
  // Only buffers of one width can be one and the same.
  info.in_place_pair = layout().mainInputs == kOutputChannels ? kMainPort : CLAP_INVALID_ID;
  if (!isInput) {
    describeMain(kOutputChannels, "Output", info);
  } else if (place == 0) {
    describeMain(layout().mainInputs, "Input", info);
  } else {
    describeSideChain(info);
  }
  info.port_type = typeOf(info.channel_count);
  return true;
}

bool ClapPorts::describeLayout(std::uint32_t place, ClapAudioPortsConfig& config) noexcept {
  if (place >= layouts.size()) return false;
  const Layout& layout = layouts[place];
  config = {};
  config.id = layout.id;
  putText(layout.name, config.name);
  config.input_port_count = inputsOf(layout);
  config.output_port_count = 1;
  config.has_main_input = true;
  config.main_input_channel_count = layout.mainInputs;
  config.main_input_port_type = typeOf(layout.mainInputs);
  config.has_main_output = true;
  config.main_output_channel_count = kOutputChannels;
  config.main_output_port_type = typeOf(kOutputChannels);
  return true;
}

}  // namespace orvantesco
