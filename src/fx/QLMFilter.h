#pragma once

#include "fx/DSPShell.h"
#include "fx/FilterMode.h"

namespace orvantesco {

/// Base of the modulated filters: the controls cutoff, resonance and gain with their smoothing,
/// their modulation and the question whether any of them moved.
class QLMFilter : public DSPShell {
 public:
  explicit QLMFilter(bool isRight = false) noexcept;

  virtual void setResonance(float amount) noexcept { resonance = static_cast<double>(amount); }
  virtual void setQOffset(double offset) noexcept { qOffset = offset; }
  virtual void setQScale(double scale) noexcept { qScale = scale; }
  virtual void setMode(int newMode) noexcept { mode = newMode; }
  /// Compares cutoff, resonance and gain with their last values, in this order, takes over the
  /// first that differs and tells so. When two moved at once, the second is seen at the next call.
  virtual bool controlsChanged() noexcept;

  void rateChanged() noexcept override;
  void clearMemories() noexcept override;

  /// The knob, held within 0..1: normalised, or a fraction of the sample rate where
  /// `setFrequencyIsNormalised(false)` says so. Kept in single precision.
  void setCutoff(double value) noexcept;
  void setFrequencyIsNormalised(bool isNormalised) noexcept {
    frequencyIsNormalised = isNormalised;
  }
  int filterMode() const noexcept { return mode; }

 protected:
  /// Knob, spread and modulation of the cutoff (controls 0 and 2), smoothed. Spread and control 2
  /// move the channels to opposite sides.
  double smoothedCutoff() noexcept;
  /// Knob and modulation (control 1), within 0..1, not smoothed.
  double modulatedResonance() const noexcept;
  void setSpread(double value) noexcept;

  Smoother cutoffSmoother{1.0};
  Smoother resonanceSmoother;
  Smoother gainSmoother{5.0 / kVectorLength};  ///< 5 ms if ticked once a vector

  double resonance = 0.0;
  double cutoff = 0.0;
  double gain = 1.0;
  double qOffset = 1.0;
  double qScale = 1.0;
  bool frequencyIsNormalised = true;
  int mode = kFilterOff;

  double resonanceNow = 0.0;
  double cutoffNow = 0.0;
  double gainNow = 1.0;
  double resonanceLast = 0.0;
  double cutoffLast = 0.0;
  double gainLast = 1.0;
  double sweepDamping = 1.0;

 private:
  void restoreControls() noexcept;
};

}  // namespace orvantesco
