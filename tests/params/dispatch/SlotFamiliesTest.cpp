#include "params/dispatch/DispatchRig.h"

namespace orvantesco {
namespace {

using SlotFamiliesTest = DispatchRig;

TEST_F(SlotFamiliesTest, SwitchingASlotOffResetsItsDelaysAndClearsItsStages) {
  set(kSlotOn + 1, 1);
  EXPECT_TRUE(probe.slot(1).slotOn);
  EXPECT_EQ(probe.slotRequests(1), kTakeSwitches);
  set(kSlotOn + 1, 0);
  EXPECT_FALSE(probe.slot(1).slotOn);
  EXPECT_EQ(probe.slotRequests(1), kTakeSwitches | kResetDelays | kClearStages);
}

TEST_F(SlotFamiliesTest, ASlotsPageFollowsItsSwitch) {
  set(kSlotOn + 2, 1);
  EXPECT_TRUE(editor.saw("enableSlotPage 2 yes"));
  for (const char* line : {"refreshEffect 2", "refreshEffect 6", "refreshEffect 10"}) {
    EXPECT_TRUE(editor.saw(line)) << line;
  }
  editor.clear();
  const auto loading = probe.loadingPreset();
  set(kSlotOn + 2, 0);
  EXPECT_TRUE(editor.saw("enableSlotPage 2 no"));
  EXPECT_FALSE(editor.saw("refreshEffect 2"));
}

TEST_F(SlotFamiliesTest, SwitchingTheDelayClearsWhatItLeaves) {
  set(kDelayOn + 3, 0);
  EXPECT_FALSE(probe.slot(3).delayOn);
  EXPECT_EQ(probe.slotRequests(3), kTakeSwitches | kClearDelayOutputs);
  EXPECT_EQ(probe.effectRequests(11), kTakeAllEffectParams | kTakeAllEffectSources);
  set(kDelayOn + 3, 1);
  EXPECT_EQ(probe.slotRequests(3), kTakeSwitches | kResetDelays | kClearFeedback);
  EXPECT_TRUE(editor.saw("showDelayParts 3 no"));
  EXPECT_TRUE(editor.saw("showDelayParts 3 yes"));
  EXPECT_TRUE(editor.saw("showLanes 3 yes"));
}

TEST_F(SlotFamiliesTest, TurningTheDelayOnLeavesTheDirectSignalUndoubledUntilTheKnobMoves) {
  set(kDirectIn, 40.0);
  EXPECT_DOUBLE_EQ(probe.slot(0).directIn, 0.8);
  set(kDelayOn, 0);
  EXPECT_DOUBLE_EQ(probe.slot(0).directIn, 1.0);
  set(kDirectIn, 30.0);
  EXPECT_DOUBLE_EQ(probe.slot(0).directIn, 1.0);
  set(kDelayOn, 1);
  EXPECT_DOUBLE_EQ(probe.slot(0).directIn, 0.3);
  set(kDirectIn, 30.0);
  EXPECT_DOUBLE_EQ(probe.slot(0).directIn, 0.6);
}

TEST_F(SlotFamiliesTest, TheMixOfDirectAndDelayNeverLowersBoth) {
  set(kDirectIn + 1, 80.0);
  EXPECT_DOUBLE_EQ(probe.slot(1).directIn, 1.0);
  EXPECT_DOUBLE_EQ(probe.slot(1).wetShare, 0.4);
  set(kDirectIn + 1, 20.0);
  EXPECT_DOUBLE_EQ(probe.slot(1).directIn, 0.4);
  EXPECT_DOUBLE_EQ(probe.slot(1).wetShare, 1.0);
}

TEST_F(SlotFamiliesTest, EveryInputMenuListsTheSlotsBefore) {
  using In = SlotInput;
  const std::vector<std::vector<In>> menus{
      {In::Mono, In::Left, In::Right, In::Stereo, In::MasterFx},
      {In::Mono, In::Left, In::Right, In::Stereo, In::MasterFx, In::Slot1},
      {In::Mono, In::Left, In::Right, In::Stereo, In::MasterFx, In::Slot1, In::Slot2, In::Sum12},
      {In::Mono, In::Left, In::Right, In::Stereo, In::MasterFx, In::Slot1, In::Slot2, In::Slot3,
       In::Sum12, In::Sum13, In::Sum23, In::Sum123}};
  for (int slot = 0; slot < 4; ++slot) {
    const auto& menu = menus[static_cast<std::size_t>(slot)];
    for (std::size_t entry = 0; entry < menu.size(); ++entry) {
      set(kInput + slot, static_cast<double>(entry));
      EXPECT_EQ(probe.slot(slot).input, menu[entry]) << slot << ", entry " << entry;
    }
    set(kInput + slot, static_cast<double>(menu.size()));
    EXPECT_EQ(probe.slot(slot).input, In::Mono) << "beyond the menu of " << slot;
  }
}

TEST_F(SlotFamiliesTest, ASlotThatListensToTheMasterEffectCannotDriveItself) {
  set(kInput, 4);
  EXPECT_FALSE(probe.slot(0).masterSendEnabled);
  EXPECT_TRUE(probe.slot(0).directOutParked);
  EXPECT_EQ(probe.globalRequests(), kClearMasterReturn);
  EXPECT_TRUE(editor.saw("showSends 0 no"));
  set(kInput, 3);
  EXPECT_TRUE(probe.slot(0).masterSendEnabled);
  EXPECT_FALSE(probe.slot(0).directOutParked);
  EXPECT_EQ(probe.globalRequests(), 0u);
  EXPECT_TRUE(editor.saw("showSends 0 yes"));
}

TEST_F(SlotFamiliesTest, AMonoMainInputIsTheLeftOne) {
  for (const bool sideChain : {false, true}) {
    rig.effect.connectInputs(1, sideChain);
    for (int entry = 0; entry < 4; ++entry) {
      set(kInput + 3, entry);
      EXPECT_EQ(probe.slot(3).input, SlotInput::Left) << entry;
    }
    set(kInput + 3, 5);
    EXPECT_EQ(probe.slot(3).input, SlotInput::Slot1);
  }
  set(kInput + 3, 3);
  rig.effect.connectInputs(2, true);
  EXPECT_EQ(probe.slot(3).input, SlotInput::Stereo) << "a side chain leaves both sides";
}

TEST_F(SlotFamiliesTest, TheDirectOutIsAStageAndLeavesTheParkingPlace) {
  const std::vector<int> stages{kStagePre, kStageDelay, kStagePost, kStageOut};
  for (std::size_t entry = 0; entry < stages.size(); ++entry) {
    set(kDirectOut + 2, static_cast<double>(entry));
    EXPECT_EQ(probe.slot(2).directOut, stages[entry]);
  }
  set(kInput + 2, 4);
  set(kDirectOut + 2, 0);
  EXPECT_FALSE(probe.slot(2).directOutParked) << "by automation";
  move(kDirectOut + 2, 0);
  EXPECT_TRUE(probe.slot(2).directOutParked) << "a user's move takes all four inputs anew";
}

TEST_F(SlotFamiliesTest, PlainWords) {
  set(kDelayModulation, 40.0);
  set(kDelayModulation + 1, 40.0);
  EXPECT_DOUBLE_EQ(probe.slot(0).mainModAmount, -0.4);
  EXPECT_DOUBLE_EQ(probe.slot(1).mainModAmount, 0.4);
  set(kMasterFxSource + 1, 2);
  EXPECT_EQ(probe.slot(1).masterSource, kStageDelay);
  set(kPanPosition + 1, 1);
  EXPECT_TRUE(probe.slot(1).panBeforeWidth);
  set(kWidth + 1, 25.0);
  EXPECT_DOUBLE_EQ(probe.slot(1).width, 0.25);
  set(kOutputMode + 1, 2);
  EXPECT_EQ(probe.slot(1).outputMode, OutputMode::Mute);
}

TEST_F(SlotFamiliesTest, TheOffsetTakesWholeMilliseconds) {
  const std::vector<std::pair<double, double>> table{{0.4, 0.0},    {-0.4, 0.0},  {0.5, 1.0},
                                                     {-0.5, -1.0},  {-0.6, -1.0}, {12.49, 12.0},
                                                     {-25.0, -25.0}};
  for (const auto& [value, wholeMs] : table) {
    set(kLROffset, value);
    EXPECT_DOUBLE_EQ(probe.slot(0).offsetMs, wholeMs) << value;
  }
}

TEST_F(SlotFamiliesTest, TheBottomOfAFaderIsSilence) {
  set(kInputGain, -60.0);
  set(kLevel, -60.0);
  EXPECT_EQ(probe.slot(0).inputGain, 0.0);
  EXPECT_EQ(probe.slot(0).level, 0.0);
  set(kInputGain, -59.9);
  set(kLevel, 6.0);
  EXPECT_NEAR(probe.slot(0).inputGain, 0.00101158, 1e-8);
  EXPECT_NEAR(probe.slot(0).level, 1.9952623, 1e-7);
}

TEST_F(SlotFamiliesTest, DepthsOfGainsAreCubedThoseOfPanAndSendAreNot) {
  for (const auto& [paramIdx, word] : std::vector<std::pair<int, const Shared<double>*>>{
           {kInputGainModDepth, &probe.slot(0).inputGainMod.depth},
           {kFeedbackModDepth, &probe.slot(0).feedbackMod.depth},
           {kLevelModDepth, &probe.slot(0).levelMod.depth}}) {
    set(paramIdx, -50.0);
    EXPECT_DOUBLE_EQ(*word, -0.125) << paramIdx;
  }
  set(kPanningModDepth, -50.0);
  set(kMasterFxSendModDepth, 50.0);
  EXPECT_DOUBLE_EQ(probe.slot(0).panMod.depth, -0.5);
  EXPECT_DOUBLE_EQ(probe.slot(0).sendMod.depth, 0.5);
}

TEST_F(SlotFamiliesTest, GainsAndSends) {
  set(kPanning + 2, -30.0);
  set(kFeedback + 2, 160.0);
  set(kMasterFxSend + 2, 10.0);
  EXPECT_DOUBLE_EQ(probe.slot(2).pan, -0.3);
  EXPECT_DOUBLE_EQ(probe.slot(2).feedback, 1.6);
  EXPECT_DOUBLE_EQ(probe.slot(2).send, 0.1);
}

TEST_F(SlotFamiliesTest, SourcesPointIntoTheModulators) {
  struct Row {
    int source, knob, depth;
    const Shared<const double*>* word;
  };
  SlotControls& slot = probe.slot(1);
  for (const auto& [source, knob, depth, word] :
       {Row{kInputGainModSource, kInputGain, kInputGainModDepth, &slot.inputGainMod.source},
        Row{kPanningModSource, kPanning, kPanningModDepth, &slot.panMod.source},
        Row{kFeedbackModSource, kFeedback, kFeedbackModDepth, &slot.feedbackMod.source},
        Row{kLevelModSource, kLevel, kLevelModDepth, &slot.levelMod.source},
        Row{kMasterFxSendModSource, kMasterFxSend, kMasterFxSendModDepth, &slot.sendMod.source}}) {
    editor.clear();
    set(source + 1, 6);
    EXPECT_EQ(*word, probe.outputs().gate[1].data());
    EXPECT_TRUE(editor.saw("setRing " + std::to_string(knob + 1) + " Gate yes"));
    EXPECT_TRUE(editor.saw("enableKnob " + std::to_string(depth + 1) + " yes"));
    set(source + 1, 0);
    EXPECT_EQ(*word, nullptr);
    EXPECT_TRUE(editor.saw("setRing " + std::to_string(knob + 1) + " None no"));
    EXPECT_TRUE(editor.saw("enableKnob " + std::to_string(depth + 1) + " no"));
  }
}

TEST_F(SlotFamiliesTest, ChoosingASourceShowsThePlainValueAgainButNotInABulkOperation) {
  probe.slot(0).pan = 0.77;
  {
    const auto bulk = probe.restoringState();
    set(kPanningModSource, 1);
    EXPECT_DOUBLE_EQ(probe.slot(0).pan, 0.77);
  }
  set(kPanningModSource, 0);
  EXPECT_DOUBLE_EQ(probe.slot(0).pan, 0.0);
}

TEST_F(SlotFamiliesTest, MatrixRowsBelongToTheReceivingSlot) {
  for (int from = 0; from < 4; ++from) set(slotFbIndex(from, 2), 10.0 * from - 20.0);
  for (std::size_t from = 0; from < 4; ++from) {
    EXPECT_DOUBLE_EQ(probe.slot(2).matrix[from], 0.1 * static_cast<double>(from) - 0.2);
  }
  set(kFbMatrix + 2, 1);
  EXPECT_TRUE(probe.slot(2).matrixOn);
  for (const char* line : {"enableKnob 1075 yes", "enableKnob 1079 yes", "enableKnob 1083 yes",
                           "enableKnob 1087 yes"}) {
    EXPECT_TRUE(editor.saw(line)) << line;
  }
}

}  // namespace
}  // namespace orvantesco
