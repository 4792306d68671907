#include "delay/MDelayLine.h"

#include <algorithm>

namespace orvantesco {

void MDelayLine::reset() noexcept { placePointers(); }

void MDelayLine::setMaxDelay(int samples) {
  const int longest = std::max(samples, 0);
  maxDelay = longest;
  length = longest + kReserve;
  storage.resize(static_cast<std::size_t>(length));
  begin = storage.data();
  end = begin + length;
  placePointers();
}

void MDelayLine::placePointers() noexcept {
  writePtr = begin;
  readableEnd = begin;
  const int behind = std::clamp(delay, 0, maxDelay);
  readPtr = behind == 0 ? begin : end - behind;
}

/// A piece that crosses the ring's end, or reaches what is not written.
const float* MDelayLine::joined(const float* from, int n, float* scratch) const noexcept {
  for (int done = 0; done < n; from = begin) {
    const int piece = std::min(n - done, static_cast<int>(end - from));
    const int written = std::clamp(static_cast<int>(readableEnd - from), 0, piece);
    std::copy_n(from, written, scratch + done);
    std::fill_n(scratch + done + written, piece - written, 0.0F);
    done += piece;
  }
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
