#include "params/dispatch/DispatchRig.h"

namespace orvantesco {
namespace {

class LfoRateTest : public DispatchRig {
 protected:
  double hz(int lfo = 0) const {
    return probe.modulators().lfo[static_cast<std::size_t>(lfo)].rateHz(tempo);
  }
  void setTempo(double beatsPerMinute) {
    tempo = beatsPerMinute;
    probe.takeTempo(tempo);
  }
  double tempo = 120.0;
};

TEST_F(LfoRateTest, InHertzTheValueIsTheRate) {
  set(kLfoRate, 123.4);
  EXPECT_DOUBLE_EQ(hz(), 123.4);
}

TEST_F(LfoRateTest, NotesFollowTheTempo) {
  set(kLfoSync, 1);
  for (const double beatsPerMinute : {120.0, 33.0, 240.0}) {
    setTempo(beatsPerMinute);
    for (int note = 0; note < 8; ++note) {
      set(kLfoRate, note);
      EXPECT_NEAR(hz(), std::pow(2.0, note - 4) / 60.0 * beatsPerMinute, 1e-12);
    }
  }
}

TEST_F(LfoRateTest, DottedNotesAreSlowerTripletsFasterByAHalf) {
  set(kLfoSync, 1);
  set(kLfoRate, 4);
  EXPECT_NEAR(hz(), 2.0, 1e-12);
  set(kLfoSync, 2);
  EXPECT_NEAR(hz(), 2.0 / 1.5, 1e-12);
  set(kLfoSync, 3);
  EXPECT_NEAR(hz(), 3.0, 1e-12);
}

TEST_F(LfoRateTest, ANoteIsRounded) {
  set(kLfoSync, 1);
  set(kLfoRate, 3.6);
  EXPECT_NEAR(hz(), 2.0, 1e-12);
}

TEST_F(LfoRateTest, EnteringTempoModePicksTheNoteAtOrBelowTheRunningRate) {
  const std::vector<std::pair<double, int>> table{{0.001, 0}, {0.125, 0}, {0.2, 0}, {0.25, 1},
                                                  {1.99, 3},  {2.0, 4},   {3.9, 4}, {4.0, 5},
                                                  {16.0, 7},  {500.0, 7}};
  for (const auto& [rate, note] : table) {
    set(kLfoSync + 1, 0);
    set(kLfoRate + 1, rate);
    set(kLfoSync + 1, 1);
    EXPECT_DOUBLE_EQ(valueOf(kLfoRate + 1), note) << rate << " Hz";
  }
}

TEST_F(LfoRateTest, EveryNoteMapsToItselfAtOddTempos) {
  for (const double beatsPerMinute : {76.3, 120.0, 124.0, 130.1, 200.4}) {
    setTempo(beatsPerMinute);
    for (int note = 0; note < 8; ++note) {
      set(kLfoSync, 0);
      set(kLfoRate, std::pow(2.0, note - 4) / 60.0 * beatsPerMinute);
      set(kLfoSync, 1);
      EXPECT_DOUBLE_EQ(valueOf(kLfoRate), note) << beatsPerMinute;
    }
  }
}

TEST_F(LfoRateTest, LeavingTempoModeKeepsTheRunningRate) {
  setTempo(90.0);
  set(kLfoSync + 3, 3);
  set(kLfoRate + 3, 5);
  set(kLfoSync + 3, 0);
  EXPECT_NEAR(valueOf(kLfoRate + 3), 2.0 / 60.0 * 1.5 * 90.0, 1e-12);
  EXPECT_NEAR(hz(3), 4.5, 1e-12);
}

TEST_F(LfoRateTest, ABulkOperationKeepsTheLoadedValue) {
  {
    const auto bulk = probe.restoringState();
    set(kLfoSync, 1);
    set(kLfoRate, 2);
  }
  EXPECT_DOUBLE_EQ(valueOf(kLfoRate), 2.0);
  {
    const auto bulk = probe.restoringState();
    rig.effect.GetParam(kLfoRate)->setValue(44.0);
    set(kLfoSync, 0);
  }
  EXPECT_DOUBLE_EQ(valueOf(kLfoRate), 44.0);
  EXPECT_DOUBLE_EQ(hz(), 44.0);
}

TEST_F(LfoRateTest, TheKnobGetsSevenStepsAndNamesTheNotes) {
  move(kLfoSync + 2, 2);
  EXPECT_TRUE(editor.saw("setKnobSteps 866 7 1"));
  EXPECT_TRUE(editor.saw("redraw 866"));
  EXPECT_EQ(rig.effect.touchedParameter(), kLfoRate + 2);
  EXPECT_STREQ(rig.effect.GetParam(kLfoRate + 2)->name(), "LFO Sync 3");
  move(kLfoSync + 2, 0);
  EXPECT_TRUE(editor.saw("setKnobSteps 866 0 1"));
  EXPECT_STREQ(rig.effect.GetParam(kLfoRate + 2)->name(), "LFO Rate 3");
}

TEST_F(LfoRateTest, AutomationOfTheSyncLeavesTheTouchedParameter) {
  rig.effect.touchParameter(kWidth);
  set(kLfoSync, 1);
  EXPECT_EQ(rig.effect.touchedParameter(), kWidth);
  EXPECT_TRUE(editor.linesOf("redraw").empty());
}

}  // namespace
}  // namespace orvantesco
