#pragma once

#include <algorithm>

#include "fx/RateValues.h"
#include "fx/VectorLength.h"

namespace orvantesco {

/// Takes a signal down to silence and up again, so that what would click can change in between.
/// One gain for each vector of 32 samples: the square of a ramp, 50 ms down and 50 ms up. Audio
/// thread only.
class GainFade {
 public:
  static constexpr double kFadeMs = 50.0;

  GainFade() noexcept { takeRate(); }

  /// Steps of the ramp at the rate in force; a fade that runs goes on from where it is.
  void takeRate() noexcept { outStep = inStep = kVectorLength / (sampleRate * kFadeMs * 0.001); }

  /// Goes down from wherever the gain now is.
  void start() noexcept {
    fadingOut = true;
    fadingIn = false;
  }

  /// Full gain at once, and nothing to do: for when nothing sounds.
  void rest() noexcept {
    fadingOut = fadingIn = done = false;
    value = 1.0;
  }

  bool isActive() const noexcept { return fadingOut || fadingIn; }

  /// True once after the gain has come down to 0: the moment to change what was to change.
  bool takeDone() noexcept {
    const bool wasDone = done;
    done = false;
    return wasDone;
  }

  /// Gain of the next vector, 0..1.
  double next() noexcept {
    if (fadingOut) {
      moveOut();
    } else if (fadingIn) {
      value = std::min(value + inStep, 1.0);
      fadingIn = value < 1.0;
    }
    return value * value;
  }

 private:
  void moveOut() noexcept {
    value = std::max(value - outStep, 0.0);
    if (value > 0.0) return;
    fadingOut = false;
    fadingIn = done = true;
  }

  double outStep = 0.0;  ///< per vector
  double inStep = 0.0;   ///< per vector

  bool fadingOut = false;
  bool fadingIn = false;
  bool done = false;
  double value = 1.0;
};

}  // namespace orvantesco
