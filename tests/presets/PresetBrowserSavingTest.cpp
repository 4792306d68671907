// What becomes of a preset that a person saves.

#include <gtest/gtest.h>

#include "presets/BrowserRig.h"
#include "support/OrdinaryUser.h"

namespace orvantesco {
namespace {

using PresetBrowserSaving = PresetBrowserTest;

TEST_F(PresetBrowserSaving, ASavedPresetIsShownAndSelected) {
  Instance one(library, tree);
  EXPECT_EQ(one.saveAs(tree.full("/User Presets/Echo/a.b.txt")),
            (Texts{"write", "show /User Presets/Echo/a.b.txt"}));
  EXPECT_EQ(tree.content("/User Presets/Echo/a.b.txt"), "new");
  EXPECT_EQ(one.browser.menu().selectedPath(), "/User Presets/Echo/a.b");
  EXPECT_EQ(one.browser.selection().folderPath, "/User Presets/Echo/");
  EXPECT_EQ(one.prompts.releases, 1);
  EXPECT_EQ(one.prompts.question.name, "New Preset");
  EXPECT_EQ(one.prompts.question.folder, tree.folders().userPresetPath());
  EXPECT_EQ(one.prompts.question.extension, "txt");
}

TEST_F(PresetBrowserSaving,
       OtherInstancesSeeASavedPresetAtTheirNextActionAndItsOwnDoesNotScanAgain) {
  Instance one(library, tree);
  Instance other(library, tree);
  const int before = library.presetLibraryGeneration();
  one.saveAs(tree.full("/User Presets/Aha.txt"));
  EXPECT_EQ(library.presetLibraryGeneration(), before + 1);
  EXPECT_EQ(other.step(true), loaded("/User Presets/Aha.txt"));
  const auto last = library.catalogue();
  one.step(true);
  EXPECT_EQ(library.catalogue(), last) << "no scan since that of the other instance";
}

TEST_F(PresetBrowserSaving, NothingIsSavedIntoTheShippedTree) {
  Instance one(library, tree);
  EXPECT_EQ(one.saveAs(tree.full("/factory PRESETS/Last.txt")), Texts{"message 6"});
  EXPECT_EQ(one.saveAs(tree.full("/Factory Presets/Last.txt")), Texts{"message 6"});
  EXPECT_EQ(tree.content("/Factory Presets/Last.txt"), "old");
  EXPECT_EQ(one.prompts.releases, 2);
}

TEST_F(PresetBrowserSaving, WhatIsSavedElsewhereIsThereButInNoMenu) {
  Instance one(library, tree);
  const int before = library.presetLibraryGeneration();
  EXPECT_EQ(one.saveAs(tree.full("/Elsewhere.txt")), (Texts{"write", "message 3"}));
  EXPECT_EQ(tree.content("/Elsewhere.txt"), "new");
  EXPECT_EQ(library.presetLibraryGeneration(), before);
  EXPECT_EQ(one.prompts.releases, 1);
}

TEST_F(PresetBrowserSaving, ATreeOfAnotherSpellingIsNotTheUsers) {
  tree.addFolder("/user presets");
  Instance one(library, tree);
  EXPECT_EQ(one.saveAs(tree.full("/user presets/Slap.txt")),
            (Texts{"write", "show /user presets/Slap.txt", "message 3"}));
}

TEST_F(PresetBrowserSaving, ASaveThatFailsIsToldAndLeavesTheOldFile) {
  Instance one(library, tree);
  EXPECT_EQ(one.saveAs(tree.full("/User Presets/Gone/Slap.txt")), (Texts{"write", "message 5"}));
  tree.setRights("/User Presets", 0555);
  const OrdinaryUser user;
  EXPECT_EQ(one.saveAs(tree.full("/User Presets/Mine.txt")), (Texts{"write", "message 5"}));
  EXPECT_EQ(tree.content("/User Presets/Mine.txt"), "old");
  EXPECT_EQ(one.prompts.releases, 2);
}

TEST_F(PresetBrowserSaving, WhoTurnsAwayFromTheDialogSavesNothing) {
  Instance one(library, tree);
  one.browser.savePresetAs();
  EXPECT_EQ(one.target.asked(), Texts{});
  EXPECT_EQ(one.prompts.releases, 1);
}

}  // namespace
}  // namespace orvantesco
