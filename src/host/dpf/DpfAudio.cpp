#include "host/dpf/DpfAudio.h"

#include <algorithm>

namespace orvantesco {
namespace {

/// A host may leave a port unconnected: that is silence.
void widen(const float* from, DpfAudio::Piece piece, double* to) noexcept {
  if (from == nullptr) {
    std::fill_n(to, piece.frames, 0.0);
  } else {
    std::copy_n(from + piece.first, piece.frames, to);
  }
}

}  // namespace

void DpfAudio::prepare(int frames) {
  longest = std::max(frames, 1);
  const auto size = static_cast<std::size_t>(longest);
  for (auto& channel : in) channel.assign(size, 0.0);
  for (auto& channel : out) channel.assign(size, 0.0);
  for (std::size_t i = 0; i < mainChannels; ++i) {
    inPointers[i] = in[i].data();
    outPointers[i] = out[i].data();
  }
}

AudioBlock DpfAudio::take(const float* const* inputs, Piece piece) noexcept {
  for (std::size_t i = 0; i < in.size(); ++i) widen(inputs[i], piece, in[i].data());
  AudioBlock block;
  block.inputs = inPointers.data();
  block.inputCount = mainChannels;
  block.sideChain = inputs[mainChannels] != nullptr ? in[mainChannels].data() : nullptr;
  block.outputs = outPointers.data();
  block.outputCount = mainChannels;
  block.firstFrame = piece.first;
  block.frames = piece.frames;
  return block;
}

void DpfAudio::give(float* const* outputs, Piece piece) const noexcept {
  for (std::size_t i = 0; i < mainChannels; ++i) {
    if (outputs[i] == nullptr) continue;
    std::transform(out[i].begin(), out[i].begin() + piece.frames, outputs[i] + piece.first,
                   [](double sample) { return static_cast<float>(sample); });
  }
}

}  // namespace orvantesco
