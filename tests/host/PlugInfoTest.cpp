#include "host/PlugInfo.h"

#include <gtest/gtest.h>

namespace orvantesco {
namespace {

TEST(FourCharacterId, PutsTheFirstCharacterInTheHighestByte) {
  EXPECT_EQ(fourCharacterId("OVsC"), 0x4F567343u);
  EXPECT_EQ(fourCharacterId("QLMw"), 0x514C4D77u);
  EXPECT_EQ(fourCharacterId(""), 0u);
}

TEST(LargestLayout, TakesTheMostInputsAndOutputsOfAnyLayout) {
  EXPECT_EQ(largestLayout("2-2 3-2").inputs, 3);
  EXPECT_EQ(largestLayout("2-2 3-2").outputs, 2);
  EXPECT_EQ(largestLayout("1-8").inputs, 1);
  EXPECT_EQ(largestLayout("1-8").outputs, 8);
}

TEST(LargestLayout, HasNoChannelsWhereTheListHasNone) {
  EXPECT_EQ(largestLayout("").inputs, 0);
  EXPECT_EQ(largestLayout("stereo").outputs, 0);
}

}  // namespace
}  // namespace orvantesco
