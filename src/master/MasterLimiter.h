#pragma once

#include "delay/RingDelay.h"
#include "fx/Dynamics.h"
#include "master/GainFade.h"
#include "master/MasterLimitFollower.h"

namespace orvantesco {

/// The last stage of the output: a stereo limiter that looks one millisecond ahead, behind a boost
/// that drives the signal into it. One gain moves both channels, so the image stands still.
///
///     kSlowI    levels with long time constants, then a soft limit; hears the sum of both
///               channels, so each channel of a mono signal gets half of the limit at most, and
///               what is opposite in both channels is not held at all
///     kSlowII   the same, lighter, with a hard limit; hears the louder channel of each vector
///     kFast     the hard limit alone; hears the louder channel of each vector
///
/// The limits, for what the limiter hears: behind a hard limit 1 / 1.09 of full scale. Behind the
/// soft one 1 / p of full scale for steps, with p the part of a peak that the follower has risen
/// to after the look-ahead (0.5 ms up, 3 ms down): 0.70 for a single sample, 0.87 for a step.
///
/// Each stage divides by a follower of the signal that stands at 1 at least, so below the limit
/// the signal passes; kSlowI and kSlowII add 1.4 and 1.05 to make up for what levelling takes.
class MasterLimiter : public Dynamics {
 public:
  enum Mode { kSlowI = 1, kSlowII = 2, kFast = 3 };

  MasterLimiter();

  /// Chooses the character; a mode out of range is held within. With `fade` the output goes down
  /// over 50 ms, the mode changes, and it comes up again. Without, it changes at once.
  void setMode(int newMode, bool fade) noexcept;
  int modeInForce() const noexcept { return mode; }
  /// The mode that was chosen last, in force or at the end of a fade.
  int modeAsked() const noexcept { return modeAfterFade; }

  /// Gain in front, 0..36 dB.
  void setBoostDb(double db) noexcept;

  void reset() noexcept override;
  void processBlock() noexcept override;
  void rateChanged() noexcept override;

 private:
  /// In the order in which they follow the signal.
  enum Follower { kEnvelope, kFirstLevel, kSecondLevel, kSoftLimit, kHardLimit, kFollowers };

  void takeRate() noexcept;
  void limit() noexcept;
  void boostInputs() noexcept;
  void hearInputs() noexcept;
  void level() noexcept;
  void meanLevels(double* levels) noexcept;
  void softLimit() noexcept;
  void hardLimit() noexcept;
  void silence() noexcept;
  bool isSaneState() const noexcept;

  // Settings.
  double boost = 1.0;
  int mode = kSlowI;
  int modeAfterFade = kSlowI;

  // Derived from the rate.
  FollowerRates rates[kFollowers];
  double rmsRate = 0.0;

  // State.
  GainFade fade;
  double rmsState = 1.0;
  MasterLimitFollower followers[kFollowers];
  RingDelay delayLeft, delayRight, delaySum;

  // One vector each.
  alignas(32) double leftIn[kVectorLength] = {};
  alignas(32) double rightIn[kVectorLength] = {};
  alignas(32) double sum[kVectorLength] = {};
  alignas(32) double gainVector[kVectorLength] = {};
};

}  // namespace orvantesco
