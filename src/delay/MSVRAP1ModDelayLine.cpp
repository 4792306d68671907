#include "delay/MSVRAP1ModDelayLine.h"

#include <algorithm>
#include <cmath>

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
  const float whole = std::floor(position);
  fraction = position - whole;
  const int index = static_cast<int>(whole);
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
  const float older = *readPtr;
  readPtr = next(readPtr);
  output = older + (*readPtr - output) * fraction;
  return output;
}

}  // namespace orvantesco
