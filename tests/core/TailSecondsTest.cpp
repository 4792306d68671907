#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <utility>

#include "core/Orvantesco.h"
#include "params/ParamIndex.h"
#include "support/EngineRig.h"

namespace orvantesco {
namespace {

constexpr double rate = 48000.0;
constexpr double silence = 3.1622776601683795e-5;  // -90 dB

using Settings = std::vector<std::pair<int, double>>;

/// Short delays, so that a long decay is many turns and not a long render.
const Settings quick{{kTimebase, 0}, {kDelayTimeL, 100}, {kDelayTimeR, 100}, {kDryLevel, 0}};

struct Decay {
  std::string name;
  Settings settings;
  double mostOver = 2.0;  ///< the tail is at most this many times what is heard
};

void apply(EngineRig& rig, const Settings& settings) {
  for (const auto& [index, value] : settings) rig.set(index, value);
}

/// Seconds behind a second of full-scale noise until the output has passed -90 dB for the last
/// time.
double renderedSeconds(EngineRig& rig, double longest) {
  StereoBuffer audio = noise(static_cast<std::size_t>(rate), 1.0);
  rig.render(audio);
  StereoBuffer tail(static_cast<std::size_t>(longest * rate));
  rig.render(tail);
  for (std::size_t i = tail.size(); i > 0; --i) {
    const double heard = std::max(std::abs(tail.left[i - 1]), std::abs(tail.right[i - 1]));
    if (heard > silence) return static_cast<double>(i) / rate;
  }
  return 0.0;
}

class TailSecondsOf : public ::testing::TestWithParam<Decay> {};

TEST_P(TailSecondsOf, CoversWhatIsHeard) {
  EngineRig rig(rate);
  apply(rig, quick);
  apply(rig, GetParam().settings);
  rig.warmUp();
  const double tail = rig.effect.tailSeconds();
  ASSERT_TRUE(std::isfinite(tail));
  const double heard = renderedSeconds(rig, 1.5 * tail + 0.5);
  EXPECT_GE(tail, heard);
  EXPECT_LE(tail, GetParam().mostOver * heard + 0.2);
}

const Decay decays[] = {
    {"NoFeedback", {{kFeedback, 0}}},
    {"Feedback50", {}},
    {"Feedback90", {{kFeedback, 90}}},
    {"Feedback97", {{kFeedback, 97}}},
    {"FeedbackMaster", {{kFeedback, 50}, {kFeedbackMaster, 40}}},
    {"Quiet", {{kFeedback, 80}, {kLevel, -40}}},
    {"LoudWithLimiter", {{kFeedback, 80}, {kLimiterOn, 1}, {kLimiterLevel, 36}}},
    {"UnequalSides", {{kFeedback, 80}, {kDelayTimeR, 30}}},
    {"PingPong", {{kFeedback, 80}, {kDelayRoute, 1}}},
    {"MixRoute", {{kFeedback, 80}, {kDelayRoute, 6}}},
    {"MonoLeft", {{kFeedback, 80}, {kDelayRoute, 7}, {kDelayTimeR, 30}}},
    {"Notes", {{kFeedback, 70}, {kTimebase, 2}, {kDelayFactorL, 2}, {kDelayFactorR, 2}}},
    {"Tapped", {{kFeedback, 90}, {kDelayMode, 3}, {kDelayTapsTime, 20}}},
    {"Backward", {{kFeedback, 60}, {kDelayMode, 1}}, 3.0},
    {"Grain", {{kFeedback, 60}, {kDelayMode, 2}}, 6.0},
    {"TwoSlots",
     {{kSlotOn + 1, 1},
      {kFeedback, 60},
      {kFeedback + 1, 85},
      {kTimebase + 1, 0},
      {kDelayTimeL + 1, 60},
      {kDelayTimeR + 1, 60}}},
    {"TwoSlotsInARow",
     {{kSlotOn + 1, 1},
      {kInput + 1, 5},
      {kFeedback, 80},
      {kFeedback + 1, 80},
      {kTimebase + 1, 0},
      {kDelayTimeL + 1, 100},
      {kDelayTimeR + 1, 100}}},
    {"CrossedMatrix",
     {{kSlotOn + 1, 1},
      {kFbMatrix, 1},
      {kFbMatrix + 1, 1},
      {kFeedback, 100},
      {kFeedback + 1, 100},
      {slotFbIndex(0, 1), 80},
      {slotFbIndex(1, 0), 80},
      {kTimebase + 1, 0},
      {kDelayTimeL + 1, 50},
      {kDelayTimeR + 1, 50}}},
    {"Hall", {{kFeedback, 0}, {kMasterFx, 2}, {kMasterFxParam, 30}}},
    {"Room",
     {{kFeedback, 0}, {kMasterFx, 3}, {kMasterFxParam, 60}, {kMasterFxParam + 3, 100}},
     3.0},
    {"Ambience",
     {{kFeedback, 0}, {kMasterFx, 1}, {kMasterFxParam, 30}, {kMasterFxParam + 1, 50}},
     3.0},
    {"DelayAndHall", {{kFeedback, 80}, {kMasterFx, 2}, {kMasterFxParam, 30}}, 3.0},
};
INSTANTIATE_TEST_SUITE_P(Settings, TailSecondsOf, ::testing::ValuesIn(decays),
                         [](const auto& decay) { return decay.param.name; });

TEST(TailSeconds, IsInfiniteWhereALoopDoesNotFade) {
  EngineRig rig;
  rig.set(kFeedback, 99.0);
  EXPECT_TRUE(std::isfinite(rig.effect.tailSeconds()));
  rig.set(kFeedback, 100.0);
  EXPECT_TRUE(std::isinf(rig.effect.tailSeconds()));
  rig.set(kDelayOn, 0.0);
  EXPECT_TRUE(std::isfinite(rig.effect.tailSeconds()));
}

TEST(TailSeconds, IsInfiniteWhereTwoSlotsDriveEachOther) {
  EngineRig rig;
  for (int slot = 0; slot < 2; ++slot) {
    rig.set(kSlotOn + slot, 1.0);
    rig.set(kFbMatrix + slot, 1.0);
    rig.set(kFeedback + slot, slot == 0 ? 130.0 : 80.0);
    rig.set(slotFbIndex(1 - slot, slot), 100.0);
  }
  // 1.3 * 0.8 passes 1, although neither slot feeds itself.
  EXPECT_TRUE(std::isinf(rig.effect.tailSeconds()));
  rig.set(slotFbIndex(0, 1), -90.0);
  EXPECT_TRUE(std::isfinite(rig.effect.tailSeconds()));
}

TEST(TailSeconds, IsInfiniteWhereACircleRunsThroughASlotsInput) {
  EngineRig rig;
  rig.set(kSlotOn + 1, 1.0);
  rig.set(kInput + 1, 5.0);  // the second slot hears the first one
  rig.set(kInputGain + 1, 0.0);
  rig.set(kFbMatrix, 1.0);
  rig.set(kFeedback, 100.0);
  rig.set(kFeedback + 1, 0.0);
  rig.set(kLevel, 0.0);
  rig.set(slotFbIndex(1, 0), 50.0);  // and the first one gets back half of it
  EXPECT_TRUE(std::isfinite(rig.effect.tailSeconds()));
  rig.set(slotFbIndex(1, 0), 100.0);
  EXPECT_TRUE(std::isinf(rig.effect.tailSeconds()));
}

TEST(TailSeconds, CountsTheMostThatAModulatorAddsToTheFeedback) {
  EngineRig rig;
  rig.set(kFeedback, 60.0);
  rig.set(kFeedbackModSource, 1.0);
  rig.set(kFeedbackModDepth, 50.0);
  EXPECT_TRUE(std::isfinite(rig.effect.tailSeconds()));
  rig.set(kFeedbackModDepth, -80.0);
  EXPECT_TRUE(std::isinf(rig.effect.tailSeconds()));
}

/// Puts an effect, by its place in the menu, into a stage of the first slot, as a preset does.
void insert(EngineRig& rig, int stage, int entry, double secondKnob) {
  const int position = fxPosition(stage, 0);
  rig.effect.GetParam(fxTypeIndex(position))->setValue(entry);
  rig.effect.GetParam(fxOnIndex(position))->setValue(1.0);
  rig.effect.GetParam(fxParamIndex(1, FxParamKind::value, position))->setValue(secondKnob);
  rig.effect.settings().applyPreset(rig.effect.settings().currentPreset());
}

TEST(TailSeconds, IsInfiniteWhereAnEffectMayAmplifyInALoop) {
  constexpr int feedbackStage = 1;
  EngineRig ringMod, saturate, withoutLoop;
  withoutLoop.set(kFeedback, 0.0);
  insert(ringMod, feedbackStage, 2, 0.0);
  insert(saturate, feedbackStage, 5, 0.0);
  insert(withoutLoop, feedbackStage, 5, 0.0);
  EXPECT_TRUE(std::isfinite(ringMod.effect.tailSeconds()));
  EXPECT_TRUE(std::isinf(saturate.effect.tailSeconds()));
  EXPECT_TRUE(std::isfinite(withoutLoop.effect.tailSeconds()));
}

TEST(TailSeconds, IsInfiniteWhereAFilterOscillates) {
  constexpr int post = 2, stateVariable = 13;
  EngineRig calm, ringing;
  insert(calm, post, stateVariable, 50.0);
  insert(ringing, post, stateVariable, 100.0);
  EXPECT_TRUE(std::isfinite(calm.effect.tailSeconds()));
  EXPECT_TRUE(std::isinf(ringing.effect.tailSeconds()));
}

}  // namespace
}  // namespace orvantesco
