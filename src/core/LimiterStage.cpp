#include "core/LimiterStage.h"

#include "fx/RateValues.h"

namespace orvantesco {

void LimiterStage::take(int mode, double boostDb) noexcept {
  const bool wasOn = on;
  on = mode > 0;
  limiter.setBoostDb(boostDb);
  if (on && !wasOn) {
    limiter.setMode(mode, false);
    // Still draining it goes on: what it holds has not been heard yet.
    if (vectorsToDrain == 0) limiter.reset();
    vectorsToDrain = 0;
  } else if (on && mode != limiter.modeAsked()) {
    limiter.setMode(mode, true);
  } else if (wasOn && !on) {
    vectorsToDrain = (limiterLookahead + kVectorLength - 1) / kVectorLength;
  }
}

bool LimiterStage::process(StereoVector& wet, StereoVector& limited) noexcept {
  if (!on && vectorsToDrain == 0) return false;
  StereoVector silence;
  StereoVector& heard = on ? wet : silence;
  if (!on) --vectorsToDrain;
  limiter.process(heard.left.data(), heard.right.data(), limited.left.data(), limited.right.data());
  return true;
}

void LimiterStage::reset() noexcept {
  limiter.reset();
  vectorsToDrain = 0;
}

}  // namespace orvantesco
