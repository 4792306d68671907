#include "delay/TapReader.h"

#include <algorithm>

#include "delay/TapBatch.h"

namespace orvantesco {

namespace {

/// Delays below one block reach samples that are not written yet; only a glide on its way up from
/// 0 has them.
constexpr int kShortestWritten = kVectorLength;

double coefficientOf(double fraction) noexcept { return (1.0 - fraction) / (1.0 + fraction); }

/// The all-pass at fraction 0: y[i] = (x[i] - y[i-1]) + x[i-1]. What y is off by changes its sign
/// from sample to sample and nothing else, so it is added to a copy: 0 leaves the copy exact.
void copyWhole(const double* samples, double memory, double* output) noexcept {
  const double off = memory - samples[0];
  if (off == 0.0) {
    std::copy_n(samples + 1, kVectorLength, output);
    return;
  }
  for (int i = 0; i < kVectorLength; i += 2) {
    output[i] = samples[i + 1] - off;
    output[i + 1] = samples[i + 2] + off;
  }
}

}  // namespace

void TapReader::setRate(double rateHz) noexcept {
  glide.setRate(rateHz);
  std::fill_n(glideNow, kTapCount, 0.0);
  clearMemory();
}

void TapReader::read(const DelayRing& ring, const Read& tap) noexcept {
  TapBatch batch;
  plan(ring, tap, batch);
  batch.run(glide);
  finish(tap);
}

void TapReader::readMany(const DelayRing& ring, const Read* taps, int count) noexcept {
  TapBatch batch;
  for (int k = 0; k < count; ++k) plan(ring, taps[k], batch);
  batch.run(glide);
  for (int k = 0; k < count; ++k) finish(taps[k]);
}

void TapReader::readPair(TapReader& left, const DelayRing& ringL, const Read& tapL,
                         TapReader& right, const DelayRing& ringR, const Read& tapR) noexcept {
  if (left.glide.gain != right.glide.gain) {  // at two rates the tables differ
    left.read(ringL, tapL);
    right.read(ringR, tapR);
    return;
  }
  TapBatch batch;
  left.plan(ringL, tapL, batch);
  right.plan(ringR, tapR, batch);
  batch.run(left.glide);
  left.finish(tapL);
  right.finish(tapR);
}

void TapReader::plan(const DelayRing& ring, const Read& tap, TapBatch& batch) noexcept {
  const double target = tap.delaySamples;
  if (snapsNext) {
    snapsNext = false;
    glideNow[tap.tap] = target;
    isFresh |= 1U << tap.tap;
  }
  const double start = glideNow[tap.tap];
  const double end = glide.at(kVectorLength - 1, start, glide.gain * target);
  if (TapGlide::isSettled(end, target)) {
    glideNow[tap.tap] = target;
    planSettled(ring, tap, batch);
  } else {
    glideNow[tap.tap] = end;
    planMoving(ring, tap, start, batch);
  }
}

void TapReader::planSettled(const DelayRing& ring, const Read& tap, TapBatch& batch) noexcept {
  const int whole = static_cast<int>(tap.delaySamples);
  const double fraction = static_cast<double>(tap.delaySamples) - whole;
  const int first = ring.wrap(ring.writePosition() - 1 - whole);
  const double* samples = ring.span(first, TapBatch::kSpan, batch.nextScratch());
  const double before = takeFresh(tap.tap) ? samples[0] : memory[tap.tap];
  if (fraction == 0.0) {
    copyWhole(samples, before, tap.output);
  } else {
    batch.addSettled({samples, coefficientOf(fraction), before, tap.output});
  }
}

void TapReader::planMoving(const DelayRing& ring, const Read& tap, double start,
                           TapBatch& batch) noexcept {
  const double pull = glide.gain * tap.delaySamples;
  const double first = glide.at(0, start, pull);
  const double last = glide.at(kVectorLength - 1, start, pull);
  // The glide is monotonous but for its rounding, so one sample more on either side holds it.
  const int shortest = static_cast<int>(std::min(first, last)) - 1;
  const int longest = static_cast<int>(std::max(first, last)) + 1;
  const int newest = ring.writePosition() - 1;
  const bool isAhead = newest - longest >= 0;
  const bool isBehind = newest + kVectorLength - shortest < 0 && ring.full();
  if (shortest < kShortestWritten || !(isAhead || isBehind)) {
    walk(ring, tap, start);
    return;
  }
  const double* origin = ring.data() + newest + (isAhead ? 0 : ring.length());
  const double before = takeFresh(tap.tap) ? origin[-static_cast<int>(first)] : memory[tap.tap];
  batch.addMoving({origin, start, pull, before, tap.output});
}

bool TapReader::takeFresh(int tap) noexcept {
  const std::uint32_t bit = 1U << tap;
  const bool was = (isFresh & bit) != 0;
  isFresh &= ~bit;
  return was;
}

/// The moving read sample by sample, for the rare block in which the tap crosses the ring's end
/// or reaches what is not written.
void TapReader::walk(const DelayRing& ring, const Read& tap, double start) noexcept {
  const double pull = glide.gain * tap.delaySamples;
  bool fresh = takeFresh(tap.tap);
  double y = memory[tap.tap];
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
    tap.output[i] = y;
  }
}

void TapReader::finish(const Read& tap) noexcept {
  memory[tap.tap] = tap.output[kVectorLength - 1];
}

}  // namespace orvantesco
