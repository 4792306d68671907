#include "master/MasterLimiter.h"

#include <algorithm>
#include <cmath>

#include "fx/BiquadDesign.h"
#include "fx/Kernels.h"
#include "fx/RateValues.h"
#include "fx/Runaway.h"

namespace orvantesco {

namespace {

constexpr double kMaxBoostDb = 36.0;
constexpr int kDelaySamples = 200;
constexpr double kMeanSeconds = 0.5;
/// The louder channel is heard a little louder still: room for what the other one may add.
constexpr double kHeadroom = 1.09;
constexpr double kEnvelopeShareSlowI = 0.708;
/// Least divisor of the levelling: far below its mean a signal is not lifted further.
constexpr double kLeastDivisor = 0.25;

/// Written so that what is no number becomes the bound.
double atLeast(double value, double bound) noexcept { return value > bound ? value : bound; }

double decayOf(double seconds) noexcept { return std::exp(-1.0 / (sampleRate * seconds)); }

/// How hard the levelling grips.
double shapeOf(int mode) noexcept { return mode == MasterLimiter::kSlowI ? 5.0 : 1.5; }

/// What makes up for it.
double scaleOf(int mode) noexcept { return shapeOf(mode) * 0.1 + 0.9; }

double peakOf(const double* vector) noexcept {
  double peak = 0.0;
  vecMaxAbs(vector, kVectorLength, &peak);
  return peak;
}

}  // namespace

// All but the first rest at the 1 of a signal below the limit: from 0 they would amplify.
MasterLimiter::MasterLimiter()
    : followers{MasterLimitFollower(0.0), MasterLimitFollower(1.0), MasterLimitFollower(1.0),
                MasterLimitFollower(1.0), MasterLimitFollower(1.0)} {
  for (RingDelay* line : {&delayLeft, &delayRight, &delaySum}) line->resize(kDelaySamples);
  takeRate();
}

void MasterLimiter::setMode(int newMode, bool withFade) noexcept {
  modeAfterFade = std::clamp<int>(newMode, kSlowI, kFast);
  if (withFade) {
    fade.start();
    return;
  }
  mode = modeAfterFade;
  fade.rest();
}

void MasterLimiter::setBoostDb(double db) noexcept {
  if (std::isnan(db)) return;
  boost = std::exp(std::clamp(db, 0.0, kMaxBoostDb) * kDbToNepers);
}

void MasterLimiter::takeRate() noexcept {
  const double ms3 = decayOf(0.003);
  const double ms10 = decayOf(0.01);
  const double ms100 = decayOf(0.1);
  const double s1 = decayOf(1.0);
  rates[kEnvelope] = {0.0, s1, ms10};
  rates[kFirstLevel] = {ms100, s1, ms10};
  rates[kSecondLevel] = {decayOf(0.02), ms100, ms10};
  rates[kSoftLimit] = {decayOf(0.0005), 0.0, ms3};
  rates[kHardLimit] = {0.0, 0.0, ms3};
  rmsRate = 1.0 - decayOf(kMeanSeconds);
  fade.takeRate();
}

void MasterLimiter::reset() noexcept {
  Dynamics::reset();
  takeRate();
  rmsState = 1.0;
  for (MasterLimitFollower& follower : followers) follower.reset();
  for (RingDelay* line : {&delayLeft, &delayRight, &delaySum}) line->clear();
}

void MasterLimiter::rateChanged() noexcept {
  Dynamics::rateChanged();
  mode = modeAfterFade;
  fade.rest();
}

void MasterLimiter::processBlock() noexcept {
  if (fade.takeDone()) {
    mode = modeAfterFade;
    silence();
  } else {
    limit();
  }
  if (!fade.isActive()) return;
  const double gainNow = fade.next();
  vecMulConstInPlace(gainNow, output, blockSize);
  vecMulConstInPlace(gainNow, output2, blockSize);
}

void MasterLimiter::silence() noexcept {
  vecZero(output, blockSize);
  vecZero(output2, blockSize);
}

void MasterLimiter::limit() noexcept {
  hearInputs();
  boostInputs();
  if (mode != kFast) level();
  delayLeft.write(leftIn, blockSize);
  delayRight.write(rightIn, blockSize);
  delaySum.write(sum, blockSize);
  softLimit();
  if (mode != kSlowI) hardLimit();
  const double lookahead = limiterLookahead;
  vecMul(gainVector, delayLeft.read(lookahead, blockSize), output, blockSize);
  vecMul(gainVector, delayRight.read(lookahead, blockSize), output2, blockSize);
  if (isSaneState()) return;
  clearMemories();
  silence();
}

void MasterLimiter::boostInputs() noexcept {
  vecMulConst(input, boost, leftIn, blockSize);
  vecMulConst(input2, boost, rightIn, blockSize);
}

void MasterLimiter::hearInputs() noexcept {
  if (mode == kSlowI) {
    vecAdd(input, input2, sum, blockSize);
    vecMulConstInPlace(boost, sum, blockSize);
    return;
  }
  const double* louder = peakOf(input) >= peakOf(input2) ? input : input2;
  vecMulConst(louder, kHeadroom * boost, sum, blockSize);
}

/// A running mean over half a second, from a full-scale one on.
void MasterLimiter::meanLevels(double* levels) noexcept {
  const double keep = 1.0 - rmsRate;
  double state = rmsState;
  for (int i = 0; i < blockSize; ++i) {
    state = keep * state + rmsRate * (sum[i] * sum[i]);
    levels[i] = std::sqrt(state);
  }
  rmsState = state;
}

// Two stages that each divide by a follower of the signal, the second one twice. The first follows
// the signal over its own envelope and mean, so that it grips where the peaks stand out.
void MasterLimiter::level() noexcept {
  alignas(32) double t[kVectorLength];
  alignas(32) double slowEnvelope[kVectorLength];
  const double share = mode == kSlowI ? kEnvelopeShareSlowI : 1.0;
  const double shape = shapeOf(mode);
  const double scale = scaleOf(mode);
  std::copy_n(sum, blockSize, t);
  followers[kEnvelope].run(t, rates[kEnvelope]);
  meanLevels(slowEnvelope);
  for (int i = 0; i < blockSize; ++i) {
    slowEnvelope[i] = 1.0 / atLeast(share * t[i] - slowEnvelope[i] + 1.0, kLeastDivisor);
    t[i] = atLeast(std::fabs(slowEnvelope[i] * shape * sum[i]), 1.0);
  }
  followers[kFirstLevel].run(t, rates[kFirstLevel]);
  for (int i = 0; i < blockSize; ++i) {
    gainVector[i] = scale / t[i];
    sum[i] *= gainVector[i];
    t[i] = atLeast(std::fabs(slowEnvelope[i] * sum[i]), 1.0);
  }
  followers[kSecondLevel].run(t, rates[kSecondLevel]);
  for (int i = 0; i < blockSize; ++i) {
    const double squared = 1.0 / (t[i] * t[i]);
    sum[i] *= squared;
    gainVector[i] *= squared;
    leftIn[i] *= gainVector[i];
    rightIn[i] *= gainVector[i];
  }
}

// The follower rises within the look-ahead, and a peak meets most of the gain that it asks for.
void MasterLimiter::softLimit() noexcept {
  alignas(32) double t[kVectorLength];
  for (int i = 0; i < blockSize; ++i) t[i] = atLeast(std::fabs(sum[i]), 1.0);
  followers[kSoftLimit].run(t, rates[kSoftLimit]);
  for (int i = 0; i < blockSize; ++i) gainVector[i] = 1.0 / t[i];
}

// What is still above comes down at once.
void MasterLimiter::hardLimit() noexcept {
  alignas(32) double t[kVectorLength];
  const double* heard = delaySum.read(limiterLookahead, blockSize);
  for (int i = 0; i < blockSize; ++i) t[i] = atLeast(std::fabs(gainVector[i] * heard[i]), 1.0);
  followers[kHardLimit].run(t, rates[kHardLimit]);
  for (int i = 0; i < blockSize; ++i) gainVector[i] /= t[i];
}

bool MasterLimiter::isSaneState() const noexcept {
  return isSane(rmsState) &&
         std::all_of(std::begin(followers), std::end(followers),
                     [](const MasterLimitFollower& f) { return f.isSaneState(); });
}

}  // namespace orvantesco
