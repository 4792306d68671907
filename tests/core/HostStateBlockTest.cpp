// The state block that a host keeps: bytes in, engine, bytes out.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "params/ParamIndex.h"
#include "presets/HostState.h"
#include "support/EngineRig.h"
#include "support/LongTests.h"
#include "support/OrvantescoProbe.h"
#include "support/RecordingEditor.h"
#include "support/StateBytes.h"

namespace orvantesco {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr int kRandomBytes = 200;

Bytes saved(EngineRig& rig) {
  StateChunk chunk;
  EXPECT_TRUE(rig.effect.SerializeState(chunk));
  return StateBytes::bytesOf(chunk);
}

/// A state that differs from a fresh one everywhere.
StateBytes moved() {
  StateBytes state;
  state.colourSet = 7;
  state.page = 12;
  state.attenuation = 0.25;
  state.name = "Slap";
  state.folder = "F:Echo";
  state.item = 3;
  state.folderPath = "/Factory Presets/Echo/";
  state.touched = kFeedback;
  state.taps = {1, 2, 3, 4, 5, 6, 7, 8};
  state.stepFx = {9, 10, 11, 12};
  state.stepMod = {{{13, 14, 15, 16}, {17, 18, 19, 20}}};
  state.dryLock = 1;
  state.values = defaultValues();
  state.values[kFeedback + 2] = 33.0;
  state.values[kFxTypePre + 1] = 5.0;
  return state;
}

class HostStateBlock : public ::testing::Test {
 protected:
  HostStateBlock() { rig.effect.setEditor(&editor); }

  int restore(const StateBytes& state) { return rig.effect.UnserializeState(state.chunk(), 0); }
  double value(int index) { return rig.effect.GetParam(index)->value(); }

  RecordingEditor editor;
  EngineRig rig;
  OrvantescoProbe probe{rig.effect};
};

TEST_F(HostStateBlock, AFreshEffectSavesItsDefaultsToTheByte) {
  StateBytes fresh;
  fresh.taps.fill(0xFFFF);
  fresh.stepFx.fill(0xFFFF);
  fresh.values = defaultValues();
  const Bytes expected = fresh.bytes();
  EXPECT_EQ(saved(rig), expected);
  EXPECT_EQ(expected.size(), 4u + 4 + 4 + 8 + 4 + 4 + 4 + 4 + 4 + 20 * 4 + 1 + 1095 * 8);
}

TEST_F(HostStateBlock, WhatAnotherProgramWroteReadsBackToTheByte) {
  const StateBytes state = moved();
  EXPECT_EQ(restore(state), static_cast<int>(state.bytes().size()));
  EXPECT_EQ(saved(rig), state.bytes());
}

TEST_F(HostStateBlock, RandomStatesReadBackToTheByteInAnEffectThatWasAnywhere) {
  std::mt19937 draw(20);
  const int states = timesOrLong(1000, 10000);
  for (int i = 0; i < states; ++i) {
    const StateBytes state = randomState(draw);
    restore(state);
    ASSERT_EQ(differences(saved(rig), state.bytes()), "") << "state " << i;
  }
}

TEST_F(HostStateBlock, EveryFieldReachesTheEngine) {
  restore(moved());
  EXPECT_EQ(rig.effect.tapMasks(2).left, 5);
  EXPECT_EQ(rig.effect.tapMasks(2).right, 6);
  EXPECT_EQ(probe.taps(3).stepFxMask, 12);
  EXPECT_EQ(probe.taps(0).stepModMask[1], 17);
  EXPECT_DOUBLE_EQ(probe.slot(2).feedback, 0.33);
  EXPECT_EQ(probe.globals().dryLevel, 0.0) << "the dry lock holds";
  EXPECT_NEAR(probe.globals().inputAttenuation, std::pow(10.0, -7.0 / 20.0), 1e-9);
  EXPECT_EQ(rig.effect.touchedParameter(), kFeedback);
  EXPECT_EQ(rig.effect.settings().presetName(), "Slap");
  EXPECT_EQ(rig.effect.settings().presetFolderLabel(), "F:Echo");
  EXPECT_EQ(rig.effect.settings().presetSelection().itemIndex, 3);
}

TEST_F(HostStateBlock, TheEditorFollowsARestore) {
  restore(moved());
  for (const char* line : {"showPresetName Slap", "showPresetFolder F:Echo", "showColourSet 7",
                           "showPage 12", "refreshStepGrids", "showDryLock yes",
                           "showAttenuation 0.25", "runDisplayTimers", "refreshSlot 3"}) {
    EXPECT_TRUE(editor.saw(line)) << line;
  }
  EXPECT_EQ(editor.linesOf("setKnobValue").size(), 1095u);
}

TEST_F(HostStateBlock, AnAttenuationIsWholeDecibels) {
  const auto gainAt = [this](double position) {
    rig.effect.settings().setAttenuation(position);
    return 20.0 * std::log10(probe.globals().inputAttenuation);
  };
  EXPECT_EQ(gainAt(1.0), 0.0);
  EXPECT_NEAR(gainAt(0.999999), -1.0, 1e-9);
  EXPECT_NEAR(gainAt(0.5), -4.0, 1e-9);
  EXPECT_NEAR(gainAt(0.25), -7.0, 1e-9);
  EXPECT_NEAR(gainAt(0.0), -12.0, 1e-9);
}

TEST_F(HostStateBlock, ABlockWithoutColourAndAttenuationKeepsTheOneAndResetsTheOther) {
  rig.effect.settings().setColourSet(4);
  rig.effect.settings().setAttenuation(0.0);
  StateBytes state = moved();
  state.version = 0x10100;
  restore(state);
  state.version = 0x10200;
  state.colourSet = 4;
  state.attenuation = 1.0;
  EXPECT_EQ(saved(rig), state.bytes());
}

TEST_F(HostStateBlock, TheColourSetIsThereFrom1015COn) {
  for (const int version : {0x1015B, 0x1015C}) {
    rig.effect.settings().setColourSet(2);
    StateBytes state = moved();
    state.version = version;
    restore(state);
    const Bytes after = saved(rig);
    EXPECT_EQ(after[4], version == 0x1015B ? 2 : 7);
    EXPECT_EQ(rig.effect.settings().presetName(), "Slap")
        << "and what follows is read in its place";
  }
}

TEST_F(HostStateBlock, TheAttenuationIsThereFrom10101On) {
  StateBytes state = moved();
  state.version = 0x10101;
  restore(state);
  EXPECT_NEAR(probe.globals().inputAttenuation, std::pow(10.0, -7.0 / 20.0), 1e-9);
  EXPECT_EQ(rig.effect.settings().presetName(), "Slap");
}

TEST_F(HostStateBlock, AStoredAttenuationIsHeldInItsRange) {
  StateBytes state = moved();
  for (const auto& [stored, gain] : {std::pair{std::nan(""), 1.0}, std::pair{2.0, 1.0},
                                     std::pair{-1.0, std::pow(10.0, -12.0 / 20.0)}}) {
    state.attenuation = stored;
    restore(state);
    EXPECT_NEAR(probe.globals().inputAttenuation, gain, 1e-9) << stored;
  }
}

TEST_F(HostStateBlock, ANewerBlockChangesNothingAndTellsTheUser) {
  const Bytes before = saved(rig);
  StateBytes state = moved();
  state.version = 0x10201;
  editor.clear();
  restore(state);
  EXPECT_EQ(saved(rig), before);
  EXPECT_EQ(editor.lines(),
            (std::vector<std::string>{"showMessage Saved data is newer than the actual ORVANTESCO "
                                      "version!\nCan't restore saved state!"}));
}

TEST_F(HostStateBlock, ABlockThatIsTooOldLeavesDefaultsWithoutNotice) {
  restore(moved());
  editor.clear();
  StateBytes state = moved();
  state.version = 0x832;
  restore(state);
  EXPECT_EQ(value(kFeedback + 2), 50.0);
  EXPECT_DOUBLE_EQ(probe.slot(2).feedback, 0.33) << "the engine was told nothing";
  EXPECT_EQ(rig.effect.settings().presetName(), "Slap");
  EXPECT_TRUE(editor.lines().empty());
  rig.set(kFxTypePre, 20.0);
  EXPECT_EQ(value(kFxTypePre), 20.0) << "nothing is migrated behind it";
  state.version = 0x833;
  restore(state);
  EXPECT_EQ(value(kFeedback + 2), 33.0);
}

TEST_F(HostStateBlock, ABlockWithoutAWholeVersionChangesNothing) {
  restore(moved());
  const Bytes before = saved(rig);
  for (int length = 0; length < 4; ++length) {
    const Bytes bytes(static_cast<std::size_t>(length), 0);
    EXPECT_EQ(rig.effect.UnserializeState(StateBytes::chunkOf(bytes), 0), -1);
  }
  EXPECT_EQ(rig.effect.UnserializeState(moved().chunk(), -1), -1);
  EXPECT_EQ(saved(rig), before);
}

TEST_F(HostStateBlock, AnEmptyNameLeavesTheLabelAsItWas) {
  restore(moved());
  editor.clear();
  StateBytes state = moved();
  state.name.clear();
  state.folder.clear();
  restore(state);
  EXPECT_EQ(rig.effect.settings().presetName(), "Slap");
  EXPECT_EQ(rig.effect.settings().presetFolderLabel(), "F:Echo");
  EXPECT_TRUE(editor.linesOf("showPresetName").empty());
}

TEST_F(HostStateBlock, NothingSelectedIsSavedAsMinusOne) {
  StateBytes state = moved();
  state.folderPath.clear();
  state.item = -1;
  restore(state);
  EXPECT_EQ(saved(rig), state.bytes());
}

TEST_F(HostStateBlock, ParametersAreHeldInTheirRanges) {
  StateBytes state = moved();
  state.values[kFeedback] = std::nan("");
  state.values[kFeedback + 1] = 1e300;
  state.values[kFeedback + 2] = -std::numeric_limits<double>::infinity();
  restore(state);
  EXPECT_EQ(value(kFeedback), 0.0);
  EXPECT_EQ(value(kFeedback + 1), 160.0);
  EXPECT_EQ(value(kFeedback + 2), 0.0);
}

TEST_F(HostStateBlock, EveryTruncationKeepsWhatIsMissing) {
  const Bytes whole = moved().bytes();
  const std::size_t head = whole.size() - 1095 * 8;
  for (std::size_t length = 4; length <= head + 24; ++length) {
    EngineRig cut;
    const Bytes bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
    EXPECT_EQ(cut.effect.UnserializeState(StateBytes::chunkOf(bytes), 0), -1);
    EXPECT_EQ(cut.effect.settings().presetName(), length >= 28 ? "Slap" : "") << length;
    EXPECT_EQ(cut.effect.tapMasks(0).left, length >= 76 ? 1 : 0xFFFF) << length;
    if (length > 90) length += 9;
  }
}

TEST_F(HostStateBlock, ParametersThatAreNotReachedGetTheirDefaults) {
  restore(moved());
  StateBytes state = moved();
  state.values.assign(kFeedback + 1, 0.0);
  restore(state);
  EXPECT_EQ(value(kFeedback), 0.0);
  EXPECT_EQ(value(kFeedback + 2), 50.0);
  EXPECT_DOUBLE_EQ(probe.slot(2).feedback, 0.5) << "and the engine knows";
}

TEST_F(HostStateBlock, ARateIsHeldToTheRangeOfItsOwnMode) {
  StateBytes notes = moved();
  notes.values[kLfoSync] = 1.0;
  notes.values[kLfoRate] = 0.0;
  StateBytes hertz = moved();
  hertz.values[kLfoRate] = 440.0;
  for (int round = 0; round < 2; ++round) {
    restore(notes);
    EXPECT_EQ(value(kLfoRate), 0.0);
    restore(hertz);
    EXPECT_EQ(value(kLfoRate), 440.0);
  }
}

TEST_F(HostStateBlock, LinkedTimesStayAsTheyWereSaved) {
  StateBytes state = moved();
  state.values[kDelayLRLink] = 1.0;
  state.values[kDelayTimeL] = 100.0;
  state.values[kDelayTimeR] = 700.0;
  state.touched = kDelayTimeL;
  restore(state);
  EXPECT_EQ(saved(rig), state.bytes());
}

TEST_F(HostStateBlock, OldRoutesAreQuietenedInTheFirstSlotAlone) {
  StateBytes state = moved();
  state.version = 0x10161;
  for (const int slot : {0, 1}) {
    state.values[static_cast<std::size_t>(kDelayMode + slot)] = 3.0;
    state.values[static_cast<std::size_t>(kDelayRoute + slot)] = 6.0;
  }
  state.values[kFeedback] = 80.0;
  restore(state);
  EXPECT_DOUBLE_EQ(value(kFeedback), 56.0);
  EXPECT_DOUBLE_EQ(probe.slot(0).feedback, 0.56);
  EXPECT_EQ(value(kFeedback + 1), 50.0);
}

TEST_F(HostStateBlock, TheFirstQuietenedRouteEndsTheMigrationOfARestore) {
  StateBytes state = moved();
  state.version = 0x1015F;
  for (const int slot : {1, 3}) {
    const auto s = static_cast<std::size_t>(slot);
    state.values[kDelayMode + s] = 3.0;
    state.values[kDelayRoute + s] = 6.0;
    state.values[kFeedback + s] = 100.0;
    state.values[kFxTypePre + s] = 18.0;
    state.values[kFxTypeFeedback + s] = 13.0;
    state.values[kFxTypePost + s] = 18.0;
  }
  state.touched = kFxTypePost + 3;
  restore(state);
  EXPECT_DOUBLE_EQ(value(kFeedback + 1), 70.0);
  EXPECT_EQ(value(kFeedback + 3), 100.0);
  for (const int slot : {1, 3}) {
    EXPECT_EQ(value(kFxTypePre + slot), 19.0) << "types come before the routes";
    EXPECT_EQ(value(kFxTypeFeedback + slot), 14.0);
    EXPECT_EQ(value(kFxTypePost + slot), 19.0) << "also for the one that is dispatched once more";
  }
}

TEST_F(HostStateBlock, AMigrationRunsOnceForEachParameter) {
  StateBytes state = moved();
  state.version = 0x1015F;
  state.values[kFxTypePre] = 18.0;
  state.values[kFxTypeFeedback] = 13.0;
  state.values[kFxTypePost + 3] = 17.0;
  state.touched = kFxTypePre;
  restore(state);
  EXPECT_EQ(value(kFxTypePre), 19.0) << "also where the user's hand lay on it";
  EXPECT_EQ(value(kFxTypeFeedback), 14.0);
  EXPECT_EQ(value(kFxTypePost + 3), 17.0);
  state.version = 0x10160;
  restore(state);
  EXPECT_EQ(value(kFxTypePre), 18.0);
  EXPECT_EQ(value(kFxTypeFeedback), 14.0);
  state.version = 0x10161;
  restore(state);
  EXPECT_EQ(value(kFxTypeFeedback), 13.0);
}

TEST_F(HostStateBlock, WhatNoEditorCouldShowIsNotTakenOver) {
  restore(moved());
  StateBytes state = moved();
  state.colourSet = 1000000;
  state.page = -5;
  state.touched = std::numeric_limits<int>::max();
  restore(state);
  StateBytes expected = moved();
  expected.touched = std::numeric_limits<int>::max();
  EXPECT_EQ(saved(rig), expected.bytes());
}

TEST_F(HostStateBlock, AnyBytesAreSurvived) {
  std::mt19937 draw(99);
  const Bytes whole = moved().bytes();
  for (int round = 0; round < kRandomBytes; ++round) {
    Bytes bytes = whole;
    for (int change = 0; change < 40; ++change) {
      bytes[draw() % (change % 2 == 0 ? 130 : bytes.size())] = static_cast<std::uint8_t>(draw());
    }
    bytes[1] = static_cast<std::uint8_t>(draw() % 3);
    bytes[2] = 1;
    bytes[3] = 0;
    rig.effect.UnserializeState(StateBytes::chunkOf(bytes), 0);
    const Bytes after = saved(rig);
    const auto again = StateBytes::chunkOf(after);
    rig.effect.UnserializeState(again, 0);
    ASSERT_EQ(saved(rig), after) << "round " << round;
  }
}

TEST_F(HostStateBlock, ARestoreLeavesNothingOfTheSignalBefore) {
  rig.set(kDryLevel, 0.0);
  StereoBuffer audio = noise(48000);
  rig.render(audio);
  StateBytes state = moved();
  state.values[kDelayTimeL] = 10.0;
  restore(state);
  StereoBuffer after(48000);
  rig.render(after);
  double peak = 0.0;
  for (const double sample : after.left) peak = std::max(peak, std::abs(sample));
  EXPECT_LT(peak, 1e-9);
}

}  // namespace
}  // namespace orvantesco
