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

TEST(StateChunk, GrowsInStepsOfItsGranularity) {
  StateChunk chunk(16);
  for (int i = 0; i < 1000; ++i) ASSERT_EQ(chunk.putDouble(i), (i + 1) * 8);
  double last = 0.0;
  EXPECT_EQ(chunk.getDouble(999 * 8, last), 8000);
  EXPECT_EQ(last, 999.0);
}

}  // namespace
}  // namespace orvantesco
