#include "presets/PresetBrowser.h"

#include <gtest/gtest.h>

#include "presets/BrowserRig.h"

namespace orvantesco {
namespace {

TEST_F(PresetBrowserTest, StepsGoThroughBothTreesAndAround) {
  Instance one(library, tree);
  EXPECT_EQ(one.step(true), loaded("/User Presets/Mine.txt"));
  EXPECT_EQ(one.step(true), loaded("/User Presets/Echo/Slap.txt"));
  EXPECT_EQ(one.step(true), loaded("/Factory Presets/Last.txt"));
  EXPECT_EQ(one.step(true), loaded("/Factory Presets/Wide/Far.txt"));
  EXPECT_EQ(one.step(true), loaded("/User Presets/Mine.txt"));
  EXPECT_EQ(one.step(false), loaded("/Factory Presets/Wide/Far.txt"));
  EXPECT_EQ(one.browser.selection().folderPath, "/Factory Presets/Wide/");
  EXPECT_EQ(one.browser.selection().itemIndex, 0);
}

TEST_F(PresetBrowserTest, TheFirstStepBackLeadsToTheLastPreset) {
  Instance one(library, tree);
  EXPECT_EQ(one.step(false), loaded("/Factory Presets/Wide/Far.txt"));
}

TEST_F(PresetBrowserTest, NoStepIsTakenWhileAPresetLoadsOrThereIsNone) {
  Instance one(library, tree);
  one.target.isLoading = true;
  EXPECT_EQ(one.step(true), Texts{});
  PresetTree empty;
  empty.addFolder("/User Presets");
  PresetLibrary emptyLibrary(empty.folders());
  Instance other(emptyLibrary, empty);
  EXPECT_EQ(other.step(true), Texts{});
}

TEST_F(PresetBrowserTest, AChoiceLoadsItsFileAndIsChecked) {
  tree.addFile("/User Presets/a.b.txt");
  Instance one(library, tree);
  one.prompts.place = PresetMenuPlace{0, 1};
  one.browser.choosePresetFromMenu();
  EXPECT_EQ(one.prompts.shown.nodes()[0].menu.items[1].text, "a.b");
  EXPECT_EQ(one.target.asked(), loaded("/User Presets/a.b.txt"));
  EXPECT_TRUE(one.browser.menu().nodes()[0].menu.items[1].isChecked());
  EXPECT_EQ(one.browser.selection().itemIndex, 1);
}

TEST_F(PresetBrowserTest, EachFileIsLoadedByItsOwnName) {
  for (const char* path : {"/User Presets/Aha.aup", "/User Presets/Aha.txt", "/User Presets/Bare",
                           "/User Presets/Caps.TXT"}) {
    tree.addFile(path);
  }
  Instance one(library, tree);
  EXPECT_EQ(one.step(true), loaded("/User Presets/Aha.txt")) << "not hidden by a foreign file";
  EXPECT_EQ(one.step(true), loaded("/User Presets/Bare"));
  EXPECT_EQ(one.step(true), loaded("/User Presets/Caps.TXT"));
  one.prompts.place = PresetMenuPlace{0, 1};
  one.browser.choosePresetFromMenu();
  EXPECT_EQ(one.target.asked(), loaded("/User Presets/Aha.aup"));
  one.browser.buildPresetMenu();
  EXPECT_EQ(one.browser.selection().itemIndex, 1) << "and stays the one that is checked";
}

TEST_F(PresetBrowserTest, APresetAtTheTopOfTheShippedTreeLoadsFromThere) {
  Instance one(library, tree);
  one.prompts.place = PresetMenuPlace{0, 4};
  one.browser.choosePresetFromMenu();
  EXPECT_EQ(one.target.asked(), loaded("/Factory Presets/Last.txt"));
}

TEST_F(PresetBrowserTest, WhoTurnsAwayFromTheMenuKeepsWhatIsSelected) {
  Instance one(library, tree);
  one.step(true);
  one.prompts.place.reset();
  one.browser.choosePresetFromMenu();
  EXPECT_EQ(one.target.asked(), Texts{});
  EXPECT_EQ(one.browser.menu().selectedPath(), "/User Presets/Mine");
}

TEST_F(PresetBrowserTest, APresetThatIsGoneLeavesTheMenuAtTheNextAction) {
  Instance one(library, tree);
  one.step(true);
  std::filesystem::remove(tree.full("/User Presets/Echo/Slap.txt"));
  EXPECT_EQ(one.step(true), Texts{"load /User Presets/Echo/Slap.txt"});
  one.browser.choosePresetFromMenu();
  EXPECT_EQ(one.prompts.shown.fileOf("/User Presets/Echo/Slap"), "");
}

TEST_F(PresetBrowserTest, AnEmptyPathLoadsNothing) {
  Instance one(library, tree);
  one.browser.loadPresetByPath("");
  EXPECT_EQ(one.target.asked(), Texts{});
}

TEST_F(PresetBrowserTest, AFolderThatCannotBeReadIsToldToTheUserAndOnTheErrorStream) {
  PresetTree missing;
  PresetLibrary nowhere(missing.folders());
  RecordingTarget target(missing);
  TellingPrompts prompts;
  PresetBrowser browser(nowhere, target, prompts);
  ::testing::internal::CaptureStderr();
  browser.buildPresetMenu();
  EXPECT_EQ(::testing::internal::GetCapturedStderr(),
            "could not open directory: " + missing.root() + "\n");
  EXPECT_EQ(target.asked(), Texts{"message 4"});
  EXPECT_TRUE(browser.menu().nodes()[0].menu.items.empty());
}

TEST_F(PresetBrowserTest, TheFolderButtonOpensTheRoot) {
  Instance one(library, tree);
  one.browser.openPresetFolder();
  EXPECT_EQ(one.prompts.opened, tree.root());
}

}  // namespace
}  // namespace orvantesco
