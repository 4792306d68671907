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

}  // namespace orvantesco
