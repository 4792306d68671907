#include "delay/MDelayLine.h"

#include <algorithm>

namespace orvantesco {

void MDelayLine::reset() noexcept { std::fill_n(begin, length, 0.0F); }

void MDelayLine::setMaxDelay(int samples) {
  const int longest = std::max(samples, 0);
  storage.resize(static_cast<std::size_t>(longest + kReserve));
  maxDelay = longest;
  length = longest + kReserve;
  begin = storage.data();
  end = begin + length;
  writePtr = begin;
  const int behind = std::clamp(delay, 0, maxDelay);
  readPtr = behind == 0 ? begin : end - behind;
}

const float* MDelayLine::pieceFrom(const float* from, int n, float* scratch) const noexcept {
  const auto beforeEnd = static_cast<int>(end - from);
  if (n <= beforeEnd) return from;
  std::copy_n(from, beforeEnd, scratch);
  std::copy_n(begin, n - beforeEnd, scratch + beforeEnd);
  return scratch;
}

const float* MDelayLine::readVector(float* scratch) noexcept {
  const float* piece = pieceFrom(readPtr, kVectorLength, scratch);
  readPtr = ahead(readPtr, kVectorLength);
  return piece;
}

float* MDelayLine::vectorToWrite(float* scratch) noexcept {
  return end - writePtr >= kVectorLength ? writePtr : scratch;
}

void MDelayLine::commitVector(const float* written) noexcept {
  if (written != writePtr) {
    const auto beforeEnd = static_cast<int>(end - writePtr);
    std::copy_n(written, beforeEnd, writePtr);
    std::copy_n(written + beforeEnd, kVectorLength - beforeEnd, begin);
  }
  writePtr = ahead(writePtr, kVectorLength);
}

const float* MDelayLine::vectorBehind(int samples, float* scratch) const noexcept {
  const int index = writeIndex() - samples;
  return pieceFrom(begin + (index < 0 ? index + length : index), kVectorLength, scratch);
}

}  // namespace orvantesco
