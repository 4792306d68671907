#pragma once

#include "core/SlotControls.h"

namespace orvantesco {

/// Tempo and scale that a slot's times depend on.
struct TimeFrame {
  double secondsPerBeat = 0.5;
  double timeScale = 1.0;
};

/// Seconds until the slowest echo of a slot's settings has been heard once.
double longestDelaySeconds(const SlotControls& slot, const TimeFrame& frame);

/// Seconds that a sound takes at most to come round once.
double turnSeconds(const SlotControls& slot, const TimeFrame& frame);

}  // namespace orvantesco
