#pragma once

#include <span>

#include "fx/FxScale.h"

namespace orvantesco {

/// The catalogue of effects: which types a position offers, how a type is built, and what its five
/// knobs say and mean. Constant data, readable on every thread.

/// Positions of an effect in a slot, in the order of the parameter bank.
enum class EffectStage { pre = 0, feedback = 1, post = 2 };

/// The class that realises an effect type.
enum class EffectClass {
  none,
  hilbertShifter,
  ringMod,
  phaser,
  pitchShifter,
  shaper,
  lofi,
  stateVariable,
  biquad,
  phaseFilter,
  comb,
  compressor,
  filterPair,
  variableFilterPair,
};

/// How an instance is built, beside its channel.
struct EffectBuild {
  EffectClass kind = EffectClass::none;
  int argument = 0;  ///< shaper: type id; biquad: filter mode; pitch shifter: 1 for dual; poles
  int stages = 0;    ///< biquad: sections at first
};

inline constexpr int kFxParamCount = 5;

/// One knob of an effect.
struct FxParameter {
  const char* caption = "";  ///< over the knob
  const char* name = "";     ///< in the read-out
  const char* unit = "";
  FxScale scale = FxScale::percent;
  double initial = 0.0;  ///< normalised; what choosing the type sets the knob to
};

struct EffectRecord {
  int id = 0;
  const char* menuName = "";  ///< empty for a type that no menu offers
  EffectBuild build;
  const char* icon = "";                    ///< file name without path and extension
  const FxParameter* parameters = nullptr;  ///< kFxParamCount of them
  bool fifthIsMix = true;  ///< whether the last of them is the dry/wet mix, or a modulator fades it
};

/// What the read-out shows for a parameter: caption, printf format of the number, unit.
struct FxReadout {
  const char* name = "";
  const char* format = "%.2f";
  const char* unit = " %";
};

/// The panel of a master effect.
struct MasterEffectRecord {
  int id = 0;
  const char* menuName = "";
  double defaults[kFxParamCount] = {};
  double editorScale[kFxParamCount] = {1.0, 1.0, 1.0, 1.0, 1.0};
};

inline constexpr int kNoEffect = 0;
inline constexpr int kFirstMasterEffect = 38;
inline constexpr int kLastMasterEffect = 45;

/// The type ids that a stage offers, in menu order: a type parameter's value indexes this list.
std::span<const int> effectTypeIds(EffectStage stage) noexcept;
/// The id at a list index, or -1 beyond the list's ends.
int effectTypeIdAt(EffectStage stage, int listIndex) noexcept;
/// Where an id stands in the list of a stage, or -1.
int effectListIndex(EffectStage stage, int typeId) noexcept;

/// The record of a type; that of "OFF" for an id that no effect has.
const EffectRecord& effectRecord(int typeId) noexcept;
/// One of the five parameters; a plain percent without a name for any other index.
const FxParameter& fxParameter(int typeId, int paramIndex) noexcept;
FxReadout fxReadout(int typeId, int paramIndex) noexcept;

/// True for a parameter whose knob has its "nothing" in the middle: a step row then moves it to
/// both sides.
bool isBipolarFxParam(int typeId, int paramIndex) noexcept;
/// False for the types whose fifth knob is not the dry/wet mix.
bool fifthParamIsMix(int typeId) noexcept;

/// The record of a master effect, ids kFirstMasterEffect to kLastMasterEffect; null for others.
const MasterEffectRecord* masterEffectRecord(int id) noexcept;

/// Scales a parameter: `value` comes in normalised and leaves as the number shown, `native`
/// receives the control value for `setParam`.
void fxParamScale(int fxType, int paramIndex, double* value, double* native) noexcept;

/// The labels of a selection parameter, empty for a parameter that shows a number.
std::span<const char* const> fxParamLabels(int typeId, int paramIndex) noexcept;
/// The label of a shown value, null for a parameter that shows a number. It names what runs.
const char* fxParamLabel(int typeId, int paramIndex, double shown) noexcept;

}  // namespace orvantesco
