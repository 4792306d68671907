#pragma once

#include "fx/QLMFilter.h"

namespace orvantesco {

/// "PHASEBP": a row of 1 to 7 first-order all-pass sections with one common coefficient k, fed back
/// over one sample. Who runs it mixes it with the dry signal, and there lie the notches.
///
///     y[n] = k (x[n] + y[n-1]) - x[n-1],  k = 1 - c^4 in 0..0.99999, gliding with every sample
///
/// The magnitude of a section is 1 for every k, and 0.8 goes round at most, so the loop is stable.
/// Beyond 0.99999 a section would hold on to a constant for minutes.
///
/// Controls for `setParam` and modulation, as the effect slots use them:
///   0 frequency, 1 resonance, 2 spread, 3 sections (normalised, 3..7), 4 mix
class PhaseFilter : public QLMFilter {
 public:
  static constexpr int kMaxStages = 7;

  explicit PhaseFilter(bool isRight = false, int stageCount = 5) noexcept;

  void setParam(int index, double value) noexcept override;
  void modSourceChanged(int index, const double* source) noexcept override;
  void reset() noexcept override;
  void processBlock() noexcept override;

  int stageCount() const noexcept { return stages; }

 private:
  void setStageCount(double normalised) noexcept;
  void updateCoefficient() noexcept;
  void updateResonance() noexcept;
  template <int count>
  void runStages(const double* k) noexcept;
  void runStages(const double* k) noexcept;

  double frequency = 0.0;
  double resonanceKnob = 0.0;
  int stages = 5;

  double coefficient = 0.0;
  double feedbackGain = 0.0;
  double outputGain = 1.0;

  /// The last sample in front of the first section and behind each of them.
  double state[kMaxStages + 1] = {};
};

}  // namespace orvantesco
