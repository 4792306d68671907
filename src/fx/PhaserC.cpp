#include "fx/PhaserC.h"

#include <algorithm>
#include <cmath>

#include "fx/Kernels.h"
#include "fx/Runaway.h"

namespace orvantesco {

namespace {

/// Places of the sections on the sweep, set by ear so that no two notches coincide.
constexpr double kPlaces[PhaserC::kMaxStages] = {0.0094802, 0.034095, 0.01834, 0.1194,
                                                 0.038,     0.18,     0.07,    0.21};
/// How wide each section turns the phase.
constexpr double kWidths[PhaserC::kMaxStages] = {0.971927, 0.51927, 0.45452, 0.40452,
                                                 0.4,      0.4,     0.3,     0.25};

constexpr double kSweep = 6.0;
constexpr double kSweepFloor = 0.1;
constexpr double kLowest = 0.002;
constexpr double kHighest = 0.998;
/// An all-pass row has a gain of 1 everywhere, so the loop rings up to 1 / (1 - 0.95) at most.
constexpr double kMostFeedback = 0.95;

}  // namespace

PhaserTaps phaserTaps(int stage, double position) noexcept {
  const double f = std::clamp(kPlaces[stage] * position, kLowest, kHighest);
  const double width = kWidths[stage] * (f - f * f);
  const double d = 0.25 + width;
  const double below = f > 0.5 ? 0.0 : 2.0 * f * f - 0.5;
  const double above = f < 0.5 ? 0.0 : 4.0 * f - 2.0 * f * f - 1.5;
  return {(0.25 - width) / d, (below + above) / d};
}

PhaserC::PhaserC(bool isRight) noexcept : DSPShell(isRight) { positionSmoother.setBlockTime(10.0); }

void PhaserC::setRate(double value) noexcept { base = (value * value + kSweepFloor) * kSweep; }

void PhaserC::setParam(int index, double value) noexcept {
  if (!std::isfinite(value)) return;
  switch (index) {
    case 0:
      setRate(value);
      break;
    case 1:
      setDepth(std::clamp(value, 0.0, 1.0));
      break;
    case 2:
      setStageCount(value);
      break;
    case 3:
      // Kept, but read by nothing: turning the spread knob is not heard. What moves the channels
      // apart is a modulator on it, and users have built their sounds on that.
      spread = value * channelSign * kSweep;
      break;
    case 4:
      // The share of the wet signal stays full although the runner takes this control's modulator
      // for that of a mix: a modulator here fades the phaser, and never moves the feedback.
      feedbackGain = kMostFeedback * std::sqrt(std::clamp(value, 0.0, 1.0));
      break;
    default:
      break;
  }
}

void PhaserC::setDepth(double value) noexcept {
  depthWet = 0.5 * value;
  depthDry = 1.0 - 0.5 * value;
  coefficientsDirty = true;
}

// A row of all-passes keeps its level, so no count of them needs a gain of its own.
void PhaserC::setStageCount(double count) noexcept {
  stages = static_cast<int>(std::clamp(std::trunc(count), 1.0, static_cast<double>(kMaxStages)));
  coefficientsDirty = true;
}

void PhaserC::onStateCleared() noexcept {
  for (double* memory : {x1, x2, y1, y2}) std::fill_n(memory, kMaxStages, 0.0);
  feedbackState = 0.0;
}

// The row keeps ringing while nobody plays it: without this, switching the phaser off and on would
// let an old tail out.
void PhaserC::reset() noexcept {
  DSPShell::reset();
  onStateCleared();
}

void PhaserC::prepare() noexcept {
  DSPShell::prepare();
  // Lifts the sweep until the knob is next moved. A change of rate does not come this way.
  base = (base + kSweepFloor) * kSweep;
}

void PhaserC::restartSweep() noexcept {
  position = positionLast = 0.0;
  coefficientsDirty = true;
}

void PhaserC::rateChanged() noexcept {
  DSPShell::rateChanged();
  positionSmoother.rateChanged();
  restartSweep();
}

void PhaserC::clearMemories() noexcept {
  DSPShell::clearMemories();
  positionSmoother.snap(0.0);
  restartSweep();
}

void PhaserC::updatePosition() noexcept {
  double modulation = 0.0;
  if (modSource[0] != nullptr) modulation += modulationOf(0);
  if (modSource[3] != nullptr) modulation += modulationOf(3) * channelSign;
  positionTarget = base + kSweep * modulation;
  position = positionSmoother.tick(positionTarget);
  if (position == positionLast) return;
  positionLast = position;
  coefficientsDirty = true;
}

void PhaserC::deriveTaps() noexcept {
  for (int i = 0; i < stages; ++i) {
    const PhaserTaps taps = phaserTaps(i, position);
    a[i] = taps.a;
    b[i] = taps.b;
  }
}

template <int count>
void PhaserC::runStages(double* wet) noexcept {
  double z1[count], z2[count];
  for (int i = 0; i < count; ++i) {
    z1[i] = b[i] * (x1[i] - y1[i]) + (x2[i] - a[i] * y2[i]);
    z2[i] = x1[i] - a[i] * y1[i];
  }
  // What stood between the sections at the last two samples.
  double between[2][count + 1];
  double fed = feedbackState;
  for (int n = 0; n < blockSize; ++n) {
    double* now = between[n & 1];
    double x = input[n] + fed;
    now[0] = x;
    for (int i = 0; i < count; ++i) {
      const double y = a[i] * x + z1[i];
      z1[i] = b[i] * (x - y) + z2[i];
      z2[i] = x - a[i] * y;
      now[i + 1] = y;
      x = y;
    }
    wet[n] = x;
    fed = x * feedbackGain;
  }
  feedbackState = fed;
  std::copy_n(between[0], count, x2);
  std::copy_n(between[1], count, x1);
  std::copy_n(between[0] + 1, count, y2);
  std::copy_n(between[1] + 1, count, y1);
}

void PhaserC::runStages(double* wet) noexcept {
  switch (stages) {
    case 1:
      return runStages<1>(wet);
    case 2:
      return runStages<2>(wet);
    case 3:
      return runStages<3>(wet);
    case 4:
      return runStages<4>(wet);
    case 5:
      return runStages<5>(wet);
    case 6:
      return runStages<6>(wet);
    case 7:
      return runStages<7>(wet);
    default:
      return runStages<8>(wet);
  }
}

void PhaserC::mixWith(double* wet) noexcept {
  const double share = std::clamp(depthWet + modulationOf(1), 0.0, 1.0);
  vecMulConstInPlace(share, wet, blockSize);
  vecAddProductConst(input, depthDry, wet, blockSize);
  vecMulConst(wet, depthWet + 1.0, output, blockSize);
}

void PhaserC::processBlock() noexcept {
  updatePosition();
  if (coefficientsDirty) deriveTaps();
  coefficientsDirty = false;
  runStages(scratchA);
  if (isSaneVector(scratchA)) return mixWith(scratchA);
  // The depth may hide from the output what goes round.
  clearMemories();
  vecZero(output, blockSize);
}

}  // namespace orvantesco
