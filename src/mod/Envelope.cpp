#include "mod/Envelope.h"

#include <algorithm>
#include <cmath>

#include "fx/Kernels.h"
#include "fx/RateValues.h"

namespace orvantesco {

namespace {

constexpr double kAttackMs = 20.0;
constexpr double kReleaseMs = 200.0;
constexpr double kShortestHoldMs = 0.001;
// The follower's output passes 1 a little below full scale, so that a loud signal can trigger.
constexpr double kFollowerScale = 1.43;
constexpr double kBend = 0.03;
constexpr double kBendScale = 1.01;

}  // namespace

Envelope::Envelope() : lowCut(false, kHighpassFilter, 1), highCut(false, kLowpassFilter, 1) {
  setAttackTime(kAttackMs);
  setReleaseTime(kReleaseMs);
  setLocut(0.0);
  setHicut(1.0);
  deriveHoldStep();
}

void Envelope::setHold(double ms) noexcept {
  if (ms == holdMs || !std::isfinite(ms)) return;
  holdMs = ms;
  deriveHoldStep();
}

void Envelope::deriveHoldStep() noexcept {
  holdStep = 1.0 / (std::max(holdMs, kShortestHoldMs) * 0.001 * sampleRate);
}

void Envelope::reset() noexcept {
  Dynamics::reset();
  lowCut.reset();
  highCut.reset();
}

void Envelope::rateChanged() noexcept {
  Dynamics::rateChanged();
  lowCut.rateChanged();
  highCut.rateChanged();
  outputSmoother.rateChanged();
  deriveHoldStep();
  clearLevels();
}

void Envelope::clearMemories() noexcept {
  Dynamics::clearMemories();
  lowCut.clearMemories();
  highCut.clearMemories();
  outputSmoother.snap(0.0);
  clearLevels();
}

void Envelope::clearLevels() noexcept {
  follower = 0.0;
  state = State::Idle;
  gatePhase = 0.0;
  scalarOutput = 0.0;
}

void Envelope::run(const double* source, double* vector) noexcept {
  vecCopy(source, buffer, kVectorLength);
  process(buffer, vector);
}

void Envelope::processBlock() noexcept {
  if (input != buffer) vecCopy(input, buffer, kVectorLength);
  lowCut.process(buffer, nullptr);
  highCut.process(buffer, nullptr);
  vecMulConstInPlace(gain, buffer, kVectorLength);
  detected = rms(buffer);
  if (followerMode) {
    const double out = followLevel();
    vecMulConst(outputSmoother.ramp(out), depth, output, kVectorLength);
    scalarOutput = depth * out;
  } else {
    scalarOutput = depth * runGate();
    vecSet(scalarOutput, output, kVectorLength);
  }
}

double Envelope::followLevel() noexcept {
  follower = nextLevel(follower, detected);
  const double out = (follower - kLevelFloor) * kLevelScale * kFollowerScale;
  return linearOutput ? out : out / (out + kBend) * kBendScale;
}

/// One step of the shape. A vector may pass through several states.
double Envelope::runGate() noexcept {
  const bool isOpen = detected >= gateThreshold;
  if (state == State::Idle && !isOpen) return 0.0;
  double out = 0.0;
  if (state == State::Attack || state == State::Idle) {
    state = State::Attack;
    gatePhase += kVectorLength * attackStep;
    out = gatePhase;
    if (gatePhase >= 1.0) {
      state = State::Hold;
      gatePhase = 0.0;
    }
  }
  if (state == State::Hold) {
    if (isOpen) gatePhase = 0.0;
    out = 1.0;
    gatePhase += kVectorLength * holdStep;
    if (gatePhase >= 1.0) {
      state = State::Decay;
      gatePhase = 0.0;
    }
  }
  if (state == State::Decay) {
    out = 1.0 - gatePhase;
    gatePhase += kVectorLength * releaseStep;
    if (gatePhase >= 1.0) {
      state = State::Idle;
      gatePhase = 0.0;
    }
    if (isOpen) {
      // A new start from the level reached, so that nothing jumps.
      state = State::Attack;
      gatePhase = out;
    }
  }
  return out;
}

}  // namespace orvantesco
