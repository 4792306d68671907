#pragma once

#include "fx/Runaway.h"
#include "fx/VectorLength.h"

namespace orvantesco {

/// A sample-and-hold that takes a new sample `rate` times per sample, rate 0..1: at 1 it lets all
/// through. Its phase is summed sample by sample, so where it takes one does not depend on the
/// vectors. Audio thread.
class SampleHold {
 public:
  /// 32 samples; `out` may be `in`.
  void run(const double* in, double rate, double* out) noexcept {
    double held = hold;
    double phase = holdPhase;
    for (int i = 0; i < kVectorLength; ++i) {
      phase += rate;
      if (phase >= 1.0) {
        phase -= 1.0;
        held = in[i];
      }
      out[i] = held;
    }
    hold = saneOrZero(held);
    holdPhase = saneOrZero(phase);
  }

  void clear() noexcept { hold = holdPhase = 0.0; }

 private:
  double hold = 0.0;
  double holdPhase = 0.0;  ///< 0..1
};

/// The rate of a hold that a knob of 0..1 slows down: 1 at 0, a hundredth at 1. The eighth root
/// spreads the fast end, where a little is heard most, over most of the knob.
double holdRateOf(double amount) noexcept;

}  // namespace orvantesco
