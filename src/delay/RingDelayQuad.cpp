#include "delay/RingDelayQuad.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "delay/TapLanes.h"
#include "fx/RateValues.h"
#include "fx/Runaway.h"

namespace orvantesco {

namespace {

constexpr double kGlideMs = 5.0;
/// Distance, relative to the target, at which a glide has arrived.
constexpr double kArrived = 2e-13;
/// Fraction that no delay has but by rounding.
constexpr double kWholeSample = 1e-9;
constexpr int kSpan = kVectorLength + 1;

double coefficientOf(double fraction) noexcept { return (1.0 - fraction) / (1.0 + fraction); }

}  // namespace

/// The lines of one read, sorted into those that stand and those that glide. Filled as far as the
/// counts say. NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
struct RingDelayQuad::Batch {
  SettledTap settled[kLines];
  MovingTap moving[kLines];
  alignas(64) double scratch[kLines][kSpan];
  int settledCount = 0;
  int movingCount = 0;
};

void RingDelayQuad::allocate(int line, int samples) {
  const int wanted = std::max(samples, 2 * DelayRing::kGuard);
  lines[line].ring.allocate(static_cast<int>(std::bit_ceil(static_cast<unsigned>(wanted))));
}

void RingDelayQuad::clear() noexcept {
  for (Line& line : lines) {
    line.ring.reset();
    line.memory = 0.0;
  }
}

void RingDelayQuad::rateChanged() noexcept {
  glide.setRate(sampleRate, kGlideMs);
  for (Line& line : lines) line.delay = 0.0;
}

void RingDelayQuad::write(int line, const double* samples) noexcept {
  lines[line].ring.write(samples, kVectorLength);
}

double RingDelayQuad::heldDelay(const Line& line, double delay) const noexcept {
  const double longest = line.ring.length() - 2 * kVectorLength;
  return delay > minModDelay ? std::min(delay, longest) : minModDelay.get();
}

void RingDelayQuad::read(const std::array<double, kLines>& delays) noexcept {
  Batch batch;  // NOLINT(cppcoreguidelines-pro-type-member-init): filled as far as it is read
  for (int i = 0; i < kLines; ++i) {
    const double target = heldDelay(lines[i], delays[static_cast<std::size_t>(i)]);
    const bool hasArrived = std::fabs(lines[i].delay - target) <= kArrived * target;
    if (hasArrived) {
      lines[i].delay = target;
      planSettled(i, target, batch);
    } else {
      planMoving(i, target, batch);
    }
  }
  if (batch.settledCount > 0) {
    tapLanesFor(batch.settledCount).readSettled(batch.settled, batch.settledCount);
  }
  if (batch.movingCount > 0) {
    tapLanesFor(batch.movingCount).readMoving(batch.moving, batch.movingCount, glide);
  }
  for (int i = 0; i < kLines; ++i) lines[i].memory = saneOrZero(outputs[i][kVectorLength - 1]);
}

void RingDelayQuad::planSettled(int index, double delay, Batch& batch) noexcept {
  const Line& line = lines[index];
  const int whole = static_cast<int>(delay);
  const int first = line.ring.wrap(line.ring.writePosition() - kVectorLength - whole - 1);
  const double* samples = line.ring.span(first, kSpan, batch.scratch[index]);
  if (delay - whole <= kWholeSample) {
    std::copy_n(samples + 1, kVectorLength, outputs[index]);
    return;
  }
  batch.settled[batch.settledCount++] = {samples, coefficientOf(delay - whole), line.memory,
                                         outputs[index]};
}

void RingDelayQuad::planMoving(int index, double target, Batch& batch) noexcept {
  Line& line = lines[index];
  const double pull = glide.gain * target;
  const double start = line.delay;
  const double first = glide.at(0, start, pull);
  const double last = glide.at(kVectorLength - 1, start, pull);
  // The glide is monotonous but for its rounding, so one sample more on either side holds it.
  const int shortest = std::max(static_cast<int>(std::min(first, last)) - 1, 0);
  const int longest = static_cast<int>(std::max(first, last)) + 1;
  // As the taps see it, which are read before the write.
  const int newest = line.ring.writePosition() - kVectorLength - 1;
  const bool isAhead = newest - longest >= 0;
  const bool isBehind = line.ring.full() && newest + kVectorLength - shortest < DelayRing::kGuard;
  if (!isAhead && !isBehind) {
    walk(index, target);
    return;
  }
  const double* origin = line.ring.data() + newest + (isAhead ? 0 : line.ring.length());
  batch.moving[batch.movingCount++] = {origin, start, pull, line.memory, outputs[index]};
  line.delay = last;
}

/// The moving read sample by sample, for the rare vector in which it meets the ring's end or
/// reaches what is not written yet.
void RingDelayQuad::walk(int index, double target) noexcept {
  Line& line = lines[index];
  const double pull = glide.gain * target;
  const int origin = line.ring.writePosition() - kVectorLength;
  double y = line.memory;
  double d = line.delay;
  for (int i = 0; i < kVectorLength; ++i) {
    d = glide.at(i, line.delay, pull);
    const int whole = static_cast<int>(d);
    const double c = coefficientOf(d - whole);
    const int p = origin + i - whole;
    const double now = line.ring.at(line.ring.wrap(p));
    y = (c * now + line.ring.at(line.ring.wrap(p - 1))) - c * y;
    outputs[index][i] = y;
  }
  line.delay = d;
}

}  // namespace orvantesco
