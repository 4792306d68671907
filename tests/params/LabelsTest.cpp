#include "params/Labels.h"

#include <gtest/gtest.h>

#include "params/BankReading.h"

namespace orvantesco {
namespace {

struct WrittenList {
  const char* name;
  LabelList list;
  const char* texts;  ///< parted by "|"
};

const std::vector<WrittenList>& writtenLists() {
  static const std::vector<WrittenList> lists{
      {"OffOnLabels", OffOnLabels, "OFF|ON"},
      {"LimiterLabels", LimiterLabels, "OFF|SLOW I|SLOW II|FAST"},
      {"DirectOutLabels", DirectOutLabels, "PRE FX|DELAY|POST FX|OUT"},
      {"MasterFxSourceLabels", MasterFxSourceLabels, "INPUT|PRE FX|DELAY|POST FX|OUT"},
      {"OutputModeLabels", OutputModeLabels, "NORM|SWAP|MUTE"},
      {"DelayModeLabels", DelayModeLabels, "FORWARD|BACKWARD|GRAIN|TAPPED"},
      {"DelayRouteLabels", DelayRouteLabels, "DUAL|PP-L|PP-ML|PP-R|PP-MR|PP-L+R|MIX|M-L|M-R"},
      {"TapCountLabels", TapCountLabels, "1|2|3|4|5|6|7|8|9|10|11|12|13|14|15|16"},
      {"TapFbLabels", TapFbLabels, "LENGTH|1|2|3|4|5|6|7|8|9|10|11|12|13|14|15|16"},
      {"TimebaseLabels", TimebaseLabels, "MS|1/8|1/16|1/32|1/64|1/8d|1/16d|1/32d|1/8t|1/16t|1/32t"},
      {"TapFxParamLabels", TapFxParamLabels,
       "OFF|PARAMETER 1|PARAMETER 2|PARAMETER 3|PARAMETER 4|PARAMETER 5"},
      {"StepQuantLabels", StepQuantLabels,
       "NO STEP|1 STEP|2 STEPS|3 STEPS|4 STEPS|5 STEPS|6 STEPS|7 STEPS|8 STEPS|9 STEPS|10 STEPS|11 "
       "STEPS|12 STEPS"},
      {"TapPanModeLabels", TapPanModeLabels, "STEREO|DUAL MONO|LEFT|RIGHT"},
      {"TapDiOutLabels", TapDiOutLabels, "LAST|ALL"},
      {"ReverseTriggerLabels", ReverseTriggerLabels, "OFF|BAR|ENV1|ENV2"},
      {"PolarityLabels", PolarityLabels, "POS (+)|NEG (-)|BI (+/-)"},
      {"LfoSyncLabels", LfoSyncLabels, "HZ|STRAIGHT|DOTTED|TRIPLET"},
      {"LfoModeLabels", LfoModeLabels, "LOOP|ONE SHOT|LATCH"},
      {"TriggerLabels", TriggerLabels,
       "OFF|QUARTER|BAR|2BARS|ENV1|ENV2|GATE1 LEVEL|GATE2 LEVEL|GATE3 LEVEL|GATE4 LEVEL|GATE1 "
       "START|GATE2 START|GATE3 START|GATE4 START"},
      {"GateTimebaseLabels", GateTimebaseLabels,
       "1/4|1/8|1/16|1/32|1/64|1/4d|1/8d|1/16d|1/32d|1/4t|1/8t|1/16t|ENV1|ENV2|GATE1 LEVEL|GATE2 "
       "LEVEL|GATE3 LEVEL|GATE4 LEVEL|GATE1 START|GATE2 START|GATE3 START|GATE4 START"},
      {"GateDirectionLabels", GateDirectionLabels, "FORWARD|BACKWARD|FORWARD/BACKWARD|RANDOM"},
      {"EnvModeLabels", EnvModeLabels, "FOLLOWER|GATE"},
      {"EnvSourceLabels", EnvSourceLabels,
       "IN MONO|IN LEFT|IN RIGHT|SLOT1 M|SLOT1 L|SLOT1 R|SLOT2 M|SLOT2 L|SLOT2 R|SLOT3 M|SLOT3 "
       "L|SLOT3 R|SLOT4 M|SLOT4 L|SLOT4 R|SIDECHAIN|MASTER FX"},
      {"EnvOutputLabels", EnvOutputLabels, "LOGARITHMIC|LINEAR"},
      {"ModSourceLabels", ModSourceLabels,
       "OFF|LFO1|LFO2|LFO3|LFO4|GATE1|GATE2|GATE3|GATE4|ENV1|ENV2|LOGIC1|LOGIC2|LOGIC3|LOGIC4"},
      {"LogicTypeLabels", LogicTypeLabels,
       "ADD|MULTIPLY|MIN|MAX|ABS MIN|ABS MAX|GATE|HIGHER|LOWER"},
      {"MasterFxLabels", MasterFxLabels,
       "OFF|ORVANT|REVERB|ROOM|FIX EQ|2 BAND EQ|LO/HI SHELF|DRIVE LP+HP"},
      {"FxTypeLabels", FxTypeLabels,
       "OFF|FREQ SHIFT|RING MOD|PHASE|PITCH SHIFT|PITCH SHIFT "
       "ST|SATURATE|RECTIFY|DESTROY|NOISE|LOFI I|LOFI II|WAVE SHAPE|MULTI SVF|HP/LP 24dB|MULTI "
       "12dB|PEAK|DRIVE LP+HP|VARAIBLE LPHP|PHASEBP|COMB|VOWEL|COMPRESSOR||"},
      {"FbFxTypeLabels", FbFxTypeLabels,
       "OFF|FREQ SHIFT|RING MOD|PITCH SHIFT|PITCH SHIFT ST|SATURATE|RECTIFY|DESTROY|NOISE|LOFI "
       "I|LOFI II|MULTI 12dB|DRIVE LP+HP|COMPRESSOR|||||||||||"},
      {"LfoWaveLabels", LfoWaveLabels,
       "SIN1|SIN2|SIN3|SIN4|SIN5|SIN6|SIN7|SIN8|SAWSIN|SAW2|STEPSIN|RAMP|TRIANGLE|RAMPPULSE|"
       "EXPFALL|SLIDE|THE RIDE|POOL|HALFPULSE|1/3 PULSE|1/4 PULSE|1/8 PULSE|1/16 "
       "PULSE|SINPULSE|STAIR3|STEP8|S&H"},
      {"LfoRateSyncLabels", LfoRateSyncLabels, "4 BARS|2 BARS|1 BAR|1/2|1/4|1/8|1/16|1/32"},
      {"GateLanePresetLabels", GateLanePresetLabels,
       "ALL OFF|ALL ON|RAMP|EXPONENTIAL|TRIANGLE|SINUS|HALF|RANDOMIZE"},
      {"TapPatternLabels", TapPatternLabels,
       "ALL ON|ALL OFF|LEFT|RIGHT|PING PONG|SYNCOPED|SYNCOPED ST|TWO-ONE|BOUNCER|RHYTHM I|RHYTHM "
       "II|RANDOMIZE"},
      {"PanLanePresetLabels", PanLanePresetLabels,
       "FULL LEFT|FULL RIGHT|RAMP UP|RAMP DOWN|EXP UP|EXP DOWN|TRIANGLE|INVERSE "
       "TRIANGLE|CENTER|RANDOMIZE"},
      {"ModSourceShortLabels", ModSourceShortLabels, "--|L1|L2|L3|L4|G1|G2|E1|E2|M1|M2|M3|M4"},
      {"LfoSyncShortLabels", LfoSyncShortLabels, "HZ|STRGHT|DOT.|TRIP."},
      {"InputLabels 1", InputLabels[0], "MONO|LEFT|RIGHT|STEREO|MASTER-FX"},
      {"InputLabels 2", InputLabels[1], "MONO|LEFT|RIGHT|STEREO|MASTER-FX|SLOT 1"},
      {"InputLabels 3", InputLabels[2], "MONO|LEFT|RIGHT|STEREO|MASTER-FX|SLOT 1|SLOT 2|SLOT 1+2"},
      {"InputLabels 4", InputLabels[3],
       "MONO|LEFT|RIGHT|STEREO|MASTER-FX|SLOT 1|SLOT 2|SLOT 3|SLOT 1+2|SLOT 1+3|SLOT 2+3|SLOT "
       "1+2+3"},
      {"InputShortLabels 1", InputShortLabels[0], "M|L|R|ST|FX"},
      {"InputShortLabels 2", InputShortLabels[1], "M|L|R|ST|FX|\u2022"},
      {"InputShortLabels 3", InputShortLabels[2], "M|L|R|ST|FX|\u2022|\u2022\u2022|12"},
      {"InputShortLabels 4", InputShortLabels[3],
       "M|L|R|ST|FX|\u2022|\u2022\u2022|\u2022\u2022\u2022|12|13|23|123"},
  };
  return lists;
}

TEST(Labels, EveryListHoldsItsTextsInOrder) {
  for (const WrittenList& written : writtenLists()) {
    const std::vector<std::string> texts(written.list.begin(), written.list.end());
    EXPECT_EQ(texts, reading::splitAt(written.texts, '|')) << written.name;
  }
}

TEST(Labels, EveryTextFitsTheFieldOfARecord) {
  for (const WrittenList& written : writtenLists())
    for (const char* text : written.list) EXPECT_LT(std::string(text).size(), 32u) << text;
}

TEST(Labels, EffectTypeListsHaveTwentyFiveEntriesOfWhichTheLastAreEmpty) {
  EXPECT_EQ(FxTypeLabels.size(), 25u);
  EXPECT_EQ(FbFxTypeLabels.size(), 25u);
  EXPECT_EQ(std::ranges::count(FxTypeLabels, std::string()), 2);
  EXPECT_EQ(std::ranges::count(FbFxTypeLabels, std::string()), 11);
}

}  // namespace
}  // namespace orvantesco
