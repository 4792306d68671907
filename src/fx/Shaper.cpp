#include "fx/Shaper.h"

#include <algorithm>
#include <cmath>

#include "fx/Truncated.h"

namespace orvantesco {

namespace {

constexpr int kControlOfNothing = -1;
constexpr double kShapeQOffset = 0.05;
constexpr double kShapeQScale = 4.0;
/// The filter's share never falls to nothing in "WAVE SHAPE".
constexpr double kLeastWet = 0.1;
constexpr float kPeakResonance = 0.4F;

FilterMode firstModeOf(int typeId) noexcept {
  return typeId == kShaperLofi ? kHighpassFilter : kLowpassFilter;
}

bool isFeedbackType(int typeId) noexcept {
  switch (typeId) {
    case kShaperSaturateFeedback:
    case kShaperRectifyFeedback:
    case kShaperDestroyFeedback:
    case kShaperNoiseFeedback:
    case kShaperLofiFeedback:
      return true;
    default:
      return false;
  }
}

}  // namespace

Shaper::Shaper(bool isRight, int typeId, double initialAmount)
    : DSPShell(isRight),
      amount(std::clamp(initialAmount, 0.0, 1.0)),
      filterMode(firstModeOf(typeId)),
      filter(isRight, filterMode, 1) {
  Shaper::setType(typeId);
}

void Shaper::setType(int typeId) noexcept {
  type = shapeMode = typeId;
  isNoise = typeId == kShaperNoise || typeId == kShaperNoiseFeedback;
  modeSelectable = isFeedbackType(typeId);
  if (modeSelectable) filter.setResonance(0.0F);
  if (typeId != kShaperWaveShape) return;
  setFilterMode(kShaperPeakFilter);
  filter.setQOffset(kShapeQOffset);
  filter.setQScale(kShapeQScale);
  filter.setDim(0.0);
}

void Shaper::setFilterMode(int newMode) noexcept {
  filterMode = newMode;
  filter.setMode(newMode);
}

// The share of the filter goes back to full here and follows its knob again only when that moves:
// a "WAVE SHAPE" that was just switched on or loaded is filtered a little more than one whose gain
// was turned by hand. Sounds are stored by ear, so it stays.
void Shaper::reset() noexcept {
  DSPShell::reset();
  wet = 1.0;
  filter.reset();
  offsetRemover.reset();
}

void Shaper::prepare() noexcept {
  DSPShell::prepare();
  filter.prepare();
}

void Shaper::onStateCleared() noexcept { waves.clearAll(); }

void Shaper::dropCurveState() noexcept {
  controls.clear();
  waves.clearAll();
}

void Shaper::rateChanged() noexcept {
  DSPShell::rateChanged();
  filter.rateChanged();
  dropCurveState();
}

void Shaper::clearMemories() noexcept {
  const double share = wet;  // an accident of the signal turns no knob
  DSPShell::clearMemories();
  wet = share;
  filter.clearMemories();
  offsetRemover.clearMemories();
  dropCurveState();
}

void Shaper::setParam(int index, double value) noexcept {
  if (!std::isfinite(value)) return;
  if (type == kShaperWaveShape) return setShapeParam(index, value);
  switch (index) {
    case 0:
      amount = std::clamp(value, 0.0, 1.0);
      break;
    case 1:
      filter.setCutoff(value);
      break;
    case 2:
      setFilterControl(value);
      break;
    case 3:
      filter.setParam(2, value);
      break;
    case 4:
      setMix(value);
      break;
    default:
      break;
  }
}

void Shaper::setShapeParam(int index, double value) noexcept {
  switch (index) {
    case 0:
      setShape(truncated(value));
      break;
    case 1:
      filter.setGain(static_cast<double>(static_cast<float>(value)));
      wet = std::min(value + kLeastWet, 1.0);
      break;
    case 2:
      filter.setCutoff(value);
      break;
    case 3:
      filter.setResonance(static_cast<float>(value * value));
      break;
    case 4:
      filter.setParam(2, value);
      break;
    default:
      break;
  }
}

void Shaper::setShape(int newShape) noexcept {
  waves.clear();
  if (newShape != shapeMode) offsetRemover.reset();
  shapeMode = newShape;
}

// The knob reaches twice the resonance that a filter effect has.
void Shaper::setFilterControl(double value) noexcept {
  if (!modeSelectable) return filter.setResonance(static_cast<float>(2.0 * value));
  const int newMode = truncated(value);
  if (newMode == filterMode) return;
  setFilterMode(newMode);
  const bool isPeak = newMode == kPeakFilter || newMode == kShaperPeakFilter;
  filter.setResonance(isPeak ? kPeakResonance : 0.0F);
}

/// Which control of the filter a control of the shaper modulates. The source of control 2 lands on
/// the filter's spread, so it pulls the channels apart where its knob sharpens the corner.
int Shaper::filterControlOf(int index) const noexcept {
  if (type == kShaperWaveShape) return index == 2 ? 0 : kControlOfNothing;
  if (index == 1) return 0;
  return index == 2 ? 2 : kControlOfNothing;
}

void Shaper::modSourceChanged(int index, const double* source) noexcept {
  const int control = filterControlOf(index);
  if (control != kControlOfNothing) filter.setModSource(control, source);
}

void Shaper::modDepthChanged(int index, const double* depth) noexcept {
  const int control = filterControlOf(index);
  if (control != kControlOfNothing) filter.setModDepth(control, depth);
}

}  // namespace orvantesco
