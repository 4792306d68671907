#include "fx/IppBiquad.h"

#include <algorithm>
#include <cmath>

#include "fx/Truncated.h"
#include "fx/VowelTable.h"

namespace orvantesco {

namespace {

int nearest(double value) noexcept { return truncated(std::rint(value)); }

constexpr double kVowelGain = 4.0;
/// Far above any gain that is sent, and far below what makes taps overflow.
constexpr double kLargestGain = 10.0;

}  // namespace

IppBiquad::IppBiquad(bool isRight, int filterMode, int filterStages, double driveDb)
    : QLMFilter(isRight),
      stages(std::clamp(filterStages, 1, BiquadCascade::kMaxSections)),
      maxDriveDb(static_cast<float>(driveDb)),
      slopeControl(filterMode == kSlopeFilter) {
  qOffset = 1.45;
  qScale = 8.0;
  IppBiquad::setMode(filterMode);
}

void IppBiquad::reset() noexcept {
  QLMFilter::reset();
  cascade.clear();
  direct.clear();
  controlDirty = true;
}

void IppBiquad::rateChanged() noexcept {
  QLMFilter::rateChanged();
  outputGain = 1.0F;
}

IppBiquad::ModeTraits IppBiquad::traitsOf(int filterMode) const noexcept {
  switch (filterMode) {
    case kHighpassFilter:
      return {Formula::highpass};
    case kBandpassFilter:
      return {Formula::bandpass};
    case kPeakFilter:
    case kShaperPeakFilter:
      return {Formula::peak};
    case kSoftLowpassFilter:
      return {Formula::chebyshevLowpass, 2};
    case kSteepLowpassFilter:
      return {Formula::chebyshevLowpass, 4};
    case kSoftHighpassFilter:
      return {Formula::chebyshevHighpass, 2};
    case kSteepHighpassFilter:
      return {Formula::chebyshevHighpass, 4};
    case kAllpassFilter:
      return {Formula::allpass};
    case kVowelFilter:
      return {Formula::vowel, kFormantCount};
    case kSplitFilter:
      return {channelSign > 0.0 ? Formula::lowpass : Formula::highpass};
    case kLowShelfFilter:
      return {Formula::lowShelf};
    case kHighShelfFilter:
      return {Formula::highShelf};
    default:
      return {};
  }
}

void IppBiquad::setMode(int newMode) noexcept {
  if (newMode == mode) return;
  mode = newMode;
  frequencyIsNormalised = true;
  controlDirty = true;
  traits = traitsOf(newMode);
  if (traits.forcedStages > 0) setStageCount(traits.forcedStages);
  if (newMode == kVowelFilter) enterVowelMode();
}

bool IppBiquad::isDirect() const noexcept {
  return traits.formula == Formula::chebyshevLowpass ||
         traits.formula == Formula::chebyshevHighpass;
}

void IppBiquad::enterVowelMode() noexcept {
  selectVowelSet(0);
  gain = kVowelGain;
}

void IppBiquad::setStageCount(int count) noexcept {
  const int held = std::clamp(count, 1, BiquadCascade::kMaxSections);
  if (held == stages) return;
  stages = held;
  reset();
}

void IppBiquad::setStages(double normalised) noexcept {
  if (std::isnan(normalised)) return;
  setStageCount(truncated(2.0 * (normalised + 1.0)));
}

bool IppBiquad::gainIsParameter() const noexcept {
  return mode == kPeakFilter || mode == kVowelFilter;
}

bool IppBiquad::hasOutputGain() const noexcept {
  return gainIsParameter() || mode == kShaperPeakFilter;
}

void IppBiquad::setParam(int index, double value) noexcept {
  if (!std::isfinite(value)) return;
  switch (index) {
    case 0:
      setCutoff(value);
      break;
    case 1:
      setSlopeOrResonance(value);
      break;
    case 2:
      setSpread(value);
      break;
    case 3:
      setGainOrMode(value);
      break;
    case 4:
      if (!gainIsParameter()) setMix(value);
      setDim(value);
      break;
    default:
      break;
  }
}

void IppBiquad::setSlopeOrResonance(double value) noexcept {
  if (slopeControl) {
    setStageCount(nearest(3.0 * value) + 1);
    return;
  }
  if (mode == kVowelFilter) {
    selectVowelSet(nearest(3.0 * value));
    controlDirty = true;
  }
  setResonance(std::clamp(static_cast<float>(value), 0.0F, 1.0F));
}

void IppBiquad::setGainOrMode(double value) noexcept {
  if (!gainIsParameter()) setMode(truncated(value));
  setGain(value);
}

void IppBiquad::setGain(double value) noexcept {
  if (std::isnan(value)) return;
  const double held = std::clamp(value, -kLargestGain, kLargestGain);
  gain = mode == kPeakFilter ? 2.0 * held - 1.0 : held;
}

void IppBiquad::setDirectFrequency(double fraction) noexcept {
  if (std::isnan(fraction)) return;
  frequencyIsNormalised = false;
  cutoff = std::clamp(fraction, kCornerFloor, 0.5);
}

void IppBiquad::setDim(double amount) noexcept {
  dim = static_cast<float>(amount);
  controlDirty = true;
}

void IppBiquad::processBlock() noexcept {
  if (mode == kFilterOff) return;
  const bool isControlTick = everyNthBlock(2);
  if (isControlTick || controlDirty) updateControls();
  if (isDirect()) {
    direct.process(input, output, blockSize);
  } else {
    cascade.process(input, output);
  }
  if (hasOutputGain()) vecMulConstInPlace(gainBehind(), output, blockSize);
}

}  // namespace orvantesco
