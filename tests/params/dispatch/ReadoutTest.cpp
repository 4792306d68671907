// Every read-out of the dispatch: caption, number, unit.

#include "params/dispatch/DispatchRig.h"

namespace orvantesco {
namespace {

struct Expected {
  int paramIdx;
  double value;
  const char* readout;  ///< "caption|value|unit"
};

class ReadoutTest : public DispatchRig {
 protected:
  void expectAll(const std::vector<Expected>& table) {
    for (const auto& [paramIdx, value, expected] : table) {
      editor.clear();
      move(paramIdx, value);
      EXPECT_EQ(readout(), expected) << "parameter " << paramIdx << " at " << value;
    }
  }
};

TEST_F(ReadoutTest, Slots) {
  expectAll({
      {16, 75.0, "DIRECT/DELAY MIX|50|%DL/100% DI"},
      {16, 100.0, "DIRECT/DELAY MIX|0|%DL/100% DI"},
      {17, 50.0, "DIRECT/DELAY MIX|100|%DL/100% DI"},
      {18, 25.0, "DIRECT/DELAY MIX|50|%DI/100% DL"},
      {19, 0.0, "DIRECT/DELAY MIX|0|%DI/100% DL"},
      {20, 33.3, "DELAY MODULATION|33.30| %"},
      {24, 2.0, "MASTER FX SEND|2.00| %"},
      {35, 12.5, "WIDTH|12.50| %"},
      {40, 0.0, "DELAY OFFSET|0.0| ms"},
      {40, 0.4, "DELAY OFFSET|0.0| ms"},
      {41, -0.6, "DELAY OFFSET|1.0| ms L"},
      {42, -25.0, "DELAY OFFSET|25.0| ms L"},
      {43, 7.2, "DELAY OFFSET|7.0| ms R"},
      {44, -3.0, "INPUT GAIN|-3.0| dB"},
      {45, 12.0, "INPUT GAIN|12.0| dB"},
      {46, -60.0, "INPUT GAIN|-inf| dB"},
      {48, 50.0, "INPUT GAIN MOD DEPTH|12.50| %"},
      {48, -50.0, "INPUT GAIN MOD DEPTH|-12.50| %"},
      {56, 0.0, "PAN|0|"},
      {57, -30.0, "PAN|30|% L"},
      {58, 45.0, "PAN|45|% R"},
      {60, 50.0, "PAN MOD DEPTH|50.00| %"},
      {68, 160.0, "FEEDBACK LEVEL|160.00| %"},
      {72, -20.0, "FEEDBACK MOD DEPTH|-0.80| %"},
      {80, -12.34, "OUTPUT LEVEL|-12.3| dB"},
      {81, -60.0, "OUTPUT LEVEL|-inf| dB"},
      {84, 100.0, "LEVEL MOD DEPTH|100.00| %"},
      {92, 62.5, "MASTER FX SEND|62.50| %"},
      {96, -75.0, "MASTER FX MOD DEPTH|-75.00| %"},
  });
}

TEST_F(ReadoutTest, Delays) {
  expectAll({
      {344, 500.0, "DELAY TIME LEFT|500.0| ms"},
      {345, 9.99, "DELAY TIME LEFT|9.99| ms"},
      {356, 10.0, "DELAY TIME RIGHT|10.0| ms"},
      {357, 1.0, "DELAY TIME RIGHT|1.00| ms"},
      {764, -3.25, "DELAY SPREAD|-3.2| ms"},
      {768, 50.0, "DELAY MOD DEPTH|12.50| %"},
      {776, 7500.0, "DELAY LOPASS |7500| Hz"},
      {780, 20.4, "DELAY HIPASS |20| Hz"},
      {784, 100.0, "GRAIN SIZE|100.0| ms"},
      {788, 10.0, "GRAIN SIZE MOD DEPTH|0.10| %"},
      {796, 1.0, "GRAIN SPEED|2.00| x"},
      {797, -2.0, "GRAIN SPEED|0.25| x"},
      {800, -100.0, "GRAIN SPEED MOD DEPTH|-100.00| %"},
      {808, 12.0, "GRAIN POSITION|12.00| %"},
      {812, 50.0, "GRAIN POSITION MOD DEPTH|12.50| %"},
      {820, 12.5, "DELAY GRAIN X-FADE |12.5| ms"},
      {828, 250.0, "DELAY REVERSE X-FADE |250.0| ms"},
  });
}

TEST_F(ReadoutTest, DelayFactorsBearTheShortNameOfTheTimebase) {
  const std::vector<const char*> units{"",     "/8",   "/16", "/32",  "/64", "/8d",
                                       "/16d", "/32d", "/8t", "/16t", "/32t"};
  for (std::size_t timebase = 0; timebase < units.size(); ++timebase) {
    set(kTimebase + 2, static_cast<double>(timebase));
    move(kDelayFactorL + 2, 5.0);
    EXPECT_EQ(readout(), "DELAY TIME LEFT|5|" + std::string(units[timebase]));
    move(kDelayFactorR + 2, 16.0);
    EXPECT_EQ(readout(), "DELAY TIME RIGHT|16|" + std::string(units[timebase]));
  }
}

TEST_F(ReadoutTest, Taps) {
  expectAll({
      {704, 40.0, "TAPS TIME DEPTH|40|%"},
      {708, 41.0, "TAPS LEVEL DEPTH|41|%"},
      {712, 42.0, "TAPS PAN DEPTH|42|%"},
      {716, 43.0, "TAPS FX P1|43|%"},
      {720, 44.0, "TAPS FX P2|44|%"},
      {744, 125.0, "DELAY TAP TIME|125| ms"},
      {745, 1.5, "DELAY TAP TIME|1.50| ms"},
      {748, 50.0, "DELAY TAP TIME MOD DEPTH|12.50| %"},
      {756, 77.0, "DELAY TAP SWELL|77|%"},
      {1089, 78.0, "DELAY TAP SWING|78|%"},
  });
}

TEST_F(ReadoutTest, Lanes) {
  expectAll({
      {384, 100.0, "TAP TIME STEP 1|100.0| %"},
      {384 + 64 - 1, 12.3, "TAP TIME STEP 16|12.3| %"},
      {448 + 16 + 4, 50.0, "TAP LEVEL STEP 5|50.0| %"},
      {512 + 32 + 9, -25.5, "TAP PAN STEP 10|-25.5| %"},
      {576 + 48 + 15, 20.0, "TAP FX P1 STEP 16|20.00| %"},
      {640, 30.0, "TAP FX P2 STEP 1|30.00| %"},
      {924, 75.0, "GATE STEP 1 LEVEL|75.0| %"},
      {987, 10.0, "GATE STEP 16 LEVEL|10.0| %"},
  });
}

TEST_F(ReadoutTest, GateStepsFollowPolarityAndGrid) {
  set(kGatePol + 1, 2);
  expectAll({{gateStepIndex(1, 2), 75.0, "GATE STEP 3 LEVEL|50.0| %"},
             {gateStepIndex(1, 2), 0.0, "GATE STEP 3 LEVEL|-100.0| %"}});
  set(kGateSteps + 1, 4);
  expectAll({{gateStepIndex(1, 2), 75.0, "GATE STEP 3 LEVEL|2| / 4"}});
  set(kGatePol + 1, 0);
  set(kGateSteps + 1, 12);
  expectAll({{gateStepIndex(1, 2), 75.0, "GATE STEP 3 LEVEL|9| / 12"}});
}

TEST_F(ReadoutTest, Lfos) {
  expectAll({
      {836, 0.0, "LFO WAVE|SIN1|"},
      {837, 19.0, "LFO WAVE|1/3 PULSE|"},
      {839, 26.0, "LFO WAVE|S&H|"},
      {864, 0.05, "LFO RATE|0.050| Hz"},
      {864, 0.1, "LFO RATE|0.100| Hz"},
      {864, 0.11, "LFO RATE|0.11| Hz"},
      {864, 99.994, "LFO RATE|99.99| Hz"},
      {864, 100.0, "LFO RATE|100| Hz"},
      {868, 50.0, "LFO RATE MOD DEPTH |12.50| %"},
      {876, 50.0, "LFO DEPTH|50.0| %"},
      {880, 25.0, "LFO PHASE|25.00| %"},
      {884, 10.0, "LFO GLIDE|10.0| ms"},
  });
}

TEST_F(ReadoutTest, LfoRatesInTempoModeShowNotes) {
  const std::vector<std::string> notes{"4/1", "2/1", "1/1", "1/2", "1/4", "1/8", "1/16", "1/32"};
  const std::vector<std::string> suffixes{"", " D", " T"};
  for (std::size_t mode = 0; mode < suffixes.size(); ++mode) {
    set(kLfoSync + 3, static_cast<double>(mode + 1));
    for (std::size_t note = 0; note < notes.size(); ++note) {
      move(kLfoRate + 3, static_cast<double>(note));
      EXPECT_EQ(readout(), "LFO RATE|" + notes[note] + suffixes[mode] + "|");
    }
  }
}

TEST_F(ReadoutTest, GatesEnvelopesAndLogic) {
  expectAll({
      {908, 12.34, "GATE GLIDE|12.3|ms"},
      {912, 80.0, "GATE DEPTH|80.0| %"},
      {994, 12.0, "ENV GAIN|12.0| dB"},
      {997, 10.4, "ENV ATTACK|10| ms"},
      {998, 100.0, "ENV RELEASE|100| ms"},
      {1001, 20.0, "ENV HOLD|20| ms"},
      {1002, -6.0, "ENV THRESHOLD|-6.0| db"},
      {1004, 50.0, "ENV LOCUT|50| Hz"},
      {1007, 20000.0, "ENV HICUT|20000| Hz"},
      {1008, 90.0, "ENV DEPTH|90.00| %"},
      {1020, -50.0, "LOGIC SOURCE 1|-50.00| %"},
      {1031, 50.0, "LOGIC SOURCE 2|50.00| %"},
      {1036, 12.6, "LOGIC SMOOTH|13| ms"},
      {1040, 70.0, "LOGIC DEPTH|70.00| %"},
      {1044, -70.0, "LOGIC DEPTH MOD|-70.00| %"},
  });
}

TEST_F(ReadoutTest, Globals) {
  expectAll({
      {1058, 30.0, "MAIN MOD RATE |30.00| %"},   {1059, 50.0, "MAIN MOD DEPTH |50.00| %"},
      {1060, -50.0, "FB SCALE |-50.00| %"},      {1061, 100.0, "DLY TIME SCALE |2.00| x"},
      {1061, -100.0, "DLY TIME SCALE |0.50| x"}, {1062, 200.0, "MASTER FX OUT LEVEL |200.00| %"},
      {1063, 0.0, "LIMITER MODE|OFF|"},          {1063, 1.0, "LIMITER MODE|SLOW I|"},
      {1063, 2.0, "LIMITER MODE|SLOW II|"},      {1063, 3.0, "LIMITER MODE|FAST|"},
      {1064, 36.0, "LIMITER BOOST|36.0| dB"},    {1065, 75.0, "WET LEVEL|75.00| %"},
      {1066, 74.0, "DRY LEVEL|74.00| %"},        {1067, -12.0, "OUTPUT LEVEL|-12.0| dB"},
      {1068, 150.0, "WIDTH|150.00| %"},          {1073, 1.0, "FB SLOT1|1.00| %"},
      {1078, 2.0, "FB SLOT2|2.00| %"},           {1083, -3.0, "FB SLOT3|-3.00| %"},
      {1088, -4.0, "FB SLOT4|-4.00| %"},
  });
}

TEST_F(ReadoutTest, MasterEffects) {
  const std::vector<std::vector<const char*>> table{
      {"ORVANT SIZE|50.0| %", "ORVANT DECAY|50.00| %", "ORVANT MODULATION|50.00| %",
       "ORVANT DAMP FREQ|2000| Hz"},
      {"HALL SIZE|8.2| sec", "HALL PREDELAY|250| msec", "HALL HP FREQ|316| Hz",
       "HALL DAMP|50.00| %"},
      {"ROOM SIZE|1.8| sec", "ROOM PREDELAY|100| msec", "HALL HP FREQ|316| Hz",
       "ROOM DAMP|50.00| %"},
      {"LOSHELF GAIN|0.0| db", "PEAK FREQ|2750.0| Hz", "PEAK GAIN|0.0| db", "HISHELF GAIN|0.0| db"},
      {"PEAK GAIN 1|0.0| db", "PEAK FREQ 1|10025.0| Hz", "PEAK GAIN 2|0.0| db",
       "PEAK FREQ 2|10025.0| Hz"},
      {"LOSHELF GAIN|0.0| db", "LOSHELF FREQ|525.0| Hz", "HISHELF GAIN|0.0| db",
       "HISHELF FREQ|3875.0| Hz"},
      {"HIPASS FREQ|1000.0| Hz", "LOPASS FREQ|1000.0| Hz", "GAIN|50.0| %", "MODE|24db-P|"},
  };
  for (std::size_t type = 0; type < table.size(); ++type) {
    set(kMasterFx, static_cast<double>(type + 1));
    for (int knob = 0; knob < 4; ++knob) {
      move(kMasterFxParam + knob, 50.0);
      EXPECT_EQ(readout(), table[type][static_cast<std::size_t>(knob)]) << "type " << type + 1;
    }
  }
}

TEST_F(ReadoutTest, DriveModesOfTheMasterEffect) {
  set(kMasterFx, 7);
  expectAll({{1057, 0.0, "MODE|24db-S|"},
             {1057, 20.0, "MODE|48db-S|"},
             {1057, 40.0, "MODE|72db-S|"},
             {1057, 60.0, "MODE|24db-P|"},
             {1057, 80.0, "MODE|48db-P|"},
             {1057, 100.0, "MODE|72db-P|"}});
}

TEST_F(ReadoutTest, SwitchesAndMenusHaveNone) {
  for (const int paramIdx :
       {0,   4,   8,   12,  28,  36,   52,   296,  308,  312,  316,  320,  324,  328, 332,
        376, 736, 740, 772, 824, 832,  840,  856,  860,  872,  888,  892,  896,  900, 904,
        916, 920, 988, 990, 992, 1010, 1012, 1016, 1024, 1052, 1053, 1069, 1093, 1094}) {
    editor.clear();
    move(paramIdx, 1.0);
    EXPECT_EQ(readout(), "") << "parameter " << paramIdx;
  }
}

TEST_F(ReadoutTest, LinkAndSyncShowTheTimeThatTheyMove) {
  move(kDelayLRLink, 1);
  EXPECT_EQ(readout(), "DELAY TIME LEFT|4|/16");
  set(kLfoRate, 0.5);
  move(kLfoSync, 1);
  EXPECT_EQ(readout(), "LFO RATE|1/1|");
}

TEST_F(ReadoutTest, OnlyTheTouchedParameterHasOne) {
  rig.effect.touchParameter(kWidth);
  set(kFeedback, 10.0);
  EXPECT_TRUE(editor.linesOf("showReadout").empty());
  EXPECT_TRUE(editor.linesOf("flashKnobValue").empty());
  set(kWidth, 10.0);
  EXPECT_EQ(editor.linesOf("showReadout").size(), 1u);
  EXPECT_TRUE(editor.saw("flashKnobValue 32 10.00 0.08"));
}

TEST_F(ReadoutTest, BulkOperationsRefreshEveryKnobAtOnce) {
  const auto bulk = probe.restoringState();
  set(kFeedback, 10.0);
  EXPECT_TRUE(editor.saw("flashKnobValue 68 10.00 0"));
  EXPECT_TRUE(editor.linesOf("showReadout").empty());
}

TEST_F(ReadoutTest, TimesInMillisecondsShowTheirTempo) {
  move(kDelayTimeL, 500.0);
  EXPECT_TRUE(editor.saw("showBeats 120"));
  move(kDelayTimeR, 199.9);
  EXPECT_TRUE(editor.saw("showBeats 300"));
  move(kDelayTimeR, 199.0);
  EXPECT_TRUE(editor.saw("showBeats >300"));
  move(kDelayTapsTime, 400.0);
  EXPECT_TRUE(editor.saw("showBeats 150"));
  editor.clear();
  rig.effect.touchParameter(-1);
  set(kDelayTimeL, 600.0);
  EXPECT_TRUE(editor.linesOf("showBeats").empty());
}

TEST_F(ReadoutTest, ConstructionIsSilent) {
  RecordingEditor early;
  OrvantescoOptions options = EngineRig::seeded();
  options.editor = &early;
  const EngineRig other(48000.0, options);
  EXPECT_TRUE(early.lines().empty());
}

}  // namespace
}  // namespace orvantesco
