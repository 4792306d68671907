// The engine against the model under settings that stay as they are: every sample of the output,
// from the first frame on, so that the fade, the ramps and the filters' gliding corners count too.

#include <gtest/gtest.h>

#include "engine/SideBySide.h"

namespace orvantesco {
namespace {

using model::Settings;

struct Scenario {
  const char* name;
  Settings changes;
  double minimumPeak = 0.05;  ///< what has to be heard, so that silence does not count as agreement
};

void PrintTo(const Scenario& scenario, std::ostream* out) { *out << scenario.name; }

class StaticSettings : public testing::TestWithParam<Scenario> {};

/// An impulse, noise, and silence for the tail.
model::Signal stimulus(double sampleRate) {
  const auto frames = [&](double seconds) { return static_cast<size_t>(seconds * sampleRate); };
  return joined(model::impulse(frames(0.2), frames(0.05), 0.9, -0.7),
                joined(model::noise(frames(0.3), 5), model::silence(frames(0.4))));
}

TEST_P(StaticSettings, AgreeWithTheModelInEverySample) {
  for (const double rate : kComparedRates) {
    SideBySide both({rate}, with(baseSettings(), GetParam().changes));
    EXPECT_LT(both.difference(stimulus(rate)), kAgreement) << "from the start, " << rate;
    EXPECT_GE(both.lastPeak, GetParam().minimumPeak) << rate;
    EXPECT_LT(both.difference(stimulus(rate)), kAgreement) << "settled, " << rate;
  }
}

const Scenario kTimes[] = {
    {"Plain", {}},
    {"WholeSamples", {{"Delay TimeL 1", 100}, {"Delay TimeR 1", 250}}},
    {"Fractions", {{"Delay TimeL 1", 33.37}, {"Delay TimeR 1", 123.41}}},
    {"ShortestTime", {{"Delay TimeL 1", 1}, {"Delay TimeR 1", 1.01}, {"Feedback 1", 30}}},
    {"LongTimes", {{"Delay TimeL 1", 512.77}, {"Delay TimeR 1", 431.19}}},
    {"SpreadOut", {{"Delay Spread 1", 20}}},
    {"SpreadIn", {{"Delay Spread 1", -13.37}}},
    {"SpreadBelowTheShortest", {{"Delay TimeR 1", 5}, {"Delay Spread 1", 20}}},
    {"ScaleDouble", {{"Delay Time Scale", 100}}},
    {"ScaleHalf", {{"Delay Time Scale", -100}}},
    {"ScaleOdd", {{"Delay Time Scale", 37.5}}},
    {"Beats", {{"Timebase 1", 3}, {"DelayFactorL 1", 2}, {"DelayFactorR 1", 3}}},
    {"DottedBeats", {{"Timebase 1", 6}, {"DelayFactorL 1", 1}, {"DelayFactorR 1", 2}}},
    {"TripletBeats", {{"Timebase 1", 10}, {"DelayFactorL 1", 1}, {"DelayFactorR 1", 5}}},
    {"OffsetLeft", {{"L/R Offset 1", -7}}},
    {"OffsetRight", {{"L/R Offset 1", 25}}},
    {"OffsetBelowHalf", {{"L/R Offset 1", 0.4}}},
    {"OffsetAboveHalf", {{"L/R Offset 1", -0.6}}},
};

const Scenario kLoops[] = {
    {"Feedback", {{"Feedback 1", 70}}},
    {"FeedbackFull", {{"Feedback 1", 100}}},
    {"FeedbackMaster", {{"Feedback 1", 30}, {"Feedback Master", 35}}},
    {"FeedbackMasterBelowZero", {{"Feedback 1", 30}, {"Feedback Master", -50}}},
    {"Overdriven", {{"Feedback 1", 160}, {"Feedback Master", 50}, {"Input Gain 1", 12}}},
    {"Proportional", {{"Feedback 1", 60}, {"FBProportional 1", 1}}},
    {"ProportionalRightLonger",
     {{"Feedback 1", 60}, {"FBProportional 1", 1}, {"Delay TimeL 1", 20}}},
    {"ProportionalLeftLonger",
     {{"Feedback 1", 60}, {"FBProportional 1", 1}, {"Delay TimeL 1", 190}}},
    {"ProportionalEqual", {{"Feedback 1", 60}, {"FBProportional 1", 1}, {"Delay TimeL 1", 93.7}}},
    {"ProportionalNeedsDual", {{"Feedback 1", 60}, {"FBProportional 1", 1}, {"Delay Route 1", 5}}},
    {"Dual", {{"Delay Route 1", 0}, {"Feedback 1", 60}}},
    {"PingPongL", {{"Delay Route 1", 1}, {"Feedback 1", 60}}},
    {"PingPongSummedL", {{"Delay Route 1", 2}, {"Feedback 1", 60}}},
    {"PingPongR", {{"Delay Route 1", 3}, {"Feedback 1", 60}}},
    {"PingPongSummedR", {{"Delay Route 1", 4}, {"Feedback 1", 60}}},
    {"PingPongBoth", {{"Delay Route 1", 5}, {"Feedback 1", 60}}},
    {"Mix", {{"Delay Route 1", 6}, {"Feedback 1", 100}}},
    {"LeftAlone", {{"Delay Route 1", 7}, {"Feedback 1", 60}}},
    {"RightAlone", {{"Delay Route 1", 8}, {"Feedback 1", 60}}},
    {"Lowpass", {{"Delay Lopass 1", 2500}, {"Feedback 1", 60}}},
    {"LowpassLow", {{"Delay Lopass 1", 200}}},
    {"LowpassJustOn", {{"Delay Lopass 1", 19999.9}}},
    {"Highpass", {{"Delay Hipass 1", 700}, {"Feedback 1", 60}}, 0.02},
    {"HighpassJustOn", {{"Delay Hipass 1", 20.1}}},
    {"BandInTheLoop",
     {{"Delay Lopass 1", 4000}, {"Delay Hipass 1", 300}, {"Feedback 1", 80}},
     0.02},
};

const Scenario kOutputs[] = {
    {"DirectMixLow", {{"Direct In 1", 20}}},
    {"DirectMixMiddle", {{"Direct In 1", 50}}},
    {"DirectMixHigh", {{"Direct In 1", 83}}},
    {"DelayOff", {{"DelayOn 1", 0}, {"Direct In 1", 30}}},
    {"DelayOffWithOffset", {{"DelayOn 1", 0}, {"L/R Offset 1", 11}}},
    {"NarrowWidth", {{"Width 1", 0}}},
    {"HalfWidth", {{"Width 1", 50}}},
    {"PanLeft", {{"Panning 1", -60}}},
    {"PanRight", {{"Panning 1", 100}}},
    {"PanBeforeWidth", {{"Panning 1", 70}, {"Width 1", 30}, {"PanPosition 1", 1}}},
    {"PanAfterWidth", {{"Panning 1", 70}, {"Width 1", 30}}},
    {"Gains", {{"Input Gain 1", -9.5}, {"Level 1", 4}}},
    {"SilentInput", {{"Input Gain 1", -60}, {"Dry Level", 40}}},
    {"SilentLevel", {{"Level 1", -60}, {"Dry Level", 40}}},
    {"Swapped", {{"Output Mode 1", 1}, {"Panning 1", 40}}},
    {"Muted", {{"Output Mode 1", 2}, {"Dry Level", 40}}},
    {"DryAndWet", {{"Dry Level", 75}, {"Wet Level", 60}, {"Output Level", -4.5}}},
    {"GlobalNarrow", {{"Global Width", 0}, {"Dry Level", 20}}},
    {"GlobalNarrower", {{"Global Width", 65}}},
    {"GlobalWide", {{"Global Width", 150}}},
    {"InputMono", {{"Input 1", 0}}},
    {"InputLeft", {{"Input 1", 1}}},
    {"InputRight", {{"Input 1", 2}}},
    {"InputMasterEffect", {{"Input 1", 4}, {"Dry Level", 40}}},
    {"NoMasterEffectNoSend", {{"M-FX Send 1", 100}, {"MasterFX Level", 200}}},
    {"Defaults",
     {{"Dry Level", 75},
      {"Wet Level", 75},
      {"Input 1", 0},
      {"Input Gain 1", -3},
      {"Level 1", -3},
      {"Feedback 1", 50},
      {"Timebase 1", 2},
      {"Delay Lopass 1", 7500}}},
};

std::string nameOf(const testing::TestParamInfo<Scenario>& test) { return test.param.name; }

INSTANTIATE_TEST_SUITE_P(Times, StaticSettings, testing::ValuesIn(kTimes), nameOf);
INSTANTIATE_TEST_SUITE_P(Loops, StaticSettings, testing::ValuesIn(kLoops), nameOf);
INSTANTIATE_TEST_SUITE_P(Outputs, StaticSettings, testing::ValuesIn(kOutputs), nameOf);

}  // namespace
}  // namespace orvantesco
