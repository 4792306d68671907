#include "fx/Dynamics.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "fx/Kernels.h"
#include "fx/RateValues.h"
#include "fx/Runaway.h"

namespace orvantesco {

namespace {

constexpr double kNewShare = 0.015;
constexpr double kOldShare = 0.985;
// Keeps the mean square out of the denormal range; taken off again before the root.
constexpr double kOffset = 1e-9;

double samplesOf(double ms) noexcept { return std::max(1.0, ms * 0.001 * sampleRate); }

/// Logarithm of the factor of one vector.
double decayOf(double samples) noexcept {
  return -2.0 * std::numbers::pi * kVectorLength / samples;
}

}  // namespace

Dynamics::Dynamics(bool isRight) noexcept : DSPShell(isRight) { deriveFactors(); }

void Dynamics::deriveFactors() noexcept {
  const double attack = samplesOf(attackMs);
  const double release = samplesOf(releaseMs);
  attackStep = 1.0 / attack;
  releaseStep = 1.0 / release;
  attackFactor = std::exp(-decayOf(attack));
  releaseFactor = std::exp(decayOf(release));
}

void Dynamics::setAttackTime(double ms) noexcept {
  if (ms == attackMs || !std::isfinite(ms)) return;
  attackMs = ms;
  deriveFactors();
}

void Dynamics::setReleaseTime(double ms) noexcept {
  if (ms == releaseMs || !std::isfinite(ms)) return;
  releaseMs = ms;
  deriveFactors();
}

void Dynamics::reset() noexcept {
  DSPShell::reset();
  deriveFactors();
  meanSquare = 0.0;
}

void Dynamics::rateChanged() noexcept {
  DSPShell::rateChanged();
  deriveFactors();
  level = 0.0;
  detected = 0.0;
}

void Dynamics::clearMemories() noexcept {
  DSPShell::clearMemories();
  level = 0.0;
  detected = 0.0;
}

double Dynamics::rms(const double* vector) noexcept {
  alignas(32) double squares[kVectorLength];
  double mean = 0.0;
  vecSquare(vector, squares, kVectorLength);
  vecMean(squares, kVectorLength, &mean);
  meanSquare = saneOrZero(kNewShare * mean + kOldShare * meanSquare + kOffset);
  return std::sqrt(std::max(0.0, meanSquare - kOffset));
}

double Dynamics::nextLevel(double levelBefore, double target) const noexcept {
  const double moved = target < levelBefore ? levelBefore * releaseFactor
                                            : std::min(levelBefore * attackFactor, target);
  return std::max(moved, kLevelFloor);
}

}  // namespace orvantesco
