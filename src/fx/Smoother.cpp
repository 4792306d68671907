#include "fx/Smoother.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <numbers>

#include "fx/Kernels.h"
#include "fx/Lanes.h"
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

/// Two pairs of neighbours, sorted into firsts and seconds.
struct Pairs {
  Lanes even;
  Lanes odd;
};

Pairs pairsOf(Lanes a, Lanes b) noexcept { return {Lanes{a[0], b[0]}, Lanes{a[1], b[1]}}; }

void storePairs(const Pairs& pairs, double* a, double* b) noexcept {
  storeLanes(Lanes{pairs.even[0], pairs.odd[0]}, a);
  storeLanes(Lanes{pairs.even[1], pairs.odd[1]}, b);
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
// on top. Two such fours stand side by side in lanes. The offset of each tick adds up to a
// constant, which is kept out of the recursion.
void Smoother::tickVector(double* srcDst) noexcept {
  if (gain <= 0.0 || !vecStaysWithin(srcDst, kVectorLength, kRunawayLimit)) {
    for (int i = 0; i < kVectorLength; ++i) srcDst[i] = tick(srcDst[i]);
    return;
  }
  const double settledOffset = kOffset / gain;
  const double shown = settledOffset - kOffset;
  const double a4 = powers[3];
  const Lanes drive = bothLanes(gain);
  const Lanes power[] = {bothLanes(coefficient), bothLanes(powers[1]), bothLanes(powers[2])};
  double state = y - settledOffset;
  for (int i = 0; i < kVectorLength; i += 8) {
    double* const at = srcDst + i;
    const Pairs first = pairsOf(loadLanes(at), loadLanes(at + 4));
    const Pairs second = pairsOf(loadLanes(at + 2), loadLanes(at + 6));
    const Lanes d0 = first.even * drive;
    const Lanes d1 = first.odd * drive + power[0] * d0;
    const Lanes d2 = second.even * drive + power[0] * d1;
    const Lanes d3 = second.odd * drive + power[0] * d2;
    const double middle = a4 * state + d3[0];
    const Lanes before{state, middle};
    state = a4 * middle + d3[1];
    const Lanes behind{middle, state};
    storePairs({power[0] * before + d0 + shown, power[1] * before + d1 + shown}, at, at + 4);
    storePairs({power[2] * before + d2 + shown, behind + shown}, at + 2, at + 6);
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
