#include "delay/TapReader.h"

#include <algorithm>
#include <cmath>

#include "delay/CleanCopy.h"
#include "delay/TapBatch.h"
#include "fx/Runaway.h"

namespace orvantesco {

namespace {

/// Delays below one block reach samples that are not written yet; only a glide on its way up from
/// 0 has them.
constexpr int kShortestWritten = kVectorLength;

/// Memory from which one block cannot reach the runaway limit: with |x| within the quiet limit
/// and c within 0..1, |y[i]| is at most |y[i-1]| + 2 |x|.
constexpr double kCalmMemory = 3e7;
static_assert(kCalmMemory + kVectorLength * 2.0 * kQuietLimit < kRunawayLimit);

constexpr std::uint32_t bitOf(int tap) noexcept { return 1U << tap; }

double coefficientOf(double fraction) noexcept { return (1.0 - fraction) / (1.0 + fraction); }

/// The all-pass at fraction 0: y[i] = (x[i] - y[i-1]) + x[i-1]. What y is off by changes its sign
/// from sample to sample and nothing else, so it is added to a copy: 0 leaves the copy exact.
void copyWhole(const double* samples, double memory, double* output) noexcept {
  const double off = memory - samples[0];
  if (off == 0.0) {
    std::copy_n(samples + 1, kVectorLength, output);
    return;
  }
  const double minusOff = -off;
  for (int i = 0; i < kVectorLength; i += 2) {
    output[i] = samples[i + 1] + minusOff;
    output[i + 1] = samples[i + 2] + off;
  }
}

}  // namespace

void TapReader::setRate(double rateHz) noexcept {
  glide.setRate(rateHz);
  std::fill_n(taps, kTapCount, Tap{});
  clearMemory();
}

[[gnu::always_inline]] inline void TapReader::planSettled(const DelayRing& ring, const Read& read,
                                                          double memory, TapBatch& batch) noexcept {
  const Tap& tap = taps[read.tap];
  const int first = ring.wrap(ring.writePosition() - 1 - tap.whole);
  const double* samples = ring.span(first, TapBatch::kSpan, batch.nextScratch());
  if (tap.coefficient == 1.0) {
    copyWhole(samples, memory, read.output);
    return;
  }
  SettledTap& settled = batch.nextSettled();
  settled.samples = samples;
  settled.coefficient = tap.coefficient;
  settled.memory = memory;
  settled.output = read.output;
}

/// Most taps are where they were in the block before: no glide, no start to be made.
[[gnu::always_inline]] inline void TapReader::plan(const DelayRing& ring, const Read& read,
                                                   TapBatch& batch) noexcept {
  const Tap& tap = taps[read.tap];
  batch.isCalm = batch.isCalm && std::fabs(tap.memory) <= kCalmMemory;
  const bool isNew = snapsNext || (isFresh & bitOf(read.tap)) != 0;
  if (isNew || tap.settledAt != read.delaySamples) {
    planChange(ring, read, batch);
  } else {
    planSettled(ring, read, tap.memory, batch);
  }
}

bool TapReader::read(const DelayRing& ring, const Read& read) noexcept {
  return readMany(ring, &read, 1);
}

bool TapReader::readMany(const DelayRing& ring, const Read* reads, int count) noexcept {
  TapBatch batch;
  for (int k = 0; k < count; ++k) plan(ring, reads[k], batch);
  batch.run(glide);
  for (int k = 0; k < count; ++k) finish(reads[k]);
  return batch.isCalm && ring.isQuiet();
}

// Two readers with a ring and a read each. NOLINTNEXTLINE(readability-function-size)
bool TapReader::readPair(TapReader& left, const DelayRing& ringL, const Read& readL,
                         TapReader& right, const DelayRing& ringR, const Read& readR) noexcept {
  if (left.glide.gain != right.glide.gain) {  // at two rates the tables differ
    const bool leftIsCalm = left.read(ringL, readL);
    return right.read(ringR, readR) && leftIsCalm;
  }
  TapBatch batch;
  left.plan(ringL, readL, batch);
  right.plan(ringR, readR, batch);
  batch.run(left.glide);
  left.finish(readL);
  right.finish(readR);
  return batch.isCalm && ringL.isQuiet() && ringR.isQuiet();
}

void TapReader::planChange(const DelayRing& ring, const Read& read, TapBatch& batch) noexcept {
  Tap& tap = taps[read.tap];
  const double target = read.delaySamples;
  if (snapsNext) {
    snapsNext = false;
    tap.delay = target;
    isFresh |= bitOf(read.tap);
  }
  const double start = tap.delay;
  tap.delay = glide.at(kVectorLength - 1, start, glide.gain * target);
  if (!TapGlide::isSettled(tap.delay, target)) {
    tap.settledAt = 0.0F;
    planMoving(ring, read, start, batch);
    return;
  }
  settle(tap, read.delaySamples);
  const double first = ring.at(ring.wrap(ring.writePosition() - 1 - tap.whole));
  planSettled(ring, read, takeFresh(read.tap) ? first : tap.memory, batch);
}

void TapReader::settle(Tap& tap, float delaySamples) noexcept {
  tap.delay = delaySamples;
  tap.settledAt = delaySamples;
  tap.whole = static_cast<int>(delaySamples);
  tap.coefficient = coefficientOf(tap.delay - tap.whole);
}

void TapReader::planMoving(const DelayRing& ring, const Read& read, double start,
                           TapBatch& batch) noexcept {
  const double pull = glide.gain * read.delaySamples;
  const double first = glide.at(0, start, pull);
  const double last = glide.at(kVectorLength - 1, start, pull);
  // The glide is monotonous but for its rounding, so one sample more on either side holds it.
  const int shortest = static_cast<int>(std::min(first, last)) - 1;
  const int longest = static_cast<int>(std::max(first, last)) + 1;
  const int newest = ring.writePosition() - 1;
  const bool isAhead = newest - longest >= 0;
  const bool isBehind = newest + kVectorLength - shortest < 0 && ring.full();
  if (shortest < kShortestWritten || !(isAhead || isBehind)) {
    walk(ring, read, start);
    return;
  }
  const double* origin = ring.data() + newest + (isAhead ? 0 : ring.length());
  const bool fresh = takeFresh(read.tap);
  MovingTap& moving = batch.nextMoving();
  moving.newest = origin;
  moving.start = start;
  moving.pull = pull;
  moving.memory = fresh ? origin[-static_cast<int>(first)] : taps[read.tap].memory;
  moving.output = read.output;
}

bool TapReader::takeFresh(int tap) noexcept {
  const bool was = (isFresh & bitOf(tap)) != 0;
  isFresh &= ~bitOf(tap);
  return was;
}

/// The moving read sample by sample, for the rare block in which the tap crosses the ring's end
/// or reaches what is not written.
void TapReader::walk(const DelayRing& ring, const Read& read, double start) noexcept {
  const double pull = glide.gain * read.delaySamples;
  bool fresh = takeFresh(read.tap);
  double y = taps[read.tap].memory;
  for (int i = 0; i < kVectorLength; ++i) {
    const double d = glide.at(i, start, pull);
    const int whole = static_cast<int>(d);
    int p = i - whole + ring.writePosition();
    if (p < 0) p += ring.length();
    if (p >= ring.length()) p = 0;
    const int q = p > 0 ? p - 1 : ring.length() - 1;
    if (fresh) y = ring.at(q);
    fresh = false;
    const double c = coefficientOf(d - whole);
    y = (c * ring.at(p) + ring.at(q)) - c * y;
    read.output[i] = y;
  }
}

void TapReader::finish(const Read& read) noexcept {
  taps[read.tap].memory = read.output[kVectorLength - 1];
}

}  // namespace orvantesco
