// The reverse and the grain reader against the model.

#include <gtest/gtest.h>

#include "engine/SideBySide.h"

namespace orvantesco {
namespace {

using model::Settings;

struct Reading {
  const char* name;
  Settings changes;
};

void PrintTo(const Reading& reading, std::ostream* out) { *out << reading.name; }

class Backward : public testing::TestWithParam<Reading> {};

TEST_P(Backward, AgreesWithTheModelInEverySample) {
  for (const double rate : kComparedRates) {
    const Settings settings =
        with(baseSettings(), {{"Delay Mode 1", 1}, {"Delay TimeL 1", 171.3}, {"Feedback 1", 40}});
    SideBySide both({rate}, with(settings, GetParam().changes));
    EXPECT_LT(both.settledDifference(model::noise(both.steps(1.0), 31)), kAgreement) << rate;
    EXPECT_GT(both.lastPeak, 0.05) << rate;
    EXPECT_LT(both.difference(model::silence(both.steps(0.5))), kAgreement) << rate;
  }
}

const Reading kBackward[] = {
    {"Plain", {}},
    {"LongCrossfade", {{"Reverse X-Fade 1", 60}}},
    {"CrossfadeBeyondTheCycle", {{"Reverse X-Fade 1", 500}}},
    {"ShortestCrossfade", {{"Reverse X-Fade 1", 1}}},
    {"HalfPosition", {{"Grain Position 1", 50}}},
    {"FullPosition", {{"Grain Position 1", 100}}},
    {"LowpassRuns", {{"Delay Lopass 1", 2000}}},
    {"HighpassStaysOut", {{"Delay Hipass 1", 2000}}},
    {"SpreadStaysOut", {{"Delay Spread 1", 20}}},
    {"PingPong", {{"Delay Route 1", 1}}},
    {"Mix", {{"Delay Route 1", 6}}},
    {"LeftAlone", {{"Delay Route 1", 7}}},
    {"Proportional", {{"FBProportional 1", 1}}},
    {"Beats", {{"Timebase 1", 4}}},
};

INSTANTIATE_TEST_SUITE_P(Reading, Backward, testing::ValuesIn(kBackward),
                         [](const auto& test) { return test.param.name; });

TEST(BackwardTrigger, StartsACycleOnTheBar) {
  const Settings settings = with(baseSettings(), {{"Delay Mode 1", 1},
                                                  {"Delay TimeL 1", 3000},
                                                  {"Delay TimeR 1", 1100},
                                                  {"Reverse Delay Trigger 1", 1}});
  for (const bool runs : {false, true}) {
    SideBySide both({48000, 240.0, false, runs}, settings);
    EXPECT_LT(both.settledDifference(model::noise(both.steps(5.0), 32)), kAgreement) << runs;
    SideBySide free({48000, 240.0, false, runs}, with(settings, {{"Reverse Delay Trigger 1", 0}}));
    EXPECT_LT(free.settledDifference(model::noise(free.steps(5.0), 32)), kAgreement) << runs;
  }
}

class Grain : public testing::TestWithParam<Reading> {};

TEST_P(Grain, AgreesWithTheModelInEverySample) {
  for (const double rate : kComparedRates) {
    const Settings settings = with(baseSettings(), {{"Delay Mode 1", 2},
                                                    {"Delay TimeL 1", 171.3},
                                                    {"Grain Size 1", 53.7},
                                                    {"Grain Fade 1", 7.7},
                                                    {"Feedback 1", 40}});
    SideBySide both({rate}, with(settings, GetParam().changes));
    EXPECT_LT(both.settledDifference(model::noise(both.steps(1.0), 33)), kAgreement) << rate;
    EXPECT_GT(both.lastPeak, 0.05) << rate;
  }
}

const Reading kGrain[] = {
    {"UnitSpeed", {}},
    {"OctaveUp", {{"Grain Speed 1", 1}}},
    {"TwoOctavesUp", {{"Grain Speed 1", 2}}},
    {"TwoOctavesDown", {{"Grain Speed 1", -2}}},
    {"OddSpeed", {{"Grain Speed 1", 0.37}}},
    {"HalfPosition", {{"Grain Position 1", 50}}},
    {"FullPosition", {{"Grain Position 1", 100}}},
    {"FadeOfAFifth", {{"Grain Fade 1", 0}}},
    {"FadeHeldAtTheSize", {{"Grain Fade 1", 50}, {"Grain Size 1", 20}}},
    {"SmallestGrain", {{"Grain Size 1", 1}, {"Grain Fade 1", 0}}},
    {"LargestGrain", {{"Grain Size 1", 400}}},
    {"FiltersStayOut", {{"Delay Lopass 1", 400}, {"Delay Hipass 1", 500}}},
    {"SpreadIsHeard", {{"Delay Spread 1", 11}}},
    {"PingPong", {{"Delay Route 1", 5}}},
    {"RightAlone", {{"Delay Route 1", 8}}},
};

INSTANTIATE_TEST_SUITE_P(Reading, Grain, testing::ValuesIn(kGrain),
                         [](const auto& test) { return test.param.name; });

TEST(ReaderModes, SwitchWhileAudioRuns) {
  SideBySide both({44100}, with(baseSettings(), {{"Grain Fade 1", 5}, {"Feedback 1", 30}}));
  EXPECT_LT(both.settledDifference(model::noise(both.steps(0.5), 34)), kAgreement);
  both.set("Delay Mode 1", 1);
  EXPECT_LT(both.difference(model::noise(both.steps(0.5), 35)), kAgreement) << "backward";
  both.set("Delay Mode 1", 0);
  EXPECT_LT(both.difference(model::noise(both.steps(0.5), 36)), kAgreement) << "forward";
  both.set("Delay Mode 1", 2);
  EXPECT_LT(both.difference(model::noise(both.steps(0.5), 37)), kAgreement) << "grain";
}

}  // namespace
}  // namespace orvantesco
