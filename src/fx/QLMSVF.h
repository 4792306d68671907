#pragma once

#include "fx/QLMFilter.h"
#include "fx/StateVariable.h"

namespace orvantesco {

/// Modes of `QLMSVF`. The effect "MULTI SVF" offers the first four of its own menu: LP, HP, BP1 and
/// BP2; any other number is a low-pass of one stage without resonance.
enum SvfMode : int {
  kSvfLowpass = 0,        ///< two stages
  kSvfSingleLowpass = 1,  ///< one stage
  kSvfPlainLowpass = 2,   ///< one stage, without resonance
  kSvfHighpass = 3,
  kSvfSingleHighpass = 4,
  kSvfPlainHighpass = 5,
  kSvfBandpass = 6,
  kSvfSteepBandpass = 7,  ///< two stages
  kSvfNotch = 9,          ///< two stages, high-pass and low-pass added
  kSvfInputAndBand = 10,  ///< one stage, input and band-pass added
};

/// The state-variable filter: a resonant stage whose first integrator saturates, so that it can
/// be driven into oscillation and sings at a steady level, and in the steep modes a linear stage
/// without resonance behind it. It follows fast sweeps where the cascades of `IppBiquad` click.
///
/// The corner runs from 50 Hz to 20 kHz over the knob, held above 0.001 of the rate and below
/// `kCornerCeiling`; 1/Q from 1 at no resonance to -0.1 (low corners) or 0 (the highest).
/// Coefficients are computed at every second vector at most, and only when a control moved.
///
/// Controls for `setParam` and modulation:
///   0 cutoff, 1 resonance, 2 spread, 3 mode (its modulation is taken but moves nothing that is
///   heard), 4 the mix
class QLMSVF : public QLMFilter {
 public:
  explicit QLMSVF(bool isRight = false) noexcept;

  void reset() noexcept override;
  void setParam(int index, double value) noexcept override;
  /// Another mode than before takes up its structure and clears the memory.
  void setMode(int newMode) noexcept override;
  void processBlock() noexcept override;
  void clearMemories() noexcept override;

 private:
  using Run = void (QLMSVF::*)() noexcept;
  struct Structure {
    bool hasResonance = false;
    Run run = nullptr;
  };
  static Structure structureOf(int filterMode) noexcept;

  void updateControls() noexcept;
  void deriveCoefficients() noexcept;

  template <bool isResonant, class Pick>
  void runOne() noexcept;
  template <class Pick>
  void runBoth() noexcept;

  Structure structure;

  SvfStage resonantStage;
  SvfStage plainStage;

  SvfMemory resonantMemory;
  SvfMemory plainMemory;
};

}  // namespace orvantesco
