#include "presets/PresetReader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <sstream>

#include "presets/PresetWriter.h"
#include "support/FolderRig.h"

namespace orvantesco {
namespace {

using Masks4 = std::array<std::uint16_t, 4>;

PresetReading readingOf(const std::string& text) {
  const PresetResult result = parsePreset(text);
  const auto* reading = std::get_if<PresetReading>(&result);
  EXPECT_NE(reading, nullptr) << text;
  return reading != nullptr ? *reading : PresetReading{};
}

std::string fileOf(int version, const std::string& rest) {
  return "Orvantesco V. 1.2.0r14 PresetFile!\nPresetVersion: " + std::to_string(version) + "\n\n" +
         rest;
}

std::vector<std::string> keysOf(const Preset& preset) {
  std::vector<std::string> keys;
  for (const PresetValue& value : preset.values) keys.push_back(value.key);
  return keys;
}

constexpr const char* kWhole =
    "Orvantesco V. 1.2.0r14 PresetFile!\n"
    "PresetVersion: 14\n"
    "\n"
    "ADDPARAMS:\n"
    "\n"
    "DelayTaps\n"
    "1 2 3 4 5 6 7 65535 \n"
    "LastPage\n"
    "12\n"
    "StepFX\n"
    "11 12 13 14 \n"
    "StepMod\n"
    "21 22 23 24 31 32 33 34 \n"
    "\n"
    "EParams:\n"
    "InputGain1 -3.5\n"
    "DelayMode2 3\n";

TEST(PresetReader, ReadsEveryPartOfAFile) {
  const PresetReading reading = readingOf(kWhole);
  const Preset& preset = reading.preset;
  EXPECT_TRUE(reading.problems.empty());
  EXPECT_EQ(preset.version, 14);
  EXPECT_EQ(preset.lastPage, 12);
  for (std::size_t i = 0; i < 7; ++i) EXPECT_EQ(preset.tapMask[i], i + 1);
  EXPECT_EQ(preset.tapMask[7], 65535);
  EXPECT_EQ(preset.stepFxMask, (Masks4{11, 12, 13, 14}));
  EXPECT_EQ(preset.stepModMask[0], (Masks4{21, 22, 23, 24}));
  EXPECT_EQ(preset.stepModMask[1], (Masks4{31, 32, 33, 34}));
  ASSERT_EQ(keysOf(preset), (std::vector<std::string>{"InputGain1", "DelayMode2"}));
  EXPECT_EQ(preset.values[0].value, -3.5);
  EXPECT_EQ(preset.values[0].line, 16);
  EXPECT_EQ(preset.values[1].value, 3.0);
}

TEST(PresetReader, TakesOnlyFilesWhoseFirstWordIsExactlyTheProgramsName) {
  for (const char* text : {"", " ", "orvantesco V. 1", "OrvantescoX V. 1", "Orvantesc", "\n\nRIFF",
                           "\xEF\xBB\xBFOrvantesco V. 1.2.0r14 PresetFile!"}) {
    const PresetResult result = parsePreset(text);
    const auto* error = std::get_if<PresetError>(&result);
    ASSERT_NE(error, nullptr) << text;
    EXPECT_EQ(error->kind, PresetError::Kind::wrongFile);
  }
  EXPECT_EQ(readingOf("\r\n  Orvantesco V. x y PresetVersion: 14 EParams:").preset.version, 14);
}

TEST(PresetReader, AFileWithoutParametersListsNone) {
  const PresetReading reading = readingOf(fileOf(14, "DelayTaps 1 1 1 1 1 1 1 1 EParams:\n"));
  EXPECT_TRUE(reading.preset.values.empty());
  EXPECT_EQ(reading.preset.tapMask[5], 1);
  EXPECT_TRUE(reading.problems.empty());
}

TEST(PresetReader, AFileThatSaysNothingOfTapsAndPageLeavesThemAlone) {
  const Preset preset = readingOf(fileOf(14, "EParams:\nLevel1 -6\n")).preset;
  for (const auto& mask : preset.tapMask) EXPECT_FALSE(mask);
  EXPECT_FALSE(preset.lastPage);
  EXPECT_EQ(preset.stepFxMask, Masks4{}) << "the other masks are cleared by every load";
  EXPECT_EQ(preset.stepModMask[1], Masks4{});
}

TEST(PresetReader, OnlySixteenBitsOfAMaskCount) {
  const Preset preset =
      readingOf(fileOf(14, "DelayTaps\n65536 65537 -1 0 0 0 0 0\nEParams:\n")).preset;
  EXPECT_EQ(preset.tapMask[0], 0);
  EXPECT_EQ(preset.tapMask[1], 1);
  EXPECT_EQ(preset.tapMask[2], 0xFFFF);
}

TEST(PresetReader, VersionsUpToSevenPairTheStepModMasks) {
  const std::string section = "StepFX\n1 2 3 4\nStepMod\n";
  const std::string sixteen = "1 2 4 8 16 32 64 128 0 0 256 1 7 8 1 1\n";
  const Preset old = readingOf(fileOf(7, section + sixteen + "EParams:\nLevel1 1\n")).preset;
  EXPECT_EQ(old.stepModMask[0], (Masks4{3, 12, 48, 192}));
  EXPECT_EQ(old.stepModMask[1], (Masks4{0, 257, 15, 1}));
  EXPECT_EQ(old.stepFxMask, (Masks4{0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF}));
  EXPECT_EQ(old.values.size(), 1u);

  const Preset later =
      readingOf(fileOf(8, section + "1 2 4 8 16 32 64 128\nEParams:\nLevel1 1\n")).preset;
  EXPECT_EQ(later.stepModMask[0], (Masks4{1, 2, 4, 8}));
  EXPECT_EQ(later.stepModMask[1], (Masks4{16, 32, 64, 128}));
  EXPECT_EQ(later.stepFxMask, (Masks4{1, 2, 3, 4}));
}

TEST(PresetReader, AStepFxSectionBehindTheStepModsOfAnOldFileCounts) {
  const Preset preset =
      readingOf(fileOf(7, "StepMod 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 StepFX 1 2 3 4 EParams:"))
          .preset;
  EXPECT_EQ(preset.stepFxMask, (Masks4{1, 2, 3, 4}));
}

TEST(PresetReader, OnlyTheFirstVersionsScaleTheDepthsOfTheLfoRates) {
  const std::string params =
      "EParams:\nLFOFreqModDepth1 100\nLFOFreqModDepth4 -7\nLFODepth1 50\n"
      "LFOFreqModDepth5 9\n";
  const auto old = readingOf(fileOf(2, params)).preset.values;
  EXPECT_EQ(old[0].value, static_cast<float>(100.0f * 0.278207956148936));
  EXPECT_EQ(old[1].value, static_cast<float>(-7.0f * 0.278207956148936));
  EXPECT_EQ(old[2].value, 50.0);
  EXPECT_EQ(old[3].value, 9.0);
  EXPECT_EQ(readingOf(fileOf(3, params)).preset.values[0].value, 100.0);
}

TEST(PresetReader, ValuesAreReadInSinglePrecision) {
  const auto values =
      readingOf(fileOf(14, "EParams:\nA 0.1\nB 3e38\nC -1e-60\nD 1e-5000\nE +2\nF .5"))
          .preset.values;
  ASSERT_EQ(values.size(), 6u);
  EXPECT_EQ(values[0].value, 0.1f);
  EXPECT_EQ(values[1].value, 3e38f);
  EXPECT_TRUE(values[2].value == 0.0 && std::signbit(values[2].value));
  EXPECT_TRUE(values[3].value == 0.0 && !std::signbit(values[3].value));
  EXPECT_EQ(values[4].value, 2.0);
  EXPECT_EQ(values[5].value, 0.5);
}

TEST(PresetReader, StopsAtAValueThatIsNone) {
  for (const char* bad : {"abc", "nan", "inf", "-", "0x", ",", "1e39", "-1e5000"}) {
    const PresetReading reading =
        readingOf(fileOf(14, "EParams:\nLevel1 1\nLevel2 " + std::string(bad) + "\nLevel3 3\n"));
    const bool readsAsZero = std::string(bad) == "0x";
    EXPECT_EQ(reading.preset.values.size(), readsAsZero ? 2u : 1u) << bad;
    ASSERT_EQ(reading.problems.size(), 1u) << bad;
  }
}

TEST(PresetReader, MasksThatEndEarlyKeepWhatTheyHeldAndTheRestIsRead) {
  const PresetReading reading =
      readingOf(fileOf(14, "DelayTaps\n1 2 3\nLastPage\nx\nStepFX\n9 8\nEParams:\nLevel1 -6\n"));
  EXPECT_EQ(reading.preset.tapMask[2], 3);
  EXPECT_FALSE(reading.preset.tapMask[3]);
  EXPECT_FALSE(reading.preset.lastPage);
  EXPECT_EQ(reading.preset.stepFxMask, (Masks4{9, 8, 0, 0}));
  EXPECT_EQ(reading.preset.values.size(), 1u);
  ASSERT_EQ(reading.problems.size(), 3u);
  EXPECT_EQ(reading.problems[0].line, 6) << "the line at which the masks end";
}

TEST(PresetReader, AVersionThatCannotBeReadGivesNoMeaningToTheValues) {
  for (const char* version : {"", "x", "99999999999", "-3"}) {
    const PresetReading reading = readingOf(
        "Orvantesco V. 1 F PresetVersion: " + std::string(version) + "\nEParams:\nLevel1 -6\n");
    EXPECT_LT(reading.preset.version, 0) << version;
    EXPECT_TRUE(reading.preset.values.empty()) << version;
    EXPECT_FALSE(reading.problems.empty()) << version;
  }
}

TEST(PresetReader, SaysThatAFileIsNewerThanTheProgram) {
  const PresetReading reading = readingOf(fileOf(15, "EParams:\nLevel1 -6\n"));
  EXPECT_EQ(reading.preset.version, 15);
  EXPECT_EQ(reading.preset.values.size(), 1u);
  ASSERT_EQ(reading.problems.size(), 1u);
  EXPECT_EQ(reading.problems[0].line, 2);
}

TEST(PresetReader, LooksForTheParametersAmongSoManyWordsOnly) {
  const auto words = [](int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += "word\n";
    return text;
  };
  const std::string params = "EParams:\nLevel1 -6\n";
  for (const int count : {0, 1094, 1095}) {
    const PresetReading found = readingOf(fileOf(14, words(count) + params));
    EXPECT_EQ(found.preset.values.size(), 1u) << count;
    EXPECT_TRUE(found.problems.empty()) << count;
  }
  const PresetReading behind = readingOf(fileOf(14, words(1096) + params));
  EXPECT_TRUE(behind.preset.values.empty()) << "the mark is then read as a name without a number";
  EXPECT_EQ(behind.problems.size(), 2u);
}

TEST(PresetReader, BehindTooManyWordsTheValuesBeginAllTheSame) {
  std::string words;
  for (int i = 0; i < 1096; ++i) words += "word ";
  const PresetReading reading = readingOf(fileOf(14, words + "Level1 -6\n"));
  EXPECT_EQ(keysOf(reading.preset), std::vector<std::string>{"Level1"});
  EXPECT_EQ(reading.problems.size(), 1u);
  const PresetReading inside = readingOf(fileOf(14, words.substr(5) + "LastPage 3 Level1 -6"));
  EXPECT_FALSE(inside.preset.lastPage) << "the last word is no section any more";
}

TEST(PresetReader, EverySectionMayStandAnywhereAndComeTwice) {
  const Preset preset = readingOf(fileOf(14,
                                         "LastPage 3 StepFX 1 1 1 1 LastPage 4 DelayTaps "
                                         "9 9 9 9 9 9 9 9 StepFX 2 2 2 2 EParams:"))
                            .preset;
  EXPECT_EQ(preset.lastPage, 4);
  EXPECT_EQ(preset.stepFxMask, (Masks4{2, 2, 2, 2}));
  EXPECT_EQ(preset.tapMask[7], 9);
}

/// The words of a text as the standard's own streams see them.
std::vector<std::string> wordsOf(const std::string& text) {
  std::istringstream stream(text);
  stream.imbue(std::locale::classic());
  std::vector<std::string> words;
  for (std::string word; stream >> word;) words.push_back(word);
  return words;
}

TEST(PresetReader, OtherWhiteSpaceMakesNoDifference) {
  std::string spaced;
  for (const std::string& word : wordsOf(kWhole)) spaced += "\t\v" + word + "\r\n\f";
  EXPECT_EQ(presetText(readingOf(spaced).preset), presetText(readingOf(kWhole).preset));
}

TEST(PresetReader, KeysAreAnyBytes) {
  const std::string odd("\0\xFF\xC3(\xE2\x82", 6);
  const PresetReading reading = readingOf(fileOf(14, "EParams:\r\n" + odd + " 1\r\nLevel1 -6\r\n"));
  EXPECT_EQ(keysOf(reading.preset), (std::vector<std::string>{odd, "Level1"}));
  EXPECT_TRUE(reading.problems.empty());
}

TEST(PresetReader, SurvivesShuffledAndForeignBytes) {
  std::mt19937 draw(7);
  const std::string whole = kWhole;
  for (int round = 0; round < 2000; ++round) {
    std::string text = whole;
    for (int change = 0; change < 1 + round % 20; ++change) {
      text[11 + draw() % (text.size() - 11)] = static_cast<char>(draw());
    }
    const PresetReading reading = readingOf(text);
    EXPECT_LE(reading.preset.values.size(), text.size() / 4);
  }
}

TEST(PresetReader, ReadsTheLongestFileInOneGo) {
  std::string text = fileOf(14, "EParams:\n");
  std::size_t values = 0;
  for (; text.size() + 4 <= kLargestPresetBytes; ++values) text += "a 1\n";
  const FolderRig folder;
  const std::string name(251, 'n');
  const PresetResult whole = readPreset(folder.write(name + ".txt", text));
  ASSERT_TRUE(std::holds_alternative<PresetReading>(whole));
  EXPECT_EQ(std::get<PresetReading>(whole).preset.values.size(), values);
}

TEST(PresetReader, ALongerFileIsRefused) {
  const FolderRig folder;
  std::string text = fileOf(14, "EParams:\n");
  text.resize(kLargestPresetBytes + 1, ' ');
  const PresetResult result = readPreset(folder.write("a.txt", text));
  const auto* error = std::get_if<PresetError>(&result);
  ASSERT_NE(error, nullptr);
  EXPECT_EQ(error->kind, PresetError::Kind::wrongFile);
  EXPECT_EQ(error->message, "cannot be read: is longer than 1000000 bytes");
}

TEST(PresetReader, AFileThatIsNotThereIsNoFile) {
  const PresetResult result = readPreset("no such folder/no such file.txt");
  const auto* error = std::get_if<PresetError>(&result);
  ASSERT_NE(error, nullptr);
  EXPECT_EQ(error->kind, PresetError::Kind::noFile);
  EXPECT_EQ(error->message, "cannot be read: No such file or directory");
}

}  // namespace
}  // namespace orvantesco
