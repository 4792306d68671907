#pragma once

#include "fx/DSPShell.h"
#include "fx/SimpleOSC.h"

namespace orvantesco {

/// Taps of one second-order all-pass section,
///
///     H(z) = (a + b z^-1 + z^-2) / (1 + b z^-1 + a z^-2)
///
/// `b` decides where its phase passes half a turn, `a` how fast.
struct PhaserTaps {
  double a = 0.0;
  double b = 0.0;
};

/// Taps of section `stage` (0..7) with the sweep at `position`. Each section has a place of its own
/// on the sweep, f = place * position held within 0.002..0.998 of half the sample rate, and there
/// a < 1 and |b| < 1 + a: every position is stable.
PhaserTaps phaserTaps(int stage, double position) noexcept;

/// "PHASE": one to eight second-order all-pass sections in a row, fed back over one sample and
/// added to the dry signal, which cancels it where the row has turned the phase by half.
///
/// Within a vector the sections keep their taps and run as transposed direct form II, whose sample
/// waits for one product and one sum a section; between vectors they keep plain inputs and outputs,
/// so that new taps meet the signal and not a state that was made by the old ones.
///
/// Controls for `setParam` and modulation, as the effect slots use them:
///   0 place of the sweep, 1 depth, 2 sections (1..8), 3 spread (modulation alone), 4 feedback
class PhaserC : public SimpleOSC, public DSPShell {
 public:
  static constexpr int kMaxStages = 8;

  explicit PhaserC(bool isRight = false) noexcept;

  /// Places the sweep: 0..1 from the lowest to the highest.
  void setRate(double value) noexcept override;
  void setParam(int index, double value) noexcept override;
  void reset() noexcept override;
  void prepare() noexcept override;
  void processBlock() noexcept override;
  void onStateCleared() noexcept override;
  void rateChanged() noexcept override;
  void clearMemories() noexcept override;

  int stageCount() const noexcept { return stages; }
  double sweepBase() const noexcept { return base; }

 private:
  void setDepth(double value) noexcept;
  void setStageCount(double count) noexcept;
  void updatePosition() noexcept;
  void restartSweep() noexcept;
  void deriveTaps() noexcept;
  void runStages(double* wet) noexcept;
  template <int count>
  void runStages(double* wet) noexcept;
  void mixWith(double* wet) noexcept;

  double base = 0.6;
  double depthWet = 0.0;
  double depthDry = 1.0;
  double feedbackGain = 0.0;
  int stages = 2;

  double a[kMaxStages] = {};
  double b[kMaxStages] = {};
  bool coefficientsDirty = true;

  Smoother positionSmoother;  ///< 10 ms, ticked once per vector
  double positionTarget = 0.0;
  double position = 0.0;
  double positionLast = 0.0;

  double x1[kMaxStages] = {};
  double x2[kMaxStages] = {};
  double y1[kMaxStages] = {};
  double y2[kMaxStages] = {};
  double feedbackState = 0.0;
};

}  // namespace orvantesco
