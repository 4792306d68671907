#include "delay/MSVRAP1ModDelayLine.h"

#include <algorithm>
#include <cassert>

namespace orvantesco {

void MSVRAP1ModDelayLine::reset() noexcept {
  MModDelayLine::reset();
  sampleCount = 0;
  fraction = 0.0F;
  output = 0.0F;
  setCentreDelay(centreDelay);
}

void MSVRAP1ModDelayLine::setModPeriod(int samples) noexcept {
  modPeriod = std::max(samples, 1);
  sampleCount = 0;
}

void MSVRAP1ModDelayLine::takeModulation() noexcept {
  const float swing = modulator != nullptr ? std::clamp(modulator->tick(), -1.0F, 1.0F) : 0.0F;
  const float position = readPos + swing * static_cast<float>(modDepth);
  // Towards minus infinity, without a call: a position lies within a few turns of 0.
  int index = static_cast<int>(position);
  if (static_cast<float>(index) > position) --index;
  fraction = position - static_cast<float>(index);
  if (index < 0) {
    readPtr = begin + (index + length);
  } else {
    readPtr = begin + (index < length ? index : index - length);
  }
  readPos += static_cast<float>(modPeriod);
  while (readPos >= static_cast<float>(length)) readPos -= static_cast<float>(length);
}

float MSVRAP1ModDelayLine::process(float /*in*/) noexcept {
  if (sampleCount == 0) takeModulation();
  if (++sampleCount == modPeriod) sampleCount = 0;
  const float older = at(readPtr);
  readPtr = next(readPtr);
  output = older + (at(readPtr) - output) * fraction;
  return output;
}

SwungSpan MSVRAP1ModDelayLine::readSpan(SwungScratch& scratch) noexcept {
  assert(modPeriod > kVectorLength && centreDelay - modDepth > kVectorLength);
  const int untilTick = sampleCount == 0 ? 0 : modPeriod - sampleCount;
  sampleCount = (sampleCount + kVectorLength) % modPeriod;
  if (untilTick > 0 && untilTick < kVectorLength) return turnedSpan(untilTick, scratch);
  if (untilTick == 0) takeModulation();
  const float* piece = pieceFrom(readPtr, kVectorLength + 1, scratch.piece);
  readPtr = ahead(readPtr, kVectorLength);
  return {piece, piece + 1, kVectorLength, fraction, fraction};
}

/// A span that goes on elsewhere from sample `tick` on. Whole vectors are copied, since that is
/// faster than copying no more than is read.
SwungSpan MSVRAP1ModDelayLine::turnedSpan(int tick, SwungScratch& scratch) noexcept {
  const auto takePiece = [&](int at) {
    const float* piece = pieceFrom(readPtr, kVectorLength + 1, scratch.piece);
    std::copy_n(piece, kVectorLength, scratch.now + at);
    std::copy_n(piece + 1, kVectorLength, scratch.next + at);
  };
  const float before = fraction;
  takePiece(0);
  takeModulation();
  takePiece(tick);
  readPtr = ahead(readPtr, kVectorLength - tick);
  return {scratch.now, scratch.next, tick, before, fraction};
}

}  // namespace orvantesco
