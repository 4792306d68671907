#include "fx/Comb.h"

#include <algorithm>
#include <cmath>

#include "fx/Kernels.h"
#include "fx/RateValues.h"
#include "fx/kernels/ShapeLoops.h"

namespace orvantesco {

namespace {

constexpr double kLowestHz = 1.0;
constexpr double kHighestHz = 10000.0;
constexpr double kDecades = 4.0;
/// Negative: what comes round turns over, so the loop's first peak is an odd one.
constexpr double kMostFeedback = -0.5;
constexpr double kClipLevel = 1.66;

}  // namespace

Comb::Comb(bool isRight)
    : DSPShell(isRight),
      lowpass(isRight, kLowpassFilter, 1),
      highpass(isRight, kHighpassFilter, 1) {
  delay.resize(kLongestDelay);
  fastSmoother.setBlockTime(10.0);
}

void Comb::setRate(double rateHz) noexcept {
  if (!std::isfinite(rateHz)) return;
  frequency = rateHz;
  controlDirty = true;
}

void Comb::setParam(int index, double value) noexcept {
  if (!std::isfinite(value)) return;
  controlDirty = true;
  switch (index) {
    case 0:
      setRate(std::pow(10.0, kDecades * value));
      break;
    case 1:
      feedbackKnob = value;
      break;
    case 2:
      highpassKnob = value;
      break;
    case 3:
      lowpassKnob = value;
      break;
    case 4:
      spread = value * channelSign;
      break;
    default:
      break;
  }
}

void Comb::modSourceChanged(int /*index*/, const double* /*source*/) noexcept {
  controlDirty = true;
}

void Comb::updateDelay() noexcept {
  double decades = spread;
  if (hasSource(0)) decades += modulationOf(0);
  if (hasSource(4)) decades += modulationOf(4) * channelSign;
  const double hz = std::clamp(std::pow(10.0, decades) * frequency, kLowestHz, kHighestHz);
  delaySamples = nyquist / hz;
}

void Comb::updateFeedback() noexcept {
  feedback = kMostFeedback * std::clamp(feedbackKnob + modulationOf(1), 0.0, 1.0);
}

void Comb::refresh() noexcept {
  if (controlDirty || hasSource(0) || hasSource(4)) updateDelay();
  if (controlDirty || hasSource(1)) updateFeedback();
  if (controlDirty || hasSource(2)) highpass.setCutoff(highpassKnob + modulationOf(2));
  if (controlDirty || hasSource(3)) lowpass.setCutoff(lowpassKnob + modulationOf(3));
  controlDirty = false;
}

void Comb::reset() noexcept {
  DSPShell::reset();
  std::fill_n(fedBack, kVectorLength, 0.0);
  delay.clear();
  lowpass.reset();
  highpass.reset();
}

void Comb::prepare() noexcept {
  DSPShell::prepare();
  lowpass.prepare();
  highpass.prepare();
}

void Comb::rateChanged() noexcept {
  DSPShell::rateChanged();
  delay.rateChanged();
  lowpass.rateChanged();
  highpass.rateChanged();
}

void Comb::clearMemories() noexcept {
  DSPShell::clearMemories();
  delay.rateChanged();
  lowpass.clearMemories();
  highpass.clearMemories();
}

void Comb::processBlock() noexcept {
  refresh();
  vecAddInPlace(input, fedBack, blockSize);
  delay.write(fedBack, blockSize);
  double* wet = scratchA;
  vecCopy(delay.readModulated(fastSmoother.tick(delaySamples), blockSize), wet, blockSize);
  lowpass.process(wet, nullptr);
  highpass.process(wet, nullptr);
  vecAdd(wet, input, output, blockSize);
  vecMulConst(output, feedback, fedBack, blockSize);
  kernels::shapeLoops().tanh(fedBack, fedBack);
  vecMulConstInPlace(kClipLevel, fedBack, blockSize);
}

}  // namespace orvantesco
