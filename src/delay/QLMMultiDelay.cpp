#include "delay/QLMMultiDelay.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "fx/FilterMode.h"
#include "fx/RateValues.h"
#include "fx/Runaway.h"

namespace orvantesco {

namespace {

constexpr int kEchoFilterStages = 2;
constexpr double kLowpassOffHz = 20000.0;
constexpr double kHighpassOffHz = 20.0;

constexpr double kMinGrainMs = 1.0;
constexpr double kMaxGrainMs = 400.0;

int lengthWithin(int n) noexcept {
  assert(n >= 1 && n <= kVectorLength);
  return std::clamp(n, 1, kVectorLength);
}

int tapWithin(int tap) noexcept {
  assert(tap >= 0 && tap < QLMMultiDelay::kTapCount);
  return std::clamp(tap, 0, QLMMultiDelay::kTapCount - 1);
}

}  // namespace

QLMMultiDelay::QLMMultiDelay(bool isRight)
    : DSPShell(isRight),
      lowpass(isRight, kLowpassFilter, kEchoFilterStages),
      highpass(isRight, kHighpassFilter, kEchoFilterStages) {
  resize(kFirstLength);
}

void QLMMultiDelay::setDelayMode(int newMode) noexcept {
  mode = newMode;
  switch (newMode) {
    case kBackward:
      renderer = &QLMMultiDelay::renderBackward;
      break;
    case kGrain:
      renderer = &QLMMultiDelay::renderGrain;
      break;
    default:
      renderer = newMode > kGrain ? &QLMMultiDelay::renderTapped : &QLMMultiDelay::renderForward;
  }
  reset();
}

void QLMMultiDelay::reset() noexcept {
  DSPShell::reset();
  ring.reset();
  clearTapMemory();
  reverse.reset();
  grains.reset();
  lowpass.reset();
  highpass.reset();
}

void QLMMultiDelay::resize(int samples) {
  ring.allocate(samples);
  rateChanged();
  reset();
}

void QLMMultiDelay::rateChanged() noexcept {
  DSPShell::rateChanged();
  taps.setRate(sampleRate);
  reverse.rateChanged();
  grains.rateChanged();
  lowpass.rateChanged();
  highpass.rateChanged();
}

void QLMMultiDelay::clearMemories() noexcept {
  DSPShell::clearMemories();
  lowpass.clearMemories();
  highpass.clearMemories();
}

void QLMMultiDelay::clearTapMemory() noexcept {
  taps.clearMemory();
  reverse.clearMemory();
}

void QLMMultiDelay::setLowpass(double normalisedFrequency) noexcept {
  lowpass.setDirectFrequency(normalisedFrequency);
  const bool isActive = normalisedFrequency < kLowpassOffHz / sampleRate;
  // BACKWARD runs the low-pass all the time; elsewhere what it held has long gone by.
  if (isActive && !lowpassActive && mode != kBackward) lowpass.reset();
  lowpassActive = isActive;
}

void QLMMultiDelay::setHighpass(double normalisedFrequency) noexcept {
  highpass.setDirectFrequency(normalisedFrequency);
  const bool isActive = normalisedFrequency > kHighpassOffHz / sampleRate;
  if (isActive && !highpassActive) highpass.reset();
  highpassActive = isActive;
}

QLMMultiDelay::TimeRange QLMMultiDelay::timeRange() const noexcept {
  TimeRange range;
  range.shortest = static_cast<float>(minDelay);
  range.longest = static_cast<float>(ring.length() - 1);
  const bool hasTapsSource = isTapped() && modSource[kTapsTimeControl] != nullptr;
  range.swing = hasTapsSource ? modulationOf(kTapsTimeControl) * sampleRate
                              : modulationOf(kDelayTimeControl) * channelSign;
  return range;
}

/// The delay with its modulation, held within what the ring can give. It is a float: times are
/// compared and glided to in steps of it.
inline float QLMMultiDelay::TimeRange::targetOf(double delay) const noexcept {
  const float target = static_cast<float>(static_cast<float>(delay) + swing);
  return target > shortest ? std::min(target, longest) : shortest;  // NaN becomes the shortest
}

const double* QLMMultiDelay::readTap(double delay, [[maybe_unused]] int n, int tap) noexcept {
  assert(n == kVectorLength);
  (this->*renderer)({targetOf(delay), tapWithin(tap), singleOutput});
  return singleOutput;
}

// Two delays with a time each. NOLINTNEXTLINE(readability-function-size)
void QLMMultiDelay::readTapPair(QLMMultiDelay& left, double delayL, QLMMultiDelay& right,
                                double delayR, int n) noexcept {
  if (!left.readsTaps() || !right.readsTaps()) {
    left.readTap(delayL, n, 0);
    right.readTap(delayR, n, 0);
    return;
  }
  const bool isCalm =
      TapReader::readPair(left.taps, left.ring, {left.targetOf(delayL), 0, left.singleOutput},
                          right.taps, right.ring, {right.targetOf(delayR), 0, right.singleOutput});
  for (QLMMultiDelay* delay : {&left, &right}) {
    if (!isCalm) delay->dropRunaway(delay->singleOutput);
    if (!delay->isTapped()) delay->filterEchoes(delay->singleOutput);
  }
}

void QLMMultiDelay::readTaps(TapRead* reads, int count, [[maybe_unused]] int n) noexcept {
  assert(n == kVectorLength && count >= 0 && count <= kTapCount);
  TapReader::Read planned[kTapCount];
  count = std::clamp(count, 0, kTapCount);
  const TimeRange range = timeRange();
  for (int k = 0; k < count; ++k) {
    planned[k].delaySamples = range.targetOf(reads[k].delay);
    planned[k].tap = tapWithin(reads[k].tap);
    planned[k].output = tapOutputs[k];
    reads[k].samples = tapOutputs[k];
  }
  if (!isTapped()) {
    for (int k = 0; k < count; ++k) (this->*renderer)(planned[k]);
  } else if (!taps.readMany(ring, planned, count)) {
    for (int k = 0; k < count; ++k) dropRunaway(tapOutputs[k]);
  }
}

const double* QLMMultiDelay::readRaw(double delay, int n) noexcept {
  n = lengthWithin(n);
  const double longest = ring.length() - n;
  const int back = delay > 0.0 ? static_cast<int>(std::min(delay, longest)) : 0;
  return ring.spanBehind(back, n, rawScratch);
}

void QLMMultiDelay::renderForward(const TapReader::Read& read) noexcept {
  renderTapped(read);
  filterEchoes(read.output);
}

void QLMMultiDelay::renderTapped(const TapReader::Read& read) noexcept {
  if (!taps.read(ring, read)) dropRunaway(read.output);
}

/// The cycle shortens with the grain position by a square law.
void QLMMultiDelay::renderBackward(const TapReader::Read& read) noexcept {
  const double share = 1.0 - positionNow();
  const double cycle = (read.delaySamples - minDelay) * share * share + minDelay;
  reverse.read(ring, cycle, read.output);
  dropRunaway(read.output);
  lowpass.process(read.output, nullptr);
}

void QLMMultiDelay::renderGrain(const TapReader::Read& read) noexcept {
  grains.read(ring, {rateNow(), sizeNow(), positionNow(), read.delaySamples}, read.output);
  dropRunaway(read.output);
}

void QLMMultiDelay::filterEchoes(double* samples) noexcept {
  if (highpassActive) highpass.process(samples, nullptr);
  if (lowpassActive) lowpass.process(samples, nullptr);
}

/// What is read is at most 1e8 when it was written, but interpolators may add to that.
void QLMMultiDelay::dropRunaway(double* samples) noexcept {
  if (isSaneVector(samples)) return;
  clearMemories();
  std::fill_n(samples, kVectorLength, 0.0);
}

namespace {

/// Within low..high; what is no number becomes low, so that no position is lost to it.
double held(double x, double low, double high) noexcept {
  return x >= low ? std::min(x, high) : low;
}

}  // namespace

double QLMMultiDelay::positionNow() const noexcept {
  if (modSource[kGrainPositionControl] == nullptr) return grainPositionBase;
  return held(grainPositionBase + modulationOf(kGrainPositionControl), 0.0, 1.0);
}

/// Modulation cannot leave the two octaves either side; the knob itself does not.
double QLMMultiDelay::rateNow() noexcept {
  double halfOctaves = grainSpeedBase;
  if (modSource[kGrainSpeedControl] != nullptr) {
    halfOctaves = held(halfOctaves + modulationOf(kGrainSpeedControl), -1.0, 1.0);
  }
  const double octaves = 2.0 * halfOctaves;
  if (octaves != grainRateExponent) {
    grainRateExponent = octaves;
    grainRate = std::exp2(octaves);
  }
  return grainRate;
}

double QLMMultiDelay::sizeNow() const noexcept {
  double ms = grainSizeMs;
  if (modSource[kGrainSizeControl] != nullptr) {
    const double swing = held(modulationOf(kGrainSizeControl), -1.0, 1.0);
    ms = held(ms + swing * kMaxGrainMs, kMinGrainMs, kMaxGrainMs);
  }
  return sampleRate * 0.001 * ms;
}

}  // namespace orvantesco
