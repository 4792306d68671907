#pragma once

namespace orvantesco {

// The index of a parameter is its identity in the dispatch, the routing, the editor and towards
// hosts. Each constant is the base of a family: member m (counted from 0) of a family is
// base + m, unless the family has a rule of its own in ParamIndex.h.

inline constexpr int kNumParams = 1095;

// Slot
inline constexpr int kSlotOn = 0;
inline constexpr int kDelayOn = 4;
inline constexpr int kDirectOut = 8;
inline constexpr int kInput = 12;
inline constexpr int kDirectIn = 16;
inline constexpr int kDelayModulation = 20;
inline constexpr int kMasterFxSource = 24;
inline constexpr int kPanPosition = 28;
inline constexpr int kWidth = 32;
inline constexpr int kOutputMode = 36;
inline constexpr int kLROffset = 40;
inline constexpr int kInputGain = 44;
inline constexpr int kInputGainModDepth = 48;
inline constexpr int kInputGainModSource = 52;
inline constexpr int kPanning = 56;
inline constexpr int kPanningModDepth = 60;
inline constexpr int kPanningModSource = 64;
inline constexpr int kFeedback = 68;
inline constexpr int kFeedbackModDepth = 72;
inline constexpr int kFeedbackModSource = 76;
inline constexpr int kLevel = 80;
inline constexpr int kLevelModDepth = 84;
inline constexpr int kLevelModSource = 88;
inline constexpr int kMasterFxSend = 92;
inline constexpr int kMasterFxSendModDepth = 96;
inline constexpr int kMasterFxSendModSource = 100;

// Effect types
inline constexpr int kFxTypePre = 104;
inline constexpr int kFxTypeFeedback = 108;
inline constexpr int kFxTypePost = 112;

// Effect parameters, 36 members each: see fxParamIndex
inline constexpr int kFxParam1 = 116;
inline constexpr int kFxParam2 = 152;
inline constexpr int kFxParam3 = 188;
inline constexpr int kFxParam4 = 224;
inline constexpr int kFxParam5 = 260;

// Effect on switches
inline constexpr int kFxOnPre = 296;
inline constexpr int kFxOnFeedback = 300;
inline constexpr int kFxOnPost = 304;

// Delay
inline constexpr int kDelayMode = 308;
inline constexpr int kDelayRoute = 312;
inline constexpr int kDelayTaps = 316;
inline constexpr int kDelayTapFb = 320;
inline constexpr int kFbProportional = 324;
inline constexpr int kTimebase = 328;
inline constexpr int kTapTimebase = 332;
inline constexpr int kDelayFactorL = 336;
inline constexpr int kDelayFactorR = 340;
inline constexpr int kDelayTimeL = 344;
inline constexpr int kDelayTimeLModDepth = 348;
inline constexpr int kDelayTimeLModSource = 352;
inline constexpr int kDelayTimeR = 356;
inline constexpr int kDelayTimeRModDepth = 360;
inline constexpr int kDelayTimeRModSource = 364;
inline constexpr int kTapFxParam1 = 368;
inline constexpr int kTapFxParam2 = 372;
inline constexpr int kTapFxParam1Steps = 376;
inline constexpr int kTapFxParam2Steps = 380;

// Tap lanes: 4 slots by 16 steps
inline constexpr int kTapStepTime = 384;
inline constexpr int kTapStepLevel = 448;
inline constexpr int kTapStepPan = 512;
inline constexpr int kTapStepFxP1 = 576;
inline constexpr int kTapStepFxP2 = 640;

// Tap rows
inline constexpr int kTapTimeStepDepth = 704;
inline constexpr int kTapLevelStepDepth = 708;
inline constexpr int kTapPanWidth = 712;
inline constexpr int kTapFxP1StepDepth = 716;
inline constexpr int kTapFxP2StepDepth = 720;
inline constexpr int kTapTimeSteps = 724;
inline constexpr int kTapLevelSteps = 728;
inline constexpr int kTapPanSteps = 732;
inline constexpr int kTapPanMode = 736;

// Delay
inline constexpr int kDelayTapDiOut = 740;
inline constexpr int kDelayTapsTime = 744;
inline constexpr int kDelayTapsTimeModDepth = 748;
inline constexpr int kDelayTapsTimeModSource = 752;
inline constexpr int kDelayTapsSwell = 756;
inline constexpr int kDelayLRLink = 760;
inline constexpr int kDelaySpread = 764;
inline constexpr int kDelayModDepth = 768;
inline constexpr int kDelayModSource = 772;
inline constexpr int kDelayLopass = 776;
inline constexpr int kDelayHipass = 780;

// Grain reading
inline constexpr int kGrainSize = 784;
inline constexpr int kGrainSizeModDepth = 788;
inline constexpr int kGrainSizeModSource = 792;
inline constexpr int kGrainSpeed = 796;
inline constexpr int kGrainSpeedModDepth = 800;
inline constexpr int kGrainSpeedModSource = 804;
inline constexpr int kGrainPosition = 808;
inline constexpr int kGrainPositionModDepth = 812;
inline constexpr int kGrainPositionModSource = 816;
inline constexpr int kGrainFade = 820;

// Reverse reading
inline constexpr int kReverseDelayTrigger = 824;
inline constexpr int kReverseXFade = 828;

// LFOs
inline constexpr int kLfoOn = 832;
inline constexpr int kLfoWave = 836;
inline constexpr int kLfoPol = 840;
inline constexpr int kLfoSync = 844;
inline constexpr int kLfoSwap = 848;
inline constexpr int kLfoReverse = 852;
inline constexpr int kLfoMode = 856;
inline constexpr int kLfoTrigger = 860;
inline constexpr int kLfoRate = 864;
inline constexpr int kLfoFreqModDepth = 868;
inline constexpr int kLfoFreqModSource = 872;
inline constexpr int kLfoDepth = 876;
inline constexpr int kLfoPhase = 880;
inline constexpr int kLfoGlide = 884;

// Gates
inline constexpr int kGateLength = 888;
inline constexpr int kGateOn = 892;
inline constexpr int kGateTimebase = 896;
inline constexpr int kGateDirection = 900;
inline constexpr int kGateSync = 904;
inline constexpr int kGateGlide = 908;
inline constexpr int kGateDepth = 912;
inline constexpr int kGatePol = 916;
inline constexpr int kGateSteps = 920;

// Gate lane: 4 gates by 16 steps
inline constexpr int kGateStep = 924;

// Envelopes: two members each
inline constexpr int kEnvOn = 988;
inline constexpr int kEnvMode = 990;
inline constexpr int kEnvSource = 992;
inline constexpr int kEnvGain = 994;
inline constexpr int kEnvAttack = 996;
inline constexpr int kEnvDecay = 998;
inline constexpr int kEnvHold = 1000;
inline constexpr int kEnvThreshold = 1002;
inline constexpr int kEnvLocut = 1004;
inline constexpr int kEnvHicut = 1006;
inline constexpr int kEnvDepth = 1008;
inline constexpr int kEnvOutput = 1010;

// Logic units
inline constexpr int kLogicOn = 1012;
inline constexpr int kLogicType = 1016;
inline constexpr int kLogicSource1Depth = 1020;
inline constexpr int kLogicSource1 = 1024;
inline constexpr int kLogicSource2Depth = 1028;
inline constexpr int kLogicSource2 = 1032;
inline constexpr int kLogicSmooth = 1036;
inline constexpr int kLogicDepth = 1040;
inline constexpr int kLogicDepthMod = 1044;
inline constexpr int kLogicDepthModSource = 1048;

// Master section and globals
inline constexpr int kMasterFx = 1052;
inline constexpr int kMasterFxBypass = 1053;
inline constexpr int kMasterFxParam = 1054;
inline constexpr int kMainModRate = 1058;
inline constexpr int kMainModDepth = 1059;
inline constexpr int kFeedbackMaster = 1060;
inline constexpr int kDelayTimeScale = 1061;
inline constexpr int kMasterFxLevel = 1062;
inline constexpr int kLimiterOn = 1063;
inline constexpr int kLimiterLevel = 1064;
inline constexpr int kWetLevel = 1065;
inline constexpr int kDryLevel = 1066;
inline constexpr int kOutputLevel = 1067;
inline constexpr int kGlobalWidth = 1068;

// Feedback matrix switches
inline constexpr int kFbMatrix = 1069;

// Feedback matrix: what each slot sends to slot n
inline constexpr int kSlot1Fb = 1073;
inline constexpr int kSlot2Fb = 1077;
inline constexpr int kSlot3Fb = 1081;
inline constexpr int kSlot4Fb = 1085;

// Swing of a slot's taps
inline constexpr int kDelayTapsSwing = 1089;

// Kept for numbering only; they drive nothing
inline constexpr int kNoOp = 1093;
inline constexpr int kBypass = 1094;

}  // namespace orvantesco
