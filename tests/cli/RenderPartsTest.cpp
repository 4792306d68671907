#include <gtest/gtest.h>

#include <limits>

#include "cli/BlockLengths.h"
#include "cli/Failing.h"
#include "cli/OptionValue.h"
#include "cli/OutputLevels.h"
#include "cli/TailWatch.h"
#include "cli/Text.h"

namespace orvantesco::cli {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

TEST(BlockLengths, AreAlwaysTheSameOrDrawnAnewFromOneTo4096) {
  BlockLengths fixed({100, std::nullopt});
  EXPECT_EQ(fixed.next(), 100);
  EXPECT_EQ(fixed.next(), 100);
  BlockLengths random({512, 7});
  BlockLengths again({512, 7});
  BlockLengths other({512, 8});
  std::vector<int> lengths, lengthsAgain, otherLengths;
  for (int i = 0; i < 20000; ++i) {
    lengths.push_back(random.next());
    lengthsAgain.push_back(again.next());
    otherLengths.push_back(other.next());
  }
  EXPECT_EQ(lengths, lengthsAgain);
  EXPECT_NE(lengths, otherLengths);
  EXPECT_EQ(*std::min_element(lengths.begin(), lengths.end()), 1);
  EXPECT_EQ(*std::max_element(lengths.begin(), lengths.end()), random.longest());
}

TEST(TailWatch, CountsFramesInWhichBothSidesStayBelowMinus90Decibels) {
  const double below = std::pow(10.0, -90.01 / 20.0);
  const double above = std::pow(10.0, -89.99 / 20.0);
  TailWatch watch;
  watch.take(below, -below);
  watch.take(0.0, 0.0);
  EXPECT_EQ(watch.quietFrames(), 2);
  watch.take(0.0, -above);
  EXPECT_EQ(watch.quietFrames(), 0);
  watch.take(below, 0.0);
  EXPECT_EQ(watch.quietFrames(), 1);
  watch.take(nan, 0.0);
  EXPECT_EQ(watch.quietFrames(), 0);
}

TEST(OutputLevels, HoldThePeakOfEachSideAndCountSamplesThatAreNotFinite) {
  OutputLevels levels;
  levels.take(0.5, -0.75);
  levels.take(-0.25, 0.5);
  levels.take(nan, -std::numeric_limits<double>::infinity());
  EXPECT_EQ(levels.frames, 3);
  EXPECT_EQ(levels.peak[0], 0.5);
  EXPECT_EQ(levels.peak[1], 0.75);
  EXPECT_EQ(levels.nonFinite, 2);
}

TEST(OptionValue, TakesNumbersInTheirRangeAlone) {
  constexpr ExpectedNumber range{"--some", 1.0, 10.0, "1 to 10"};
  EXPECT_EQ(numberFor(range, "2.5"), 2.5);
  EXPECT_EQ(numberFor(range, "1e1"), 10.0);
  EXPECT_EQ(wholeFor(range, "7"), 7);
  for (const char* text :
       {"", "x", "0.999", "10.001", "2,5", "nan", "inf", "0x5", "5 6", "1e999"}) {
    const std::string why = failureOf(ExitCode::badCall, [&] { numberFor(range, text); });
    EXPECT_NE(why.find("--some"), std::string::npos);
    EXPECT_NE(why.find("1 to 10"), std::string::npos);
  }
  failureOf(ExitCode::badCall, [&] { wholeFor(range, "2.5"); });
}

TEST(Text, SplitsAtEverySeparator) {
  EXPECT_EQ(split("a,,b", ','), (std::vector<std::string_view>{"a", "", "b"}));
  EXPECT_EQ(split("", ','), std::vector<std::string_view>{""});
  EXPECT_EQ(split(",", ','), (std::vector<std::string_view>{"", ""}));
}

TEST(Text, BecomesOneLine) { EXPECT_EQ(oneLine(" two\r\nlines \n"), "two  lines"); }

}  // namespace
}  // namespace orvantesco::cli
