#include "presets/PresetSaving.h"

#include <gtest/gtest.h>

namespace orvantesco {
namespace {

const PresetFolders folders = presetFoldersIn("/data");
const std::string root = "/data/qlm-works/Orvantesco/Presets";

PresetSavePlace placeOf(const std::string& path) { return savePlaceOf(path, folders); }

TEST(PresetSaving, TheUsersTreeIsKnownFromTheOthers) {
  EXPECT_EQ(placeOf(root + "/User Presets/Slap.txt"), PresetSavePlace::userTree);
  EXPECT_EQ(placeOf(root + "/User Presets/Deep/Slap.txt"), PresetSavePlace::userTree);
  EXPECT_EQ(placeOf(root + "/Slap.txt"), PresetSavePlace::elsewhere);
  EXPECT_EQ(placeOf("/data/Slap.txt"), PresetSavePlace::elsewhere);
  EXPECT_EQ(placeOf(root + "/User Presets Old/Slap.txt"), PresetSavePlace::elsewhere);
  EXPECT_EQ(placeOf(""), PresetSavePlace::elsewhere);
}

TEST(PresetSaving, TheShippedTreeIsKnownInAnyLetterCase) {
  for (const char* tree : {"Factory Presets", "factory presets", "FACTORY PRESETS"}) {
    EXPECT_EQ(placeOf(root + "/" + tree + "/Slap.txt"), PresetSavePlace::factoryTree) << tree;
  }
  EXPECT_EQ(placeOf("/DATA/QLM-WORKS/orvantesco/PRESETS/Factory Presets/Echo/Slap.txt"),
            PresetSavePlace::factoryTree);
}

TEST(PresetSaving, NoDetourLeadsIntoTheShippedTree) {
  EXPECT_EQ(placeOf(root + "/User Presets/../Factory Presets/Slap.txt"),
            PresetSavePlace::factoryTree);
  EXPECT_EQ(placeOf(root + "//./Factory Presets//Slap.txt"), PresetSavePlace::factoryTree);
  EXPECT_EQ(placeOf(root + "/Factory Presets/../User Presets/Slap.txt"), PresetSavePlace::userTree);
}

TEST(PresetSaving, APathBelowTheRootKeepsItsSpelling) {
  EXPECT_EQ(relativePresetPath(root + "/User Presets/Deep/Slap.txt", folders),
            "/User Presets/Deep/Slap.txt");
  EXPECT_EQ(relativePresetPath("/elsewhere/Slap.txt", folders), "");
  EXPECT_EQ(relativePresetPath(root, folders), "");
}

TEST(PresetSaving, AnExtensionIsWhatFollowsTheLastPointOfTheName) {
  EXPECT_EQ(withoutExtension("/x/a.b.txt"), "/x/a.b");
  EXPECT_EQ(withoutExtension("/x.y/a"), "/x.y/a");
  EXPECT_EQ(withoutExtension("a.txt"), "a");
}

}  // namespace
}  // namespace orvantesco
