#include "delay/MModDelayLine.h"

#include <algorithm>

namespace orvantesco {

void MModDelayLine::setMaxDelay(int samples) {
  MDelayLine::setMaxDelay(samples);
  setCentreDelay(centreDelay);
}

void MModDelayLine::setCentreDelay(int samples) noexcept {
  centreDelay = std::clamp(samples, 1, std::max(maxDelay, 1));
  setModDepth(modDepth);
}

void MModDelayLine::setModDepth(int samples) noexcept {
  modDepth = std::clamp(samples, 0, centreDelay - 1);
  placeRead();
}

void MModDelayLine::placeRead() noexcept {
  const int index = writeIndex() - centreDelay;
  readPos = static_cast<float>(index < 0 ? index + length : index);
}

}  // namespace orvantesco
