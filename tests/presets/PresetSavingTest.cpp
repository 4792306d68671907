#include "presets/PresetSaving.h"

#include <gtest/gtest.h>

#include "support/PresetTree.h"

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

/// A library that is reached by a link, and one that has links in it.
class PresetSavingLinks : public ::testing::Test {
 protected:
  PresetSavingLinks() {
    tree.addFolder("/User Presets");
    tree.addFolder("/Factory Presets/Echo");
    std::filesystem::create_directory_symlink(tree.data(), other.file("link"));
  }
  PresetSavePlace placeOf(const std::string& path) const {
    return savePlaceOf(path, tree.folders());
  }

  PresetTree tree;
  FolderRig other;
  const PresetFolders linked = presetFoldersIn(other.file("link"));
};

TEST_F(PresetSavingLinks, AWayThroughALinkLeadsIntoTheTrees) {
  EXPECT_EQ(placeOf(linked.userPresetPath() + "/Slap.txt"), PresetSavePlace::userTree);
  EXPECT_EQ(placeOf(linked.factoryPresetPath() + "/Slap.txt"), PresetSavePlace::factoryTree);
  EXPECT_EQ(relativePresetPath(linked.userPresetPath() + "/New/Slap.txt", tree.folders()),
            "/User Presets/New/Slap.txt");
}

TEST_F(PresetSavingLinks, ALibraryBehindALinkIsKnownByItsRealPath) {
  const std::string path = tree.full("/User Presets/Slap.txt");
  EXPECT_EQ(savePlaceOf(path, linked), PresetSavePlace::userTree);
  EXPECT_EQ(relativePresetPath(path, linked), "/User Presets/Slap.txt");
}

TEST_F(PresetSavingLinks, NoLinkLeadsIntoTheShippedTree) {
  tree.addLink("/User Presets/Shipped", tree.full("/Factory Presets/Echo"));
  tree.addFile("/Factory Presets/Echo/Far.txt");
  tree.addLink("/User Presets/Far.txt", tree.full("/Factory Presets/Echo/Far.txt"));
  EXPECT_EQ(placeOf(tree.full("/User Presets/Shipped/Slap.txt")), PresetSavePlace::factoryTree);
  EXPECT_EQ(placeOf(tree.full("/User Presets/Far.txt")), PresetSavePlace::factoryTree);
}

TEST_F(PresetSavingLinks, AFolderThatIsLinkedIntoTheUsersTreeBelongsToIt) {
  tree.addLink("/User Presets/Disk", other.path());
  const std::string path = tree.full("/User Presets/Disk/Slap.txt");
  EXPECT_EQ(placeOf(path), PresetSavePlace::userTree);
  EXPECT_EQ(relativePresetPath(path, tree.folders()), "/User Presets/Disk/Slap.txt");
  EXPECT_EQ(placeOf(other.file("Slap.txt")), PresetSavePlace::elsewhere);
}

TEST_F(PresetSavingLinks, ATextThatLeavesALinkIsTakenForWhereItLeads) {
  std::filesystem::create_directory(other.file("deep"));
  tree.addLink("/User Presets/Disk", other.file("deep"));
  EXPECT_EQ(placeOf(tree.full("/User Presets/Disk/../Slap.txt")), PresetSavePlace::elsewhere);
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
