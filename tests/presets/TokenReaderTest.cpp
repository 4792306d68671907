#include "presets/TokenReader.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <locale>
#include <random>
#include <sstream>

namespace orvantesco {
namespace {

using Words = std::vector<std::string>;

Words wordsOf(std::string_view text) {
  TokenReader reader(text);
  Words words;
  while (const auto word = reader.word()) words.emplace_back(*word);
  return words;
}

std::optional<float> numberOf(std::string_view text) { return TokenReader(text).number(); }

/// A number as the standard's own streams read it; nothing where the stream fails.
std::optional<float> streamedNumber(const std::string& text) {
  std::istringstream stream(text);
  stream.imbue(std::locale::classic());
  float number = 0.0f;
  return stream >> number ? std::optional(number) : std::nullopt;
}

/// The numbers and words of other countries, for as long as it lives.
class ForeignLocale {
 public:
  ForeignLocale() : before(std::locale::global(std::locale(std::locale::classic(), new Comma))) {
    for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "C.UTF-8"}) {
      if (std::setlocale(LC_ALL, name) != nullptr) break;
    }
  }
  ForeignLocale(const ForeignLocale&) = delete;
  ForeignLocale& operator=(const ForeignLocale&) = delete;
  ~ForeignLocale() {
    std::locale::global(before);
    std::setlocale(LC_ALL, "C");
  }

 private:
  struct Comma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };
  std::locale before;
};

TEST(TokenReader, AnyWhiteSpaceDelimitsAndNoOtherByteDoes) {
  EXPECT_EQ(wordsOf(" a\tb\vc\fd\r\ne "), (Words{"a", "b", "c", "d", "e"}));
  EXPECT_EQ(wordsOf(std::string_view("a\0b \xC2\xA0 \xFF", 8)),
            (Words{std::string("a\0b", 3), "\xC2\xA0", "\xFF"}));
  EXPECT_EQ(wordsOf(""), Words{});
  EXPECT_EQ(wordsOf(" \n "), Words{});
}

TEST(TokenReader, TellsTheLineOnWhichTheNextTokenBegins) {
  TokenReader reader("a\r\n\nb c\n");
  EXPECT_EQ(reader.line(), 1);
  reader.word();
  EXPECT_EQ(reader.line(), 3);
  reader.word();
  EXPECT_EQ(reader.line(), 3);
  reader.word();
  EXPECT_EQ(reader.line(), 4) << "the end of the text";
}

TEST(TokenReader, NumbersAreRoundedToSinglePrecisionAsByAStream) {
  std::mt19937 draw(3);
  for (int i = 0; i < 20000; ++i) {
    std::string text = draw() % 2 == 0 ? "-" : "";
    text += std::to_string(draw()) + "." + std::to_string(draw());
    if (draw() % 2 == 0) text += "e" + std::to_string(static_cast<int>(draw() % 70) - 35);
    EXPECT_EQ(numberOf(text), streamedNumber(text)) << text;
  }
}

TEST(TokenReader, NumbersTooSmallForAFloatAreZeroWithTheirSign) {
  for (const std::string text :
       {"1e-60", "1e-5000", "9.9e-99999999999999999999", "0.0e-5000", "123456e-400", "0e5000",
        "0e99999999999999999999", "1e-2147483648"}) {
    const auto plus = numberOf(text);
    const auto minus = numberOf("-" + text);
    ASSERT_TRUE(plus && minus) << text;
    EXPECT_EQ(*plus, 0.0f) << text;
    EXPECT_FALSE(std::signbit(*plus)) << text;
    EXPECT_EQ(*minus, 0.0f) << text;
    EXPECT_TRUE(std::signbit(*minus)) << text;
  }
  EXPECT_EQ(numberOf("1e-42"), streamedNumber("1e-42")) << "denormal, and no 0 yet";
  EXPECT_EQ(numberOf("0." + std::string(400000, '0') + "1"), 0.0f);
  EXPECT_EQ(numberOf("0." + std::string(6000, '0') + "1e6001"), 1.0f);
}

TEST(TokenReader, NumbersTooLargeForAFloatAreNoneAsForAStream) {
  for (const std::string text :
       {"1e39", "-1e39", "3.5e38", "1e5000", "-1e99999999999999999999", "0.001e5000"}) {
    EXPECT_EQ(numberOf(text), std::nullopt) << text;
    EXPECT_EQ(streamedNumber(text), std::nullopt) << text;
  }
  EXPECT_EQ(numberOf("1" + std::string(400000, '0')), std::nullopt);
  EXPECT_EQ(numberOf("1" + std::string(6000, '0') + "e-6000"), 1.0f);
  EXPECT_EQ(numberOf("3.4028234e38"), std::numeric_limits<float>::max());
}

TEST(TokenReader, ANumberThatIsTooLargeIsPassedOver) {
  TokenReader reader("1e99 99999999999 7");
  EXPECT_FALSE(reader.number());
  EXPECT_FALSE(reader.integer());
  EXPECT_EQ(reader.integer(), 7);
}

TEST(TokenReader, ANumberThatIsCutInItsExponentIsNone) {
  for (const std::string text : {"1e", "-2.5E", "1e-", "1e+", "1ex", "7e 5"}) {
    EXPECT_EQ(numberOf(text), std::nullopt) << text;
    EXPECT_EQ(streamedNumber(text), std::nullopt) << text;
  }
}

TEST(TokenReader, WhatIsNoNumberStaysToBeReadAsAWord) {
  for (const std::string text : {"abc", "-abc", "+", "-", ".", "-.x", "nan", "inf", "--1", "+-1"}) {
    TokenReader reader(text);
    EXPECT_FALSE(reader.number()) << text;
    EXPECT_FALSE(reader.integer()) << text;
    EXPECT_EQ(reader.word(), text);
  }
}

TEST(TokenReader, ANumberEndsWhereItsTextDoes) {
  TokenReader reader("+12.5x .5e1y -3.25");
  EXPECT_EQ(reader.number(), 12.5f);
  EXPECT_EQ(reader.word(), "x");
  EXPECT_EQ(reader.number(), 5.0f);
  EXPECT_EQ(reader.word(), "y");
  EXPECT_EQ(reader.integer(), -3);
  EXPECT_EQ(reader.word(), ".25");
}

TEST(TokenReader, IntegersReachToTheEndsOfTheirRange) {
  EXPECT_EQ(TokenReader("2147483647").integer(), std::numeric_limits<int>::max());
  EXPECT_EQ(TokenReader("-2147483648").integer(), std::numeric_limits<int>::min());
  EXPECT_FALSE(TokenReader("2147483648").integer());
  EXPECT_EQ(TokenReader("00012").integer(), 12) << "decimal, whatever stands in front";
}

TEST(TokenReader, NoLocaleMakesADifference) {
  const ForeignLocale abroad;
  EXPECT_EQ(numberOf("1234.5"), 1234.5f);
  EXPECT_EQ(numberOf("1,5"), 1.0f);
  EXPECT_EQ(TokenReader("1.234").integer(), 1);
}

}  // namespace
}  // namespace orvantesco
