#pragma once

#include "delay/RingDelay.h"
#include "fx/Dynamics.h"

namespace orvantesco {

/// "COMPRESSOR": turns down what is louder than a threshold. The detector sees the signal 10 ms
/// before it is heard, so that the gain is there when a stroke arrives; the signal is late by as
/// much. One gain a vector, taken from the running mean square and smoothed over 32 ms.
///
/// The level over the threshold moves in decibels, by a factor a vector: a fall of the gain starts
/// gently and gathers speed, and its return starts fast and ends slowly.
///
/// Controls for `setParam`, as the effect slots use them; modulation reaches control 4 alone:
///   0 threshold (linear), 1 ratio (1 up), 2 attack and 3 release in ms, 4 gain 0..1 for 0..24 dB
class Compressor : public Dynamics {
 public:
  static constexpr double kLookAheadMs = 10.0;

  explicit Compressor(bool isRight = false);

  void setParam(int index, double value) noexcept override;
  void reset() noexcept override;
  void processBlock() noexcept override;
  void rateChanged() noexcept override;

  int lookAheadSamples() const noexcept { return lookAhead; }

 private:
  double gainDb() noexcept;
  double gainOf(double db) noexcept;

  double ratio = 1.0;
  int lookAhead = 0;

  RingDelay delay;
  double factorDb = 0.0;  ///< the gain that `factor` was computed for
  double factor = 1.0;
};

}  // namespace orvantesco
