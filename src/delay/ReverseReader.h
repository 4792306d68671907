#pragma once

#include "delay/DelayRing.h"
#include "fx/Smoother.h"

namespace orvantesco {

/// Plays a ring against the direction of writing, in cycles: each starts at the write position of
/// its time and runs back, one sample a sample, until its length is played or a trigger asks for
/// a new one. What is heard lies between 0 and two cycles back.
///
/// A new cycle fades in over the old one, which runs on under the fade; a fade always completes,
/// so a trigger that falls into it waits for its end. An offset in samples, glided over 300 ms,
/// shifts the cycle further back; its fraction goes through a first-order all-pass interpolator.
/// Audio thread only; nothing allocates.
class ReverseReader {
 public:
  static constexpr double kFirstFadeMs = 10.0;

  ReverseReader() noexcept { rateChanged(); }

  /// Length of the crossfade in ms.
  void setFade(double ms) noexcept;
  /// Offset in samples; below 0 counts as 0.
  void setOffset(double samples) noexcept;
  /// The next cycle begins as soon as no fade is running.
  void trigger() noexcept { isTriggered = true; }

  /// The cycle begins anew from where it began last; its start stays.
  void reset() noexcept;
  /// Forgets the interpolator's memory.
  void clearMemory() noexcept { memory = 0.0; }
  /// Takes times anew from the sample rate, and every position back to 0.
  void rateChanged() noexcept;

  /// 32 samples of cycles of `cycleSamples`.
  void read(const DelayRing& ring, double cycleSamples, double* output) noexcept;

  /// True while a new cycle fades in.
  bool isCrossing() const noexcept { return crossing; }

 private:
  double crossfade(const DelayRing& ring, double fresh) noexcept;
  void restart(const DelayRing& ring, int lastPosition) noexcept;

  double fadeMs = kFirstFadeMs;
  double offset = 0.0;

  Smoother offsetGlide{300.0};
  double fadeLength = 0.0;  ///< samples
  double fadeInverse = 0.0;

  int count = 0;          ///< samples played of this cycle
  int start = 0;          ///< write position at which it began
  int crossPosition = 0;  ///< where the outgoing cycle is read
  double memory = 0.0;
  bool isTriggered = false;
  bool crossing = false;
};

}  // namespace orvantesco
