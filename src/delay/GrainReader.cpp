#include "delay/GrainReader.h"

#include <algorithm>
#include <cmath>

#include "fx/RateValues.h"

namespace orvantesco {

namespace {

/// A grain is a little shorter than the room that it is given.
constexpr double kSizeShare = 0.995;
constexpr double kAutomaticFade = 0.2;  ///< of a grain
constexpr double kMaxFadeSeconds = 0.05;

/// Where count and size are both whole, rounding must not decide when a grain ends.
constexpr double kCountTolerance = 1e-6;

/// Of the size: how far from its target it counts as at rest, and how far beside it a fade may
/// then have been made.
constexpr double kRestingSize = 1e-9;
constexpr double kStaleFade = 0.1;

/// Four neighbours in a ring, the second of them at `k`; contiguous but at the ring's ends.
struct Neighbours {
  double before, at, after, beyond;

  Neighbours(const DelayRing& ring, int k) noexcept {
    if (k > 0 && ring.holds(k - 1, 4)) {
      const double* samples = ring.data() + (k - 1);
      before = samples[0];
      at = samples[1];
      after = samples[2];
      beyond = samples[3];
    } else {
      before = ring.at(ring.wrap(k - 1));
      at = ring.at(ring.wrap(k));
      after = ring.at(ring.wrap(k + 1));
      beyond = ring.at(ring.wrap(k + 2));
    }
  }

  double cubic(double f) const noexcept {
    const double third = 1.5 * at - 0.5 * before - 1.5 * after + 0.5 * beyond;
    const double second = before - 2.5 * at + 2.0 * after - 0.5 * beyond;
    return ((third * f + second) * f + 0.5 * (after - before)) * f + at;
  }
};

double wrapTop(double position, int length) noexcept {
  return position >= length ? position - length : position;
}

}  // namespace

void GrainReader::setFade(double ms) noexcept {
  fadeMs = ms;
  makeFade(sizeGlide.state());
}

void GrainReader::rateChanged() noexcept {
  sizeGlide.rateChanged();
  maxFade = static_cast<int>(sampleRate * kMaxFadeSeconds);
  count = 0.0;
  oldPosition = 0.0;
  makeFade(0.0);
  reset();
}

void GrainReader::makeFade(double size) noexcept {
  fadeSize = size;
  fadeLength = fadeMs == 0.0 ? std::min(size * kAutomaticFade, static_cast<double>(maxFade))
                             : std::min(sampleRate * 0.001 * fadeMs, size);
  fadeInverse = fadeLength > 0.0 ? 1.0 / fadeLength : 0.0;
}

/// The fade follows the size in steps of whole samples. The last steps of a glide are smaller, so
/// once the size rests, a fade that was left behind too far is made anew.
void GrainReader::followSize(const double* sizes, double target) noexcept {
  if (static_cast<int>(sizes[0]) != static_cast<int>(sizes[1])) {
    makeFade(sizes[0]);
    return;
  }
  if (std::fabs(sizes[0] - target) > kRestingSize * target) return;
  if (fadeLength > target || std::fabs(fadeSize - target) > kStaleFade * target) makeFade(target);
}

void GrainReader::read(const DelayRing& ring, const Settings& settings, double* output) noexcept {
  const double target = settings.sizeSamples * kSizeShare;
  const double* sizes = sizeGlide.ramp(target);
  followSize(sizes, target);
  for (int i = 0; i < kVectorLength; ++i) {
    readPosition = wrapTop(readPosition + settings.rate, ring.length());
    count += settings.rate;
    if (count >= sizes[i] - kCountTolerance) startGrain(ring, settings, sizes[i], i);
    const int k = static_cast<int>(readPosition);
    output[i] = crossfade(ring, settings.rate, Neighbours(ring, k).cubic(readPosition - k));
  }
}

void GrainReader::startGrain(const DelayRing& ring, const Settings& settings, double size,
                             int i) noexcept {
  oldPosition = readPosition;
  const double wanted = std::max(size, (1.0 - settings.position) * settings.delaySamples);
  const double back = std::min(wanted, static_cast<double>(ring.length() - 1));
  const double position = ring.writePosition() + i - back;
  readPosition = position < 0.0 ? position + ring.length() : wrapTop(position, ring.length());
  count = 0.0;
}

/// The incoming sample, over the outgoing grain while the fade lasts.
double GrainReader::crossfade(const DelayRing& ring, double rate, double fresh) noexcept {
  if (!(count < fadeLength)) return fresh;
  const double gain = count * fadeInverse;
  const double old = ring.at(static_cast<int>(oldPosition));
  oldPosition = wrapTop(oldPosition + rate, ring.length());
  return static_cast<float>(gain) * fresh + static_cast<float>(1.0 - gain) * old;
}

}  // namespace orvantesco
