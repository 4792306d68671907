#include "master/EqBand.h"

#include <algorithm>
#include <cmath>

#include "fx/RateValues.h"

namespace orvantesco {

namespace {

/// Twice the quality of all bands, as a filter without resonance has it.
constexpr double kWidthDivisor = 1.45;
/// Far above any gain that is sent, and far below what makes taps overflow.
constexpr double kLargestGain = 10.0;

}  // namespace

EqBand::EqBand(Shape bandShape, double hz) noexcept : shape(bandShape) { setFrequency(hz); }

void EqBand::setGain(double value) noexcept {
  const double held = std::clamp(value, -kLargestGain, kLargestGain);
  gain = shape == Shape::peak ? 2.0 * held - 1.0 : held;
}

void EqBand::setFrequency(double hz) noexcept {
  frequencyHz = hz;
  setCutoff(hz * inverseSampleRate);
}

void EqBand::reset() noexcept {
  QLMFilter::reset();
  section.p = section.q = 0.0;
  controlDirty = true;
}

void EqBand::rateChanged() noexcept {
  QLMFilter::rateChanged();
  setFrequency(frequencyHz);
}

BiquadSection EqBand::designed() const noexcept {
  const SectionShape corner = shapeSection(cutoffNow, kWidthDivisor);
  switch (shape) {
    case Shape::lowShelf:
      return lowShelfSection(corner, gainNow);
    case Shape::highShelf:
      return highShelfSection(corner, gainNow);
    default:
      return peakSection(corner, std::exp(kMaxDriveDb * gainNow / 2.0 * kDbToNepers));
  }
}

void EqBand::followControls() noexcept {
  const bool isControlTick = everyNthBlock(2);
  if (!isControlTick && !controlDirty) return;
  cutoffNow = smoothedCutoff();
  gainNow = gainSmoother.tick(gain);
  if (!controlsChanged() && !controlDirty) return;
  controlDirty = false;
  const BiquadSection taps = designed();
  section.b0 = taps.b0 / taps.a0;
  section.a1 = taps.a1 / taps.a0;
  section.a2 = taps.a2 / taps.a0;
  section.c1 = taps.b1 / taps.a0 - section.a1 * section.b0;
  section.c2 = taps.b2 / taps.a0 - section.a2 * section.b0;
}

}  // namespace orvantesco
