#include "fx/Compressor.h"

#include <algorithm>
#include <cmath>

#include "fx/BiquadDesign.h"
#include "fx/Kernels.h"
#include "fx/RateValues.h"

namespace orvantesco {

namespace {

constexpr double kAttackMs = 10.0;
constexpr double kReleaseMs = 400.0;
constexpr double kGainTimeMs = 32.0;
constexpr double kMostTrimDb = 24.0;
constexpr double kLeastThreshold = 1e-6;
/// Far above any ratio that is sent.
constexpr double kLargestRatio = 1e6;

constexpr double kNepersToDb = 8.685889638065037;  // 20 / ln(10)

/// What runs is twice what the knob shows: a user who sets 10 ms hears 20. Stored sounds rely on
/// it.
constexpr double kTimeScale = 2.0;

int lookAheadAtRate() noexcept {
  return static_cast<int>(Compressor::kLookAheadMs * 0.001 * sampleRate);
}

}  // namespace

Compressor::Compressor(bool isRight) : Dynamics(isRight), lookAhead(lookAheadAtRate()) {
  setAttackTime(kAttackMs);
  setReleaseTime(kReleaseMs);
  fastSmoother.setBlockTime(kGainTimeMs);
  delay.resize(static_cast<int>(kLookAheadMs * 0.001 * kMaxSampleRate) + kVectorLength);
}

void Compressor::setParam(int index, double value) noexcept {
  if (!std::isfinite(value)) return;
  switch (index) {
    case 0:
      threshold = std::max(value, kLeastThreshold);
      break;
    case 1:
      ratio = std::clamp(value, 1.0, kLargestRatio);
      break;
    case 2:
      setAttackTime(kTimeScale * value);
      break;
    case 3:
      setReleaseTime(kTimeScale * value);
      break;
    case 4:
      gain = std::clamp(value, 0.0, 1.0);
      break;
    default:
      break;
  }
}

void Compressor::reset() noexcept {
  Dynamics::reset();
  delay.clear();
}

void Compressor::rateChanged() noexcept {
  Dynamics::rateChanged();
  lookAhead = lookAheadAtRate();
}

/// Trim less reduction.
double Compressor::gainDb() noexcept {
  const double trim = std::clamp(gain + modulationOf(4), 0.0, 1.0);
  const double loudness = rms(input);
  // No level but one over the threshold needs its logarithm.
  const double over = loudness > threshold ? std::log(loudness / threshold) * kNepersToDb : 0.0;
  level = nextLevel(level, over);
  const double heard = (level - kLevelFloor) * kLevelScale;
  return kMostTrimDb * trim - heard * ((ratio - 1.0) / ratio);
}

double Compressor::gainOf(double db) noexcept {
  if (db == factorDb) return factor;
  factorDb = db;
  factor = std::exp(db * kDbToNepers);
  return factor;
}

void Compressor::processBlock() noexcept {
  delay.write(input, blockSize);
  const double smoothed = fastSmoother.tick(gainOf(gainDb()));
  vecMulConst(delay.read(lookAhead, blockSize), smoothed, output, blockSize);
}

}  // namespace orvantesco
