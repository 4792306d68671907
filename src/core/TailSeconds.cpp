// How long the effect sounds on with its present settings.

#include <algorithm>
#include <cmath>

#include "core/DelayLengths.h"
#include "core/Orvantesco.h"
#include "core/TailLength.h"

namespace orvantesco {

namespace {

constexpr double kSilenceDb = 90.0;
constexpr double kHighestFeedback = 1.6;
constexpr double kMixRouteGain = 0.99;  // 0.7 and the square root of 2 by which the route turns

/// The largest feedback that a slot reaches, modulation included.
double highestFeedback(const SlotControls& slot, double master) {
  double feedback = slot.feedback + master;
  if (slot.feedbackMod.source != nullptr) feedback += std::abs(slot.feedbackMod.depth);
  feedback = std::clamp(feedback, 0.0, kHighestFeedback);
  return slot.delay.route == DelayRoute::Mix ? feedback * kMixRouteGain : feedback;
}

}  // namespace

double Orvantesco::tailSeconds() const {
  TailLoops loops;
  const TimeFrame frame{tempoTracker.secondsPerBeat(), globals.timeScale};
  for (std::size_t to = 0; to < TailLoops::count; ++to) {
    const SlotControls& slot = slots[to].controls;
    if (!slot.slotOn || !slot.delayOn) continue;
    loops.seconds[to] = longestDelaySeconds(slot, frame);
    for (std::size_t from = 0; from < TailLoops::count; ++from) {
      const SlotControls& sender = slots[from].controls;
      if (!sender.slotOn || !sender.delayOn) continue;
      const double share = slot.matrixOn ? std::abs(slot.matrix[from]) : (to == from ? 1.0 : 0.0);
      loops.gain[to][from] = share * highestFeedback(slot, globals.feedbackMaster);
    }
  }
  return longestDelayInUse() + loopDecaySeconds(loops, kSilenceDb);
}

}  // namespace orvantesco
