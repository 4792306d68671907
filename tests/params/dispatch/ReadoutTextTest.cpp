#include "params/dispatch/ReadoutText.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>

namespace orvantesco {
namespace {

TEST(ReadoutText, RoundsAsPrintfDoes) {
  for (const double number : {0.0, 0.05, 0.125, 2.675, 9.995, -3.25, 1e8 / 3.0, -0.001}) {
    for (int decimals = 0; decimals < 4; ++decimals) {
      char expected[64];
      std::snprintf(expected, sizeof expected, "%.*f", decimals, number);
      EXPECT_EQ(ReadoutText().appendFixed(number, decimals).view(), expected);
    }
  }
}

TEST(ReadoutText, CutsWhatDoesNotFit) {
  ReadoutText text;
  for (int i = 0; i < 20; ++i) text.append("12345678");
  EXPECT_EQ(text.view().size(), 64u);
  text.append(99).appendFixed(1.0, 2);
  EXPECT_EQ(text.view().size(), 64u);
}

TEST(ReadoutText, JoinsTextsAndNumbers) {
  EXPECT_EQ(ReadoutText("GATE STEP ").append(16).append(" LEVEL").view(), "GATE STEP 16 LEVEL");
  ReadoutText text("x");
  text.clear();
  EXPECT_TRUE(text.empty());
}

}  // namespace
}  // namespace orvantesco
