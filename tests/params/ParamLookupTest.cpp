#include "params/ParamLookup.h"

#include <gtest/gtest.h>

#include <set>

#include "params/PlainText.h"

namespace orvantesco {
namespace {

class ParamLookupTest : public testing::Test {
 protected:
  ParamLookupTest() { bank.buildParameterBank(); }

  int find(std::string_view text) const {
    const auto found = findParam(bank, text);
    return std::holds_alternative<int>(found) ? std::get<int>(found) : -1;
  }
  std::string errorOf(std::string_view text) const {
    const auto found = findParam(bank, text);
    const auto* error = std::get_if<ParamError>(&found);
    return error ? error->message : "no error";
  }

  ParamBank bank;
};

TEST_F(ParamLookupTest, FindsNamesAndKeysInAnyCase) {
  EXPECT_EQ(find("Delay TimeL 1"), 344);
  EXPECT_EQ(find("DelayTimeL1"), 344);
  EXPECT_EQ(find("delay timel 1"), 344);
  EXPECT_EQ(find(" DELAYTIMEL1 "), 344);
  EXPECT_EQ(find("L/R Offset 2"), 41);
}

TEST_F(ParamLookupTest, FindsEveryParameterByItsNameKeyAndIndex) {
  const std::set<int> twins{1022, 1030, 1038, 1042, 1046};
  for (int index = 0; index < kNumParams; ++index) {
    const int expected = twins.contains(index) ? index - 1 : index;
    ASSERT_EQ(find(bank.getParam(index)->name()), expected);
    ASSERT_EQ(find(bank.keys()[std::size_t(index)]), expected);
    ASSERT_EQ(find("#" + std::to_string(index)), index);
  }
}

TEST_F(ParamLookupTest, NoTwoNamesDifferInCaseAlone) {
  std::set<std::string> spellings;
  for (const std::string& key : bank.keys()) spellings.insert(lowered(key));
  EXPECT_EQ(spellings.size(), 1090u);
}

TEST_F(ParamLookupTest, ANameStaysWhileItsRecordBearsAnotherOne) {
  bank.setLfoRateInNotes(0, true);
  EXPECT_EQ(find("LFO Rate 1"), kLfoRate);
  EXPECT_EQ(find("LFO Sync 1"), kLfoSync);
}

TEST_F(ParamLookupTest, AnUnknownNameIsAnsweredWithTheClosestKeys) {
  EXPECT_EQ(errorOf("DelayTimL1"),
            "unknown parameter \"DelayTimL1\"; the closest are DelayTimeL1, DelayTimeL2, "
            "DelayTimeL3");
  EXPECT_EQ(closestParams(bank, "Wet Levl", 1), std::vector<int>{kWetLevel});
  EXPECT_EQ(closestParams(bank, "logic2source1depth", 2), (std::vector<int>{1020, 1021}));
  EXPECT_NE(find(""), 0);
}

TEST_F(ParamLookupTest, AnIndexOutOfRangeIsAnsweredWithTheRange) {
  for (const char* text : {"#1095", "#-1", "#", "#x", "#1.5", "#1e9"})
    EXPECT_EQ(errorOf(text),
              std::string("unknown parameter \"") + text + "\": the indices are #0..#1094");
}

}  // namespace
}  // namespace orvantesco
