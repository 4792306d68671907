#pragma once

#include "delay/DelayRing.h"
#include "fx/Smoother.h"

namespace orvantesco {

/// Replays short pieces of a ring at a speed of their own: a granular pitch shifter.
///
/// A grain is counted in samples of the source, so at twice the speed it lasts half the time. A
/// new one starts at least its own length behind the write position, so that even at double speed
/// it only just reaches it, and fades in over the old one, which runs on under the fade. The
/// incoming grain is read by a four-point cubic (Catmull and Rom, A Class of Local Interpolating
/// Splines, 1974), the outgoing one, soon gone, by its nearest sample.
/// Audio thread only; nothing allocates.
class GrainReader {
 public:
  static constexpr double kFirstSizeMs = 200.0;

  /// What one block of grains is made of.
  struct Settings {
    double rate = 1.0;          ///< samples of the source for each sample
    double sizeSamples = 0.0;   ///< a grain's length
    double position = 0.0;      ///< 0: grains start at the delay time, 1: at the newest material
    double delaySamples = 0.0;  ///< where grains start at position 0
  };

  GrainReader() noexcept { rateChanged(); }

  /// Crossfade of two grains in ms, at most the grain's length; 0 for a fifth of it, at most 50 ms.
  void setFade(double ms) noexcept;

  /// Back to the ring's start; what is left of the grain plays on from there.
  void reset() noexcept { readPosition = 0.0; }
  /// Takes times anew from the sample rate, and every position and count back to 0.
  void rateChanged() noexcept;

  /// 32 samples.
  void read(const DelayRing& ring, const Settings& settings, double* output) noexcept;

  double fadeSamples() const noexcept { return fadeLength; }

 private:
  void followSize(const double* sizes, double target) noexcept;
  void makeFade(double size) noexcept;
  void startGrain(const DelayRing& ring, const Settings& settings, double size, int i) noexcept;
  double crossfade(const DelayRing& ring, double rate, double fresh) noexcept;

  double fadeMs = 0.0;

  Smoother sizeGlide{10.0};
  int maxFade = 0;          ///< samples
  double fadeLength = 0.0;  ///< samples
  double fadeInverse = 0.0;
  double fadeSize = 0.0;  ///< the size that the fade was made for

  double count = 0.0;         ///< distance played of the grain, in samples of the source
  double readPosition = 0.0;  ///< of the incoming grain
  double oldPosition = 0.0;   ///< of the outgoing one
};

}  // namespace orvantesco
