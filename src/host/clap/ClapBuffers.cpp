#include "host/clap/ClapBuffers.h"

#include <algorithm>

namespace orvantesco {
namespace {

/// One channel of a port: at most one of the two is there.
struct HostChannel {
  float* narrow = nullptr;
  double* wide = nullptr;
};

HostChannel channelOf(const clap_audio_buffer_t* ports, std::uint32_t portCount, std::uint32_t port,
                      std::uint32_t channel) noexcept {
  if (ports == nullptr || port >= portCount || channel >= ports[port].channel_count) return {};
  const clap_audio_buffer_t& buffer = ports[port];
  if (buffer.data64 != nullptr) return {nullptr, buffer.data64[channel]};
  if (buffer.data32 != nullptr) return {buffer.data32[channel], nullptr};
  return {};
}

HostChannel outputOf(const clap_process_t& process, std::size_t channel) noexcept {
  return channelOf(process.audio_outputs, process.audio_outputs_count, 0,
                   static_cast<std::uint32_t>(channel));
}

}  // namespace

void ClapBuffers::prepare(int longest, const ClapPorts::Layout& layout) {
  partFrames = std::clamp(longest, 1, longestPart);
  mainInputs = static_cast<int>(layout.mainInputs);
  sideChain = layout.sideChain;
  const auto size = static_cast<std::size_t>(partFrames);
  for (auto& copy : inputCopies) copy.assign(size, 0.0);
  for (auto& copy : outputCopies) copy.assign(size, 0.0);
}

AudioBlock ClapBuffers::part(const clap_process_t& process, int firstFrame,
                             int frameCount) noexcept {
  first = firstFrame;
  frames = std::min(frameCount, partFrames);
  for (std::size_t i = 0; i < kInputs; ++i) inputs[i] = input(process, i);
  for (std::size_t i = 0; i < kOutputs; ++i) outputs[i] = output(process, i);
  AudioBlock block;
  block.inputs = inputs.data();
  block.inputCount = mainInputs;
  block.sideChain = sideChain ? inputs[2] : nullptr;
  block.outputs = outputs.data();
  block.outputCount = static_cast<int>(kOutputs);
  block.frames = frames;
  block.firstFrame = firstFrame;
  return block;
}

double* ClapBuffers::input(const clap_process_t& process, std::size_t channel) noexcept {
  const bool isSide = channel == kInputs - 1;
  const HostChannel from =
      channelOf(process.audio_inputs, process.audio_inputs_count, isSide ? 1 : 0,
                isSide ? 0 : static_cast<std::uint32_t>(channel));
  if (from.wide != nullptr) return from.wide + first;
  double* const copy = inputCopies[channel].data();
  if (from.narrow != nullptr) {
    std::copy_n(from.narrow + first, frames, copy);
  } else {
    std::fill_n(copy, frames, 0.0);
  }
  return copy;
}

double* ClapBuffers::output(const clap_process_t& process, std::size_t channel) noexcept {
  const HostChannel to = outputOf(process, channel);
  return to.wide != nullptr ? to.wide + first : outputCopies[channel].data();
}

void ClapBuffers::deliver(const clap_process_t& process) const noexcept {
  for (std::size_t i = 0; i < kOutputs; ++i) {
    const HostChannel to = outputOf(process, i);
    if (to.narrow == nullptr) continue;
    std::transform(outputs[i], outputs[i] + frames, to.narrow + first,
                   [](double sample) { return static_cast<float>(sample); });
  }
}

}  // namespace orvantesco
