#include "core/DelayLengths.h"

#include <algorithm>
#include <cmath>

#include "core/NoteLengths.h"
#include "core/TapPlan.h"

namespace orvantesco {

namespace {

constexpr double kTimeModulationSeconds = 0.025;  // the time modulation at full depth
constexpr double kOffsetSeconds = 0.025;
constexpr double kLongestDelaySeconds = 8.0;
constexpr double kLongestGrainSeconds = 0.4;

TapPlan planOf(const TapControls& taps, const TimeFrame& frame) {
  const double factor = taps.beatFactor;
  const double interval = factor != 0.0 ? factor * frame.secondsPerBeat : taps.interval.get();
  return planTaps(taps, interval * frame.timeScale, 1.0, kLongestDelaySeconds);
}

double longestTap(const TapControls& taps, const TimeFrame& frame) {
  const TapPlan plan = planOf(taps, frame);
  return plan.taps[static_cast<std::size_t>(plan.count - 1)].delay;
}

double feedbackTap(const TapControls& taps, const TimeFrame& frame) {
  const TapPlan plan = planOf(taps, frame);
  return plan.taps[static_cast<std::size_t>(plan.feedbackTap)].delay;
}

/// The modulators' part in a turn.
double turnModulation(const DelayControls& delay, DelayMode mode) {
  constexpr double kMainModulationSeconds = 0.004;
  double seconds = kMainModulationSeconds;
  if (delay.timeSource != nullptr) seconds += kTimeModulationSeconds * std::abs(delay.modDepth);
  if (mode == DelayMode::Tapped && delay.tapsTimeSource != nullptr) {
    seconds += std::abs(delay.tapsTimeModDepth);
  }
  if (mode == DelayMode::Grain && delay.grainSizeSource != nullptr) seconds += kLongestGrainSeconds;
  return seconds;
}

double longestLine(const DelayControls& delay, const TimeFrame& frame) {
  const int timebase = delay.timebase;
  const double unit = timebase == 0 ? 1.0 : timebaseFactor(timebase) * frame.secondsPerBeat;
  const double left = timebase == 0 ? delay.timeL.get() : delay.factorL.get();
  const double right = timebase == 0 ? delay.timeR.get() : delay.factorR.get();
  return std::max(left, right) * unit * frame.timeScale + std::abs(delay.spreadMs) * 0.001;
}

}  // namespace

double longestDelaySeconds(const SlotControls& slot, const TimeFrame& frame) {
  if (!slot.delayOn) return kOffsetSeconds;
  const DelayControls& delay = slot.delay;
  double seconds = 0.0;
  switch (delay.mode.get()) {
    case DelayMode::Tapped:
      seconds = longestTap(slot.taps, frame);
      if (delay.tapsTimeSource != nullptr) seconds += std::abs(delay.tapsTimeModDepth);
      break;
    // A cycle is heard backwards over its own length behind the time that it covers.
    case DelayMode::Backward:
      seconds = 2.0 * longestLine(delay, frame);
      break;
    case DelayMode::Grain:
      seconds = longestLine(delay, frame) + kLongestGrainSeconds;
      break;
    case DelayMode::Forward:
      seconds = longestLine(delay, frame);
      break;
  }
  return std::min(seconds, 2.0 * kLongestDelaySeconds) + kTimeModulationSeconds + kOffsetSeconds;
}

double turnSeconds(const SlotControls& slot, const TimeFrame& frame) {
  const DelayControls& delay = slot.delay;
  const DelayMode mode = delay.mode;
  double seconds = turnModulation(delay, mode);
  if (mode == DelayMode::Tapped) {
    seconds += feedbackTap(slot.taps, frame);
  } else {
    seconds += longestLine(delay, frame);
  }
  if (mode == DelayMode::Grain) seconds += delay.grainSizeMs * 0.001;
  // A cycle is heard backwards over its own length behind the time that it covers.
  if (mode == DelayMode::Backward) seconds *= 2.0;
  return std::min(seconds, 2.0 * kLongestDelaySeconds);
}

}  // namespace orvantesco
