#include "params/dispatch/DispatchRig.h"

namespace orvantesco {
namespace {

using EffectFamiliesTest = DispatchRig;

TEST_F(EffectFamiliesTest, EveryValueHasItsPlaceAndItsRequest) {
  for (int position = 0; position < 12; ++position) {
    for (int p = 0; p < 5; ++p) {
      set(fxParamIndex(p, FxParamKind::value, position), 10.0 * p + position);
      EXPECT_EQ(probe.effectRequests(position), kTakeEffectParam << p);
    }
  }
  for (int position = 0; position < 12; ++position) {
    for (int p = 0; p < 5; ++p) {
      EXPECT_DOUBLE_EQ(probe.position(position).value[static_cast<std::size_t>(p)],
                       0.1 * p + 0.01 * position);
    }
  }
}

TEST_F(EffectFamiliesTest, DepthsAreCubedAndShownOnTheRing) {
  set(fxParamIndex(3, FxParamKind::modDepth, 7), -50.0);
  EXPECT_DOUBLE_EQ(probe.position(7).depth[3], -0.125);
  EXPECT_TRUE(editor.saw("showModulationDepth 231 -0.125"));
}

TEST_F(EffectFamiliesTest, SourcesPointIntoTheModulatorsAndTurnTheRingOn) {
  const int source = fxParamIndex(1, FxParamKind::modSource, 6);
  set(source, 12);
  EXPECT_EQ(probe.position(6).source[1], probe.outputs().logic[1].data());
  EXPECT_EQ(probe.effectRequests(6), (kTakeEffectSource | kTakeEffectParam) << 1);
  EXPECT_TRUE(editor.saw("setRing 158 Logic yes"));
  EXPECT_TRUE(editor.saw("enableKnob 170 yes"));
  set(source, 0);
  EXPECT_EQ(probe.position(6).source[1], nullptr);
  EXPECT_TRUE(editor.saw("setRing 158 None no"));
}

TEST_F(EffectFamiliesTest, WithoutASourceTheKnobGoesBackToItsPlainValue) {
  const int valueIdx = fxParamIndex(0, FxParamKind::value, 2);
  rig.effect.GetParam(valueIdx)->setValue(33.0);
  {
    const auto bulk = probe.restoringState();
    set(fxParamIndex(0, FxParamKind::modSource, 2), 0);
  }
  EXPECT_DOUBLE_EQ(probe.position(2).value[0], 0.0);
  set(fxParamIndex(0, FxParamKind::modSource, 2), 0);
  EXPECT_DOUBLE_EQ(probe.position(2).value[0], 0.33);
}

TEST_F(EffectFamiliesTest, TheTouchedKnobIsDrawnAnew) {
  move(fxParamIndex(2, FxParamKind::modDepth, 4), 10.0);
  EXPECT_TRUE(editor.saw("redraw 192"));
  editor.clear();
  set(fxParamIndex(1, FxParamKind::value, 4), 10.0);
  EXPECT_TRUE(editor.linesOf("redraw").empty());
}

TEST_F(EffectFamiliesTest, TheOnSwitchOfAnEmptyPositionOnlyMovesTheControl) {
  set(kFxOnFeedback + 1, 1);
  EXPECT_TRUE(probe.position(5).on);
  EXPECT_EQ(probe.effectRequests(5), 0u);
  EXPECT_EQ(editor.lines(), std::vector<std::string>{"redraw 301"});
}

TEST_F(EffectFamiliesTest, TheOnSwitchOfAnEffectReachesItsInstances) {
  chooseEffect(5, 12);  // DRIVE LP+HP
  probe.settle();
  editor.clear();
  set(kFxOnFeedback + 1, 1);
  EXPECT_EQ(probe.effectRequests(5), kTakeEffectSwitch);
  EXPECT_TRUE(editor.saw("enableEffect 5 yes"));
  EXPECT_TRUE(editor.saw("refreshEffect 5"));
  set(kFxOnFeedback + 1, 0);
  EXPECT_TRUE(editor.saw("enableEffect 5 no"));
}

}  // namespace
}  // namespace orvantesco
