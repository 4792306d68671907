#include "presets/PresetCheck.h"

#include <gtest/gtest.h>

#include "params/ParamIndex.h"

namespace orvantesco {
namespace {

/// Everything that is said of a file with these values, a line each.
std::vector<std::string> saidOf(const std::string& values, int version = 14) {
  static ParamBank bank;
  [[maybe_unused]] static const bool once = (bank.buildParameterBank(), true);
  const PresetResult result =
      parsePreset("Orvantesco V. 1.2.0r14 PresetFile!\nPresetVersion: " + std::to_string(version) +
                  "\nEParams:\n" + values);
  std::vector<std::string> lines;
  for (const PresetProblem& problem : presetProblems(std::get<PresetReading>(result), bank)) {
    lines.push_back(std::to_string(problem.line) + ": " + problem.message);
  }
  return lines;
}

using Lines = std::vector<std::string>;

TEST(PresetCheck, AGoodFileIsNotTalkedAbout) {
  EXPECT_EQ(saidOf("Feedback1 25\nLevel1 -6\nLFOSync1 1\nLFORate1 7\n"), Lines{});
  EXPECT_EQ(saidOf("Level1 0\n", 3), Lines{}) << "a gain of nothing is silence";
}

TEST(PresetCheck, KeysOfNoParameterAndKeysThatComeTwiceAreNamed) {
  EXPECT_EQ(saidOf("NoSuch 1\nFeedback1 25\nFeedback1 26\n"),
            (Lines{"4: no parameter is called \"NoSuch\"",
                   "6: \"Feedback1\" stands in the file before"}));
  EXPECT_EQ(
      saidOf("Feedback1 25 NoSuch 1 Feedback1 26"),
      (Lines{"4: no parameter is called \"NoSuch\"", "4: \"Feedback1\" stands in the file before"}))
      << "on one line too";
}

TEST(PresetCheck, AKeyOfTwoParametersMayComeTwice) {
  ParamBank bank;
  bank.buildParameterBank();
  const std::string key = bank.keys()[kLogicSmooth + 1];
  ASSERT_EQ(bank.keys()[kLogicSmooth + 2], key);
  EXPECT_EQ(saidOf(key + " 1\n" + key + " 2\n"), Lines{});
  EXPECT_EQ(saidOf(key + " 1\n" + key + " 2\n" + key + " 3\n").size(), 1u);
}

TEST(PresetCheck, ValuesOutOfRangeAreNamedAsTheyAreMeantToday) {
  EXPECT_EQ(saidOf("Feedback1 999\n"), Lines{"4: Feedback 1 is out of range, expected 0..160 %"});
  EXPECT_EQ(saidOf("LFOSync2 1\nLFORate2 8\n"),
            Lines{"5: LFO Rate 2 is out of range, expected 0..7"});
  EXPECT_EQ(saidOf("Level1 1000000\n", 3).size(), 1u) << "a gain of 120 dB";
}

TEST(PresetCheck, LongKeysAreCutAndBytesKept) {
  std::string key(1000, '\xFF');
  const Lines lines = saidOf(key.append(" 1\n"));
  EXPECT_EQ(lines, Lines{"4: no parameter is called \"" + std::string(40, '\xFF') + "\""});
}

}  // namespace
}  // namespace orvantesco
