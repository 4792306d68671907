#pragma once

#include "fx/BiquadCascade.h"
#include "fx/DirectFilter.h"
#include "fx/QLMFilter.h"

namespace orvantesco {

/// The filter of most effects: 1 to 12 equal second-order sections, or a Chebyshev filter of that
/// order, of one of the modes of `FilterMode`.
///
/// Sections run as transposed direct form II, the textbook's choice for coefficients that move;
/// the steep modes trade that robustness for a true Chebyshev response and drop their ripple
/// while the cutoff sweeps fast. Coefficients are computed at every second vector at most, and
/// only when a control moved. For one fixed corner `IppFixBiquad` is cheaper.
///
/// Controls for `setParam` and modulation, as the effect slots use them:
///   0 cutoff, 1 resonance (slope where built as `kSlopeFilter`), 2 spread, 3 gain or mode,
///   4 "DIM" or the mix
class IppBiquad : public QLMFilter {
 public:
  static constexpr double kDefaultDriveDb = 24.0;

  /// `filterStages` is held within 1..12; `driveDb` is the gain of a peak at a gain of 1.
  IppBiquad(bool isRight, int filterMode, int filterStages, double driveDb = kDefaultDriveDb);

  void reset() noexcept override;
  void setParam(int index, double value) noexcept override;
  void setStages(double normalised) noexcept override;
  void setMode(int newMode) noexcept override;
  void processBlock() noexcept override;
  void rateChanged() noexcept override;

  /// Sections, or the order of a Chebyshev mode, held within 1..12. A change clears the memory.
  void setStageCount(int count) noexcept;
  /// -1..1 from 0..1 in mode `kPeakFilter`, an amplitude in the shelf modes, else 0..1.
  void setGain(double value) noexcept;
  /// The corner as a fraction of the sample rate, held within 0.0002..0.5, in place of the knob.
  void setDirectFrequency(double fraction) noexcept;
  /// How far a peak's boost is pulled back by its own gain, 0..1.
  void setDim(double amount) noexcept;
  void setMaxDrive(double db) noexcept { maxDriveDb = static_cast<float>(db); }

  int stageCount() const noexcept { return stages; }
  /// Gain behind the sections of the peak and vowel modes.
  double gainBehind() const noexcept { return static_cast<double>(outputGain); }

 private:
  enum class Formula {
    lowpass,
    highpass,
    bandpass,
    allpass,
    peak,
    lowShelf,
    highShelf,
    vowel,
    chebyshevLowpass,
    chebyshevHighpass
  };
  struct ModeTraits {
    Formula formula = Formula::lowpass;
    int forcedStages = 0;  ///< 0: as they are
  };
  ModeTraits traitsOf(int filterMode) const noexcept;

  bool isDirect() const noexcept;
  void enterVowelMode() noexcept;
  void setSlopeOrResonance(double value) noexcept;
  void setGainOrMode(double value) noexcept;
  bool hasOutputGain() const noexcept;
  bool gainIsParameter() const noexcept;

  void updateControls() noexcept;
  double modulatedGain() const noexcept;
  void dampSweep(double cutoffBefore) noexcept;
  void redesign() noexcept;
  void designSections() noexcept;
  void designVowel() noexcept;
  void designChebyshev(FilterBand band) noexcept;

  BiquadSection section(const SectionShape& shape) noexcept;
  BiquadSection peak(const SectionShape& shape) noexcept;

  int stages = 1;
  float maxDriveDb = 24.0F;
  float dim = 0.0F;
  bool slopeControl = false;  ///< parameter 1 is the slope for the life of the block
  ModeTraits traits;

  float outputGain = 1.0F;

  BiquadCascade cascade;
  DirectFilter direct;
};

}  // namespace orvantesco
