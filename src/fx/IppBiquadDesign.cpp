#include <algorithm>
#include <cmath>
#include <numbers>

#include "fx/FrequencyCurve.h"
#include "fx/IppBiquad.h"
#include "fx/RateValues.h"
#include "fx/VowelTable.h"

// From controls to taps, at every second vector at most.

namespace orvantesco {

namespace {

double gainOfDb(double db) noexcept { return std::exp(db * kDbToNepers); }

}  // namespace

double IppBiquad::modulatedGain() const noexcept {
  if (modSource[3] == nullptr) return gain;
  const double lowest = mode == kPeakFilter ? -1.0 : 0.0;
  return std::clamp(gain + modulationOf(3), lowest, 1.0);
}

void IppBiquad::updateControls() noexcept {
  cutoffNow = smoothedCutoff();
  resonanceNow = resonanceSmoother.tick(modulatedResonance());
  gainNow = gainSmoother.tick(modulatedGain());

  const double cutoffBefore = cutoffLast;
  if (!controlsChanged() && !controlDirty) return;
  dampSweep(cutoffBefore);
  if (frequencyIsNormalised && mode != kVowelFilter) {
    cutoffNow = curveFrequencyHz(cutoffNow) * inverseSampleRate;
  }
  redesign();
  controlDirty = false;
}

// A direct form that sweeps fast rings at its resonance, or worse; so the ripple falls with the
// square of the speed.
void IppBiquad::dampSweep(double cutoffBefore) noexcept {
  const double step = (cutoffBefore - cutoffNow) * 5.0;
  const double speed = step * step;
  sweepDamping = speed == 0.0 ? 1.0 : std::min(1.0, 0.01 / speed);
}

void IppBiquad::redesign() noexcept {
  switch (traits.formula) {
    case Formula::chebyshevLowpass:
      return designChebyshev(FilterBand::lowpass);
    case Formula::chebyshevHighpass:
      return designChebyshev(FilterBand::highpass);
    case Formula::vowel:
      return designVowel();
    default:
      return designSections();
  }
}

void IppBiquad::designSections() noexcept {
  const SectionShape shape = shapeSection(cutoffNow, qScale * resonanceNow + qOffset);
  const BiquadSection equal = section(shape);
  cascade.design(&equal, 1, stages);
}

// One peak for each formant; sine and cosine as they are, and a fixed width.
void IppBiquad::designVowel() noexcept {
  const double db = static_cast<double>(maxDriveDb) * gainNow;
  const auto amount = static_cast<double>(dim);
  outputGain = static_cast<float>(amount / gainOfDb(db) + (1.0 - amount));
  const Vowel vowel = vowelAt(cutoffNow);
  BiquadSection sections[kFormantCount];
  for (int i = 0; i < kFormantCount; ++i) {
    const double omega = 2.0 * std::numbers::pi * vowel.formantHz[i] * inverseSampleRate;
    sections[i] = peakSection({std::cos(omega), std::sin(omega) * 0.1}, gainOfDb(db * 0.5));
  }
  cascade.design(sections, kFormantCount, stages);
}

void IppBiquad::designChebyshev(FilterBand band) noexcept {
  const double rippleDb = (resonanceNow * 14.0 + 1.0) * sweepDamping;
  const DirectDesign design{kChebyshev1, band, stages, holdCorner(cutoffNow), rippleDb};
  direct.design(design);
}

BiquadSection IppBiquad::section(const SectionShape& shape) noexcept {
  switch (traits.formula) {
    case Formula::highpass:
      return highpassSection(shape);
    case Formula::bandpass:
      return bandpassSection(shape);
    case Formula::allpass:
      return allpassSection(shape);
    case Formula::peak:
      return peak(shape);
    case Formula::lowShelf:
      return lowShelfSection(shape, gainNow);
    case Formula::highShelf:
      return highShelfSection(shape, gainNow);
    default:
      return lowpassSection(shape);
  }
}

BiquadSection IppBiquad::peak(const SectionShape& shape) noexcept {
  const double db = static_cast<double>(maxDriveDb) * gainNow;
  const auto amount = static_cast<double>(dim);
  outputGain = static_cast<float>(std::min(1.0, amount / gainOfDb(db) + (1.0 - amount)));
  return peakSection(shape, gainOfDb(db / 2.0 / stages));
}

}  // namespace orvantesco
