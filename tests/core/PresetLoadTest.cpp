// Preset files on their way into the engine and back.

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <sstream>

#include "params/ParamIndex.h"
#include "presets/PresetReader.h"
#include "presets/PresetWriter.h"
#include "support/EngineRig.h"
#include "support/FolderRig.h"
#include "support/LongTests.h"
#include "support/OrvantescoProbe.h"
#include "support/RecordingEditor.h"
#include "support/StateBytes.h"

namespace orvantesco {
namespace {

std::string fileOf(int version, const std::string& rest) {
  return "Orvantesco V. 1.2.0r14 PresetFile!\nPresetVersion: " + std::to_string(version) + "\n\n" +
         rest;
}

class PresetLoad : public ::testing::Test {
 protected:
  PresetLoad() {
    rig.effect.setEditor(&editor);
    rig.effect.settings().setPresetRoot(folder.file("Presets"));
  }

  /// Reads and applies a file below "User Presets".
  bool load(const std::string& name) {
    const bool isPreset = rig.effect.readPresetFile("/User Presets/" + name);
    if (isPreset) rig.effect.applyLoadedPreset();
    return isPreset;
  }
  bool loadText(const std::string& text) {
    folder.write("Presets/User Presets/a.txt", text);
    return load("a.txt");
  }
  double value(int index) { return rig.effect.GetParam(index)->value(); }
  std::string savedText() { return presetText(rig.effect.settings().currentPreset()); }

  FolderRig folder;
  RecordingEditor editor;
  EngineRig rig;
  OrvantescoProbe probe{rig.effect};
};

TEST_F(PresetLoad, ParametersThatAreNotListedGetTheirDefaults) {
  std::mt19937 draw(4);
  const StateBytes before = randomState(draw);
  rig.effect.UnserializeState(before.chunk(), 0);
  ASSERT_TRUE(loadText(fileOf(14, "DelayTaps 1 2 3 4 5 6 7 8 StepFX 1 1 1 1 EParams:\n")));
  const std::vector<double> defaults = defaultValues();
  for (int i = 0; i < kNumParams; ++i) {
    EXPECT_EQ(value(i), defaults[static_cast<std::size_t>(i)]) << i;
  }
  EXPECT_EQ(rig.effect.tapMasks(3).right, 8);
  EXPECT_EQ(probe.taps(2).stepFxMask, 1);
  EXPECT_EQ(probe.taps(1).stepModMask[1], 0);
}

TEST_F(PresetLoad, ListedParametersReachTheEngineHeldInTheirRanges) {
  ASSERT_TRUE(loadText(fileOf(14,
                              "EParams:\nFeedback1 25\nFeedback2 1e9\nFeedback3 -4\n"
                              "NoSuchName 4\nFX1PR 5\nLFOSync1 1\nLFORate1 3\n")));
  EXPECT_DOUBLE_EQ(probe.slot(0).feedback, 0.25);
  EXPECT_EQ(value(kFeedback + 1), 160.0);
  EXPECT_EQ(value(kFeedback + 2), 0.0);
  EXPECT_NE(probe.position(0).type, 0);
  EXPECT_EQ(value(kLfoRate), 3.0);
}

TEST_F(PresetLoad, WhatAFileDoesNotSayOfTapsAndPageStays) {
  rig.effect.setTapMasks(1, {0x1234, 0x4321});
  ASSERT_TRUE(loadText(fileOf(14, "LastPage 12 EParams:\n")));
  ASSERT_TRUE(loadText(fileOf(14, "EParams:\n")));
  EXPECT_EQ(rig.effect.tapMasks(1).left, 0x1234);
  EXPECT_EQ(rig.effect.settings().currentPreset().lastPage, 12);
}

TEST_F(PresetLoad, AFileThatIsMissingOrForeignChangesNothingButTheLabel) {
  std::mt19937 draw(5);
  rig.effect.UnserializeState(randomState(draw).chunk(), 0);
  const std::string before = savedText();
  editor.clear();
  EXPECT_FALSE(load("missing.txt"));
  EXPECT_EQ(rig.effect.settings().presetName(), "NO FILE");
  EXPECT_FALSE(loadText("RIFF...."));
  EXPECT_EQ(rig.effect.settings().presetName(), "WRONG FILE");
  EXPECT_EQ(savedText(), before);
  EXPECT_EQ(editor.lines(),
            (std::vector<std::string>{"showPresetName NO FILE", "showPresetName WRONG FILE"}));
}

TEST_F(PresetLoad, NameAndFolderAreShown) {
  folder.write("Presets/Factory Presets/Echo/Slap Back.old.txt", fileOf(14, "EParams:\n"));
  ASSERT_TRUE(rig.effect.readPresetFile("/Factory Presets/Echo/Slap Back.old.txt"));
  rig.effect.applyLoadedPreset();
  EXPECT_EQ(rig.effect.settings().presetName(), "Slap Back");
  EXPECT_EQ(rig.effect.settings().presetFolderLabel(), "F:Echo");
  EXPECT_TRUE(editor.saw("showPresetName Slap Back"));
  EXPECT_TRUE(editor.saw("showPresetFolder F:Echo"));
}

TEST_F(PresetLoad, TheEditorFollowsALoad) {
  ASSERT_TRUE(loadText(fileOf(14, "LastPage 6 EParams:\n")));
  for (const char* line :
       {"showPage 6", "refreshStepGrids", "closeStepViews", "runDisplayTimers", "refreshSlot 0",
        "refreshSlot 3", "refreshLanes 0", "refreshLanes 1", "refreshLanes 2", "refreshLanes 3"}) {
    EXPECT_TRUE(editor.saw(line)) << line;
  }
  EXPECT_EQ(rig.effect.touchedParameter(), -1);
}

TEST_F(PresetLoad, ALoadLeavesNoHintAndNoReadOutBehind) {
  rig.effect.touchParameter(kFeedback);
  editor.clear();
  ASSERT_TRUE(loadText(fileOf(14, "EParams:\nFeedback1 25\n")));
  EXPECT_TRUE(editor.linesOf("showReadout").empty()) << "nobody's hand lies on a knob";
  EXPECT_EQ(editor.linesOf("closeStepViews").size(), 1u) << "passing hints go with the step views";
  const auto lines = editor.lines();
  const auto at = [&lines](const char* line) {
    return std::find(lines.begin(), lines.end(), line) - lines.begin();
  };
  EXPECT_LT(at("closeStepViews"), at("runDisplayTimers"));
  for (int slot = 0; slot < numSlots; ++slot) {
    // The values of the taps arrive before it: what shows them is drawn anew behind them all.
    const auto last = [&lines](const std::string& line) {
      return std::find(lines.rbegin(), lines.rend(), line) - lines.rbegin();
    };
    EXPECT_LT(last("refreshLanes " + std::to_string(slot)), last("runDisplayTimers")) << slot;
    EXPECT_LT(last("refreshSlot " + std::to_string(slot)), last("runDisplayTimers")) << slot;
  }
  for (const std::string& flash : editor.linesOf("flashKnobValue")) {
    EXPECT_TRUE(flash.ends_with(" 0")) << flash << ": values go off the knobs at once";
  }
}

TEST_F(PresetLoad, EachParameterSeesTheEarlierOnesAtTheirFinalValues) {
  rig.set(kTapFxParam1, 2);
  rig.set(kTapFxParam2, 3);
  ASSERT_TRUE(loadText(fileOf(14, "EParams:\nTapFXParam11 3\nTapFXParam21 2\n")));
  EXPECT_EQ(value(kTapFxParam1), 3.0);
  EXPECT_EQ(value(kTapFxParam2), 2.0);
  EXPECT_EQ(probe.taps(0).fxParam[0], 3);
  EXPECT_EQ(probe.taps(1).fxParam[0], 0);
}

TEST_F(PresetLoad, AnOldTappedMixIsQuietenedInEverySlotThatHasIt) {
  const std::string text =
      "EParams:\nFeedback1 80\nDelayMode1 3\nDelayRoute1 6\nDelayMode2 3\nDelayRoute2 5\n"
      "DelayMode4 3\nDelayRoute4 6\n";
  ASSERT_TRUE(loadText(fileOf(13, text)));
  EXPECT_DOUBLE_EQ(value(kFeedback), 80.0 * 0.7);
  EXPECT_DOUBLE_EQ(probe.slot(0).feedback, 0.56);
  EXPECT_EQ(value(kFeedback + 1), 50.0);
  EXPECT_DOUBLE_EQ(value(kFeedback + 3), 50.0 * 0.7);
  ASSERT_TRUE(loadText(fileOf(14, text)));
  EXPECT_EQ(value(kFeedback), 80.0);
}

TEST_F(PresetLoad, ALevelOfNothingIsSilence) {
  ASSERT_TRUE(loadText(fileOf(3, "EParams:\nLevel1 0\nLevel2 -1\nLevel3 2\n")));
  EXPECT_EQ(value(kLevel), rig.effect.GetParam(kLevel)->min());
  EXPECT_EQ(value(kLevel + 1), rig.effect.GetParam(kLevel)->min());
  EXPECT_NEAR(value(kLevel + 2), 6.0206, 1e-4);
}

TEST_F(PresetLoad, AnOldPresetIsRewrittenInPlaceAndItsOldFileKept) {
  const std::string old = fileOf(13, "LastPage 4 EParams:\nFX1FB 13\n");
  folder.write("Presets/User Presets/Mine/a.txt", old);
  ASSERT_TRUE(load("Mine/a.txt"));
  EXPECT_EQ(folder.read("Presets/User Presets/Mine/a.txt"), savedText());
  EXPECT_EQ(folder.read("Preset Backups/User Presets/Mine/a.txt"), old);
  EXPECT_EQ(folder.files().size(), 2u) << "no temporary file is left";
}

TEST_F(PresetLoad, ACurrentPresetIsNotRewritten) {
  const std::string text = fileOf(14, "  EParams:\r\nFeedback1 25.000\n");
  ASSERT_TRUE(loadText(text));
  EXPECT_EQ(folder.read("Presets/User Presets/a.txt"), text);
  EXPECT_EQ(folder.files().size(), 1u);
}

TEST_F(PresetLoad, AFileWhoseVersionCannotBeReadIsNotRewritten) {
  const std::string text = "Orvantesco V. 1 F PresetVersion: ? EParams: Feedback1 25";
  ASSERT_TRUE(loadText(text));
  EXPECT_EQ(value(kFeedback), 50.0);
  EXPECT_EQ(folder.read("Presets/User Presets/a.txt"), text);
}

TEST_F(PresetLoad, WritesToANewNameAndOverAnOldOne) {
  rig.set(kFeedback, 25.0);
  const std::string path = folder.file("mine.txt");
  EXPECT_FALSE(rig.effect.writePresetFile(path, false)) << "false is success";
  EXPECT_EQ(folder.read("mine.txt"), savedText());
  rig.set(kFeedback, 30.0);
  EXPECT_FALSE(rig.effect.writePresetFile(path, false));
  EXPECT_EQ(folder.read("mine.txt"), savedText());
  EXPECT_EQ(folder.files(), (std::vector<std::string>{"mine.txt"}));
}

TEST_F(PresetLoad, AnEmptyPathWritesNothingAndSucceeds) {
  EXPECT_FALSE(rig.effect.writePresetFile("", false));
  EXPECT_TRUE(folder.files().empty());
}

TEST_F(PresetLoad, APathThatCannotBeWrittenFails) {
  EXPECT_TRUE(rig.effect.writePresetFile(folder.file("no folder/a.txt"), false));
  EXPECT_TRUE(rig.effect.writePresetFile(folder.path(), false));
}

/// The lines behind "EParams:".
std::vector<std::string> valueLines(const std::string& text) {
  std::istringstream stream(text.substr(text.find("EParams:\n") + 9));
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

TEST_F(PresetLoad, OnlyWhatDiffersInSinglePrecisionIsListed) {
  EXPECT_TRUE(valueLines(savedText()).empty());
  rig.set(kFeedback, 50.0 + 1e-9);
  EXPECT_TRUE(valueLines(savedText()).empty());
  rig.set(kFeedback, 50.0 + 1e-4);
  EXPECT_EQ(valueLines(savedText()), (std::vector<std::string>{"Feedback1 50.0001"}));
}

/// Values that an effect did not take over from another one, as the loads of `index` tell them.
std::string differences(EngineRig& from, EngineRig& to, int index) {
  std::string text;
  for (int other = 0; other < kNumParams; ++other) {
    const double was = from.effect.GetParam(other)->value();
    const double is = to.effect.GetParam(other)->value();
    if (static_cast<float>(was) != static_cast<float>(is)) {
      text += std::to_string(index) + " moves " + std::to_string(other) + "\n";
    }
  }
  return text;
}

TEST_F(PresetLoad, EveryParameterComesBackToItsOwnPlace) {
  EngineRig source;
  std::string wrong;
  for (int index = 0; index < kNumParams; ++index) {
    IParam& param = *source.effect.GetParam(index);
    const double end = param.value() == param.max() ? param.min() : param.max();
    param.setValue(isFxType(index) ? 5.0 : end);
    // What a rate means depends on this one: the engine gives the rate its other form.
    const bool isSync = index >= kLfoSync && index < kLfoSync + numLfos;
    if (isSync) source.effect.OnParamChange(index);
    rig.effect.settings().applyPreset(source.effect.settings().currentPreset());
    wrong += differences(source, rig, index);
    param.setValue(param.defaultValue());
    if (isSync) source.effect.settings().applyPreset(Preset{});
  }
  EXPECT_EQ(wrong, "");
}

TEST_F(PresetLoad, TheSecondOfTwoParametersOfOneNameComesBackToItsOwnPlace) {
  rig.effect.GetParam(kLogicSmooth + 2)->setValue(20.0);
  const Preset preset = rig.effect.settings().currentPreset();
  EXPECT_EQ(preset.values.size(), 2u) << "the first is listed so that the second is the second";
  rig.effect.settings().applyPreset(Preset{});
  rig.effect.settings().applyPreset(preset);
  EXPECT_EQ(value(kLogicSmooth + 1), 0.0);
  EXPECT_EQ(value(kLogicSmooth + 2), 20.0);
}

/// Parameters that a file gives back other than to six digits.
int strayed(EngineRig& from, EngineRig& to) {
  int count = 0;
  for (int index = 0; index < kNumParams; ++index) {
    const double was = from.effect.GetParam(index)->value();
    const double is = to.effect.GetParam(index)->value();
    if (std::abs(was - is) > 5.1e-6 * std::abs(was)) ++count;
  }
  return count;
}

TEST_F(PresetLoad, RandomPresetsComeBackInAnEffectThatWasAnywhere) {
  std::mt19937 draw(21);
  EngineRig other;
  const int presets = timesOrLong(250, 10000);
  for (int i = 0; i < presets; ++i) {
    rig.effect.UnserializeState(randomState(draw).chunk(), 0);
    const auto result = parsePreset(savedText());
    const auto& reading = std::get<PresetReading>(result);
    ASSERT_TRUE(reading.problems.empty());
    other.effect.settings().applyPreset(reading.preset);
    ASSERT_EQ(strayed(rig, other), 0) << "preset " << i;
    // What six digits can say comes back as it is.
    const std::string text = presetText(other.effect.settings().currentPreset());
    const auto again = parsePreset(text);
    rig.effect.settings().applyPreset(std::get<PresetReading>(again).preset);
    ASSERT_EQ(savedText(), text) << "preset " << i;
  }
}

TEST_F(PresetLoad, ALoadIsHeardBehindAFadeWithNothingOfTheSignalBefore) {
  rig.warmUp();
  StereoBuffer before = noise(24000);
  rig.render(before);
  ASSERT_TRUE(loadText(fileOf(14, "EParams:\nDryLevel 0\nDelayTimeL1 1\nDelayTimeR1 1\n")));
  StereoBuffer silence(24000);
  rig.render(silence);
  double peak = 0.0;
  for (const double sample : silence.left) peak = std::max(peak, std::abs(sample));
  EXPECT_LT(peak, 1e-9);

  ASSERT_TRUE(loadText(fileOf(14, "EParams:\nWetLevel 0\nDryLevel 100\n")));
  StereoBuffer steady(24000);
  std::fill(steady.left.begin(), steady.left.end(), 1.0);
  rig.render(steady);
  EXPECT_LT(std::abs(steady.left[150]), 0.1) << "the fade begins at silence";
  EXPECT_NEAR(steady.left[20000], 1.0, 0.01);
}

TEST_F(PresetLoad, ShowingAPageDuringALoadDoesNotMakeItTheCurrentOne) {
  const auto loading = probe.loadingPreset();
  rig.effect.settings().setCurrentPage(7);
  EXPECT_EQ(rig.effect.settings().currentPreset().lastPage, 2);
}

}  // namespace
}  // namespace orvantesco
