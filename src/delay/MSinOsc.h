#pragma once

#include "delay/MModulator.h"

namespace orvantesco {

/// A sine by the recursion y = 2 cos(w) y1 - y2: two operations a tick. Rounding would let its
/// amplitude drift for as long as it runs; so each peak that reaches 1 is put to exactly 1, and
/// the state with it.
class MSinOsc : public MModulator {
 public:
  /// Frequency in Hz at a rate of ticks in Hz, and the phase in degrees at which it starts.
  /// Arguments that are not finite, and a rate not above 0, are ignored.
  void setFrequency(float hz, float tickRate, float phaseDegrees) noexcept;

  float frequencyHz() const noexcept { return frequency; }

  /// The next value, -1..1.
  float tick() noexcept override;

 private:
  float frequency = 0.0F;
  double coefficient = 2.0;  ///< 2 cos(w)
  double y1 = 0.0;
  double y2 = 0.0;
  double restart = 1.0;  ///< value one tick beside a peak, sin(pi / 2 - w)
};

}  // namespace orvantesco
