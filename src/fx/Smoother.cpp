#include "fx/Smoother.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <numbers>

#include "fx/RateValues.h"

namespace orvantesco {

namespace {

/// Distance from a target of 0 that counts as arrived, where a relative distance says nothing.
constexpr double kRestFloor = 1e-15;

double coefficientOf(double timeMs) noexcept {
  const double timeSamples = timeMs * 0.001 * sampleRate;
  if (!(timeSamples > 0.0)) return 0.0;
  return std::clamp(std::exp(-2.0 * std::numbers::pi / timeSamples), 0.0, 1.0);
}

int lengthWithin(int n) noexcept {
  assert(n >= 1 && n <= kVectorLength);
  return std::clamp(n, 1, kVectorLength);
}

}  // namespace

// The tables are summed in extended precision and rounded once: 32 roundings in a row would leave
// the ramp of a long time at rest several 1e-13 beside its target.
void Smoother::setTime(double ms) noexcept {
  timeMs = ms;
  coefficient = coefficientOf(ms);
  gain = 1.0 - coefficient;
  long double power = 1.0L;
  long double sum = 0.0L;
  for (int i = 0; i < kVectorLength; ++i) {
    sum += power;
    power *= coefficient;
    powers[i] = static_cast<double>(power);
    sums[i] = static_cast<double>(sum);
    powersF[i] = static_cast<float>(powers[i]);
    sumsF[i] = static_cast<float>(sums[i]);
  }
}

void Smoother::rateChanged() noexcept {
  setTime(timeMs);
  y = 0.0;
}

void Smoother::snap(double value) noexcept { y = saneOrZero(value); }

double Smoother::dropState() noexcept {
  y = 0.0;
  return y;
}

bool Smoother::isSettled(double x) const noexcept {
  return std::fabs(y - x) <= restTolerance * std::fabs(x) + kRestFloor;
}

const double* Smoother::rest(double x) noexcept {
  y = x;
  if (isFilled && filledWith == x) return values;
  std::fill_n(values, kVectorLength, x);
  filledWith = x;
  isFilled = true;
  return values;
}

const double* Smoother::ramp(double x, int n) noexcept {
  if (!isSane(x)) return rest(0.0);
  if (isSettled(x)) return rest(x);
  const double start = y;
  const double drive = gain * x;
  for (int i = 0; i < kVectorLength; ++i) values[i] = powers[i] * start + drive * sums[i];
  y = values[lengthWithin(n) - 1];
  isFilled = false;
  return values;
}

// Four samples at a time: what they add is computed from zero, then the old state's share is put
// on top. The offset of each tick adds up to a constant, which is kept out of the recursion.
void Smoother::tickVector(double* srcDst) noexcept {
  if (gain <= 0.0 || !isSaneVector(srcDst)) {
    for (int i = 0; i < kVectorLength; ++i) srcDst[i] = tick(srcDst[i]);
    return;
  }
  const double settledOffset = kOffset / gain;
  const double shown = settledOffset - kOffset;
  const double a = coefficient;
  const double a2 = powers[1];
  const double a3 = powers[2];
  const double a4 = powers[3];
  double state = y - settledOffset;
  for (int i = 0; i < kVectorLength; i += 4) {
    const double d0 = srcDst[i] * gain;
    const double d1 = srcDst[i + 1] * gain + a * d0;
    const double d2 = srcDst[i + 2] * gain + a * d1;
    const double d3 = srcDst[i + 3] * gain + a * d2;
    srcDst[i] = a * state + d0 + shown;
    srcDst[i + 1] = a2 * state + d1 + shown;
    srcDst[i + 2] = a3 * state + d2 + shown;
    state = a4 * state + d3;
    srcDst[i + 3] = state + shown;
  }
  y = state + settledOffset;
}

const float* Smoother::rampFloat(float x, int n) noexcept {
  const float target = isSane(x) ? x : 0.0F;
  const float start = isSane(x) ? static_cast<float>(y) : 0.0F;
  const float drive = static_cast<float>(gain) * target;
  for (int i = 0; i < kVectorLength; ++i) valuesF[i] = powersF[i] * start + drive * sumsF[i];
  y = valuesF[lengthWithin(n) - 1];
  return valuesF;
}

}  // namespace orvantesco
