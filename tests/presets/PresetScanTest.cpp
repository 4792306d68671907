#include "presets/PresetScan.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <set>

#include "support/OrdinaryUser.h"
#include "support/PresetTree.h"

namespace orvantesco {
namespace {

using Paths = std::vector<std::string>;

Paths pathsOf(const std::vector<PresetEntry>& entries) {
  Paths paths;
  for (const PresetEntry& entry : entries) paths.push_back(entry.relativePath);
  return paths;
}

PresetCatalogue scan(const PresetTree& tree) { return scanPresets(tree.root()); }

TEST(PresetScan, FoldersAndFilesAreListedByTheirPathsBelowTheRoot) {
  PresetTree tree;
  tree.addFile("/User Presets/Delays/Slap.txt");
  tree.addFile("/Factory Presets/Wide.txt");
  const PresetCatalogue found = scan(tree);
  EXPECT_TRUE(found.hasRoot);
  EXPECT_EQ(pathsOf(found.presetFolders),
            (Paths{"/Factory Presets/", "/User Presets/", "/User Presets/Delays/"}));
  EXPECT_EQ(found.presetFolders[2].name, "Delays");
  EXPECT_EQ(pathsOf(found.presetFiles),
            (Paths{"/Factory Presets/Wide", "/User Presets/Delays/Slap"}));
  EXPECT_EQ(found.presetFiles[1].name, "Slap");
  EXPECT_EQ(found.presetFiles[1].extension, ".txt");
  EXPECT_EQ(found.unopened, Paths{});
}

TEST(PresetScan, ANameEndsAtItsLastPoint) {
  PresetTree tree;
  for (const char* name : {"a.b.txt", "plain", ".hidden"}) {
    tree.addFile(std::string(kUserTree) + name);
  }
  const PresetCatalogue found = scan(tree);
  ASSERT_EQ(pathsOf(found.presetFiles),
            (Paths{"/User Presets/", "/User Presets/a.b", "/User Presets/plain"}));
  EXPECT_EQ(found.presetFiles[1].name, "a.b");
  EXPECT_EQ(found.presetFiles[2].extension, "");
}

TEST(PresetScan, FilesOfAnyExtensionAreListedButNotTheMarksOfADesktop) {
  PresetTree tree;
  for (const char* name : {".DS_Store", "DS_Store", "Voice.wav", "Notes.TXT"}) {
    tree.addFile(std::string(kUserTree) + name);
  }
  EXPECT_EQ(pathsOf(scan(tree).presetFiles),
            (Paths{"/User Presets/DS_Store", "/User Presets/Notes", "/User Presets/Voice"}));
}

TEST(PresetScan, WhatIsNoRegularFileAndWhatASaveLeftBehindIsNotListed) {
  PresetTree tree;
  tree.addFile("/User Presets/.Slap.txt.123-0.unfinished");
  tree.addLink("/User Presets/Nowhere.txt", "gone.txt");
  ASSERT_EQ(::mkfifo(tree.full("/User Presets/Pipe.txt").c_str(), 0600), 0);
  EXPECT_EQ(pathsOf(scan(tree).presetFiles), Paths{});
}

TEST(PresetScan, FoldersThatBeginWithAPointArePassedOver) {
  PresetTree tree;
  tree.addFile("/User Presets/.git/Slap.txt");
  tree.addFile("/User Presets/..odd/Slap.txt");
  EXPECT_EQ(pathsOf(scan(tree).presetFolders), Paths{"/User Presets/"});
}

TEST(PresetScan, TheOrderDoesNotRegardCaseAndDoesNotComeFromTheDisk) {
  PresetTree tree;
  for (const char* name : {"b", "C", "a_", "aB", "B", "A"}) {
    tree.addFile(kUserTree + std::string(name) + ".txt");
  }
  EXPECT_EQ(pathsOf(scan(tree).presetFiles),
            (Paths{"/User Presets/A", "/User Presets/aB", "/User Presets/a_", "/User Presets/B",
                   "/User Presets/b", "/User Presets/C"}));
}

TEST(PresetScan, AMissingRootIsToldByItsPath) {
  PresetTree tree;
  const PresetCatalogue found = scan(tree);
  EXPECT_FALSE(found.hasRoot);
  EXPECT_EQ(found.unopened, Paths{tree.root()});
  EXPECT_EQ(pathsOf(found.presetFolders), Paths{});
}

TEST(PresetScan, AFolderWhosePathIsTooLongIsToldAndTheOthersAreListed) {
  PresetTree tree;
  // "/User Presets" and a slash are 14 bytes: 245 more are 259, the longest that opens.
  const std::string longest(245, 'x');
  const std::string tooLong(246, 'y');
  tree.addFile(kUserTree + longest + "/" + std::string(250, 'n') + ".txt");
  tree.addFile(kUserTree + tooLong + "/Slap.txt");
  const PresetCatalogue found = scan(tree);
  EXPECT_EQ(pathsOf(found.presetFolders), (Paths{kUserTree, kUserTree + longest + "/"}));
  ASSERT_EQ(found.presetFiles.size(), 1u);
  EXPECT_EQ(found.presetFiles[0].name, std::string(250, 'n'));
  EXPECT_EQ(found.unopened, Paths{tree.full(kUserTree + tooLong)});
}

TEST(PresetScan, NamesAreAnyBytesUpToTheLongestNameOfADisk) {
  PresetTree tree;
  const std::string folder = "\xC3\xA4\xFF\xFE";
  std::string name(250, '\xFF');
  name.push_back('\n');
  tree.addFile(kUserTree + folder + "/" + name + ".txt");
  const PresetCatalogue found = scan(tree);
  ASSERT_EQ(found.presetOrder.size(), 1u);
  EXPECT_EQ(found.presetOrder[0].name, name);
  EXPECT_EQ(found.presetOrder[0].relativePath, kUserTree + folder + "/" + name);
}

TEST(PresetScan, LoopsOfLinksEndAndAFolderIsListedOnceWhereItIs) {
  PresetTree tree;
  tree.addFile("/User Presets/Real/Slap.txt");
  tree.addLink("/User Presets/A", "Real");
  tree.addLink("/User Presets/Real/Up", "..");
  tree.addLink("/User Presets/Root", tree.root());
  tree.addLink("/User Presets/Self", "Self");
  const PresetCatalogue found = scan(tree);
  EXPECT_EQ(pathsOf(found.presetFolders), (Paths{kUserTree, "/User Presets/Real/"}));
  EXPECT_EQ(pathsOf(found.presetFiles), Paths{"/User Presets/Real/Slap"});
}

TEST(PresetScan, ALinkOutOfTheTreeIsFollowedAndOfSeveralTheFirst) {
  PresetTree outside;
  outside.addFile("/Shelf/Deep/Slap.txt");
  PresetTree tree;
  tree.addFolder(kUserTree);
  tree.addLink("/User Presets/Two", outside.full("/Shelf"));
  tree.addLink("/User Presets/One", outside.full("/Shelf"));
  tree.addLink("/User Presets/File.txt", outside.full("/Shelf/Deep/Slap.txt"));
  EXPECT_EQ(pathsOf(scan(tree).presetFiles),
            (Paths{"/User Presets/File", "/User Presets/One/Deep/Slap"}));
}

TEST(PresetScan, AFolderThatMayNotBeReadIsToldAndTheOthersAreListed) {
  PresetTree tree;
  tree.addFile("/User Presets/Open/Slap.txt");
  tree.addFile("/User Presets/Shut/Slap.txt");
  tree.setRights("/User Presets/Shut", 0);
  const PresetCatalogue found = [&] {
    const OrdinaryUser user;
    return scan(tree);
  }();
  EXPECT_EQ(found.unopened, Paths{tree.full("/User Presets/Shut")});
  EXPECT_EQ(pathsOf(found.presetFolders), (Paths{kUserTree, "/User Presets/Open/"}));
  EXPECT_EQ(pathsOf(found.presetFiles), Paths{"/User Presets/Open/Slap"});
}

TEST(PresetScan, TheSecondTreeFollowsTheFirstAndWhatLiesInNeitherHasNoPlace) {
  PresetTree tree;
  tree.addFile("/Factory Presets/Echo/One.txt");
  tree.addFile("/User Presets/Zoo.txt");
  tree.addFile("/User Presets/Factory Presets/Two.txt");
  tree.addFile("/Other/User Presets/Three.txt");
  tree.addFile("/Loose.txt");
  EXPECT_EQ(pathsOf(scan(tree).presetOrder),
            (Paths{"/User Presets/Zoo", "/User Presets/Factory Presets/Two",
                   "/Factory Presets/Echo/One"}));
}

TEST(PresetScan, ALargeLibraryWithLoopsAndShutFoldersIsListedWhole) {
  constexpr int files = 20'000;
  PresetTree tree;
  for (int file = 0; file < files; ++file) {
    const std::string folder =
        kUserTree + std::to_string(file / 1000) + "/" + std::to_string(file / 50) + "/";
    if (file % 50 == 0) tree.addFolder(folder);
    std::ofstream(tree.full(folder + std::to_string(file) + ".txt"));
  }
  for (int loop = 0; loop < 20; ++loop) {
    tree.addLink(kUserTree + std::to_string(loop) + "/Up", tree.full("/User Presets"));
    tree.addLink(kUserTree + std::string("Side ") + std::to_string(loop), std::to_string(loop));
  }
  const std::string longest(251, 'n');
  tree.addFile(kUserTree + std::string("0/") + longest + ".txt");
  tree.setRights("/User Presets/19/399", 0);
  const PresetCatalogue found = [&] {
    const OrdinaryUser user;
    return scan(tree);
  }();
  // Fifty lie in the folder that is shut; one more has the longest name.
  EXPECT_EQ(found.presetFiles.size(), files - 50 + 1u);
  EXPECT_EQ(found.presetOrder.size(), found.presetFiles.size());
  EXPECT_EQ(found.presetFolders.size(), 1u + 20u + 400u - 1u);
  EXPECT_EQ(found.unopened, Paths{tree.full("/User Presets/19/399")});
  std::set<std::string> different;
  for (const PresetEntry& file : found.presetFiles) different.insert(file.relativePath);
  EXPECT_EQ(different.size(), found.presetFiles.size());
  EXPECT_EQ(different.count(kUserTree + std::string("0/") + longest), 1u);
  EXPECT_EQ(different.count("/User Presets/7/150/7512"), 1u);
}

}  // namespace
}  // namespace orvantesco
