#pragma once

#include <array>
#include <span>

namespace orvantesco {

/// Texts of the values 0, 1, 2, ... of a parameter. Static: they outlive every record.
using LabelList = std::span<const char* const>;

// ---- lists of parameters ----

extern const LabelList OffOnLabels;
extern const LabelList LimiterLabels;
extern const LabelList DirectOutLabels;
/// One list for each slot: a slot can only listen to slots before it.
extern const std::array<LabelList, 4> InputLabels;
extern const LabelList MasterFxSourceLabels;
extern const LabelList OutputModeLabels;
extern const LabelList DelayModeLabels;
extern const LabelList DelayRouteLabels;
extern const LabelList TapCountLabels;  ///< value i means i + 1 taps
extern const LabelList TapFbLabels;
extern const LabelList TimebaseLabels;
/// The labels 1..5 are replaced at run time by the parameter names of the POST effect.
extern const LabelList TapFxParamLabels;
extern const LabelList StepQuantLabels;
extern const LabelList TapPanModeLabels;
extern const LabelList TapDiOutLabels;
extern const LabelList ReverseTriggerLabels;
extern const LabelList LfoWaveLabels;
extern const LabelList PolarityLabels;
extern const LabelList LfoSyncLabels;
extern const LabelList LfoModeLabels;
/// What `kLfoRate` offers while its LFO runs in a tempo mode.
extern const LabelList LfoRateSyncLabels;
extern const LabelList TriggerLabels;
extern const LabelList GateTimebaseLabels;
extern const LabelList GateDirectionLabels;
extern const LabelList EnvModeLabels;
extern const LabelList EnvSourceLabels;
extern const LabelList EnvOutputLabels;
extern const LabelList ModSourceLabels;
extern const LabelList LogicTypeLabels;
extern const LabelList MasterFxLabels;
/// What hosts and state see of an effect type. What a person chooses from comes from the effect
/// catalogue instead: these lists are longer than the stages' menus, and `FbFxTypeLabels` lacks
/// one effect.
extern const LabelList FxTypeLabels;
extern const LabelList FbFxTypeLabels;

// ---- lists of the editor, which name no parameter ----

extern const LabelList GateLanePresetLabels;
extern const LabelList TapPatternLabels;
extern const LabelList PanLanePresetLabels;  ///< offered nowhere: pan lanes use the gate lane's

// Short forms for narrow controls.
/// 13 entries for 15 sources: gates 3 and 4 have none, so an index here is no source value.
extern const LabelList ModSourceShortLabels;
extern const LabelList LfoSyncShortLabels;
extern const std::array<LabelList, 4> InputShortLabels;

}  // namespace orvantesco
