#include "fx/HilbertShifter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "fx/Runaway.h"
#include "fx/kernels/SinCos.h"

namespace orvantesco {

namespace {

constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr double kIncrementBlockMs = 200.0;
constexpr double kFeedbackBlockMs = 500.0;
constexpr double kCutoffBlockMs = 300.0;

/// Feedback at the knob's end. Negative, and small enough for a loop that never builds up.
constexpr double kFeedbackEnd = -0.7;

/// Lowest corner of the high-pass, radians per sample: 14 Hz at 44100.
constexpr double kLeastCutoff = 0.002;
constexpr double kHighpassWidth = 0.5882;
constexpr int kHighpassSections = 6;

}  // namespace

HilbertShifter::HilbertShifter(bool isRight) noexcept : DSPShell(isRight) {
  incrementSmoother.setBlockTime(kIncrementBlockMs);
  feedbackSmoother.setBlockTime(kFeedbackBlockMs);
  slowSmoother.setBlockTime(kCutoffBlockMs);
}

void HilbertShifter::setParam(int index, double value) noexcept {
  if (!isSane(value)) return;
  switch (index) {
    case 0:
      frequency = value;
      break;
    case 1:
      scale = value;
      break;
    case 2:
      feedbackKnob = value;
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

void HilbertShifter::reset() noexcept {
  DSPShell::reset();
  highpass.clear();
  pair.clear();
  oneSampleMemory = 0.0;
  std::fill_n(feedback, kVectorLength, 0.0);
}

void HilbertShifter::restoreMotion() noexcept {
  phase = 0.0;
  lastCutoff = -1.0;
}

void HilbertShifter::rateChanged() noexcept {
  DSPShell::rateChanged();
  incrementSmoother.rateChanged();
  feedbackSmoother.rateChanged();
  restoreMotion();
}

void HilbertShifter::clearMemories() noexcept {
  DSPShell::clearMemories();
  incrementSmoother.snap(0.0);
  feedbackSmoother.snap(0.0);
  restoreMotion();
}

void HilbertShifter::updateIncrement() noexcept {
  const double f = std::clamp(frequency + 0.5 * saneOrZero(modulationOf(0)), -1.0, 1.0);
  const double s = std::clamp(spread + channelSign * saneOrZero(modulationOf(3)), -1.0, 1.0);
  setRate((2.0 * f - 1.0 + s) * scale);
  incrementTarget = -kTwoPi * std::clamp(ratio, -1.0, 1.0);
}

/// One vector late, so that a shifted sound comes round every 32 samples, shifted once more.
void HilbertShifter::addFeedback() noexcept {
  const double knob = std::clamp(feedbackKnob + saneOrZero(modulationOf(2)), 0.0, 1.0);
  const double* gain = feedbackSmoother.ramp(kFeedbackEnd * knob);
  for (int i = 0; i < kVectorLength; ++i) output[i] = input[i] + feedback[i] * gain[i];
}

/// Takes off, ahead of a shift downwards, what would be pushed below 0 Hz and come back up as a
/// mirror image. A shift upwards has a negative increment and leaves the corner at its floor.
void HilbertShifter::followWithHighpass(double increment) noexcept {
  const double cutoff = std::max(kLeastCutoff, slowSmoother.tick(increment + kLeastCutoff));
  if (cutoff == lastCutoff) return;
  lastCutoff = cutoff;
  const auto omega = static_cast<float>(cutoff);
  const BiquadSection section =
      highpassSection({static_cast<double>(std::cos(omega)),
                       kHighpassWidth * static_cast<double>(std::sin(omega))});
  highpass.design(section, kHighpassSections);
}

void HilbertShifter::advancePhase(double increment) noexcept {
  for (int i = 0; i < kVectorLength; ++i) phases[i] = phase + increment * (i + 1);
  const double end = phases[kVectorLength - 1];
  phase = end - kTwoPi * std::floor(end / kTwoPi);
}

void HilbertShifter::processBlock() noexcept {
  updateIncrement();
  const double increment = incrementSmoother.tick(incrementTarget);
  addFeedback();
  followWithHighpass(increment);
  highpass.process(output, output);
  // The first chain is read one sample late: only so do the two stand at 90 degrees.
  blockA[0] = oneSampleMemory;
  pair.process(output, blockA + 1, blockB);
  oneSampleMemory = blockA[kVectorLength];
  advancePhase(increment);
  alignas(32) double sine[kVectorLength];
  alignas(32) double cosine[kVectorLength];
  vecSinCos(phases, sine, cosine);
  for (int i = 0; i < kVectorLength; ++i) output[i] = blockA[i] * sine[i] + blockB[i] * cosine[i];
  std::copy_n(output, kVectorLength, feedback);
}

}  // namespace orvantesco
