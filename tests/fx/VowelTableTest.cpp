#include "fx/VowelTable.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace orvantesco {
namespace {

std::vector<double> formantsAt(double position) {
  const Vowel vowel = vowelAt(position);
  return {vowel.formantHz, vowel.formantHz + kFormantCount};
}

using Formants = std::vector<double>;

TEST(VowelTable, everySetGlidesThroughItsThreeVowels) {
  const std::vector<std::vector<Formants>> expected{
      {{270, 2290, 3010}, {530, 1840, 2480}, {300, 870, 2240}},
      {{390, 1990, 2550}, {660, 1720, 2410}, {730, 1090, 2440}},
      {{520, 1190, 2390}, {570, 840, 2410}, {300, 870, 2240}},
      {{660, 1720, 2410}, {440, 1020, 2240}, {490, 1350, 1690}}};
  for (int set = 0; set < kVowelSetCount; ++set) {
    selectVowelSet(set);
    for (int row = 0; row < 3; ++row) {
      EXPECT_EQ(formantsAt(row * 0.5),
                expected[static_cast<size_t>(set)][static_cast<size_t>(row)]);
    }
  }
}

TEST(VowelTable, betweenTwoVowelsTheFormantsAreMixed) {
  selectVowelSet(0);
  const auto formants = formantsAt(0.125);
  EXPECT_DOUBLE_EQ(formants[0], 270.0 * 0.75 + 530.0 * 0.25);
  EXPECT_DOUBLE_EQ(formants[2], 3010.0 * 0.75 + 2480.0 * 0.25);
}

TEST(VowelTable, whatIsNoNumberIsTheFirstVowel) {
  selectVowelSet(1);
  EXPECT_EQ(formantsAt(std::numeric_limits<double>::quiet_NaN()), formantsAt(0.0));
  selectVowelSet(0);
}

TEST(VowelTable, positionsAndSetsStayWithinTheTable) {
  selectVowelSet(0);
  EXPECT_EQ(formantsAt(-3.0), formantsAt(0.0));
  EXPECT_EQ(formantsAt(7.0), formantsAt(1.0));
  selectVowelSet(99);
  EXPECT_EQ(formantsAt(0.0)[0], 660.0);
  selectVowelSet(-1);
  EXPECT_EQ(formantsAt(0.0)[0], 270.0);
}

}  // namespace
}  // namespace orvantesco
