#include "presets/PresetNames.h"

#include <gtest/gtest.h>

namespace orvantesco {
namespace {

TEST(PresetNames, ANameStandsBetweenTheLastSlashAndTheLastPoint) {
  EXPECT_EQ(presetNameOf("/data/User Presets/Slap.txt"), "Slap");
  EXPECT_EQ(presetNameOf("Slap.txt"), "Slap");
  EXPECT_EQ(presetNameOf("/a.b/Slap"), "Slap");
  EXPECT_EQ(presetNameOf("/x/.txt"), "");
  EXPECT_EQ(presetNameOf(""), "");
}

TEST(PresetNames, APointThatIsLeftCutsTheNameAgain) {
  EXPECT_EQ(presetNameOf("/x/a.b.txt"), "a");
  EXPECT_EQ(presetNameOf("/x/a.b.c.txt"), "a.b");
}

TEST(PresetNames, ANameHasThirtyEightCharactersAtMost) {
  const std::string forty = "abcdefghijklmnopqrstuvwxyz0123456789ABCD";
  EXPECT_EQ(presetNameOf("/x/" + forty + ".txt"), forty.substr(0, 38));
  EXPECT_EQ(presetNameOf("/x/" + forty + ".b.txt"), forty.substr(0, 38))
      << "a point behind the cut is gone with it";
  std::string umlauts;
  for (int i = 0; i < 40; ++i) umlauts += "\xC3\xA4";
  EXPECT_EQ(presetNameOf("/x/" + umlauts + ".txt"), umlauts.substr(0, 76));
}

TEST(PresetNames, AFolderLabelTellsTheTreeAndTheFolder) {
  EXPECT_EQ(presetFolderLabelOf("/Factory Presets/Echo/Slap.txt"), "F:Echo");
  EXPECT_EQ(presetFolderLabelOf("/User Presets/My/Own/Slap.txt"), "U:Own");
  EXPECT_EQ(presetFolderLabelOf("/User Presets/Slap.txt"), "U:User Presets");
  EXPECT_EQ(presetFolderLabelOf("/Factory Presets/Slap.txt"), "F:Factory Presets");
  EXPECT_EQ(presetFolderLabelOf("/factory presets/Slap.txt"), "U:factory presets");
  EXPECT_EQ(presetFolderLabelOf("Slap.txt"), "U:");
}

TEST(PresetNames, AFolderLabelHasThirtyCharactersAtMost) {
  const std::string label = presetFolderLabelOf("/User Presets/" + std::string(50, 'x') + "/a.txt");
  EXPECT_EQ(label, "U:" + std::string(28, 'x'));
}

TEST(PresetNames, BytesOfNoCharacterCountOneEach) {
  EXPECT_EQ(firstCharacters("\xFF\xFE\xC3", 2), "\xFF\xFE");
  EXPECT_EQ(firstCharacters("\xE2\x82\xAC\xE2\x82", 2), "\xE2\x82\xAC\xE2");
  EXPECT_EQ(firstCharacters("ab", 5), "ab");
}

}  // namespace
}  // namespace orvantesco
