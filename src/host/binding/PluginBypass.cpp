#include "host/binding/PluginBypass.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orvantesco {

namespace {

/// A part of a block; its buffers are the block's own.
struct Piece {
  AudioBlock block;
  std::array<double*, 2> inputs{};
  std::array<double*, 2> outputs{};

  Piece(const AudioBlock& whole, int first, int frames) noexcept : block(whole) {
    moveOn(whole.inputs, whole.inputCount, inputs, first);
    moveOn(whole.outputs, whole.outputCount, outputs, first);
    block.inputs = inputs.data();
    block.outputs = outputs.data();
    if (block.sideChain != nullptr) block.sideChain += first;
    block.firstFrame += first;
    block.frames = frames;
  }
  Piece(const Piece&) = delete;
  Piece& operator=(const Piece&) = delete;

 private:
  static void moveOn(double* const* from, int count, std::array<double*, 2>& to,
                     int first) noexcept {
    for (std::size_t c = 0; c < to.size() && static_cast<int>(c) < count; ++c) {
      to[c] = from[c] == nullptr ? nullptr : from[c] + first;
    }
  }
};

/// The main input of a channel; a mono one is both. Null for silence.
const double* mainInput(const AudioBlock& block, std::size_t channel) noexcept {
  if (block.inputCount <= 0) return nullptr;
  return block.inputs[std::min(channel, static_cast<std::size_t>(block.inputCount) - 1)];
}

}  // namespace

PluginBypass::PluginBypass(Orvantesco& effect) : engine(effect) { takeMemory(1); }

void PluginBypass::takeMemory(std::size_t frames) {
  for (auto* buffers : {&dry, &fed}) {
    for (auto& buffer : *buffers) buffer.assign(frames, 0.0);
  }
}

void PluginBypass::prepare(int maxFrames, double rateHz, bool bypassed) {
  const int frames = std::max(maxFrames, 1);
  takeMemory(static_cast<std::size_t>(frames));
  for (DryHistory& channel : history) channel.clear();
  fadeFrames = std::max(1, static_cast<int>(std::lround(fadeSeconds * rateHz)));
  heard = bypassed ? 0 : fadeFrames;
  running = fullyRunning();
  engine.SetBlockSize(frames);
  engine.startAnew();
}

void PluginBypass::reset() noexcept {
  engine.resetAtOnce();
  for (DryHistory& channel : history) channel.clear();
}

void PluginBypass::process(const AudioBlock& block) noexcept {
  if (isAtRest() && !block.bypass) {
    rememberDry(block);
    engine.RenderAudio(block);
    return;
  }
  for (int first = 0; first < block.frames;) {
    const Piece piece(block, first, pieceLength(block, first));
    processPiece(piece.block);
    first += piece.block.frames;
  }
}

/// Ends with a fade out, so that where the effect stops does not depend on the host's blocks.
int PluginBypass::pieceLength(const AudioBlock& block, int first) const noexcept {
  const int length = std::min(block.frames - first, static_cast<int>(dry[0].size()));
  return block.bypass && !isBypassed() ? std::min(length, heard) : length;
}

void PluginBypass::processPiece(AudioBlock block) noexcept {
  const bool bypass = std::exchange(block.bypass, false);
  takeDry(block);
  if (isBypassed() && !bypass) start();
  if (isBypassed()) {
    passDry(block);
    return;
  }
  feedEffect(block);
  engine.RenderAudio(block);
  mix(block, bypass);
  // Nothing that sounds now is heard when the effect comes back.
  if (isBypassed()) engine.requestReset();
}

void PluginBypass::start() noexcept {
  running = 0;
  heard = fadeFrames;
}

/// Keeps what is to be heard dry apart, for the outputs may be the same buffers as the inputs.
void PluginBypass::takeDry(const AudioBlock& block) noexcept {
  for (std::size_t c = 0; c < channels; ++c) {
    history[c].delayed(mainInput(block, c), dry[c].data(), block.frames, engine.latency);
  }
  rememberDry(block);
}

void PluginBypass::rememberDry(const AudioBlock& block) noexcept {
  for (std::size_t c = 0; c < channels; ++c) {
    history[c].remember(mainInput(block, c), block.frames);
  }
}

void PluginBypass::passDry(const AudioBlock& block) const noexcept {
  for (std::size_t c = 0; c < channels && static_cast<int>(c) < block.outputCount; ++c) {
    std::copy_n(dry[c].begin(), block.frames, block.outputs[c]);
  }
}

/// Gives the block rising inputs for as long as the effect has not got all of it.
void PluginBypass::feedEffect(AudioBlock& block) noexcept {
  if (fedGain(running) >= 1.0) return;
  for (std::size_t c = 0; c < channels && static_cast<int>(c) < block.inputCount; ++c) {
    const double* in = block.inputs[c];
    fedPointers[c] = in == nullptr ? nullptr : fed[c].data();
    for (int i = 0; in != nullptr && i < block.frames; ++i) {
      fed[c][static_cast<std::size_t>(i)] = in[i] * fedGain(running + i);
    }
  }
  block.inputs = fedPointers.data();
}

void PluginBypass::mix(const AudioBlock& block, bool bypass) noexcept {
  const int delay = engine.latency;
  for (int i = 0; i < block.frames; ++i) {
    const Gains gains = stepFade(bypass, delay);
    for (std::size_t c = 0; c < channels && static_cast<int>(c) < block.outputCount; ++c) {
      double& out = block.outputs[c][i];
      out = gains.effect * out + gains.dry * dry[c][static_cast<std::size_t>(i)];
    }
  }
}

PluginBypass::Gains PluginBypass::stepFade(bool bypass, int delay) noexcept {
  const bool comesOut = running >= delay + kVectorLength;
  const double effect = comesOut ? rise(heard) : 0.0;
  const double dryGain = 1.0 - effect * fedGain(running - delay);
  running = std::min(running + 1, fullyRunning());
  heard = std::clamp(heard + (bypass ? -1 : 1), 0, fadeFrames);
  return {dryGain, effect};
}

/// A smooth step over the frames of a fade.
double PluginBypass::rise(int frame) const noexcept {
  const double x = std::clamp(static_cast<double>(frame) / fadeFrames, 0.0, 1.0);
  return x * x * (3.0 - 2.0 * x);
}

}  // namespace orvantesco
