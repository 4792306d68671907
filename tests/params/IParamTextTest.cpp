#include "params/IParam.h"

#include <gtest/gtest.h>

#include <clocale>

namespace orvantesco {
namespace {

std::string shown(const IParam& param, double value, bool isNormalised = false,
                  bool useDisplayText = true) {
  char text[32];
  param.formatValue(value, isNormalised, text, useDisplayText);
  return text;
}

TEST(IParamText, DecimalsFollowTheStepUpToSix) {
  const std::pair<double, int> cases[] = {{1.0, 0},  {2.0, 0},    {0.1, 1},   {0.5, 1},
                                          {0.01, 2}, {0.25, 2},   {0.001, 3}, {1e-6, 6},
                                          {1e-9, 6}, {1.0 / 3, 6}};
  for (const auto& [step, decimals] : cases) {
    IParam param;
    param.initDouble({"a"}, 0.0, {0.0, 10.0, step});
    EXPECT_EQ(param.displayPrecision(), decimals) << step;
  }
}

TEST(IParamText, ABoolShowsOffAndOn) {
  IParam param;
  param.initBool({"a"}, true);
  EXPECT_EQ(param.type(), ParamType::boolean);
  EXPECT_EQ(param.value(), 1.0);
  EXPECT_EQ(shown(param, 0.0), "off");
  EXPECT_EQ(shown(param, 1.0), "on");
}

TEST(IParamText, TextsAreFoundByTheFirstEntryOfAValue) {
  IParam param;
  param.initEnum({"a"}, 0, 3);
  param.setDisplayText(1, "first");
  param.setDisplayText(1, "second");
  EXPECT_STREQ(param.getDisplayText(1), "first");
  EXPECT_STREQ(param.getDisplayText(0), "");
  param.replaceDisplayText(1, "other");
  EXPECT_STREQ(param.getDisplayText(1), "other");
  param.replaceDisplayText(2, "nothing happens");
  EXPECT_STREQ(param.getDisplayText(2), "");
  EXPECT_EQ(param.form().displayTexts.size(), 2u);
  param.setDisplayText(2, "alone", true);
  EXPECT_EQ(param.form().displayTexts.size(), 1u);
}

TEST(IParamText, NumbersShowTheDecimalsOfTheirStep) {
  IParam hundredths;
  hundredths.initDouble({"a"}, 0.0, {-100.0, 4000.0, 0.01, 2.0}, KeepValue::no);
  EXPECT_EQ(shown(hundredths, 500.0), "500.00");
  EXPECT_EQ(shown(hundredths, -1.005), "-1.00");
  EXPECT_EQ(shown(hundredths, 0.5, true), "925.00");
  IParam tenths;
  tenths.initDouble({"b"}, 0.0, {0.0, 1.0, 0.1});
  EXPECT_EQ(shown(tenths, 0.25), "0.2");
  IParam whole;
  whole.initInt({"c"}, 0, {-4, 16});
  EXPECT_EQ(shown(whole, 7.9), "7");
  EXPECT_EQ(shown(whole, -0.9), "0");
  EXPECT_EQ(shown(whole, 1e300), "2147483647");
}

TEST(IParamText, ATextStandsForItsTruncatedValueUnlessItIsEmpty) {
  IParam param;
  param.initEnum({"a", "unit"}, 0, 3);
  param.setDisplayText(0, "zero");
  param.setDisplayText(1, "");
  EXPECT_EQ(shown(param, 0.9), "zero");
  EXPECT_EQ(shown(param, 0.9, false, false), "0");
  EXPECT_EQ(shown(param, 1.0), "1");
  EXPECT_EQ(shown(param, 2.0), "2");
  EXPECT_EQ(shown(param, 0.1, true), "zero");
  EXPECT_STREQ(param.shownLabel(0.0), "");
  EXPECT_STREQ(param.shownLabel(1.0), "unit");
  EXPECT_STREQ(param.shownLabel(2.0), "unit");
}

TEST(IParamText, TextThatIsTooLongIsCutAndClosed) {
  IParam param;
  param.initEnum({"a"}, 0, 2);
  param.setDisplayText(0, "abcdef");
  char text[4] = {'?', '?', '?', '?'};
  param.formatValue(0.0, false, text);
  EXPECT_STREQ(text, "abc");
  param.formatValue(0.0, false, std::span<char>{});
}

/// True if the program now runs in a locale that writes a comma before the decimals.
bool enterCommaLocale() {
  for (const char* name : {"de_DE.UTF-8", "de_DE", "fr_FR.UTF-8", "ru_RU.UTF-8"})
    if (std::setlocale(LC_ALL, name) && *std::localeconv()->decimal_point == ',') return true;
  return false;
}

TEST(IParamText, NumbersKeepTheirPointInEveryLocale) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  if (!enterCommaLocale()) GTEST_SKIP() << "no locale with a decimal comma is installed";
  IParam param;
  param.initDouble({"a"}, 0.0, {0.0, 10.0, 0.01});
  const std::string text = shown(param, 1.5);
  std::setlocale(LC_ALL, before.c_str());
  EXPECT_EQ(text, "1.50");
}

}  // namespace
}  // namespace orvantesco
