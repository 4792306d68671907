// Who may change the effect of a position, and what a change brings with it.

#include <set>

#include "fx/EffectCatalogue.h"
#include "fx/EffectFactory.h"
#include "params/Labels.h"
#include "params/dispatch/DispatchRig.h"

namespace orvantesco {
namespace {

class EffectTypeChangeTest : public DispatchRig {
 protected:
  /// The instances that the audio thread would run now.
  const EffectInstances* running(int position) {
    probe.carryOutRequests();
    return probe.position(position).running;
  }
  static int menuEntryOf(int typeId) { return effectListIndex(EffectStage::pre, typeId); }
};

TEST_F(EffectTypeChangeTest, HostAutomationChangesNoEffect) {
  set(kFxTypePre, 16);
  EXPECT_EQ(probe.position(0).type, 0);
  EXPECT_EQ(running(0), nullptr);
  EXPECT_DOUBLE_EQ(valueOf(kFxTypePre), 16.0) << "the bank keeps what the host wrote";
  EXPECT_TRUE(editor.lines().empty());
}

TEST_F(EffectTypeChangeTest, AGestureAtTheSelectorDoesAndIsTakenOnce) {
  chooseEffect(0, menuEntryOf(31));
  EXPECT_EQ(probe.position(0).type, 31);
  EXPECT_TRUE(editor.saw("lowerCommitFlag 0"));
  set(kFxTypePre, menuEntryOf(56));
  EXPECT_EQ(probe.position(0).type, 31) << "the gesture is over";
}

TEST_F(EffectTypeChangeTest, BulkOperationsDo) {
  {
    const auto bulk = probe.restoringState();
    set(kFxTypePre + 1, menuEntryOf(31));
  }
  {
    const auto bulk = probe.loadingPreset();
    set(kFxTypePre + 2, menuEntryOf(31));
  }
  EXPECT_EQ(probe.position(1).type, 31);
  EXPECT_EQ(probe.position(2).type, 31);
}

TEST_F(EffectTypeChangeTest, AutomationDuringABulkOperationOfAnotherThreadDoesNot) {
  const auto bulk = probe.restoringState();
  std::thread([&] { set(kFxTypePre, menuEntryOf(31)); }).join();
  EXPECT_EQ(probe.position(0).type, 0);
}

TEST_F(EffectTypeChangeTest, EveryStageHasItsOwnList) {
  const auto bulk = probe.restoringState();
  for (const auto& [stage, name] :
       {std::pair{0, EffectStage::pre}, {1, EffectStage::feedback}, {2, EffectStage::post}}) {
    const auto ids = effectTypeIds(name);
    for (std::size_t entry = 0; entry < ids.size(); ++entry) {
      set(kFxTypePre + 4 * stage, static_cast<double>(entry));
      EXPECT_EQ(probe.position(4 * stage).type, ids[entry]);
    }
  }
}

TEST_F(EffectTypeChangeTest, BeyondTheListTheTypeStaysAndTheBankShowsIt) {
  chooseEffect(4, 12);
  const int type = probe.position(4).type;
  chooseEffect(4, 15);
  EXPECT_EQ(probe.position(4).type, type);
  EXPECT_DOUBLE_EQ(valueOf(kFxTypeFeedback), 12.0);
  EXPECT_TRUE(editor.saw("redraw 108"));
  EXPECT_FALSE(probe.stageIsBusy(1));
}

TEST_F(EffectTypeChangeTest, APairBeforeAndWithinTheDelayAndSixteenBehindIt) {
  ASSERT_TRUE(effectExists(31));
  chooseEffect(0, menuEntryOf(31));
  chooseEffect(4, effectListIndex(EffectStage::feedback, 32));
  chooseEffect(8, menuEntryOf(31));
  ASSERT_NE(running(0), nullptr);
  EXPECT_EQ(running(0)->typeId, 31);
  EXPECT_EQ(running(0)->list.size(), 2u);
  EXPECT_EQ(running(4)->list.size(), 2u);
  EXPECT_EQ(running(8)->list.size(), 32u);
  chooseEffect(8, 0);
  EXPECT_TRUE(running(8)->list.empty());
  EXPECT_EQ(running(8)->typeId, 0);
}

TEST_F(EffectTypeChangeTest, EveryInstanceHasNoiseOfItsOwn) {
  std::set<std::pair<double, double>> heard;
  for (int position : {8, 9}) {
    set(kFxOnPre + position, 1);
    chooseEffect(position, menuEntryOf(22));
    set(fxParamIndex(1, FxParamKind::value, position), 100.0);
    for (const auto& instance : running(position)->list) {
      double vector[kVectorLength];
      std::fill_n(vector, kVectorLength, 0.5);
      instance->process(vector, nullptr);
      heard.insert({vector[0], vector[1]});
    }
  }
  EXPECT_EQ(heard.size(), 64u);
}

TEST_F(EffectTypeChangeTest, NewInstancesAreCompleteBeforeTheyAreSeen) {
  set(kFxOnPre, 1);
  {
    const auto bulk = probe.restoringState();
    set(fxParamIndex(4, FxParamKind::value, 0), 25.0);
    set(fxParamIndex(1, FxParamKind::modSource, 0), 3);
    set(kFxTypePre, menuEntryOf(31));
  }
  probe.effectRequests(0);  // nothing but the hand-over itself
  const EffectInstances* instances = running(0);
  ASSERT_NE(instances, nullptr);
  for (const auto& instance : instances->list) {
    EXPECT_EQ(instance->modSourceOf(1), probe.outputs().lfo[2].data());
    EXPECT_EQ(instance->modDepthOf(1), &probe.position(0).depthCell[1]);
    EXPECT_DOUBLE_EQ(instance->wetShare(), 0.25);
    EXPECT_FALSE(instance->isBypassed());
  }
}

TEST_F(EffectTypeChangeTest, WhatChangesBehindTheHandOverReachesTheNewInstances) {
  chooseEffect(0, menuEntryOf(31));
  EXPECT_EQ(probe.effectRequests(0),
            kTakeAllEffectParams | kTakeAllEffectSources | kTakeEffectSwitch);
  set(fxParamIndex(4, FxParamKind::value, 0), 40.0);
  const EffectInstances* instances = running(0);
  for (const auto& instance : instances->list) EXPECT_DOUBLE_EQ(instance->wetShare(), 0.4);
}

TEST_F(EffectTypeChangeTest, TheSwitchReachesAllInstancesBehindTheDelay) {
  chooseEffect(8, menuEntryOf(31));
  for (const auto& instance : running(8)->list) EXPECT_TRUE(instance->isBypassed());
  set(kFxOnPost, 1);
  for (const auto& instance : running(8)->list) EXPECT_FALSE(instance->isBypassed());
}

TEST_F(EffectTypeChangeTest, APersonsChoiceStartsFromTheTypesOwnSettings) {
  for (int p = 0; p < 5; ++p) {
    set(fxParamIndex(p, FxParamKind::value, 2), 99.0);
    set(fxParamIndex(p, FxParamKind::modDepth, 2), 50.0);
    set(fxParamIndex(p, FxParamKind::modSource, 2), 1);
  }
  chooseEffect(2, menuEntryOf(31));
  const std::vector<double> defaults{0.5, 0.0, 0.5, 0.0, 1.0};
  for (int p = 0; p < 5; ++p) {
    const auto cell = static_cast<std::size_t>(p);
    EXPECT_DOUBLE_EQ(valueOf(fxParamIndex(p, FxParamKind::value, 2)), 100.0 * defaults[cell]);
    EXPECT_DOUBLE_EQ(probe.position(2).value[cell], defaults[cell]);
    EXPECT_EQ(valueOf(fxParamIndex(p, FxParamKind::modDepth, 2)), 0.0);
    EXPECT_EQ(probe.position(2).depth[cell], 0.0);
    EXPECT_EQ(valueOf(fxParamIndex(p, FxParamKind::modSource, 2)), 0.0);
    EXPECT_EQ(probe.position(2).source[cell], nullptr);
  }
}

TEST_F(EffectTypeChangeTest, ABulkOperationKeepsTheSettings) {
  set(fxParamIndex(0, FxParamKind::value, 2), 99.0);
  set(fxParamIndex(0, FxParamKind::modDepth, 2), 50.0);
  set(fxParamIndex(0, FxParamKind::modSource, 2), 1);
  const auto bulk = probe.loadingPreset();
  set(kFxTypePre + 2, menuEntryOf(31));
  EXPECT_DOUBLE_EQ(probe.position(2).value[0], 0.99);
  EXPECT_DOUBLE_EQ(probe.position(2).depth[0], 0.125);
  EXPECT_NE(probe.position(2).source[0], nullptr);
}

TEST_F(EffectTypeChangeTest, TheEditorShowsTheNewEffect) {
  chooseEffect(9, menuEntryOf(37));
  EXPECT_TRUE(editor.saw("showEffect 9 37"));
  EXPECT_TRUE(editor.saw("refreshEffect 9"));
  EXPECT_TRUE(editor.saw("refreshTapSelectors 1"));
  editor.clear();
  chooseEffect(9, 0);
  EXPECT_TRUE(editor.saw("setRing 125 None no"));
}

TEST_F(EffectTypeChangeTest, TheTapSelectorsOfferTheParametersOfTheType) {
  const auto text = [&](int selector, int entry) {
    return std::string(rig.effect.GetParam(selector)->getDisplayText(entry));
  };
  chooseEffect(10, menuEntryOf(37));
  const std::vector<std::string> names{"OFF",         "COMP THRESHOLD", "COMP RATIO",
                                       "COMP ATTACK", "COMP RELEASE",   "COMP GAIN"};
  for (std::size_t entry = 0; entry < names.size(); ++entry) {
    EXPECT_EQ(text(kTapFxParam1 + 2, static_cast<int>(entry)), names[entry]);
    EXPECT_EQ(text(kTapFxParam2 + 2, static_cast<int>(entry)), names[entry]);
  }
  EXPECT_EQ(text(kTapFxParam1 + 1, 1), "PARAMETER 1") << "another slot";
  chooseEffect(10, 0);
  EXPECT_EQ(text(kTapFxParam2 + 2, 5), "PARAMETER 5");
}

TEST_F(EffectTypeChangeTest, TheUsersHandOnThePostSelectorTakesTheRowsOff) {
  set(kTapFxParam1 + 1, 2);
  set(kTapFxParam2 + 1, 3);
  rig.effect.touchParameter(kFxTypePost + 1);
  chooseEffect(9, menuEntryOf(31));
  EXPECT_EQ(probe.taps(1).fxParam[0], 0);
  EXPECT_EQ(probe.taps(1).fxParam[1], 0);
}

TEST_F(EffectTypeChangeTest, TheStageIsFreeAgainBehindAChange) {
  chooseEffect(8, menuEntryOf(31));
  for (int stage = 0; stage < 3; ++stage) EXPECT_FALSE(probe.stageIsBusy(stage));
}

/// Watches the stage from within a change, where the editor is told of the new effect.
class BusyWatcher : public EditorPort {
 public:
  explicit BusyWatcher(OrvantescoProbe watched) : probe(watched) {}
  bool hasCommittedGesture(int) noexcept override { return true; }
  void showEffect(int, int) noexcept override { wasBusy = probe.stageIsBusy(2); }
  OrvantescoProbe probe;
  bool wasBusy = false;
};

TEST_F(EffectTypeChangeTest, TheStageIsBusyDuringAChange) {
  BusyWatcher watcher(probe);
  rig.effect.setEditor(&watcher);
  set(kFxTypePost, menuEntryOf(31));
  EXPECT_TRUE(watcher.wasBusy);
}

TEST_F(EffectTypeChangeTest, RowsDriveThePostEffectPerTapInTappedModeOnly) {
  chooseEffect(8, menuEntryOf(31));
  set(fxParamIndex(4, FxParamKind::value, 8), 80.0);
  set(kTapFxParam1, 5);
  for (int step = 0; step < 16; ++step) set(tapStepIndex(kTapStepFxP1, 0, step), 5.0 * step);
  const auto mixOf = [&](int tap, int side) {
    return running(8)->list[static_cast<std::size_t>(2 * tap + side)]->wetShare();
  };
  EXPECT_DOUBLE_EQ(mixOf(7, 1), 0.8);
  set(kDelayMode, 3);
  for (int tap = 0; tap < 16; ++tap) {
    EXPECT_DOUBLE_EQ(mixOf(tap, 0), 0.05 * tap);
    EXPECT_DOUBLE_EQ(mixOf(tap, 1), 0.05 * tap);
  }
  set(kTapFxP1StepDepth, 50.0);
  EXPECT_DOUBLE_EQ(mixOf(10, 0), 0.25 + 0.4);
  set(tapStepIndex(kTapStepFxP1, 0, 10), 100.0);
  EXPECT_DOUBLE_EQ(mixOf(10, 0), 0.5 + 0.4);
  set(kDelayOn, 0);
  EXPECT_DOUBLE_EQ(mixOf(10, 0), 0.8) << "the delay is off";
  set(kDelayOn, 1);
  EXPECT_DOUBLE_EQ(mixOf(10, 0), 0.9);
  set(kDelayMode, 1);
  EXPECT_DOUBLE_EQ(mixOf(10, 0), 0.8) << "not tapped any more";
}

TEST_F(EffectTypeChangeTest, ADrivenParameterIsModulatedOnlyWhereItsTapMay) {
  chooseEffect(8, menuEntryOf(31));
  probe.taps(0).stepModMask[1] = 0x0002;
  set(kDelayMode, 3);
  set(kTapFxParam2, 1);
  const auto depthOf = [&](int tap, int control) {
    return running(8)->list[static_cast<std::size_t>(2 * tap)]->modDepthOf(control);
  };
  EXPECT_EQ(depthOf(0, 0), &kZeroDepth);
  EXPECT_EQ(depthOf(1, 0), &probe.position(8).depthCell[0]);
  EXPECT_EQ(depthOf(0, 1), &probe.position(8).depthCell[1]) << "not driven";
  set(kTapFxParam2, 0);
  EXPECT_EQ(depthOf(0, 0), &probe.position(8).depthCell[0]);
}

}  // namespace
}  // namespace orvantesco
