#include "host/dpf/DpfEngine.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <limits>

#include "host/dpf/DpfParameters.h"

namespace orvantesco {

namespace {

void silence(float* const* outputs, int frames) noexcept {
  for (int i = 0; i < DISTRHO_PLUGIN_NUM_OUTPUTS; ++i) {
    if (outputs[i] != nullptr) std::fill_n(outputs[i], frames, 0.0F);
  }
}

}  // namespace

/// The ranges of ports are read from a bank that is built at the first question.
DpfEngine::DpfEngine() { portRangeOf(0); }

bool DpfEngine::activate(double rateHz, int frames) try {
  takeMemory(rateHz, frames);
  if (libraryIsPrepared) return true;
  libraryIsPrepared = true;
  presets.start();
  return true;
} catch (const std::exception& failure) {
  std::fprintf(stderr, "Orvantesco: cannot play: %s\n", failure.what());
  return hasMemory;
}

void DpfEngine::takeMemory(double rateHz, int frames) {
  hasMemory = false;
  host.setSampleRate(rateHz);
  audio.prepare(frames);
  bypass.prepare(frames, rateHz, bypassed);
  hasMemory = true;
}

std::uint32_t DpfEngine::tailFrames() const {
  constexpr std::uint32_t endless = std::numeric_limits<std::uint32_t>::max();
  const double seconds = bypassed ? 0.0 : effect.tailSeconds();
  const double frames = std::ceil(seconds * host.sampleRate()) + effect.latency;
  return frames < endless ? static_cast<std::uint32_t>(frames) : endless;
}

void DpfEngine::run(const float* const* inputs, float* const* outputs, int frames) noexcept {
  if (!hasMemory) return silence(outputs, frames);
  if (resetIsWanted) {
    resetIsWanted = false;
    bypass.reset();
  }
  for (int first = 0; first < frames; first += audio.longestPiece()) {
    const DpfAudio::Piece piece{first, std::min(audio.longestPiece(), frames - first)};
    AudioBlock block = audio.take(inputs, piece);
    block.bypass = bypassed;
    bypass.process(block);
    audio.give(outputs, piece);
  }
}

}  // namespace orvantesco
