#include "delay/TapPatterns.h"

#include <gtest/gtest.h>

namespace orvantesco {
namespace {

TEST(TapPatterns, GiveTheMasksOfTheMenu) {
  struct Row {
    TapPattern pattern;
    int left, right;
  };
  const Row rows[] = {
      {TapPattern::AllOn, 0xFFFF, 0xFFFF},
      {TapPattern::AllOff, 0, 0},
      {TapPattern::Left, 0xFFFF, 0},
      {TapPattern::Right, 0, 0xFFFF},
      {TapPattern::PingPong, 0x5555, 0xAAAA},
      {TapPattern::Syncoped, 0xCCCC, 0xCCCC},
      {TapPattern::SyncopedStereo, 0x8888, 0x4444},
      {TapPattern::TwoOne, 0x0888, 0x2082},
      {TapPattern::Bouncer, 0x31CD, 0xCE32},
      {TapPattern::Rhythm1, 0x1A95, 0xC2A5},
      {TapPattern::Rhythm2, 0xD092, 0xB212},
  };
  RandomDraw draw(1);
  for (const Row& row : rows) {
    const TapMasks masks = tapPatternMasks(row.pattern, draw);
    EXPECT_EQ(masks.left, row.left);
    EXPECT_EQ(masks.right, row.right);
  }
}

TEST(TapPatterns, DrawEachSideAnewAndNeverBeyondSixteenBits) {
  RandomDraw draw(7), same(7);
  const TapMasks masks = tapPatternMasks(TapPattern::Randomize, draw);
  const int first = static_cast<int>(same.next() * 65536.0 / 32767);
  const int second = static_cast<int>(same.next() * 65536.0 / 32767);
  EXPECT_EQ(masks.left, first & 0xFFFF);
  EXPECT_EQ(masks.right, second & 0xFFFF);
  EXPECT_NE(masks.left, masks.right);
}

TEST(TapPatterns, TheHighestDrawReadsAsNoTapAtAll) {
  // 32767 · 65536 / 32767 has seventeen bits; find a draw that gives it.
  RandomDraw draw(1);
  for (int i = 0; i < 1000000; ++i) {
    const RandomDraw before = draw;
    if (draw.next() != RandomDraw::kMax) continue;
    RandomDraw again = before;
    EXPECT_EQ(tapPatternMasks(TapPattern::Randomize, again).left, 0);
    return;
  }
  FAIL() << "the generator never reaches its highest value";
}

}  // namespace
}  // namespace orvantesco
