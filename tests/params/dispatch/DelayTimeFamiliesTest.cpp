#include "params/dispatch/DispatchRig.h"

namespace orvantesco {
namespace {

using DelayTimeFamiliesTest = DispatchRig;

TEST_F(DelayTimeFamiliesTest, TimesAreSecondsFactorsStayWhatTheyAre) {
  set(kDelayTimeL, 250.0);
  set(kDelayTimeR, 4000.0);
  EXPECT_DOUBLE_EQ(probe.delay(0).timeL, 0.25);
  EXPECT_DOUBLE_EQ(probe.delay(0).timeR, 4.0);
  EXPECT_EQ(probe.slotRequests(0), 0u);
  set(kDelayFactorL, 3);
  EXPECT_DOUBLE_EQ(probe.delay(0).factorL, 3.0);
  EXPECT_EQ(probe.slotRequests(0), kClearTapMemoryLeft | kSnapTapGlideLeft);
  set(kDelayFactorR, 16);
  EXPECT_DOUBLE_EQ(probe.delay(0).factorR, 16.0);
  EXPECT_EQ(probe.slotRequests(0), kClearTapMemoryRight | kSnapTapGlideRight);
}

TEST_F(DelayTimeFamiliesTest, ATimebaseOfNotesTakesBothFactorsAnew) {
  rig.effect.GetParam(kDelayFactorL + 1)->setValue(7);
  rig.effect.GetParam(kDelayFactorR + 1)->setValue(9);
  set(kTimebase + 1, 10);
  EXPECT_EQ(probe.delay(1).timebase, 10);
  EXPECT_DOUBLE_EQ(probe.delay(1).factorL, 7.0);
  EXPECT_DOUBLE_EQ(probe.delay(1).factorR, 9.0);
  EXPECT_EQ(probe.slotRequests(1), kClearTapMemoryLeft | kClearTapMemoryRight | kSnapTapGlide);
}

TEST_F(DelayTimeFamiliesTest, BackToMillisecondsTheKnobsShowTheTimes) {
  set(kDelayTimeL, 1.0);
  set(kDelayTimeR, 4000.0);
  set(kTimebase, 0);
  EXPECT_EQ(probe.slotRequests(0), kSnapTapGlide);
  EXPECT_TRUE(editor.saw("showKnobPosition 344 0"));
  EXPECT_TRUE(editor.saw("showKnobPosition 356 1"));
  editor.clear();
  set(kTimebase, 0);
  EXPECT_TRUE(editor.linesOf("showKnobPosition").empty()) << "they show them already";
  set(kTimebase, 3);
  const auto bulk = probe.loadingPreset();
  set(kTimebase, 0);
  EXPECT_TRUE(editor.linesOf("showKnobPosition").empty());
}

TEST_F(DelayTimeFamiliesTest, TheUsersSideTakesTheOtherOneAlong) {
  rig.effect.GetParam(kDelayLRLink)->setValue(1);
  move(kDelayTimeL, 321.0);
  EXPECT_DOUBLE_EQ(valueOf(kDelayTimeR), 321.0);
  EXPECT_DOUBLE_EQ(probe.delay(0).timeR, 0.321);
  move(kDelayTimeR, 123.0);
  EXPECT_DOUBLE_EQ(probe.delay(0).timeL, 0.123);
  move(kDelayFactorR, 5);
  EXPECT_DOUBLE_EQ(valueOf(kDelayFactorL), 5.0);
  EXPECT_DOUBLE_EQ(probe.delay(0).factorL, 5.0);
  EXPECT_EQ(editor.linesOf("setKnobValue").size(), 3u);
}

TEST_F(DelayTimeFamiliesTest, AutomationMovesOneSideAlone) {
  rig.effect.GetParam(kDelayLRLink)->setValue(1);
  set(kDelayTimeL, 321.0);
  EXPECT_DOUBLE_EQ(valueOf(kDelayTimeR), 500.0);
}

TEST_F(DelayTimeFamiliesTest, WithoutALinkTheSidesAreApart) {
  move(kDelayTimeL, 321.0);
  EXPECT_DOUBLE_EQ(valueOf(kDelayTimeR), 500.0);
}

TEST_F(DelayTimeFamiliesTest, ALinkOfAnotherSlotMovesNothingHere) {
  rig.effect.GetParam(kDelayLRLink + 1)->setValue(1);
  move(kDelayTimeL, 321.0);
  EXPECT_DOUBLE_EQ(valueOf(kDelayTimeR), 500.0);
}

TEST_F(DelayTimeFamiliesTest, LinkingSnapsTheRightSideToTheLeft) {
  set(kTimebase + 2, 0);
  set(kDelayTimeL + 2, 111.0);
  set(kDelayLRLink + 2, 1);
  EXPECT_DOUBLE_EQ(probe.delay(2).timeR, 0.111);
  EXPECT_EQ(rig.effect.touchedParameter(), kDelayTimeL + 2);

  set(kTimebase + 3, 1);
  set(kDelayFactorL + 3, 11);
  set(kDelayLRLink + 3, 1);
  EXPECT_DOUBLE_EQ(probe.delay(3).factorR, 11.0);
  EXPECT_DOUBLE_EQ(valueOf(kDelayTimeR + 3), 500.0);
  EXPECT_EQ(rig.effect.touchedParameter(), kDelayFactorL + 3);
}

TEST_F(DelayTimeFamiliesTest, ABulkOperationBringsBothSidesAsTheyWereSaved) {
  set(kTimebase, 0);
  rig.effect.touchParameter(kDelayTimeL);
  const auto bulk = probe.restoringState();
  set(kDelayTimeR, 900.0);
  set(kDelayLRLink, 1);
  set(kDelayTimeL, 100.0);
  EXPECT_DOUBLE_EQ(valueOf(kDelayTimeR), 900.0);
  EXPECT_EQ(rig.effect.touchedParameter(), kDelayTimeL);
}

}  // namespace
}  // namespace orvantesco
