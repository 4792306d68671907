// The two readers that do not follow the write head: backwards, and in grains.

#include <algorithm>
#include <cmath>

#include "model/DelayModel.h"

namespace orvantesco::model {

namespace {

double wrapped(double position, long length) {
  return position >= static_cast<double>(length) ? position - static_cast<double>(length)
                                                 : position;
}

}  // namespace

void DelayModel::setReverseFade(double ms) { reverseFadeSamples = rates.clamped * ms * 0.001; }

void DelayModel::setGrain(double sizeMs, double octaves, double newStart, double fadeMs) {
  grainSizeMs = sizeMs;
  grainRate = std::exp2(2.0 * (octaves * 0.5));
  grainStart = newStart;
  const bool newFade = fadeMs != grainFadeMs;
  grainFadeMs = fadeMs;
  if (newFade) updateGrainFade(grainSizeGlide.y);
}

Block DelayModel::readReverse(double delaySamples) {
  const double shortening = (1.0 - grainStart) * (1.0 - grainStart);
  const double cycle = (delaySamples - rates.minDelay()) * shortening + rates.minDelay();
  Block out{};
  for (double& sample : out) {
    long a = reverseStart - reverseCount;
    if (a < 0) a += length;
    if (a >= length) a = 0;
    const long b = a + 1 < length ? a + 1 : 0;
    ++reverseCount;
    const bool due = static_cast<double>(reverseCount) >= cycle || reverseTrigger;
    if (due && !reverseCrossing) {
      reverseStart = writePos();
      reverseCrossPos = b;
      reverseCount = 0;
      reverseTrigger = false;
    }
    if (reverseCrossPos < 0) reverseCrossPos += length;
    double y = ringAt(b);  // the modulation rests at 0, so the all-pass read is exact
    reverseCrossing = false;
    if (static_cast<double>(reverseCount) < reverseFadeSamples) {
      const double g = static_cast<double>(reverseCount) / reverseFadeSamples;
      reverseCrossing = true;
      y = g * y + (1.0 - g) * ringAt(reverseCrossPos);
      --reverseCrossPos;
    }
    sample = y;
  }
  lowpass.process(out);
  return out;
}

/// While the size glides, the fade follows it in steps of whole samples; at rest, a fade that was
/// made for another size is made anew, so that "automatic" is a fifth of the grain in the end.
void DelayModel::followGrainSize(const Block& sizes, double target) {
  if (std::floor(sizes[0]) != std::floor(sizes[1])) return updateGrainFade(sizes[0]);
  const bool rests = std::abs(sizes[0] - target) <= 1e-9 * target;
  const bool stale = std::abs(grainFadeMadeFor - target) > 0.1 * target;
  if (rests && (stale || grainFadeSamples > target)) updateGrainFade(target);
}

void DelayModel::updateGrainFade(double size) {
  grainFadeMadeFor = size;
  grainFadeSamples = grainFadeMs == 0.0 ? std::min(size * 0.2, std::floor(rates.clamped * 0.05))
                                        : std::min(rates.clamped * 0.001 * grainFadeMs, size);
}

void DelayModel::startGrain(double delaySamples, double size, int i) {
  grainOldPos = grainPos;
  const double back = std::max(size, (1.0 - grainStart) * delaySamples);
  grainPos = static_cast<double>(writePos() + i) - back;
  if (grainPos < 0.0) grainPos += static_cast<double>(length);
  grainCount = 0.0;
}

double DelayModel::grainSample() const {
  const long k = static_cast<long>(grainPos);
  const double f = grainPos - static_cast<double>(k);
  const double before = ringAt((k - 1 + length) % length);
  const double x0 = ringAt(k % length);
  const double x1 = ringAt((k + 1) % length);
  const double x2 = ringAt((k + 2) % length);
  const double cubic = 1.5 * x0 - 0.5 * before - 1.5 * x1 + 0.5 * x2;
  const double square = before - 2.5 * x0 + 2.0 * x1 - 0.5 * x2;
  return ((cubic * f + square) * f + 0.5 * (x1 - before)) * f + x0;
}

Block DelayModel::readGrain(double delaySamples) {
  const double size = rates.clamped * 0.001 * grainSizeMs * 0.995;
  Block ramp{};
  for (double& s : ramp) s = grainSizeGlide.tick(size);
  followGrainSize(ramp, size);
  Block out{};
  for (int i = 0; i < kStep; ++i) {
    grainPos = wrapped(grainPos + grainRate, length);
    grainCount += grainRate;
    const double s = ramp[static_cast<size_t>(i)];
    if (grainCount >= s - 1e-6) startGrain(delaySamples, s, i);
    double y = grainSample();
    if (grainCount < grainFadeSamples) {
      const double g = grainCount / grainFadeSamples;
      const double old = ringAt(static_cast<long>(grainOldPos));
      grainOldPos = wrapped(grainOldPos + grainRate, length);
      y = static_cast<double>(static_cast<float>(g)) * y +
          static_cast<double>(static_cast<float>(1.0 - g)) * old;
    }
    out[static_cast<size_t>(i)] = y;
  }
  return out;
}

}  // namespace orvantesco::model
