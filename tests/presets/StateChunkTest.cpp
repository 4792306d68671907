#include "presets/StateChunk.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace orvantesco {
namespace {

std::vector<int> bytesOf(const StateChunk& chunk) {
  return {chunk.data(), chunk.data() + chunk.size()};
}

TEST(StateChunk, WritesLittleEndianUnpaddedValues) {
  StateChunk chunk;
  EXPECT_EQ(chunk.putByte(7), 1);
  EXPECT_EQ(chunk.putInt32(0x10200), 5);
  EXPECT_EQ(chunk.putDouble(1.0), 13);
  EXPECT_EQ(chunk.putString("ab"), 19);
  EXPECT_EQ(bytesOf(chunk),
            (std::vector<int>{7, 0, 2, 1, 0, 0, 0, 0, 0, 0, 0, 0xF0, 0x3F, 2, 0, 0, 0, 'a', 'b'}));
}

TEST(StateChunk, ReadsBackWhatItWrote) {
  StateChunk chunk;
  chunk.putInt32(-5);
  chunk.putDouble(-0.1);
  chunk.putByte(200);
  chunk.putString("folder");
  std::int32_t number = 0;
  double value = 0.0;
  std::uint8_t byte = 0;
  std::string text;
  int position = chunk.getInt32(0, number);
  position = chunk.getDouble(position, value);
  position = chunk.getByte(position, byte);
  position = chunk.getString(position, text);
  EXPECT_EQ(position, chunk.size());
  EXPECT_EQ(number, -5);
  EXPECT_EQ(value, -0.1);
  EXPECT_EQ(byte, 200);
  EXPECT_EQ(text, "folder");
}

TEST(StateChunk, LeavesTheTargetAloneBehindItsEnd) {
  StateChunk chunk;
  chunk.putByte(1);
  chunk.putByte(2);
  std::int32_t number = 42;
  double value = 1.5;
  std::string text = "kept";
  EXPECT_EQ(chunk.getInt32(0, number), -1);
  EXPECT_EQ(chunk.getDouble(-1, value), -1);
  EXPECT_EQ(chunk.getString(2, text), -1);
  EXPECT_EQ(chunk.getInt32(std::numeric_limits<int>::max(), number), -1);
  EXPECT_EQ(number, 42);
  EXPECT_EQ(value, 1.5);
  EXPECT_EQ(text, "kept");
}

TEST(StateChunk, DoesNotClearATextByOneOfLengthZero) {
  StateChunk chunk;
  chunk.putString("");
  std::string text = "kept";
  EXPECT_EQ(chunk.getString(0, text), 4);
  EXPECT_EQ(text, "kept");
}

TEST(StateChunk, MovesBehindATextThatPassesTheEndAndThenFails) {
  StateChunk chunk;
  chunk.putInt32(100);
  chunk.putByte('x');
  std::string text = "kept";
  const int position = chunk.getString(0, text);
  std::uint8_t byte = 9;
  EXPECT_EQ(position, 104);
  EXPECT_EQ(chunk.getByte(position, byte), -1);
  EXPECT_EQ(text, "kept");
  EXPECT_EQ(byte, 9);
}

TEST(StateChunk, SurvivesLengthsThatNoBufferCanHave) {
  for (const std::int32_t length :
       {std::numeric_limits<std::int32_t>::max(), -1, std::numeric_limits<std::int32_t>::min()}) {
    StateChunk chunk;
    chunk.putInt32(length);
    std::string text = "kept";
    std::uint8_t byte = 9;
    const int position = chunk.getString(0, text);
    EXPECT_EQ(text, "kept");
    if (length != -1) {
      EXPECT_EQ(chunk.getByte(position, byte), -1);
    }
  }
}

/// Appends doubles and counts how often the memory of the chunk moves, the first piece included.
int movesOver(StateChunk& chunk, int doubles) {
  int moves = 0;
  for (int i = 0; i < doubles; ++i) {
    const auto* before = chunk.data();
    EXPECT_EQ(chunk.putDouble(i), (i + 1) * 8);
    if (chunk.data() != before) ++moves;
  }
  return moves;
}

TEST(StateChunk, GrowsInStepsOfItsGranularity) {
  StateChunk fine(16), usual, coarse(8000);
  EXPECT_EQ(movesOver(fine, 1000), 500) << "two doubles in each piece";
  EXPECT_EQ(movesOver(usual, 1000), 2) << "8000 bytes are two pieces of 4096";
  EXPECT_EQ(movesOver(coarse, 1000), 1);
}

TEST(StateChunk, KeepsWhatItHoldsThroughEveryGrowth) {
  for (const int granularity : {-5, 0, 1, 7, 16, 4096}) {
    StateChunk chunk(granularity);
    for (int i = 0; i < 700; ++i) ASSERT_EQ(chunk.putDouble(i), (i + 1) * 8) << granularity;
    for (int i = 0; i < 700; ++i) {
      double value = -1.0;
      ASSERT_EQ(chunk.getDouble(8 * i, value), 8 * (i + 1));
      ASSERT_EQ(value, i) << granularity;
    }
  }
}

TEST(StateChunk, DoesNotGrowBeyondWhatAHostCanCount) {
  StateChunk chunk;
  chunk.putByte(7);
  // The length is refused before a byte is read.
  EXPECT_EQ(chunk.putBytes("x", std::numeric_limits<int>::max()), 0);
  EXPECT_EQ(chunk.putString({"x", std::size_t{std::numeric_limits<int>::max()}}), 0);
  EXPECT_EQ(chunk.size(), 1) << "not even its length was written";
  EXPECT_EQ(chunk.putByte(8), 2);
}

TEST(StateChunk, ACountBelowZeroAddsNothing) {
  StateChunk chunk;
  chunk.putByte(7);
  EXPECT_EQ(chunk.putBytes("x", -3), 1);
  EXPECT_EQ(chunk.size(), 1);
}

}  // namespace
}  // namespace orvantesco
