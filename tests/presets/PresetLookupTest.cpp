#include "presets/PresetLookup.h"

#include <gtest/gtest.h>

#include "support/PresetTree.h"

namespace orvantesco {
namespace {

TEST(PresetLookup, TheUsersTreeComesBeforeTheShippedOneAndThatBeforeTheProgram) {
  PresetTree tree;
  const std::string name = "Basics/Default";
  auto found = findPreset(name, tree.folders());
  ASSERT_TRUE(found);
  EXPECT_EQ(found->path, "");
  ASSERT_NE(found->embedded, nullptr);
  EXPECT_EQ(found->embedded->name, "Default");
  EXPECT_EQ(found->relativePath, "/Factory Presets/Basics/Default.txt");
  for (const char* path :
       {"/Factory Presets/Basics/Default.txt", "/User Presets/Basics/Default.txt"}) {
    tree.addFile(path);
    found = findPreset(name, tree.folders());
    ASSERT_TRUE(found);
    EXPECT_EQ(found->path, tree.full(path));
    EXPECT_EQ(found->relativePath, path);
    EXPECT_EQ(found->embedded, nullptr);
  }
  found = findPreset("Factory Presets/Basics/Default.txt", tree.folders());
  ASSERT_TRUE(found);
  EXPECT_EQ(found->path, tree.full("/Factory Presets/Basics/Default.txt"));
}

TEST(PresetLookup, AFileComesBeforeTheLibrary) {
  PresetTree tree;
  tree.addFile("/User Presets/Deep/Er/Slap.txt");
  const std::string path = tree.full("/User Presets/Deep/Er/Slap.txt");
  const auto found = findPreset(path, tree.folders());
  ASSERT_TRUE(found);
  EXPECT_EQ(found->path, path);
  EXPECT_EQ(found->relativePath, "/User Presets/Deep/Er/Slap.txt");
  EXPECT_TRUE(findPreset("Deep/Er/Slap", tree.folders()));
  EXPECT_FALSE(findPreset("Deep/Er", tree.folders())) << "a folder is no preset";
}

TEST(PresetLookup, WhatNobodyHasIsNotFoundButTheClosestNamesAre) {
  PresetTree tree;
  tree.addFile("/User Presets/Echo/Slap.txt");
  EXPECT_FALSE(findPreset("Echo/Slab", tree.folders()));
  EXPECT_FALSE(findPreset("", tree.folders()));
  EXPECT_FALSE(findPreset("Echo/Slap", presetFoldersIn("")));
  EXPECT_EQ(presetsLike("echo/slab", tree.folders()).front(), "Echo/Slap");
  EXPECT_EQ(presetsLike("Basics/Defalt", presetFoldersIn("")).front(), "Basics/Default");
}

}  // namespace
}  // namespace orvantesco
