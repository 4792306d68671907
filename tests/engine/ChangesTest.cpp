// What happens when something changes while audio runs: glides, jumps, emptied rings, fades.

#include <gtest/gtest.h>

#include "engine/SideBySide.h"

namespace orvantesco {
namespace {

using model::Settings;

struct Change {
  const char* name;
  Settings before;                                    ///< on top of the base settings
  std::vector<std::pair<std::string, double>> write;  ///< in order, at one frame
};

void PrintTo(const Change& change, std::ostream* out) { *out << change.name; }

class Changes : public testing::TestWithParam<Change> {};

TEST_P(Changes, AgreeWithTheModelInEverySample) {
  for (const double rate : kComparedRates) {
    const Change& change = GetParam();
    SideBySide both({rate}, with(with(baseSettings(), {{"Feedback 1", 50}}), change.before));
    ASSERT_LT(both.settledDifference(model::noise(both.steps(0.3), 1)), kAgreement) << rate;
    for (const auto& [name, value] : change.write) both.set(name, value);
    EXPECT_LT(both.difference(model::noise(both.steps(1.0), 2)), kAgreement) << rate;
    EXPECT_GT(both.lastPeak, 0.02) << rate;
    EXPECT_LT(both.difference(model::noise(both.steps(0.3), 3)), kAgreement) << "after " << rate;
  }
}

const Change kChanges[] = {
    {"TimeGlidesUp", {}, {{"Delay TimeL 1", 140}}},
    {"TimeGlidesDown", {}, {{"Delay TimeR 1", 12.34}}},
    {"SpreadGlides", {}, {{"Delay Spread 1", 15}}},
    {"TimeScaleGlides", {}, {{"Delay Time Scale", -40}}},
    {"TimebaseJumps", {}, {{"Timebase 1", 3}}},
    {"FactorJumps", {{"Timebase 1", 4}}, {{"DelayFactorL 1", 3}}},
    {"BackToMilliseconds", {{"Timebase 1", 4}}, {{"Timebase 1", 0}}},
    {"InputGainRamps", {}, {{"Input Gain 1", -20}}},
    {"LevelRamps", {}, {{"Level 1", -60}}},
    {"PanRamps", {}, {{"Panning 1", 80}}},
    {"WidthSteps", {}, {{"Width 1", 10}}},
    {"FeedbackSteps", {}, {{"Feedback 1", 90}}},
    {"LowpassGlides", {{"Delay Lopass 1", 3000}}, {{"Delay Lopass 1", 8000}}},
    {"LowpassComesIn", {}, {{"Delay Lopass 1", 1500}}},
    {"HighpassGlides", {{"Delay Hipass 1", 100}}, {{"Delay Hipass 1", 900}}},
    {"HighpassGoes", {{"Delay Hipass 1", 100}}, {{"Delay Hipass 1", 20}}},
    {"OffsetMoves", {}, {{"L/R Offset 1", -12}}},
    {"RouteChanges", {}, {{"Delay Route 1", 5}}},
    {"RouteToOneSide", {}, {{"Delay Route 1", 7}}},
    {"RouteBackFromOneSide", {{"Delay Route 1", 8}}, {{"Delay Route 1", 0}}},
    {"ProportionalSwitches", {}, {{"FBProportional 1", 1}}},
    {"SlotOff", {{"Dry Level", 50}}, {{"SlotOn 1", 0}}},
    {"SlotOffAndOn", {}, {{"SlotOn 1", 0}, {"SlotOn 1", 1}}},
    {"DelayOffAndOn", {{"Direct In 1", 30}}, {{"DelayOn 1", 0}, {"DelayOn 1", 1}}},
    {"DelayOff", {{"Direct In 1", 30}}, {{"DelayOn 1", 0}}},
    {"DelayOnAfterStartingOff", {{"DelayOn 1", 0}}, {{"DelayOn 1", 1}}},
    {"DirectInAfterAToggle",
     {{"Direct In 1", 30}},
     {{"DelayOn 1", 0}, {"DelayOn 1", 1}, {"Direct In 1", 30}}},
    {"DirectInWrittenWhileOff", {}, {{"DelayOn 1", 0}, {"Direct In 1", 80}, {"DelayOn 1", 1}}},
    {"ForwardAgainEmptiesTheRing", {}, {{"Delay Mode 1", 0}}},
    {"TapTimebaseFades", {}, {{"TapTimebase 1", 3}}},
    {"InputSteps", {}, {{"Input 1", 0}}},
    {"AwayFromTheMasterReturn", {{"Input 1", 4}}, {{"Input 1", 3}}},
    {"OutputModeSteps", {}, {{"Output Mode 1", 1}}},
    {"MasterSteps", {}, {{"Output Level", -6}, {"Wet Level", 50}, {"Dry Level", 50}}},
    {"FeedbackMasterSteps", {}, {{"Feedback Master", 40}}},
    {"SecondSlotComesIn", {}, {{"SlotOn 2", 1}, {"Input 2", 5}, {"Timebase 2", 0}}},
};

INSTANTIATE_TEST_SUITE_P(Write, Changes, testing::ValuesIn(kChanges),
                         [](const auto& test) { return test.param.name; });

TEST(ChangesInPlay, DelaysKeepNothingWhileTheSlotIsOff) {
  SideBySide both({48000}, baseSettings());
  EXPECT_LT(both.settledDifference(model::noise(both.steps(0.5), 1)), kAgreement);
  both.set("SlotOn 1", 0);
  EXPECT_LT(both.difference(model::silence(both.steps(0.2))), kAgreement);
  both.set("SlotOn 1", 1);
  EXPECT_LT(both.difference(model::silence(both.steps(0.5))), kAgreement);
  EXPECT_LT(both.lastPeak, 1e-9);
}

TEST(ChangesInPlay, TempoMovesTimesInBeats) {
  const Settings settings = with(baseSettings(), {{"Timebase 1", 3}, {"Feedback 1", 40}});
  for (const double rate : kComparedRates) {
    SideBySide both({rate}, settings);
    EXPECT_LT(both.settledDifference(model::noise(both.steps(0.3), 1)), kAgreement);
    for (const double tempo : {97.3, 240.0, 30.0, 12.0}) {
      both.setTempo(tempo);
      EXPECT_LT(both.difference(model::noise(both.steps(0.8), 2)), kGlideAgreement) << tempo;
    }
  }
}

TEST(ChangesInPlay, TimebaseAndTempoTogetherActInOneStep) {
  SideBySide both({44100}, baseSettings());
  EXPECT_LT(both.settledDifference(model::noise(both.steps(0.3), 1)), kAgreement);
  both.setTempo(171.0);
  both.set("Timebase 1", 2);
  EXPECT_LT(both.difference(model::noise(both.steps(0.8), 2)), kAgreement);
}

TEST(ChangesInPlay, TempoBelowThirtyActsAsThirty) {
  const Settings settings = with(baseSettings(), {{"Timebase 1", 4}, {"DelayFactorL 1", 1}});
  for (const double tempo : {30.0, 29.0, 5.0}) {
    SideBySide both({44100, tempo}, settings);
    EXPECT_LT(both.settledDifference(model::noise(both.steps(0.5), 1)), kAgreement) << tempo;
  }
}

}  // namespace
}  // namespace orvantesco
