#pragma once

namespace orvantesco {

/// How a normalised effect parameter x (0..1) becomes the number that a person sees and the
/// control value that the effect takes. One rule for each cell of the catalogue.
enum class FxScale {
  percent,           ///< shown 100x %; control x
  bipolarPercent,    ///< shown 100(2x-1) %; control 2x-1
  frequency,         ///< shown 50 * 400^x Hz; control x
  shiftFrequency,    ///< shown 2x-1 Hz (times the scale); control x
  shiftDecade,       ///< both 10, 100 or 1000
  ringFrequency,     ///< shown 4999.9 x^4 + 0.1 Hz; control x
  squaredPercent,    ///< shown 100x %; control x^2
  phaserStages,      ///< both 1..8
  semitones,         ///< shown -12..12, whole; control 2x-1
  bufferMs,          ///< both 99 x^2 + 1 ms
  shapeMode,         ///< shown 0..7, the label; control the type id of the curve
  gain24Db,          ///< shown 24x dB; control x
  shapeQ,            ///< shown 100x - 0.1 %; control x
  shaperFilterMode,  ///< shown 0..4, the label; control the filter mode
  svfMode,           ///< shown 0..3, the label; control the filter mode
  steepMode,         ///< shown 0..1, the label; control the filter mode
  multiMode,         ///< shown 0..3, the label; control the filter mode
  filterSlope,       ///< shown 3x, the label its nearest; control x
  peakGainDb,        ///< shown -24..24 dB, whole; control x
  phaseFilterPoles,  ///< shown 3..7; control x
  combFrequency,     ///< shown 10^(4x) Hz; control x
  vowelSet,          ///< shown 1..4; control x
  thresholdDb,       ///< shown -50 x^2 dB; control its gain
  ratio,             ///< both 9 x^3 + 1
  attackMs,          ///< both 199 x^2 + 1 ms
  releaseMs,         ///< both 980 x + 20 ms
  pairMode,          ///< both 0..5, the label
  sideSlope,         ///< both 0..3, the label
};

/// One value on its two scales.
struct FxScaled {
  double shown = 0.0;
  double control = 0.0;
};

/// x 0..1; beyond it the rules go on, selections stay within their list.
FxScaled scaleFxParam(FxScale scale, double x) noexcept;

/// True where the middle of the knob is "nothing" and its sides are opposite signs.
bool isBipolarScale(FxScale scale) noexcept;

/// printf format of the shown number: whole numbers without decimals.
const char* formatOfScale(FxScale scale) noexcept;

}  // namespace orvantesco
