#include "cli/TapOptions.h"

#include <gtest/gtest.h>

#include "cli/Failure.h"

namespace orvantesco::cli {
namespace {

TapSettings parsed(const TapOptionTexts& texts) { return parseTapOptions(texts, 1); }

std::string messageOf(const TapOptionTexts& texts) {
  try {
    parsed(texts);
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.exitCode(), ExitCode::badCall);
    return failure.what();
  }
  return "taken";
}

TEST(TapOptions, TakeMasksInHexadecimalAndCountSlotsFromOne) {
  const TapSettings settings = parsed({{"1:0005:800A", "4:0xFFFF:0"}, {}, {}});
  ASSERT_EQ(settings.taps.size(), 2u);
  EXPECT_EQ(settings.taps[0].slot, 0);
  EXPECT_EQ(settings.taps[0].masks.left, 0x0005);
  EXPECT_EQ(settings.taps[0].masks.right, 0x800A);
  EXPECT_EQ(settings.taps[1].slot, 3);
  EXPECT_EQ(settings.taps[1].masks.left, 0xFFFF);
  EXPECT_EQ(settings.taps[1].masks.right, 0);
}

TEST(TapOptions, TakePatternsByTheirMenuNamesInAnyCase) {
  const TapSettings settings = parsed({{"2:PING PONG", "3:rhythm ii"}, {}, {}});
  EXPECT_EQ(settings.taps[0].masks.left, 0x5555);
  EXPECT_EQ(settings.taps[0].masks.right, 0xAAAA);
  EXPECT_EQ(settings.taps[1].masks.left, 0xD092);
}

TEST(TapOptions, RandomizeFollowsTheSeed) {
  const TapOptionTexts texts{{"1:RANDOMIZE"}, {}, {}};
  EXPECT_EQ(parseTapOptions(texts, 5).taps[0].masks.left,
            parseTapOptions(texts, 5).taps[0].masks.left);
  EXPECT_NE(parseTapOptions(texts, 5).taps[0].masks.left,
            parseTapOptions(texts, 6).taps[0].masks.left);
}

TEST(TapOptions, TakeTheMasksOfEffectsAndModulation) {
  const TapSettings settings = parsed({{}, {"2:00F0"}, {"2:3:8001"}});
  EXPECT_EQ(settings.stepFx[0].slot, 1);
  EXPECT_EQ(settings.stepFx[0].mask, 0x00F0);
  EXPECT_EQ(settings.stepMod[0].row, 1);
  EXPECT_EQ(settings.stepMod[0].slot, 2);
  EXPECT_EQ(settings.stepMod[0].mask, 0x8001);
}

TEST(TapOptions, SayWhatTheyWouldHaveTaken) {
  EXPECT_NE(messageOf({{"5:FFFF:FFFF"}, {}, {}}).find("SLOT from 1 to 4"), std::string::npos);
  EXPECT_NE(messageOf({{"1:10000:0"}, {}, {}}).find("0 to FFFF"), std::string::npos);
  EXPECT_NE(messageOf({{"1:xyz:0"}, {}, {}}).find("hexadecimal"), std::string::npos);
  EXPECT_NE(messageOf({{"1:WALTZ"}, {}, {}}).find("BOUNCER"), std::string::npos);
  EXPECT_NE(messageOf({{"1"}, {}, {}}).find("SLOT:PATTERN"), std::string::npos);
  EXPECT_NE(messageOf({{}, {"1:"}, {}}).find("--step-fx"), std::string::npos);
  EXPECT_NE(messageOf({{}, {}, {"3:1:0"}}).find("ROW from 1 to 2"), std::string::npos);
  EXPECT_NE(messageOf({{}, {}, {"1:1"}}).find("three parts"), std::string::npos);
}

}  // namespace
}  // namespace orvantesco::cli
