#include "delay/StepRows.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace orvantesco {
namespace {

constexpr double kUntouched = 0.123;

StepRow untouchedRow() {
  StepRow row;
  row.fill(kUntouched);
  return row;
}

StepRow countingRow() {
  StepRow row;
  for (std::size_t i = 0; i < row.size(); ++i) row[i] = static_cast<double>(i) / 16.0;
  return row;
}

TEST(StepPatterns, FollowTheirFormulasOverTheUsedStepsAndLeaveTheOthers) {
  RandomDraw draw(1);
  for (const int count : {2, 5, 16}) {
    const double last = count - 1;
    for (int p = 0; p < static_cast<int>(StepPattern::Randomize); ++p) {
      StepRow row = untouchedRow();
      applyStepPattern(row, static_cast<StepPattern>(p), {count, 0}, draw);
      for (int i = 0; i < 16; ++i) {
        const double formulas[] = {0.0,
                                   1.0,
                                   i / last,
                                   (i / last) * (i / last),
                                   1.0 - std::abs(2.0 * i - last) / last,
                                   std::sin(std::numbers::pi * i / last),
                                   0.5};
        const double expected = i < count ? formulas[p] : kUntouched;
        EXPECT_NEAR(row[static_cast<std::size_t>(i)], expected, 1e-12) << p << " step " << i;
      }
    }
  }
}

TEST(StepPatterns, ARowOfOneStepTakesAFiniteValue) {
  RandomDraw draw(1);
  for (int p = 0; p <= static_cast<int>(StepPattern::Randomize); ++p) {
    StepRow row = untouchedRow();
    applyStepPattern(row, static_cast<StepPattern>(p), {1, 0}, draw);
    EXPECT_GE(row[0], 0.0);
    EXPECT_LE(row[0], 1.0);
  }
}

TEST(StepPatterns, RandomizeDrawsAllSixteenSteps) {
  RandomDraw draw(3), same(3);
  StepRow row = untouchedRow();
  applyStepPattern(row, StepPattern::Randomize, {4, 0}, draw);
  for (const double step : row) EXPECT_EQ(step, same.next() / 32767.0);
}

TEST(StepPatterns, SnapAllSixteenStepsToTheLanesGrid) {
  RandomDraw draw(1);
  StepRow row = countingRow();
  applyStepPattern(row, StepPattern::Ramp, {5, 4}, draw);
  // floor(5 · i/4) / 4, held at the top; the untouched steps are snapped too.
  const double expected[] = {0.0, 0.25, 0.5, 0.75, 1.0};
  for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(row[i], expected[i]);
  for (std::size_t i = 5; i < 16; ++i) {
    EXPECT_EQ(row[i], std::floor(5.0 * static_cast<double>(i) / 16.0) / 4.0);
  }
}

TEST(StepEdits, ReverseAndInvertTheUsedSteps) {
  StepRow clipboard{};
  StepRow row = countingRow();
  editStepRow(row, StepEdit::Reverse, {4, 0}, clipboard);
  EXPECT_EQ(row[0], 3.0 / 16);
  EXPECT_EQ(row[3], 0.0);
  EXPECT_EQ(row[4], 4.0 / 16);
  editStepRow(row, StepEdit::Invert, {4, 0}, clipboard);
  EXPECT_EQ(row[0], 1.0 - 3.0 / 16);
  EXPECT_EQ(row[4], 4.0 / 16);
}

TEST(StepEdits, RotateLeftAndRightAreInverse) {
  StepRow clipboard{};
  StepRow row = countingRow();
  editStepRow(row, StepEdit::RotateLeft, {5, 0}, clipboard);
  EXPECT_EQ(row[0], 1.0 / 16);
  EXPECT_EQ(row[4], 0.0);
  EXPECT_EQ(row[5], 5.0 / 16);
  editStepRow(row, StepEdit::RotateRight, {5, 0}, clipboard);
  EXPECT_EQ(row, countingRow());
}

TEST(StepEdits, ARowOfOneStepSurvivesEveryEdit) {
  for (int edit = 0; edit < 6; ++edit) {
    StepRow clipboard{};
    StepRow row = countingRow();
    editStepRow(row, static_cast<StepEdit>(edit), {1, 0}, clipboard);
    EXPECT_EQ(row[15], edit == 3 ? 0.0 : 15.0 / 16);
  }
}

TEST(StepEdits, CopyAndPasteCarryAllSixteenBetweenRows) {
  StepRow clipboard{};
  StepRow row = countingRow();
  editStepRow(row, StepEdit::Copy, {3, 0}, clipboard);
  StepRow other = untouchedRow();
  editStepRow(other, StepEdit::Paste, {3, 0}, clipboard);
  EXPECT_EQ(other, countingRow());
}

}  // namespace
}  // namespace orvantesco
