#include "host/dpf/DpfEngine.h"

#include <algorithm>

#include "host/dpf/DpfParameters.h"

namespace orvantesco {

/// The ranges of ports are read from a bank that is built at the first question.
DpfEngine::DpfEngine() { portRangeOf(0); }

void DpfEngine::activate(double rateHz, int frames) {
  host.setSampleRate(rateHz);
  audio.prepare(frames);
  bypass.prepare(frames, rateHz);
  effect.ResetDSP();  // no audio runs, so it needs no request
  if (libraryIsPrepared) return;
  libraryIsPrepared = true;
  presets.start();
}

void DpfEngine::run(const float* const* inputs, float* const* outputs, int frames) noexcept {
  for (int first = 0; first < frames; first += audio.longestPiece()) {
    const DpfAudio::Piece piece{first, std::min(audio.longestPiece(), frames - first)};
    AudioBlock block = audio.take(inputs, piece);
    block.bypass = bypassed;
    bypass.process(block);
    audio.give(outputs, piece);
  }
}

}  // namespace orvantesco
