#pragma once

#include "delay/MModDelayLine.h"

namespace orvantesco {

/// What a swung line reads in one vector: 32 samples x[p], those one later, and the fractions
/// before and from sample `tick` on (32 where the modulator was not looked at).
struct SwungSpan {
  const float* now = nullptr;
  const float* next = nullptr;
  int tick = kVectorLength;
  float fractionBefore = 0.0F;
  float fractionFrom = 0.0F;
};

/// Memory for the pieces of a span that do not lie in the ring side by side.
struct SwungScratch {
  float now[2 * kVectorLength];
  float next[2 * kVectorLength];
  float piece[2 * kVectorLength];
};

/// A modulated delay line that looks at its modulator once in `modPeriod` samples only and runs on
/// at one sample a sample in between, interpolated by a first-order all-pass: unlike a linear
/// interpolation it takes nothing from the high frequencies, which would add up in a long decay.
///
///     y = x[p] + (x[p + 1] - y1) f,  f the fraction of the read position, 0..1
///
/// (J. Dattorro, "Effect Design, Part 2", 1997, on all-pass interpolation in reverbs.)
class MSVRAP1ModDelayLine : public MModDelayLine {
 public:
  /// Silence; the next sample ticks the modulator, and the read position follows from where the
  /// write now stands.
  void reset() noexcept override;

  /// Samples from one tick of the modulator to the next, 1 at least.
  void setModPeriod(int samples) noexcept;

  float process(float in) noexcept override;

  /// The reads of the next 32 samples of `process`, without the interpolation: who has many lines
  /// interpolates them side by side. For a period, and a shortest delay, of more than 32 samples.
  /// Stands until the next write.
  SwungSpan readSpan(SwungScratch& scratch) noexcept;

 private:
  SwungSpan turnedSpan(int tick, SwungScratch& scratch) noexcept;
  void takeModulation() noexcept;

  int sampleCount = 0;  ///< samples since the last tick, 0..modPeriod - 1
  int modPeriod = 50;
  float fraction = 0.0F;
  float output = 0.0F;
};

}  // namespace orvantesco
