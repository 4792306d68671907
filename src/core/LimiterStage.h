#pragma once

#include "core/AudioVector.h"
#include "master/MasterLimiter.h"

namespace orvantesco {

/// The limiter in its place at the end of the wet signal, and the switch that takes it in and out.
///
/// Both roads of the wet signal, through the limiter and beside it, are `limiterLookahead` samples
/// long, so the switch loses and repeats nothing: taken in, the limiter starts empty while the
/// other road still gives what has entered it; taken out, it still gives what it holds, and if it
/// is taken in again meanwhile it keeps that. Audio thread only, or while it is out.
class LimiterStage {
 public:
  /// Takes "Limiter On" (0 off, else a MasterLimiter::Mode) and the boost in dB. A change from one
  /// mode to another fades; a start does not, since nothing of the limiter sounds yet.
  void take(int mode, double boostDb) noexcept;

  /// Whether the wet signal goes through the limiter; beside it otherwise.
  bool isOn() const noexcept { return on; }

  /// Limits one vector of the wet signal, or gives what is left of it after the limiter was taken
  /// out. False, and nothing written, where there is nothing to add.
  bool process(StereoVector& wet, StereoVector& limited) noexcept;

  void reset() noexcept;
  /// The caller goes on with `reset`.
  void rateChanged() noexcept { limiter.rateChanged(); }

 private:
  MasterLimiter limiter;
  bool on = false;
  int vectorsToDrain = 0;  ///< until the look-ahead of a limiter that was taken out is empty
};

}  // namespace orvantesco
