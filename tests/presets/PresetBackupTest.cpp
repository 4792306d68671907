#include "presets/PresetBackup.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/FolderRig.h"

namespace orvantesco {
namespace {

TEST(PresetBackup, FilesOfTheLibraryGoBelowTheBackups) {
  const FolderRig folder;
  const std::string root = folder.file("Presets");
  folder.write("Presets/User Presets/Echo/a.txt", "old");
  EXPECT_EQ(keepPresetBackup(root + "/User Presets/Echo/a.txt", root), "");
  EXPECT_EQ(folder.read("Preset Backups/User Presets/Echo/a.txt"), "old");
  EXPECT_EQ(folder.read("Presets/User Presets/Echo/a.txt"), "old");
}

/// A copy beside such a file would show in the menu, which follows links as well.
TEST(PresetBackup, WhatIsLinkedIntoTheLibraryBelongsToIt) {
  const FolderRig folder;
  const std::string root = folder.file("Presets");
  folder.write("shelf/a.txt", "on the shelf");
  folder.write("single.txt", "alone");
  folder.write("Presets/User Presets/Echo/b.txt", "other");
  std::filesystem::create_directory_symlink(folder.file("shelf"), root + "/User Presets/Mine");
  std::filesystem::create_symlink(folder.file("single.txt"), root + "/User Presets/One.txt");
  EXPECT_EQ(keepPresetBackup(root + "/User Presets/Mine/a.txt", root), "");
  EXPECT_EQ(keepPresetBackup(root + "/User Presets/One.txt", root), "");
  EXPECT_EQ(folder.read("Preset Backups/User Presets/Mine/a.txt"), "on the shelf");
  EXPECT_EQ(folder.read("Preset Backups/User Presets/One.txt"), "alone");
  EXPECT_FALSE(std::filesystem::exists(folder.file("shelf/a.txt.bak")));
}

TEST(PresetBackup, OtherFilesAreKeptBesideThemselves) {
  const FolderRig folder;
  folder.write("Presets2/a.txt", "old");
  EXPECT_EQ(keepPresetBackup(folder.file("Presets2/a.txt"), folder.file("Presets")), "");
  EXPECT_EQ(folder.read("Presets2/a.txt.bak"), "old");
  EXPECT_EQ(presetBackupPath("/x/a.txt", ""), "/x/a.txt.bak");
}

TEST(PresetBackup, WhatWasKeptBeforeStays) {
  const FolderRig folder;
  const std::string path = folder.write("a.txt", "first");
  EXPECT_EQ(keepPresetBackup(path, ""), "");
  EXPECT_EQ(keepPresetBackup(path, ""), "") << "an equal copy is not kept twice";
  folder.write("a.txt", "second");
  EXPECT_EQ(keepPresetBackup(path, ""), "");
  EXPECT_EQ(folder.read("a.txt.bak"), "first");
  EXPECT_EQ(folder.read("a.txt.bak.2"), "second");
  EXPECT_EQ(folder.files().size(), 3u);
}

TEST(PresetBackup, AFileThatIsGoneCannotBeKept) {
  EXPECT_EQ(keepPresetBackup("no such folder/a.txt", ""), "No such file or directory");
}

}  // namespace
}  // namespace orvantesco
