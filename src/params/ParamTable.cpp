#include "params/ParamTable.h"

#include "params/ParamIndex.h"

namespace orvantesco {
namespace {

constexpr auto real = ParamType::real;
constexpr auto whole = ParamType::integer;
constexpr auto choice = ParamType::enumeration;
constexpr auto boolean = ParamType::boolean;

constexpr std::span<const LabelList> one(const LabelList& list) { return {&list, 1}; }

constexpr auto offOn = one(OffOnLabels);
constexpr auto modSources = one(ModSourceLabels);
constexpr auto stepCounts = one(StepQuantLabels);

// Columns: base, members, name, type, default, {min, max, step, shape where it is not 1}, unit,
// texts. Units that look wrong ("%" of a level in dB or of a glide in ms, "db") are what hosts
// have always been told.
// clang-format off
constexpr ParamFamily table[] = {
    // ---- slots ----
    {kSlotOn, 4, "SlotOn {n}", whole, {1, 0}, {0, 1, 1}, "", offOn},
    {kDelayOn, 4, "DelayOn {n}", whole, 1, {0, 1, 1}, "", offOn},
    {kDirectOut, 4, "Direct Out {n}", choice, 3, {0, 3, 1}, "", one(DirectOutLabels)},
    {kInput, 4, "Input {n}", choice, 0, {0, 11, 1}, "", InputLabels},
    {kDirectIn, 4, "Direct In {n}", real, 0, {0, 100, 0.1}, "%", {}},
    {kDelayModulation, 4, "Modulation {n}", real, 100, {0, 100, 0.1}, "%", {}},
    {kMasterFxSource, 4, "Master FX Source {n}",
     choice, 4, {0, 4, 1}, "", one(MasterFxSourceLabels)},
    {kPanPosition, 4, "PanPosition {n}", whole, 0, {0, 1, 1}, "", offOn},
    {kWidth, 4, "Width {n}", real, 100, {0, 100, 0.1}, "%", {}},
    {kOutputMode, 4, "Output Mode {n}", choice, 0, {0, 2, 1}, "", one(OutputModeLabels)},
    {kLROffset, 4, "L/R Offset {n}", real, 0, {-25, 25, 0.01}, "ms", {}},
    {kInputGain, 4, "Input Gain {n}", real, -3, {-60, 12, 0.1, 0.5}, "dB", {}},
    {kInputGainModDepth, 4, "Input Gain ModDepth {n}", real, 0, {-100, 100, 0.1}, "%", {}},
    {kInputGainModSource, 4, "InputGain ModSource{n}", choice, 0, {0, 14, 1}, "", modSources},
    {kPanning, 4, "Panning {n}", real, 0, {-100, 100, 0.1}, "%", {}},
    {kPanningModDepth, 4, "Panning ModDepth {n}", real, 0, {-100, 100, 0.1}, "%", {}},
    {kPanningModSource, 4, "Panning ModSource{n}", choice, 0, {0, 14, 1}, "", modSources},
    {kFeedback, 4, "Feedback {n}", real, 50, {0, 160, 0.1}, "%", {}},
    {kFeedbackModDepth, 4, "Feedback ModDepth {n}", real, 0, {-100, 100, 0.1}, "%", {}},
    {kFeedbackModSource, 4, "Feedback ModSource{n}", choice, 0, {0, 14, 1}, "", modSources},
    {kLevel, 4, "Level {n}", real, -3, {-60, 12, 0.1, 0.5}, "%", {}},
    {kLevelModDepth, 4, "Level ModDepth {n}", real, 0, {-100, 100, 0.1}, "%", {}},
    {kLevelModSource, 4, "Level ModSource{n}", choice, 0, {0, 14, 1}, "", modSources},
    {kMasterFxSend, 4, "M-FX Send {n}", real, 50, {0, 100, 0.1}, "%", {}},
    {kMasterFxSendModDepth, 4, "M-FX Send ModDepth {n}", real, 0, {-100, 100, 0.1}, "%", {}},
    {kMasterFxSendModSource, 4, "M-FX Send ModSource{n}", choice, 0, {0, 14, 1}, "", modSources},

    // ---- effects ----
    {kFxTypePre, 4, "FX{n} PR", choice, 0, {0, 24, 1}, "", one(FxTypeLabels)},
    {kFxTypeFeedback, 4, "FX{n} FB", choice, 0, {0, 24, 1}, "", one(FbFxTypeLabels)},
    {kFxTypePost, 4, "FX{n} PO", choice, 0, {0, 24, 1}, "", one(FxTypeLabels)},
    {kFxParam1, 12, "FXParam1 {slot} {stage}", real, 0, {0, 100, 0.01}, "%", {}},
    {kFxParam1 + 12, 12, "FXParam1 ModDepth {slot} {stage}", real, 0, {-100, 100, 0.01}, "%", {}},
    {kFxParam1 + 24, 12, "FXParam1 ModSource{slot} {stage}", choice, 0, {0, 14, 1}, "", modSources},
    {kFxParam2, 12, "FXParam2 {slot} {stage}", real, 0, {0, 100, 0.01}, "%", {}},
    {kFxParam2 + 12, 12, "FXParam2 ModDepth {slot} {stage}", real, 0, {-100, 100, 0.01}, "%", {}},
    {kFxParam2 + 24, 12, "FXParam2 ModSource{slot} {stage}", choice, 0, {0, 14, 1}, "", modSources},
    {kFxParam3, 12, "FXParam3 {slot} {stage}", real, 0, {0, 100, 0.01}, "%", {}},
    {kFxParam3 + 12, 12, "FXParam3 ModDepth {slot} {stage}", real, 0, {-100, 100, 0.01}, "%", {}},
    {kFxParam3 + 24, 12, "FXParam3 ModSource{slot} {stage}", choice, 0, {0, 14, 1}, "", modSources},
    {kFxParam4, 12, "FXParam4 {slot} {stage}", real, 0, {0, 100, 0.01}, "%", {}},
    {kFxParam4 + 12, 12, "FXParam4 ModDepth {slot} {stage}", real, 0, {-100, 100, 0.01}, "%", {}},
    {kFxParam4 + 24, 12, "FXParam4 ModSource{slot} {stage}", choice, 0, {0, 14, 1}, "", modSources},
    {kFxParam5, 12, "FXParam5 {slot} {stage}", real, 0, {0, 100, 0.01}, "%", {}},
    {kFxParam5 + 12, 12, "FXParam5 ModDepth {slot} {stage}", real, 0, {-100, 100, 0.01}, "%", {}},
    {kFxParam5 + 24, 12, "FXParam5 ModSource{slot} {stage}", choice, 0, {0, 14, 1}, "", modSources},
    {kFxOnPre, 4, "FXOn PR {n}", whole, 0, {0, 1, 1}, "", offOn},
    {kFxOnFeedback, 4, "FXOn FB {n}", whole, 0, {0, 1, 1}, "", offOn},
    {kFxOnPost, 4, "FXOn PO {n}", whole, 0, {0, 1, 1}, "", offOn},

    // ---- delays ----
    {kDelayMode, 4, "Delay Mode {n}", choice, 0, {0, 3, 1}, "", one(DelayModeLabels)},
    {kDelayRoute, 4, "Delay Route {n}", choice, 0, {0, 8, 1}, "", one(DelayRouteLabels)},
    {kDelayTaps, 4, "DelayTaps {n}", choice, 7, {0, 15, 1}, "", one(TapCountLabels)},
    {kDelayTapFb, 4, "DelayTap FB {n}", choice, 0, {0, 16, 1}, "", one(TapFbLabels)},
    {kFbProportional, 4, "FBProportional {n}", whole, 0, {0, 1, 1}, "", offOn},
    {kTimebase, 4, "Timebase {n}", choice, 2, {0, 10, 1}, "", one(TimebaseLabels)},
    {kTapTimebase, 4, "TapTimebase {n}", choice, 0, {0, 10, 1}, "", one(TimebaseLabels)},
    {kDelayFactorL, 4, "DelayFactorL {n}", whole, 4, {1, 16, 1}, "", {}},
    {kDelayFactorR, 4, "DelayFactorR {n}", whole, 4, {1, 16, 1}, "", {}},
    {kDelayTimeL, 4, "Delay TimeL {n}", real, 500, {1, 4000, 0.01, 3}, "ms", {}},
    {kDelayTimeLModDepth, 4, "Delay TimeL ModDepth {n}", real, 0, {-100, 100, 0.01}, "%", {}},
    {kDelayTimeLModSource, 4, "DelayTimeL ModSource{n}", choice, 0, {0, 14, 1}, "", modSources},
    {kDelayTimeR, 4, "Delay TimeR {n}", real, 500, {1, 4000, 0.01, 3}, "ms", {}},
    {kDelayTimeRModDepth, 4, "Delay TimeR ModDepth {n}", real, 0, {-100, 100, 0.01}, "%", {}},
    {kDelayTimeRModSource, 4, "DelayTimeR ModSource{n}", choice, 0, {0, 14, 1}, "", modSources},
    {kTapFxParam1, 4, "Tap FX Param1 {n}", choice, 0, {0, 5, 1}, "", one(TapFxParamLabels)},
    {kTapFxParam2, 4, "Tap FX Param2 {n}", choice, 0, {0, 5, 1}, "", one(TapFxParamLabels)},
    {kTapFxParam1Steps, 4, "Tap FX Param1 Steps {n}", choice, 0, {0, 12, 1}, "", stepCounts},
    {kTapFxParam2Steps, 4, "Tap FX Param2 Steps {n}", choice, 0, {0, 12, 1}, "", stepCounts},
    {kTapStepTime, 64, "TapDelay{lane} Step{step} Time", real, 100, {0, 100, 0.1}, "%", {}},
    {kTapStepLevel, 64, "TapDelay{lane} Step{step} Level", real, 100, {0, 100, 0.1}, "%", {}},
    {kTapStepPan, 64, "TapDelay{lane} Step{step} Pan", real, 0, {-100, 100, 0.1}, "%", {}},
    {kTapStepFxP1, 64, "TapDelay{lane} Step{step} FX P1", real, 0, {0, 100, 0.1}, "%", {}},
    {kTapStepFxP2, 64, "TapDelay{lane} Step{step} FX P2", real, 0, {0, 100, 0.1}, "%", {}},
    {kTapTimeStepDepth, 4, "Tap Time Step Depth {n}", real, 100, {0, 100, 0.01}, "%", {}},
    {kTapLevelStepDepth, 4, "Tap Level Step Depth {n}", real, 100, {0, 100, 0.01}, "%", {}},
    {kTapPanWidth, 4, "Tap Pan Width {n}", real, 100, {0, 100, 0.01}, "%", {}},
    {kTapFxP1StepDepth, 4, "Tap FX P1 Step Depth {n}", real, 100, {0, 100, 0.01}, "%", {}},
    {kTapFxP2StepDepth, 4, "Tap FX P2 Step Depth {n}", real, 100, {0, 100, 0.01}, "%", {}},
    {kTapTimeSteps, 4, "Tap Time Steps {n}", choice, 0, {0, 12, 1}, "", stepCounts},
    {kTapLevelSteps, 4, "Tap Level Steps {n}", choice, 0, {0, 12, 1}, "", stepCounts},
    {kTapPanSteps, 4, "Tap Pan Steps {n}", choice, 0, {0, 12, 1}, "", stepCounts},
    {kTapPanMode, 4, "Tap Pan Mode {n}", choice, 0, {0, 3, 1}, "", one(TapPanModeLabels)},
    {kDelayTapDiOut, 4, "DelayTap DI Out {n}", choice, 0, {0, 1, 1}, "", one(TapDiOutLabels)},
    {kDelayTapsTime, 4, "Delay Taps Time {n}", real, 50, {1, 500, 0.01, 2}, "ms", {}},
    {kDelayTapsTimeModDepth, 4, "Delay Taps Time ModDepth {n}",
     real, 0, {-100, 100, 0.01}, "%", {}},
    {kDelayTapsTimeModSource, 4, "DelayTapsTime ModSource{n}",
     choice, 0, {0, 14, 1}, "", modSources},
    {kDelayTapsSwell, 4, "Delay Taps Swell {n}", real, 0, {0, 100, 0.01}, "%", {}},
    {kDelayLRLink, 4, "DelayL/R Link {n}", whole, 0, {0, 1, 1}, "", offOn},
    {kDelaySpread, 4, "Delay Spread {n}", real, 0, {-20, 20, 0.01}, "ms", {}},
    {kDelayModDepth, 4, "Delay ModDepth {n}", real, 0, {-100, 100, 0.01}, "%", {}},
    {kDelayModSource, 4, "DelaySpread ModSource{n}", choice, 0, {0, 14, 1}, "", modSources},
    {kDelayLopass, 4, "Delay Lopass {n}", real, 7500, {200, 20000, 0.1, 4}, "Hz", {}},
    {kDelayHipass, 4, "Delay Hipass {n}", real, 20, {20, 3000, 0.1, 4}, "Hz", {}},
    {kGrainSize, 4, "Grain Size {n}", real, 100, {1, 400, 0.01, 2}, "ms", {}},
    {kGrainSizeModDepth, 4, "Grain Size ModDepth {n}", real, 0, {-100, 100, 0.01}, "%", {}},
    {kGrainSizeModSource, 4, "GrainSize ModSource{n}", choice, 0, {0, 14, 1}, "", modSources},
    {kGrainSpeed, 4, "Grain Speed {n}", real, 0, {-2, 2, 0.01}, "2^", {}},
    {kGrainSpeedModDepth, 4, "G-Speed ModDepth {n}", real, 0, {-100, 100, 0.01}, "%", {}},
    {kGrainSpeedModSource, 4, "GrainSpread ModSource{n}", choice, 0, {0, 14, 1}, "", modSources},
    {kGrainPosition, 4, "Grain Position {n}", real, 0, {0, 100, 0.01}, "%", {}},
    {kGrainPositionModDepth, 4, "G-Position ModDepth {n}", real, 0, {-100, 100, 0.01}, "%", {}},
    {kGrainPositionModSource, 4, "GrainSpeed ModSource{n}", choice, 0, {0, 14, 1}, "", modSources},
    {kGrainFade, 4, "Grain Fade {n}", real, 0, {0, 50, 0.01, 2}, "ms", {}},
    {kReverseDelayTrigger, 4, "Reverse Delay Trigger {n}",
     choice, 0, {0, 3, 1}, "", one(ReverseTriggerLabels)},
    {kReverseXFade, 4, "Reverse X-Fade {n}", real, 10, {1, 1000, 0.01, 2}, "ms", {}},

    // ---- LFOs ----
    {kLfoOn, 4, "LFO On {n}", whole, 0, {0, 1, 1}, "", offOn},
    {kLfoWave, 4, "LFO Wave {n}", choice, 0, {0, 26, 1}, "", one(LfoWaveLabels)},
    {kLfoPol, 4, "LFO Pol {n}", choice, 0, {0, 2, 1}, "", one(PolarityLabels)},
    {kLfoSync, 4, "LFO Sync {n}", choice, 0, {0, 3, 1}, "", one(LfoSyncLabels)},
    {kLfoSwap, 4, "LFO Swap {n}", whole, 0, {0, 1, 1}, "", offOn},
    {kLfoReverse, 4, "LFO Reverse {n}", whole, 0, {0, 1, 1}, "", offOn},
    {kLfoMode, 4, "LFO Mode {n}", choice, 0, {0, 2, 1}, "", one(LfoModeLabels)},
    {kLfoTrigger, 4, "LFO Trigger {n}", choice, 0, {0, 13, 1}, "", one(TriggerLabels)},
    {kLfoRate, 4, "LFO Rate {n}", real, 0.5, {0.001, 500, 0.01, 4}, "Hz", {}},
    {kLfoFreqModDepth, 4, "LFO Freq ModDepth {n}", real, 0, {-100, 100, 0.1}, "%", {}},
    {kLfoFreqModSource, 4, "LFO Freq ModSource{n}", choice, 0, {0, 14, 1}, "", modSources},
    {kLfoDepth, 4, "LFO Depth {n}", real, 50, {0, 100, 0.01}, "%", {}},
    {kLfoPhase, 4, "LFO Phase {n}", real, 0, {0, 100, 0.01}, "%", {}},
    {kLfoGlide, 4, "LFO Glide {n}", real, 10, {1, 2000, 0.01, 2}, "ms", {}},

    // ---- gates ----
    {kGateLength, 4, "Gate{n} Length", whole, 8, {1, 16, 1}, "Steps", {}},
    {kGateOn, 4, "Gate{n} On", whole, 0, {0, 1, 1}, "", offOn},
    {kGateTimebase, 4, "Gate{n} Timebase", choice, 0, {0, 21, 1}, "", one(GateTimebaseLabels)},
    {kGateDirection, 4, "Gate{n} Direction", choice, 0, {0, 3, 1}, "", one(GateDirectionLabels)},
    {kGateSync, 4, "Gate{n} Sync", whole, 0, {0, 1, 1}, "", offOn},
    {kGateGlide, 4, "Gate{n} Glide", real, 0, {0, 2000, 0.1, 2}, "%", {}},
    {kGateDepth, 4, "Gate{n} Depth", real, 100, {0, 100, 0.1}, "%", {}},
    {kGatePol, 4, "GATE Pol {n}", choice, 0, {0, 2, 1}, "", one(PolarityLabels)},
    {kGateSteps, 4, "GATE Steps {n}", choice, 0, {0, 12, 1}, "", stepCounts},
    {kGateStep, 64, "Gate{lane} Step{step}", real, 0, {0, 100, 0.1}, "%", {}},

    // ---- envelopes ----
    {kEnvOn, 2, "ENV{n} On", whole, 0, {0, 1, 1}, "", offOn},
    {kEnvMode, 2, "ENV{n} Mode", choice, 0, {0, 1, 1}, "", one(EnvModeLabels)},
    {kEnvSource, 2, "ENV{n} Source", choice, 0, {0, 16, 1}, "", one(EnvSourceLabels)},
    {kEnvGain, 2, "ENV{n} Gain", real, 0, {0, 40, 0.01}, "dB", {}},
    {kEnvAttack, 2, "ENV{n} Attack", real, 10, {0, 5000, 0.01, 3}, "ms", {}},
    {kEnvDecay, 2, "ENV{n} Decay", real, 100, {10, 15000, 0.01, 3}, "ms", {}},
    {kEnvHold, 2, "ENV{n} Hold", real, 0, {0, 10000, 0.01, 3}, "ms", {}},
    {kEnvThreshold, 2, "ENV{n} Threshold", real, 0, {-90, 0, 0.01, 0.5}, "db", {}},
    {kEnvLocut, 2, "ENV{n} Locut", real, 50, {50, 10000, 0.01, 3}, "Hz", {}},
    {kEnvHicut, 2, "ENV{n} Hicut", real, 20000, {100, 20000, 0.01, 3}, "Hz", {}},
    {kEnvDepth, 2, "ENV{n} Depth", real, 100, {0, 100, 0.01}, "%", {}},
    {kEnvOutput, 2, "ENV{n} Output", choice, 0, {0, 1, 1}, "", one(EnvOutputLabels)},

    // ---- logic units ----
    {kLogicOn, 4, "Logic On {n}", whole, 0, {0, 1, 1}, "", offOn},
    {kLogicType, 4, "Logic{n} Type", choice, 0, {0, 8, 1}, "", one(LogicTypeLabels)},
    {kLogicSource1Depth, 4, "Logic{logic} Source1 Depth", real, 0, {-100, 100, 0.01}, "%", {}},
    {kLogicSource1, 4, "Logic{n} Source1", choice, 0, {0, 14, 1}, "", modSources},
    {kLogicSource2Depth, 4, "Logic{logic} Source2 Depth", real, 0, {-100, 100, 0.01}, "%", {}},
    {kLogicSource2, 4, "Logic{n} Source2", choice, 0, {0, 14, 1}, "", modSources},
    {kLogicSmooth, 4, "Logic{logic} Smooth", real, 0, {0, 1000, 0.01, 3}, "ms", {}},
    {kLogicDepth, 4, "Logic{logic} Depth", real, 0, {0, 100, 0.01}, "%", {}},
    {kLogicDepthMod, 4, "Logic{logic} Depth Mod", real, 0, {-100, 100, 0.1}, "%", {}},
    {kLogicDepthModSource, 4, "Logic{n} Depth ModSource", choice, 0, {0, 14, 1}, "", modSources},

    // ---- master section ----
    {kMasterFx, 1, "MasterFX", choice, 0, {0, 7, 1}, "", one(MasterFxLabels)},
    {kMasterFxBypass, 1, "MasterFX Bypass", whole, 0, {0, 1, 1}, "", offOn},
    {kMasterFxParam, 4, "MasterFX P{n}", real, 0, {0, 100, 0.1}, "%", {}},
    {kMainModRate, 1, "Main ModRate", real, 30, {0, 100, 0.1}, "%", {}},
    {kMainModDepth, 1, "Main ModDepth", real, 50, {0, 100, 0.1}, "%", {}},
    {kFeedbackMaster, 1, "Feedback Master", real, 0, {-50, 50, 0.1}, "%", {}},
    {kDelayTimeScale, 1, "Delay Time Scale", real, 0, {-100, 100, 0.1}, "%", {}},
    {kMasterFxLevel, 1, "MasterFX Level", real, 75, {0, 200, 0.1}, "%", {}},
    {kLimiterOn, 1, "Limiter On", whole, 0, {0, 3, 1}, "", one(LimiterLabels)},
    {kLimiterLevel, 1, "Limiter Level", real, 0, {0, 36, 0.1}, "dB", {}},
    {kWetLevel, 1, "Wet Level", real, 75, {0, 100, 0.1}, "%", {}},
    {kDryLevel, 1, "Dry Level", real, 75, {0, 100, 0.1}, "%", {}},
    {kOutputLevel, 1, "Output Level", real, 0, {-12, 12, 0.1}, "dB", {}},
    {kGlobalWidth, 1, "Global Width", real, 100, {0, 150, 0.1}, "%", {}},
    {kFbMatrix, 4, "FB Matrix {n}", whole, 0, {0, 1, 1}, "", offOn},
    {kSlot1Fb, 4, "Slot1 FB {n}", real, 0, {-100, 100, 0.01}, "%", {}},
    {kSlot2Fb, 4, "Slot2 FB {n}", real, 0, {-100, 100, 0.01}, "%", {}},
    {kSlot3Fb, 4, "Slot3 FB {n}", real, 0, {-100, 100, 0.01}, "%", {}},
    {kSlot4Fb, 4, "Slot4 FB {n}", real, 0, {-100, 100, 0.01}, "%", {}},
    {kDelayTapsSwing, 4, "Delay Taps Swing {n}", real, 0, {0, 100, 0.01}, "%", {}},

    // ---- numbers that hosts and presets count on ----
    {kNoOp, 1, "NoOp", boolean, 0, {0, 1, 1}, "", {}},
    {kBypass, 1, "BP", boolean, 0, {0, 1, 1}, "", {}},
};
// clang-format on

constexpr bool coversEveryIndexOnce() {
  int next = 0;
  for (const ParamFamily& family : table) {
    if (family.base != next) return false;
    next += family.count;
  }
  return next == kNumParams;
}
static_assert(coversEveryIndexOnce());

}  // namespace

std::span<const ParamFamily> paramFamilies() noexcept { return table; }

}  // namespace orvantesco
