#include "params/ParamIndex.h"

#include <gtest/gtest.h>

namespace orvantesco {
namespace {

TEST(ParamIndex, EffectParametersLieInBlocksOfKindStageAndSlot) {
  EXPECT_EQ(fxParamIndex(0, FxParamKind::value, fxPosition(0, 0)), 116);
  EXPECT_EQ(fxParamIndex(0, FxParamKind::value, fxPosition(2, 3)), 127);
  EXPECT_EQ(fxParamIndex(0, FxParamKind::modDepth, fxPosition(0, 0)), 128);
  EXPECT_EQ(fxParamIndex(0, FxParamKind::modSource, fxPosition(1, 2)), 146);
  EXPECT_EQ(fxParamIndex(3, FxParamKind::value, fxPosition(0, 0)), kFxParam4);
  EXPECT_EQ(fxParamIndex(4, FxParamKind::modSource, fxPosition(2, 3)), 295);
}

TEST(ParamIndex, EffectParameterPlacesInvertTheirIndex) {
  for (int index = 116; index <= 295; ++index) {
    ASSERT_TRUE(isFxParam(index));
    const FxParamPlace place = fxParamPlace(index);
    ASSERT_EQ(fxParamIndex(place.parameter, place.kind, place.position), index);
  }
  EXPECT_FALSE(isFxParam(115));
  EXPECT_FALSE(isFxParam(296));
}

TEST(ParamIndex, LanesRunThroughTheStepsOfOneSlotFirst) {
  EXPECT_EQ(tapStepIndex(kTapStepTime, 0, 0), 384);
  EXPECT_EQ(tapStepIndex(kTapStepTime, 0, 15), 399);
  EXPECT_EQ(tapStepIndex(kTapStepPan, 1, 0), 528);
  EXPECT_EQ(tapStepIndex(kTapStepFxP2, 3, 15), 703);
  EXPECT_EQ(gateStepIndex(0, 0), 924);
  EXPECT_EQ(gateStepIndex(3, 15), 987);
}

TEST(ParamIndex, LanePlacesInvertTheirIndex) {
  constexpr int bases[] = {kTapStepTime, kTapStepLevel, kTapStepPan, kTapStepFxP1, kTapStepFxP2};
  for (int index = 384; index <= 703; ++index) {
    ASSERT_TRUE(isTapStep(index));
    const LanePlace place = tapStepPlace(index);
    ASSERT_EQ(tapStepIndex(bases[place.lane], place.slot, place.step), index);
  }
  for (int index = 924; index <= 987; ++index) {
    ASSERT_TRUE(isGateStep(index));
    const LanePlace place = gateStepPlace(index);
    ASSERT_EQ(gateStepIndex(place.slot, place.step), index);
  }
  EXPECT_FALSE(isTapStep(383) || isTapStep(704) || isGateStep(923) || isGateStep(988));
}

TEST(ParamIndex, TypesAndSwitchesFollowThePosition) {
  EXPECT_EQ(fxTypeIndex(fxPosition(1, 0)), kFxTypeFeedback);
  EXPECT_EQ(fxTypeIndex(fxPosition(2, 3)), 115);
  EXPECT_EQ(fxOnIndex(fxPosition(2, 0)), kFxOnPost);
  EXPECT_TRUE(isFxType(104) && isFxType(115));
  EXPECT_FALSE(isFxType(103) || isFxType(116));
}

TEST(ParamIndex, FeedbackAmountsRunBySenderThenReceiver) {
  EXPECT_EQ(slotFbIndex(0, 3), 1076);
  EXPECT_EQ(slotFbIndex(3, 0), kSlot4Fb);
}

}  // namespace
}  // namespace orvantesco
