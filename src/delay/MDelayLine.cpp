#include "delay/MDelayLine.h"

#include <algorithm>

namespace orvantesco {

void MDelayLine::reset() noexcept { std::fill_n(begin, length, 0.0F); }

void MDelayLine::setMaxDelay(int samples) {
  const int longest = std::max(samples, 0);
  maxDelay = longest;
  length = longest + kReserve;
  storage.resize(static_cast<std::size_t>(length));
  begin = storage.data();
  end = begin + length;
  writePtr = begin;
  const int behind = std::clamp(delay, 0, maxDelay);
  readPtr = behind == 0 ? begin : end - behind;
}

/// A piece that crosses the ring's end.
const float* MDelayLine::joined(const float* from, int n, float* scratch) const noexcept {
  const auto beforeEnd = static_cast<int>(end - from);
  std::copy_n(from, beforeEnd, scratch);
  std::copy_n(begin, n - beforeEnd, scratch + beforeEnd);
  return scratch;
}

/// A vector that crosses the ring's end.
void MDelayLine::copyIn(const float* vector) noexcept {
  const auto beforeEnd = static_cast<int>(end - writePtr);
  std::copy_n(vector, beforeEnd, writePtr);
  std::copy_n(vector + beforeEnd, kVectorLength - beforeEnd, begin);
}

const float* MDelayLine::vectorBehind(int samples, float* scratch) const noexcept {
  const int index = writeIndex() - samples;
  return pieceFrom(begin + (index < 0 ? index + length : index), kVectorLength, scratch);
}

}  // namespace orvantesco
