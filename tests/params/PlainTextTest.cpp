#include "params/PlainText.h"

#include <gtest/gtest.h>

#include <limits>

namespace orvantesco {
namespace {

TEST(PlainText, NumbersAreReadWhole) {
  EXPECT_EQ(numberIn("12"), 12.0);
  EXPECT_EQ(numberIn("-0.5"), -0.5);
  EXPECT_EQ(numberIn("+3"), 3.0);
  EXPECT_EQ(numberIn(".25"), 0.25);
  EXPECT_EQ(numberIn("1e3"), 1000.0);
  EXPECT_EQ(numberIn("1E-2"), 0.01);
}

TEST(PlainText, WhatIsNoDecimalNumberIsNone) {
  for (const char* text : {"", "-", "+", "++1", "+-1", "1,5", "1.5x", "0x10", "inf", "nan",
                           "INFINITY", "1 2", "1/2", "e", "."})
    EXPECT_EQ(numberIn(text), std::nullopt) << text;
}

TEST(PlainText, NumbersBeyondADoubleAreInfiniteAndTinyOnesZero) {
  constexpr double infinite = std::numeric_limits<double>::infinity();
  EXPECT_EQ(numberIn("1e999"), infinite);
  EXPECT_EQ(numberIn("-1e999"), -infinite);
  EXPECT_EQ(numberIn("1e-999"), 0.0);
}

TEST(PlainText, NumbersPrintAsShortAsTheyCanWithoutLoss) {
  EXPECT_EQ(shortest(0.1), "0.1");
  EXPECT_EQ(shortest(-60.0), "-60");
  EXPECT_EQ(shortest(20000.0), "20000");
  EXPECT_EQ(shortest(0.001), "0.001");
}

TEST(PlainText, SpellingsOfOneNameFoldTogether) {
  EXPECT_EQ(folded(" Delay TimeL\t1"), "delaytimel1");
  EXPECT_EQ(trimmed("  a b \n"), "a b");
  EXPECT_EQ(trimmed("   "), "");
  EXPECT_TRUE(sameLetters("1/8D", "1/8d"));
  EXPECT_FALSE(sameLetters("1/8", "1/8d"));
  EXPECT_FALSE(sameLetters("[", "{"));
}

TEST(PlainText, EditDistanceCountsSingleEdits) {
  EXPECT_EQ(editDistance("", ""), 0);
  EXPECT_EQ(editDistance("", "abc"), 3);
  EXPECT_EQ(editDistance("abc", ""), 3);
  EXPECT_EQ(editDistance("kitten", "sitting"), 3);
  EXPECT_EQ(editDistance("same", "same"), 0);
  EXPECT_EQ(editDistance("ab", "ba"), 2);
}

}  // namespace
}  // namespace orvantesco
