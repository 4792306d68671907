#include "fx/RingMod.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "fx/RateValues.h"
#include "fx/Runaway.h"
#include "fx/kernels/SinCos.h"

namespace orvantesco {

namespace {

/// The phase runs from 0 to 2 in each cycle.
constexpr double kCycle = 2.0;
constexpr double kWanderBlockMs = 5.0;
constexpr double kWanderDepth = 0.75;
constexpr double kLargestShape = 0.9;

constexpr double kLowestHz = 0.1;
constexpr double kSpanHz = 4999.9;
/// Halves the knob ahead of its fourth power, so the range that sounds ends at 312.6 Hz.
constexpr double kKnobShare = 0.5;

}  // namespace

// The frequency glides by its smoother's per-sample time of 5 ms, ticked once per vector: 160 ms.
RingMod::RingMod(bool isRight, const RingMod* left) noexcept : DSPShell(isRight), partner(left) {
  spreadSmoother.setBlockTime(kWanderBlockMs);
}

void RingMod::setParam(int index, double value) noexcept {
  if (!isSane(value)) return;
  switch (index) {
    case 0:
      setRate(value);
      break;
    case 1:
      pulseShape = value;
      break;
    case 2:
      wanderWidth = value;
      break;
    case 3:
      spread = std::fabs(value) * value * channelSign;
      break;
    case 4:
      mix = value;
      break;
    default:
      break;
  }
}

void RingMod::updateIncrement() noexcept {
  const double modulation = modulationOf(0) + modulationOf(3) * channelSign;
  const double knob = std::clamp(spread + rate + saneOrZero(modulation), 0.0, 1.0) * kKnobShare;
  frequency = knob * knob * knob * knob * kSpanHz + kLowestHz;
  increment = kCycle * frequency * inverseSampleRate;
}

void RingMod::rateChanged() noexcept {
  DSPShell::rateChanged();
  frequencySmoother.rateChanged();
  spreadSmoother.rateChanged();
  phase = 0.0;
  lfoPhase = 0.0;
}

RingMod::Course RingMod::course() const noexcept {
  return {phase, frequencySmoother.state(), lfoPhase};
}

/// True for a right channel that ought to run with its left one, and does not: spread has come
/// back to 0, or only one of the two channels was at work for a while. A partner that stands
/// still is nothing to go by.
bool RingMod::noticeApart() noexcept {
  if (partner == nullptr) return false;
  const bool partnerRuns = partner->vectorCount != partnerCount;
  partnerCount = partner->vectorCount;
  return partnerRuns && !isSpread() && course() != partner->courseBefore;
}

void RingMod::wander() noexcept {
  lfoPhase += kVectorLength * inverseSampleRate;
  if (lfoPhase >= kCycle) lfoPhase -= kCycle;
  const double swing = kWanderDepth * std::sin(std::numbers::pi * lfoPhase) * wanderWidth;
  offset = spreadSmoother.tick(swing) * channelSign;
}

void RingMod::sweep(double step) noexcept {
  for (int i = 0; i < kVectorLength; ++i) {
    phases[i] = (phase + step * (i + 1) + offset) * std::numbers::pi;
  }
}

void RingMod::advance() noexcept {
  const double step = frequencySmoother.tick(increment);
  sweep(step);
  phase += step * kVectorLength;
  if (phase >= kCycle) phase -= kCycle;
}

/// Glides onto the left channel within this vector, to where that one is at its end, and takes
/// its pace over, so that from then on both compute the same numbers. It goes by the difference of
/// the two phases as they stand: where the left one has just begun a new cycle, that is almost a
/// whole cycle backwards, a short chirp when the spread returns to 0. Kept as users know it.
void RingMod::joinPartner() noexcept {
  const Course target = partner->course();
  sweep((target.phase - phase) / kVectorLength);
  phase = target.phase;
  frequencySmoother.snap(target.increment);
}

void RingMod::modulate() noexcept {
  const double a = kLargestShape * std::clamp(pulseShape + saneOrZero(modulationOf(1)), 0.0, 1.0);
  const double squared = a * a;
  const double gain = std::sqrt(1.0 - squared);
  alignas(32) double sine[kVectorLength];
  alignas(32) double cosine[kVectorLength];
  vecSinCos(phases, sine, cosine);
  for (int i = 0; i < kVectorLength; ++i) {
    const double oscillator = sine[i] / ((1.0 + squared) - 2.0 * a * cosine[i]) * gain;
    output[i] = oscillator * input[i];
  }
}

void RingMod::processBlock() noexcept {
  updateIncrement();
  const bool joins = noticeApart();
  courseBefore = course();
  if (joins) lfoPhase = partner->courseBefore.wanderPhase;
  wander();
  if (joins) {
    joinPartner();
  } else {
    advance();
  }
  ++vectorCount;
  modulate();
}

}  // namespace orvantesco
