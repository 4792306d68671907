#include "delay/ReverseReader.h"

#include <algorithm>

#include "fx/RateValues.h"

namespace orvantesco {

void ReverseReader::setFade(double ms) noexcept {
  fadeMs = ms;
  fadeLength = sampleRate * ms * 0.001;
  fadeInverse = fadeLength > 0.0 ? 1.0 / fadeLength : 0.0;
}

// Limited to what an int and a ring can hold; the second comparison also takes NaN to 0.
void ReverseReader::setOffset(double samples) noexcept {
  offset = samples > 0.0 ? std::min(samples, static_cast<double>(maxDelay)) : 0.0;
}

void ReverseReader::reset() noexcept {
  count = 0;
  clearMemory();
}

void ReverseReader::rateChanged() noexcept {
  offsetGlide.rateChanged();
  setFade(fadeMs);
  start = 0;
  crossPosition = 0;
  crossing = false;
  reset();
}

void ReverseReader::read(const DelayRing& ring, double cycleSamples, double* output) noexcept {
  const double* offsets = offsetGlide.ramp(offset);
  for (int i = 0; i < kVectorLength; ++i) {
    const int whole = static_cast<int>(offsets[i]);
    const double t = 1.0 - (offsets[i] - whole);
    const int a = ring.wrap(start - count - whole);
    double scratch[2];
    const double* pair = ring.span(a, 2, scratch);
    ++count;
    const bool isDue = count >= cycleSamples || isTriggered;
    if (isDue && !crossing) restart(ring, ring.wrap(a + 1));
    const double c = (1.0 - t) / (1.0 + t);
    memory = (pair[0] - memory) * c + pair[1];
    output[i] = crossfade(ring, memory);
  }
}

void ReverseReader::restart(const DelayRing& ring, int lastPosition) noexcept {
  start = ring.writePosition();
  crossPosition = lastPosition;
  count = 0;
  isTriggered = false;
}

/// The incoming sample, under the outgoing cycle while the fade lasts.
double ReverseReader::crossfade(const DelayRing& ring, double fresh) noexcept {
  crossing = count < fadeLength;
  if (!crossing) return fresh;
  if (crossPosition < 0) crossPosition += ring.length();
  const double gain = count * fadeInverse;
  const double mixed = gain * fresh + (1.0 - gain) * ring.at(crossPosition);
  --crossPosition;
  return mixed;
}

}  // namespace orvantesco
