#include "host/binding/ParameterGroup.h"

#include <gtest/gtest.h>

#include <set>

#include "params/ParamBank.h"

namespace orvantesco {
namespace {

const ParamBank& bank() {
  static const auto built = [] {
    auto fresh = std::make_unique<ParamBank>();
    fresh->buildParameterBank();
    return fresh;
  }();
  return *built;
}

TEST(ParameterGroup, GivesEveryParameterAGroup) {
  for (int index = 0; index < kNumParams; ++index) {
    EXPECT_FALSE(parameterModule(index).empty()) << index;
    const auto group = static_cast<std::size_t>(parameterGroupOf(index));
    ASSERT_LT(group, parameterGroups().size()) << index;
    EXPECT_EQ(parameterGroups()[group].path, parameterModule(index)) << index;
  }
}

TEST(ParameterGroup, TellsParametersOfOneNameApart) {
  std::set<std::pair<std::string, std::string>> seen;
  for (int index = 0; index < kNumParams; ++index) {
    const std::string name = bank().getParam(index)->name();
    EXPECT_TRUE(seen.emplace(parameterModule(index), name).second) << index << " " << name;
  }
}

TEST(ParameterGroup, SpeaksOfSlotsModulatorsAndTheMaster) {
  EXPECT_EQ(parameterModule(kSlotOn), "Slot 1");
  EXPECT_EQ(parameterModule(kFeedback + 3), "Slot 4");
  EXPECT_EQ(parameterModule(kDelayTimeL + 1), "Slot 2/Delay");
  EXPECT_EQ(parameterModule(kDelayHipass + 1), "Slot 2/Delay");
  EXPECT_EQ(parameterModule(kDelayTapsTime), "Slot 1/Taps");
  EXPECT_EQ(parameterModule(kDelayTapsSwing + 2), "Slot 3/Taps");
  EXPECT_EQ(parameterModule(kGrainFade + 2), "Slot 3/Grain");
  EXPECT_EQ(parameterModule(kReverseXFade + 2), "Slot 3/Reverse");
  EXPECT_EQ(parameterModule(kLfoOn), "LFO 1");
  EXPECT_EQ(parameterModule(kGateOn + 1), "Gate 2");
  EXPECT_EQ(parameterModule(kEnvOutput + 1), "Envelope 2");
  EXPECT_EQ(parameterModule(kLogicSmooth + 1), "Logic 2");
  EXPECT_EQ(parameterModule(kGlobalWidth), "Master");
  EXPECT_EQ(parameterModule(kMasterFx), "Master");
  EXPECT_EQ(parameterModule(slotFbIndex(3, 3)), "Feedback Matrix");
}

TEST(ParameterGroup, FollowsTheIndexRulesOfEffectsAndLanes) {
  const char* const places[] = {"PRE", "FB", "POST"};
  for (int position = 0; position < numPositions; ++position) {
    const std::string slot = "Slot " + std::to_string(position % numSlots + 1) + "/";
    const std::string expected = slot + places[position / numSlots];
    EXPECT_EQ(parameterModule(fxTypeIndex(position)), expected);
    EXPECT_EQ(parameterModule(fxOnIndex(position)), expected);
    for (int p = 0; p < numFxParams; ++p) {
      for (const auto kind : {FxParamKind::value, FxParamKind::modDepth, FxParamKind::modSource}) {
        EXPECT_EQ(parameterModule(fxParamIndex(p, kind, position)), expected);
      }
    }
  }
  EXPECT_EQ(parameterModule(tapStepIndex(kTapStepPan, 2, 15)), "Slot 3/Taps");
  EXPECT_EQ(parameterModule(gateStepIndex(3, 0)), "Gate 4");
}

TEST(ParameterGroup, GivesEveryGroupAnIdentifierOfItsOwn) {
  std::set<std::string> paths;
  std::set<std::string> symbols;
  for (const ParameterGroup& group : parameterGroups()) {
    EXPECT_TRUE(paths.insert(group.path).second) << group.path;
    EXPECT_TRUE(symbols.insert(group.symbol).second) << group.symbol;
    EXPECT_LE(group.symbol.size(), 16u);
    EXPECT_EQ(group.symbol.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789_"),
              std::string::npos);
  }
  EXPECT_EQ(parameterGroups()[static_cast<std::size_t>(parameterGroupOf(kDelayMode))].symbol,
            "slot_1_delay");
}

}  // namespace
}  // namespace orvantesco
