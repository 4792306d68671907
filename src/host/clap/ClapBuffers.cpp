#include "host/clap/ClapBuffers.h"

#include <algorithm>

namespace orvantesco {

void ClapBuffers::prepare(int longest, const ClapPorts::Layout& layout) {
  partFrames = std::clamp(longest, 1, longestPart);
  mainInputs = static_cast<int>(layout.mainInputs);
  sideChain = layout.sideChain;
  const auto size = static_cast<std::size_t>(partFrames);
  for (auto& copy : inputCopies) copy.assign(size, 0.0);
  for (auto& copy : outputCopies) copy.assign(size, 0.0);
}

ClapBuffers::HostChannel ClapBuffers::HostPorts::channel(std::uint32_t port,
                                                         std::uint32_t number) const noexcept {
  if (ports == nullptr || port >= count || number >= ports[port].channel_count) return {};
  const clap_audio_buffer_t& buffer = ports[port];
  if (buffer.data64 != nullptr) return {nullptr, buffer.data64[number]};
  if (buffer.data32 != nullptr) return {buffer.data32[number], nullptr};
  return {};
}

void ClapBuffers::take(const clap_process_t& process) noexcept {
  const HostPorts in{process.audio_inputs, process.audio_inputs_count};
  const HostPorts out{process.audio_outputs, process.audio_outputs_count};
  hostInputs = {in.channel(0, 0), in.channel(0, 1), in.channel(1, 0)};
  hostOutputs = {out.channel(0, 0), out.channel(0, 1)};
  deliversNarrow = hostOutputs[0].narrow != nullptr || hostOutputs[1].narrow != nullptr;
}

AudioBlock ClapBuffers::part(int firstFrame, int frameCount) noexcept {
  first = firstFrame;
  frames = std::min(frameCount, partFrames);
  for (std::size_t i = 0; i < kInputs; ++i) inputs[i] = input(i);
  for (std::size_t i = 0; i < kOutputs; ++i) outputs[i] = output(i);
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

double* ClapBuffers::input(std::size_t channel) noexcept {
  const HostChannel& from = hostInputs[channel];
  if (from.wide != nullptr) return from.wide + first;
  double* const copy = inputCopies[channel].data();
  if (from.narrow != nullptr) {
    std::copy_n(from.narrow + first, frames, copy);
  } else {
    std::fill_n(copy, frames, 0.0);
  }
  return copy;
}

double* ClapBuffers::output(std::size_t channel) noexcept {
  const HostChannel& to = hostOutputs[channel];
  return to.wide != nullptr ? to.wide + first : outputCopies[channel].data();
}

void ClapBuffers::deliverNarrow() const noexcept {
  for (std::size_t i = 0; i < kOutputs; ++i) {
    if (hostOutputs[i].narrow == nullptr) continue;
    std::transform(outputs[i], outputs[i] + frames, hostOutputs[i].narrow + first,
                   [](double sample) { return static_cast<float>(sample); });
  }
}

}  // namespace orvantesco
