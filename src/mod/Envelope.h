#pragma once

#include "fx/Dynamics.h"
#include "fx/IppBiquad.h"

namespace orvantesco {

/// An envelope modulator: turns a signal into a vector of 32 control values. It hears a band of
/// its input between a high-pass and a low-pass. As a follower its output is the level of that
/// band, 0 to about 1.44 at full scale and more with gain; as a gate the band crossing a threshold
/// starts a shape of attack, hold and decay, 0 to 1. `process(source, vector)` reads the one and
/// writes the other. Audio thread.
class Envelope : public Dynamics {
 public:
  Envelope();

  void setFollower(bool follows) noexcept { followerMode = follows; }  ///< false: gate
  void setGain(double linear) noexcept { gain = linear; }              ///< before the detector
  /// Times in ms as the knobs show them. What runs is twice as long.
  void setAttack(double ms) noexcept { setAttackTime(2.0 * ms); }
  void setRelease(double ms) noexcept { setReleaseTime(2.0 * ms); }
  void setHold(double ms) noexcept;
  void setThreshold(double linear) noexcept { gateThreshold = linear; }
  /// Band limits, 0..1 between 50 Hz and 20 kHz on a logarithmic scale.
  void setLocut(double normalised) noexcept { lowCut.setParam(0, normalised); }
  void setHicut(double normalised) noexcept { highCut.setParam(0, normalised); }
  void setDepth(double share) noexcept { depth = share; }
  /// The follower's level as it is, or bent so that low levels are heard.
  void setLinear(bool linear) noexcept { linearOutput = linear; }

  void reset() noexcept override;
  void rateChanged() noexcept override;
  void clearMemories() noexcept override;
  void processBlock() noexcept override;

  /// `process` for a source that others read too: it is not written.
  void run(const double* source, double* vector) noexcept;

  /// The last value before the output's smoothing, with the depth.
  double value() const noexcept { return scalarOutput; }
  /// The last root mean square of the band: what the threshold is compared with.
  double detectedLevel() const noexcept { return detected; }
  /// The last 32 samples of the band, with the gain.
  const double* filteredInput() const noexcept { return buffer; }

 private:
  enum class State { Attack, Hold, Decay, Idle };

  void deriveHoldStep() noexcept;
  void clearLevels() noexcept;
  double followLevel() noexcept;
  double runGate() noexcept;

  // Settings.
  bool followerMode = true;
  bool linearOutput = false;
  double depth = 1.0;
  double gateThreshold = 0.0;  ///< linear
  double holdMs = 0.0;

  // Derived.
  double holdStep = 1.0;  ///< per sample

  // State.
  double follower = 0.0;  ///< level that follows the signal
  State state = State::Idle;
  double gatePhase = 0.0;  ///< 0..1 within the state
  double scalarOutput = 0.0;
  IppBiquad lowCut;
  IppBiquad highCut;
  Smoother outputSmoother;
  alignas(32) double buffer[kVectorLength] = {};
};

}  // namespace orvantesco
