#include "fx/PhaseFilter.h"

#include <algorithm>
#include <cmath>

#include "fx/Kernels.h"

namespace orvantesco {

namespace {

constexpr double kLowest = 0.0001;
constexpr double kLargestCoefficient = 0.99999;
constexpr double kMostFeedback = 0.8;
/// Takes back part of what the feedback adds.
constexpr double kFeedbackRelief = 0.65;

}  // namespace

PhaseFilter::PhaseFilter(bool isRight, int stageCount) noexcept
    : QLMFilter(isRight), stages(std::clamp(stageCount, 1, kMaxStages)) {
  // So near to 1 the last bits of the coefficient decide the corner.
  cutoffSmoother.setRestTolerance(4e-16);
}

void PhaseFilter::setParam(int index, double value) noexcept {
  if (!std::isfinite(value)) return;
  controlDirty = true;
  switch (index) {
    case 0:
      frequency = value;
      break;
    case 1:
      resonanceKnob = value;
      break;
    case 2:
      spread = value * channelSign;
      break;
    case 3:
      setStageCount(value);
      break;
    case 4:
      setMix(value);
      break;
    default:
      break;
  }
}

/// Cut, not rounded as the read-out does: half way to the next number the read-out is ahead.
void PhaseFilter::setStageCount(double normalised) noexcept {
  const double count = std::trunc(4.0 * normalised + 3.0);
  stages = static_cast<int>(std::clamp(count, 1.0, static_cast<double>(kMaxStages)));
  reset();
}

void PhaseFilter::modSourceChanged(int /*index*/, const double* /*source*/) noexcept {
  controlDirty = true;
}

void PhaseFilter::reset() noexcept {
  QLMFilter::reset();
  std::fill_n(state, kMaxStages + 1, 0.0);
}

void PhaseFilter::updateCoefficient() noexcept {
  double target = frequency + spread;
  if (modSource[0] != nullptr) target += modulationOf(0);
  if (modSource[2] != nullptr) target += modulationOf(2) * channelSign;
  const double c = std::clamp(target, kLowest, 1.0);
  coefficient = std::min(1.0 - (c * c) * (c * c), kLargestCoefficient);
}

void PhaseFilter::updateResonance() noexcept {
  feedbackGain = kMostFeedback * std::clamp(resonanceKnob + modulationOf(1), 0.0, 1.0);
  outputGain = 1.0 - kFeedbackRelief * feedbackGain;
}

template <int count>
void PhaseFilter::runStages(const double* k) noexcept {
  double last[count + 1];
  std::copy_n(state, count + 1, last);
  const double fed = feedbackGain;
  for (int n = 0; n < blockSize; ++n) {
    double x = last[count] * fed + input[n];
    double before = last[0];
    last[0] = x;
    for (int i = 1; i <= count; ++i) {
      // Only x * k waits for the section in front.
      const double kept = last[i] * k[n] - before;
      before = last[i];
      last[i] = x = x * k[n] + kept;
    }
    output[n] = x;
  }
  std::copy_n(last, count + 1, state);
}

void PhaseFilter::runStages(const double* k) noexcept {
  switch (stages) {
    case 1:
      return runStages<1>(k);
    case 2:
      return runStages<2>(k);
    case 3:
      return runStages<3>(k);
    case 4:
      return runStages<4>(k);
    case 5:
      return runStages<5>(k);
    case 6:
      return runStages<6>(k);
    default:
      return runStages<7>(k);
  }
}

void PhaseFilter::processBlock() noexcept {
  if (controlDirty || modSource[0] != nullptr || modSource[2] != nullptr) updateCoefficient();
  if (controlDirty || modSource[1] != nullptr) updateResonance();
  controlDirty = false;
  runStages(cutoffSmoother.ramp(coefficient));
  vecMulConstInPlace(outputGain, output, blockSize);
}

}  // namespace orvantesco
