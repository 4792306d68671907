#pragma once

#include "fx/DCRemover.h"
#include "fx/IppBiquad.h"
#include "fx/ShaperControls.h"
#include "fx/ShaperType.h"
#include "fx/WaveFunctions.h"

namespace orvantesco {

/// The nonlinear effects: "WAVE SHAPE", "SATURATE", "RECTIFY", "DESTROY", "NOISE", "LOFI I"; and,
/// with its filter off, the drive of the filter pairs.
///
/// Each has one filter: in front of the curve for saturation, rectifier and wave shape, where it
/// decides what is distorted; behind it for the others, where it tames what the curve made. The
/// amount is smoothed once per vector and modulated sample by sample.
///
/// Controls for `setParam`, as the effect slots use them:
///   "WAVE SHAPE":  0 curve (`ShaperType`), 1 gain of the peak, 2 its frequency, 3 its Q, 4 spread
///   the others:    0 amount, 1 cutoff, 2 resonance or filter mode, 3 spread, 4 mix
/// Modulation of control 1 (2 of "WAVE SHAPE") moves the cutoff. That of control 2 of the others
/// moves the cutoff too, but to opposite sides on the two channels, never the resonance.
class Shaper : public DSPShell {
 public:
  Shaper(bool isRight, int typeId, double initialAmount = 1.0);

  /// One of `ShaperType`; to be set before sources are connected, which reach the filter by type.
  void setType(int typeId) noexcept;
  /// A `FilterMode`; `kFilterOff` takes the filter out.
  void setFilterMode(int newMode) noexcept;

  /// The memory of the curves survives: it is one sample long. `clearState` drops it too.
  void reset() noexcept override;
  void setParam(int index, double value) noexcept override;
  void modSourceChanged(int index, const double* source) noexcept override;
  void modDepthChanged(int index, const double* depth) noexcept override;
  void processBlock() noexcept override;
  void prepare() noexcept override;
  void rateChanged() noexcept override;
  void clearMemories() noexcept override;
  /// Drops what the curves remember.
  void onStateCleared() noexcept override;

 private:
  int filterControlOf(int index) const noexcept;
  void setShapeParam(int index, double value) noexcept;
  void setShape(int newShape) noexcept;
  void setFilterControl(double value) noexcept;
  void followAmount() noexcept;
  void deriveControls() noexcept;
  const double* filteredInput() noexcept;
  void filterOutput() noexcept;
  void runFold() noexcept;
  void processWaveShape() noexcept;
  void runShape() noexcept;
  void dropCurveState() noexcept;

  int type = kShaperWaveShape;
  int shapeMode = kShaperWaveShape;
  bool isNoise = false;
  bool modeSelectable = false;
  double amount = 1.0;  ///< 0..1
  double wet = 1.0;     ///< share of the filter in "WAVE SHAPE", 0.1..1
  int filterMode = kLowpassFilter;

  ShaperControls controls;
  double holdRate = 1.0;

  IppBiquad filter;
  WaveFunctions waves;
  /// Takes the curve's value of silence for its start: from 0 on, every reset of a shape that makes
  /// 1 of silence would be a thump at full scale.
  DCRemover offsetRemover{DCRemover::Start::fromFirstSample};
};

}  // namespace orvantesco
