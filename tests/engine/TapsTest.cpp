// Patterns of taps against the model. All taps first glide to their places in silence.

#include <gtest/gtest.h>

#include "engine/SideBySide.h"

namespace orvantesco {
namespace {

using model::Settings;
using model::stepName;

struct Pattern {
  const char* name;
  Settings changes;
};

void PrintTo(const Pattern& pattern, std::ostream* out) { *out << pattern.name; }

/// A pattern in which every tap has its own time, level and place.
Settings tapped() {
  Settings settings = with(
      baseSettings(),
      {{"Delay Mode 1", 3}, {"Delay Taps Time 1", 23.7}, {"DelayTaps 1", 6}, {"Feedback 1", 60}});
  for (int t = 0; t < 16; ++t) {
    settings[stepName(0, t, " Time")] = 40 + 37 * t % 61;
    settings[stepName(0, t, " Level")] = 35 + 29 * t % 66;
    settings[stepName(0, t, " Pan")] = 53 * t % 200 - 100;
  }
  return settings;
}

class Taps : public testing::TestWithParam<Pattern> {};

TEST_P(Taps, AgreeWithTheModelInEverySample) {
  for (const double rate : kComparedRates) {
    SideBySide both({rate}, with(tapped(), GetParam().changes));
    EXPECT_LT(both.settledDifference(model::noise(both.steps(0.5), 21)), kAgreement) << rate;
    EXPECT_GT(both.lastPeak, 0.01) << rate;
    EXPECT_LT(both.difference(model::silence(both.steps(0.5))), kAgreement) << rate;
  }
}

const Pattern kPatterns[] = {
    {"Plain", {}},
    {"OneTap", {{"DelayTaps 1", 0}}},
    {"AllTaps", {{"DelayTaps 1", 15}, {"Delay Taps Time 1", 11.1}}},
    {"TimeRowWithoutDepth", {{"Tap Time Step Depth 1", 0}}},
    {"TimeRowHalf", {{"Tap Time Step Depth 1", 50}}},
    {"LevelRowWithoutDepth", {{"Tap Level Step Depth 1", 0}}},
    {"LevelRowHalf", {{"Tap Level Step Depth 1", 50}}},
    {"NoPan", {{"Tap Pan Width 1", 0}}},
    {"HalfPan", {{"Tap Pan Width 1", 50}}},
    {"DualMono", {{"Tap Pan Mode 1", 1}}},
    {"LeftTaps", {{"Tap Pan Mode 1", 2}}},
    {"RightTaps", {{"Tap Pan Mode 1", 3}}},
    {"FullSwing", {{"Delay Taps Swing 1", 100}}},
    {"SomeSwing", {{"Delay Taps Swing 1", 37}}},
    {"FullSwell", {{"Delay Taps Swell 1", 100}}},
    {"SomeSwell", {{"Delay Taps Swell 1", 43.21}}},
    {"LittleSwell", {{"Delay Taps Swell 1", 3}}},
    {"FeedbackTapBelowTheLast", {{"DelayTap FB 1", 2}}},
    {"FeedbackTapAboveTheLast", {{"DelayTap FB 1", 12}}},
    {"OneTapAndTheLastFeedback", {{"DelayTaps 1", 0}, {"DelayTap FB 1", 16}}},
    {"LoudFeedback", {{"Feedback 1", 160}, {"Input Gain 1", 6}}},
    {"MixRoute", {{"Delay Route 1", 6}}},
    {"PingPongRoute", {{"Delay Route 1", 2}}},
    {"OneSidedRoute", {{"Delay Route 1", 7}}},
    {"Beats", {{"TapTimebase 1", 4}, {"DelayTaps 1", 3}}},
    {"TimeScale", {{"Delay Time Scale", 55}}},
    {"DirectMix", {{"Direct In 1", 70}}},
    {"EchoFiltersStayOut", {{"Delay Lopass 1", 500}, {"Delay Hipass 1", 400}}},
    {"SpreadStaysOut", {{"Delay Spread 1", 20}}},
    {"NothingIsAsNear", {{"TapDelay1 Step1 Time", 0}}},
};

INSTANTIATE_TEST_SUITE_P(Pattern, Taps, testing::ValuesIn(kPatterns),
                         [](const auto& test) { return test.param.name; });

TEST(TapsOut, LastOrAllReachTheNextSlot) {
  for (const double all : {0.0, 1.0}) {
    Settings settings = with(tapped(), {{"DelayTap DI Out 1", all},
                                        {"Direct Out 1", 1},
                                        {"Output Mode 1", 2},
                                        {"SlotOn 2", 1},
                                        {"Input 2", 5},
                                        {"DelayOn 2", 0}});
    SideBySide both({44100}, settings);
    EXPECT_LT(both.settledDifference(model::noise(both.steps(0.5), 22)), kAgreement) << all;
    EXPECT_GT(both.lastPeak, 0.02);
  }
}

TEST(TapMasks, SilenceTapsOfOneSideOrBoth) {
  constexpr std::pair<unsigned, unsigned> kMasks[] = {
      {0xFFFF, 0xFFFF}, {0x5555, 0xAAAA}, {0x31CD, 0xCE32}, {0x0001, 0x0000}, {0x0000, 0x0040}};
  for (const auto& [left, right] : kMasks) {
    for (const double panMode : {0.0, 1.0, 2.0, 3.0}) {
      SideBySide both({48000}, with(tapped(), {{"Tap Pan Mode 1", panMode}}));
      both.setTapMasks(0, left, right);
      EXPECT_LT(both.settledDifference(model::noise(both.steps(0.4), 26)), kAgreement) << left;
    }
  }
}

TEST(TapMasks, AllOffStillFeedsBackAndOut) {
  // Nothing is heard of the first slot, but its last tap reaches the second one and its loop runs.
  Settings settings = with(
      tapped(),
      {{"Direct Out 1", 1}, {"SlotOn 2", 1}, {"Input 2", 5}, {"DelayOn 2", 0}, {"Level 2", 0}});
  SideBySide both({44100}, settings);
  both.setTapMasks(0, 0, 0);
  EXPECT_LT(both.settledDifference(model::noise(both.steps(0.5), 27)), kAgreement);
  EXPECT_GT(both.lastPeak, 0.1);
  SideBySide silent({44100}, with(settings, {{"SlotOn 2", 0}}));
  silent.setTapMasks(0, 0, 0);
  EXPECT_LT(silent.settledDifference(model::noise(silent.steps(0.5), 27)), kAgreement);
  EXPECT_LT(silent.lastPeak, 1e-12);
}

TEST(TapMasks, ChangeWhileAudioRuns) {
  SideBySide both({44100}, tapped());
  EXPECT_LT(both.settledDifference(model::noise(both.steps(0.4), 28)), kAgreement);
  for (const unsigned mask : {0x000FU, 0xFFF0U, 0x3333U}) {
    both.setTapMasks(0, mask, ~mask & 0xFFFFU);
    EXPECT_LT(both.difference(model::noise(both.steps(0.4), mask)), kAgreement) << mask;
  }
}

TEST(TapsOut, TapsBeyondEightSecondsAreLeftOut) {
  Settings settings = with(tapped(), {{"Delay Taps Time 1", 500},
                                      {"DelayTaps 1", 15},
                                      {"Tap Time Step Depth 1", 0},
                                      {"Delay Time Scale", 10},
                                      {"Direct Out 1", 1},
                                      {"SlotOn 2", 1},
                                      {"Input 2", 5}});
  SideBySide both({44100}, settings);
  EXPECT_LT(both.settledDifference(model::noise(both.steps(3.0), 23)), kAgreement);
  EXPECT_LT(both.difference(model::noise(both.steps(7.0), 24)), kAgreement);
}

TEST(TapsOut, SixteenTapsOfHalfASecondReachEightSeconds) {
  Settings settings = with(tapped(), {{"Delay Taps Time 1", 500},
                                      {"DelayTaps 1", 15},
                                      {"Tap Time Step Depth 1", 0},
                                      {"Delay Taps Swell 1", 100}});
  SideBySide both({44100}, settings);
  EXPECT_LT(both.settledDifference(model::noise(both.steps(2.0), 25)), kAgreement);
  EXPECT_LT(both.difference(model::silence(both.steps(9.0))), kAgreement);
}

}  // namespace
}  // namespace orvantesco
