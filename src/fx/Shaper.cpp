#include "fx/Shaper.h"

#include <algorithm>
#include <cmath>

#include "fx/Kernels.h"
#include "fx/Truncated.h"

namespace orvantesco {

namespace {

constexpr int kControlOfNothing = -1;
constexpr double kShapeQOffset = 0.05;
constexpr double kShapeQScale = 4.0;
/// The filter's share never falls to nothing in "WAVE SHAPE".
constexpr double kLeastWet = 0.1;
/// From here on the last of the dry signal is left away.
constexpr double kWhollyWet = 0.99;
constexpr float kPeakResonance = 0.4F;
constexpr double kNoiseLevel = 0.5;
/// A smoothed knob comes to rest this close to 0, where the eighth root would still be a tenth.
constexpr double kRestOfAmount = 1e-9;
/// The angle of the even curves at full scale, in units of pi.
constexpr double kAsymmetric1 = 1.5;
constexpr double kAsymmetric2 = 9.5;

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

void Shaper::processBlock() noexcept {
  if (type == kShaperWaveShape) return processWaveShape();
  followAmount();
  const double* gain = controls.gainVector();
  switch (type) {
    case kShaperTube:
      return WaveFunctions::tube({input, gain}, output);
    case kShaperSaturate:
    case kShaperSaturateFeedback:
      return waves.saturate({filteredInput(), gain, controls.trimVector()}, output);
    case kShaperRectify:
    case kShaperRectifyFeedback:
      return waves.heldSoftClip({filteredInput(), gain, controls.trimVector()}, output);
    case kShaperDestroy:
    case kShaperDestroyFeedback:
    case kShaperNoise:
    case kShaperNoiseFeedback:
      return runFold();
    case kShaperLofi:
    case kShaperLofiFeedback:
      waves.sampleAndHold({input, gain}, holdRate, output);
      return filterOutput();
    default:
      return DSPShell::processBlock();
  }
}

void Shaper::followAmount() noexcept {
  const double now = fastSmoother.tick(amount);
  if (modSource[0] != nullptr) {
    controls.modulate(modSource[0], *modDepth[0], now);
  } else {
    if (controls.holds(now)) return;
    controls.setSteady(now);
  }
  deriveControls();
}

void Shaper::deriveControls() noexcept {
  switch (type) {
    case kShaperSaturate:
    case kShaperSaturateFeedback:
      return controls.deriveSaturate();
    case kShaperRectify:
    case kShaperRectifyFeedback:
      return controls.deriveRectify();
    case kShaperDestroy:
    case kShaperDestroyFeedback:
      return controls.deriveDestroy();
    case kShaperNoise:
    case kShaperNoiseFeedback:
      return controls.deriveNoise();
    case kShaperLofi:
    case kShaperLofiFeedback:
      holdRate = controls.firstAmount() < kRestOfAmount ? 1.0 : holdRateOf(controls.firstAmount());
      return controls.deriveLofi();
    default:
      return;
  }
}

const double* Shaper::filteredInput() noexcept {
  if (filterMode == kFilterOff) return input;
  vecCopy(input, scratchA, blockSize);
  filter.process(scratchA, nullptr);
  return scratchA;
}

void Shaper::filterOutput() noexcept {
  if (filterMode != kFilterOff) filter.process(output, nullptr);
}

// "DESTROY" folds around a point beside 0, and what it makes of silence is an offset.
void Shaper::runFold() noexcept {
  WaveFunctions::fold({input, controls.gainVector(), nullptr, controls.thresholdVector()}, output);
  if (isNoise) {
    vecMulConstInPlace(kNoiseLevel, output, blockSize);
  } else {
    offsetRemover.process(output, blockSize);
  }
  filterOutput();
}

void Shaper::processWaveShape() noexcept {
  vecCopy(input, scratchA, blockSize);
  filter.process(scratchA, nullptr);
  const double share = slowSmoother.tick(wet);
  if (share < kWhollyWet) {
    vecMulConstInPlace(share, scratchA, blockSize);
    vecAddProductConst(input, 1.0 - share, scratchA, blockSize);
  }
  runShape();
}

// The curves run at the gain and trim of a shaper without an amount, 1.
void Shaper::runShape() noexcept {
  const WaveFunctions::Input in{scratchA, controls.gainVector(), controls.trimVector()};
  switch (shapeMode) {
    case kShaperSaturate:
      return waves.saturate(in, output);
    case kShaperTube:
      return WaveFunctions::tube(in, output);
    case kShaperRectify:
      return waves.softClip(in, output);
    case kShaperSine1:
      return WaveFunctions::sine(scratchA, 1.0, output);
    case kShaperSine2:
      return WaveFunctions::sine(scratchA, 3.0, output);
    case kShaperSine3:
      return WaveFunctions::sine(scratchA, 5.0, output);
    case kShaperAsymmetric1:
    case kShaperAsymmetric2:
      WaveFunctions::cosine(scratchA, shapeMode == kShaperAsymmetric1 ? kAsymmetric1 : kAsymmetric2,
                            output);
      return offsetRemover.process(output, blockSize);
    default:
      vecCopy(scratchA, output, blockSize);
  }
}

}  // namespace orvantesco
