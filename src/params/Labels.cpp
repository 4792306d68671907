#include "params/Labels.h"

namespace orvantesco {
namespace {

using Text = const char*;

// The lists hold literals only, so they are there before any code runs.

constexpr Text offOn[] = {"OFF", "ON"};
constexpr Text limiter[] = {"OFF", "SLOW I", "SLOW II", "FAST"};
constexpr Text directOut[] = {"PRE FX", "DELAY", "POST FX", "OUT"};
constexpr Text masterFxSource[] = {"INPUT", "PRE FX", "DELAY", "POST FX", "OUT"};
constexpr Text outputMode[] = {"NORM", "SWAP", "MUTE"};

constexpr Text input1[] = {"MONO", "LEFT", "RIGHT", "STEREO", "MASTER-FX"};
constexpr Text input2[] = {"MONO", "LEFT", "RIGHT", "STEREO", "MASTER-FX", "SLOT 1"};
constexpr Text input3[] = {"MONO",      "LEFT",   "RIGHT",  "STEREO",
                           "MASTER-FX", "SLOT 1", "SLOT 2", "SLOT 1+2"};
constexpr Text input4[] = {"MONO",   "LEFT",   "RIGHT",    "STEREO",   "MASTER-FX", "SLOT 1",
                           "SLOT 2", "SLOT 3", "SLOT 1+2", "SLOT 1+3", "SLOT 2+3",  "SLOT 1+2+3"};

constexpr Text delayMode[] = {"FORWARD", "BACKWARD", "GRAIN", "TAPPED"};
constexpr Text delayRoute[] = {"DUAL",   "PP-L", "PP-ML", "PP-R", "PP-MR",
                               "PP-L+R", "MIX",  "M-L",   "M-R"};
constexpr Text tapCount[] = {"1", "2",  "3",  "4",  "5",  "6",  "7",  "8",
                             "9", "10", "11", "12", "13", "14", "15", "16"};
constexpr Text tapFb[] = {"LENGTH", "1",  "2",  "3",  "4",  "5",  "6",  "7", "8",
                          "9",      "10", "11", "12", "13", "14", "15", "16"};
constexpr Text timebase[] = {"MS",    "1/8",   "1/16", "1/32",  "1/64", "1/8d",
                             "1/16d", "1/32d", "1/8t", "1/16t", "1/32t"};
constexpr Text tapFxParam[] = {"OFF",         "PARAMETER 1", "PARAMETER 2",
                               "PARAMETER 3", "PARAMETER 4", "PARAMETER 5"};
constexpr Text stepQuant[] = {"NO STEP",  "1 STEP",   "2 STEPS", "3 STEPS", "4 STEPS",
                              "5 STEPS",  "6 STEPS",  "7 STEPS", "8 STEPS", "9 STEPS",
                              "10 STEPS", "11 STEPS", "12 STEPS"};
constexpr Text tapPanMode[] = {"STEREO", "DUAL MONO", "LEFT", "RIGHT"};
constexpr Text tapDiOut[] = {"LAST", "ALL"};
constexpr Text reverseTrigger[] = {"OFF", "BAR", "ENV1", "ENV2"};

constexpr Text lfoWave[] = {
    "SIN1",      "SIN2",       "SIN3",     "SIN4",    "SIN5",      "SIN6",      "SIN7",
    "SIN8",      "SAWSIN",     "SAW2",     "STEPSIN", "RAMP",      "TRIANGLE",  "RAMPPULSE",
    "EXPFALL",   "SLIDE",      "THE RIDE", "POOL",    "HALFPULSE", "1/3 PULSE", "1/4 PULSE",
    "1/8 PULSE", "1/16 PULSE", "SINPULSE", "STAIR3",  "STEP8",     "S&H"};
constexpr Text polarity[] = {"POS (+)", "NEG (-)", "BI (+/-)"};
constexpr Text lfoSync[] = {"HZ", "STRAIGHT", "DOTTED", "TRIPLET"};
constexpr Text lfoMode[] = {"LOOP", "ONE SHOT", "LATCH"};
constexpr Text lfoRateSync[] = {"4 BARS", "2 BARS", "1 BAR", "1/2", "1/4", "1/8", "1/16", "1/32"};
constexpr Text trigger[] = {"OFF",         "QUARTER",     "BAR",         "2BARS",
                            "ENV1",        "ENV2",        "GATE1 LEVEL", "GATE2 LEVEL",
                            "GATE3 LEVEL", "GATE4 LEVEL", "GATE1 START", "GATE2 START",
                            "GATE3 START", "GATE4 START"};
constexpr Text gateTimebase[] = {
    "1/4",         "1/8",         "1/16",        "1/32",        "1/64",        "1/4d",
    "1/8d",        "1/16d",       "1/32d",       "1/4t",        "1/8t",        "1/16t",
    "ENV1",        "ENV2",        "GATE1 LEVEL", "GATE2 LEVEL", "GATE3 LEVEL", "GATE4 LEVEL",
    "GATE1 START", "GATE2 START", "GATE3 START", "GATE4 START"};
constexpr Text gateDirection[] = {"FORWARD", "BACKWARD", "FORWARD/BACKWARD", "RANDOM"};

constexpr Text envMode[] = {"FOLLOWER", "GATE"};
constexpr Text envSource[] = {"IN MONO", "IN LEFT", "IN RIGHT", "SLOT1 M",   "SLOT1 L",  "SLOT1 R",
                              "SLOT2 M", "SLOT2 L", "SLOT2 R",  "SLOT3 M",   "SLOT3 L",  "SLOT3 R",
                              "SLOT4 M", "SLOT4 L", "SLOT4 R",  "SIDECHAIN", "MASTER FX"};
constexpr Text envOutput[] = {"LOGARITHMIC", "LINEAR"};

constexpr Text modSource[] = {"OFF",   "LFO1",   "LFO2",   "LFO3",   "LFO4",
                              "GATE1", "GATE2",  "GATE3",  "GATE4",  "ENV1",
                              "ENV2",  "LOGIC1", "LOGIC2", "LOGIC3", "LOGIC4"};
constexpr Text logicType[] = {"ADD",     "MULTIPLY", "MIN",    "MAX",  "ABS MIN",
                              "ABS MAX", "GATE",     "HIGHER", "LOWER"};

constexpr Text masterFx[] = {"OFF",    "ORVANT",    "REVERB",      "ROOM",
                             "FIX EQ", "2 BAND EQ", "LO/HI SHELF", "DRIVE LP+HP"};
constexpr Text fxType[] = {"OFF",
                           "FREQ SHIFT",
                           "RING MOD",
                           "PHASE",
                           "PITCH SHIFT",
                           "PITCH SHIFT ST",
                           "SATURATE",
                           "RECTIFY",
                           "DESTROY",
                           "NOISE",
                           "LOFI I",
                           "LOFI II",
                           "WAVE SHAPE",
                           "MULTI SVF",
                           "HP/LP 24dB",
                           "MULTI 12dB",
                           "PEAK",
                           "DRIVE LP+HP",
                           "VARAIBLE LPHP",
                           "PHASEBP",
                           "COMB",
                           "VOWEL",
                           "COMPRESSOR",
                           "",
                           ""};
constexpr Text fbFxType[] = {"OFF",
                             "FREQ SHIFT",
                             "RING MOD",
                             "PITCH SHIFT",
                             "PITCH SHIFT ST",
                             "SATURATE",
                             "RECTIFY",
                             "DESTROY",
                             "NOISE",
                             "LOFI I",
                             "LOFI II",
                             "MULTI 12dB",
                             "DRIVE LP+HP",
                             "COMPRESSOR",
                             "",
                             "",
                             "",
                             "",
                             "",
                             "",
                             "",
                             "",
                             "",
                             "",
                             ""};

constexpr Text gateLanePreset[] = {"ALL OFF",  "ALL ON", "RAMP", "EXPONENTIAL",
                                   "TRIANGLE", "SINUS",  "HALF", "RANDOMIZE"};
constexpr Text tapPattern[] = {"ALL ON",    "ALL OFF",  "LEFT",        "RIGHT",
                               "PING PONG", "SYNCOPED", "SYNCOPED ST", "TWO-ONE",
                               "BOUNCER",   "RHYTHM I", "RHYTHM II",   "RANDOMIZE"};
constexpr Text panLanePreset[] = {"FULL LEFT", "FULL RIGHT", "RAMP UP",  "RAMP DOWN",
                                  "EXP UP",    "EXP DOWN",   "TRIANGLE", "INVERSE TRIANGLE",
                                  "CENTER",    "RANDOMIZE"};

constexpr Text modSourceShort[] = {"--", "L1", "L2", "L3", "L4", "G1", "G2",
                                   "E1", "E2", "M1", "M2", "M3", "M4"};
constexpr Text lfoSyncShort[] = {"HZ", "STRGHT", "DOT.", "TRIP."};

// One bullet for each slot number, as the slots bear them in the editor.
#define ORVANTESCO_BULLET "\xE2\x80\xA2"
constexpr Text bullet1 = ORVANTESCO_BULLET;
constexpr Text bullet2 = ORVANTESCO_BULLET ORVANTESCO_BULLET;
constexpr Text bullet3 = ORVANTESCO_BULLET ORVANTESCO_BULLET ORVANTESCO_BULLET;
#undef ORVANTESCO_BULLET

constexpr Text inputShort1[] = {"M", "L", "R", "ST", "FX"};
constexpr Text inputShort2[] = {"M", "L", "R", "ST", "FX", bullet1};
constexpr Text inputShort3[] = {"M", "L", "R", "ST", "FX", bullet1, bullet2, "12"};
constexpr Text inputShort4[] = {"M",     "L",     "R",  "ST", "FX", bullet1,
                                bullet2, bullet3, "12", "13", "23", "123"};

}  // namespace

constinit const LabelList OffOnLabels = offOn;
constinit const LabelList LimiterLabels = limiter;
constinit const LabelList DirectOutLabels = directOut;
constinit const std::array<LabelList, 4> InputLabels{{input1, input2, input3, input4}};
constinit const LabelList MasterFxSourceLabels = masterFxSource;
constinit const LabelList OutputModeLabels = outputMode;
constinit const LabelList DelayModeLabels = delayMode;
constinit const LabelList DelayRouteLabels = delayRoute;
constinit const LabelList TapCountLabels = tapCount;
constinit const LabelList TapFbLabels = tapFb;
constinit const LabelList TimebaseLabels = timebase;
constinit const LabelList TapFxParamLabels = tapFxParam;
constinit const LabelList StepQuantLabels = stepQuant;
constinit const LabelList TapPanModeLabels = tapPanMode;
constinit const LabelList TapDiOutLabels = tapDiOut;
constinit const LabelList ReverseTriggerLabels = reverseTrigger;
constinit const LabelList LfoWaveLabels = lfoWave;
constinit const LabelList PolarityLabels = polarity;
constinit const LabelList LfoSyncLabels = lfoSync;
constinit const LabelList LfoModeLabels = lfoMode;
constinit const LabelList LfoRateSyncLabels = lfoRateSync;
constinit const LabelList TriggerLabels = trigger;
constinit const LabelList GateTimebaseLabels = gateTimebase;
constinit const LabelList GateDirectionLabels = gateDirection;
constinit const LabelList EnvModeLabels = envMode;
constinit const LabelList EnvSourceLabels = envSource;
constinit const LabelList EnvOutputLabels = envOutput;
constinit const LabelList ModSourceLabels = modSource;
constinit const LabelList LogicTypeLabels = logicType;
constinit const LabelList MasterFxLabels = masterFx;
constinit const LabelList FxTypeLabels = fxType;
constinit const LabelList FbFxTypeLabels = fbFxType;
constinit const LabelList GateLanePresetLabels = gateLanePreset;
constinit const LabelList TapPatternLabels = tapPattern;
constinit const LabelList PanLanePresetLabels = panLanePreset;
constinit const LabelList ModSourceShortLabels = modSourceShort;
constinit const LabelList LfoSyncShortLabels = lfoSyncShort;
constinit const std::array<LabelList, 4> InputShortLabels{
    {inputShort1, inputShort2, inputShort3, inputShort4}};

}  // namespace orvantesco
