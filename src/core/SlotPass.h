#pragma once

#include "core/SlotControls.h"

namespace orvantesco {

/// What one pass through a slot works out once for its 32 samples.
struct SlotPass {
  DelayMode mode = DelayMode::Forward;
  DelayRoute route = DelayRoute::Dual;
  bool monoL = false;  ///< only the left channel is worked on
  bool monoR = false;
  double samplesPerUnit = 0.0;  ///< samples of one second, or of one beat
  double unitsL = 0.0;          ///< delay times in those units
  double unitsR = 0.0;
  double delayL = 0.0;  ///< samples, spread included
  double delayR = 0.0;
  double modL = 0.0;  ///< swing of the main modulator in samples
  double modR = 0.0;
  bool tapEffects = false;  ///< the POST FX runs per tap and not on the sum

  /// Which instances of an effect run: the pair, or the one channel that is worked on.
  int instance() const {
    if (monoL) return 0;
    return monoR ? 1 : -1;
  }
};

}  // namespace orvantesco
