#pragma once

#include "fx/DSPShell.h"

namespace orvantesco {

/// The detector that compressor, envelope modulators and limiter share: a running mean square and
/// the ballistics of a level. It works once for each vector of 32 samples.
///
/// A time t in ms means n = max(1, t * 0.001 * sampleRate) samples. Its step is 1 / n; its factor
/// for a vector is exp(-2 pi / n)^32, a decay, or the inverse of that, a growth.
class Dynamics : public DSPShell {
 public:
  /// Least level that the ballistics hold: from 0 no factor would ever lead up again.
  static constexpr double kLevelFloor = 0.001867442732;
  /// Brings kLevelFloor..1, shifted down to 0, back to an end of 1.
  static constexpr double kLevelScale = 0.998132557;

  /// Times of rise and fall in ms, as they run. A time that is not finite is ignored.
  void setAttackTime(double ms) noexcept;
  void setReleaseTime(double ms) noexcept;

  /// The mean square starts from silence.
  void reset() noexcept override;
  void rateChanged() noexcept override;
  void clearMemories() noexcept override;

 protected:
  explicit Dynamics(bool isRight = false) noexcept;

  /// Root of the running mean square, 32 samples further on. What is not finite drops the mean.
  double rms(const double* vector) noexcept;

  /// Moves a level towards `target`: up by the attack's factor, but not past it, down by the
  /// release's, and never below the floor.
  double nextLevel(double levelBefore, double target) const noexcept;

  double meanSquare = 0.0;
  double level = 0.0;
  double detected = 0.0;   ///< last result of `rms` that a block kept
  double threshold = 1.0;  ///< linear
  double gain = 1.0;

  double attackMs = 10.0;
  double releaseMs = 100.0;
  double attackFactor = 1.0;   ///< per vector, above 1
  double releaseFactor = 1.0;  ///< per vector, below 1
  double attackStep = 0.0;     ///< per sample
  double releaseStep = 0.0;    ///< per sample

 private:
  void deriveFactors() noexcept;
};

}  // namespace orvantesco
