// What is selected in the menu, by a host's state or by what is loaded.

#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <thread>

#include "presets/BrowserRig.h"

namespace orvantesco {
namespace {

using PresetBrowserSelection = PresetBrowserTest;

TEST_F(PresetBrowserSelection, AFolderWithoutAPresetStaysSelectedOverANewScan) {
  Instance one(library, tree);
  EXPECT_TRUE(one.browser.select({"/User Presets/Echo/", 99}));
  one.browser.buildPresetMenu();
  EXPECT_EQ(one.browser.selection().folderPath, "/User Presets/Echo/");
  EXPECT_EQ(one.browser.selection().itemIndex, -1);
}

TEST_F(PresetBrowserSelection, AHostsStateSelectsAPresetAndStepsGoOnFromIt) {
  Instance one(library, tree);
  EXPECT_FALSE(one.browser.select({"/User Presets/Gone/", 0}));
  EXPECT_TRUE(one.browser.select({"/User Presets/Echo/", 0}));
  EXPECT_EQ(one.browser.selection().folderPath, "/User Presets/Echo/");
  EXPECT_EQ(one.step(true), loaded("/Factory Presets/Last.txt"));
}

TEST_F(PresetBrowserSelection, ASelectionThatNamesNothingUnchecksThePreset) {
  Instance one(library, tree);
  one.step(true);
  EXPECT_TRUE(one.browser.select({}));
  EXPECT_EQ(one.browser.menu().selectedPath(), "");
  EXPECT_EQ(one.browser.selection().folderPath, "");
}

TEST_F(PresetBrowserSelection, ASelectionFromBeforeTheFirstScanIsMadeWithIt) {
  RecordingTarget target(tree);
  TellingPrompts prompts;
  PresetBrowser browser(library, target, prompts);
  target.menu = &browser;
  EXPECT_TRUE(browser.select({"/User Presets/Echo/", 0}));
  EXPECT_EQ(browser.selection().folderPath, "/User Presets/Echo/") << "and is not lost meanwhile";
  browser.buildPresetMenu();
  EXPECT_EQ(browser.menu().selectedPath(), "/User Presets/Echo/Slap");
  browser.stepPreset(true);
  browser.buildPresetMenu();
  EXPECT_EQ(browser.menu().selectedPath(), "/Factory Presets/Last") << "once only";
}

TEST_F(PresetBrowserSelection, ASelectionOfAFolderThatTheFirstScanDoesNotFindIsDropped) {
  RecordingTarget target(tree);
  TellingPrompts prompts;
  PresetBrowser browser(library, target, prompts);
  browser.select({"/User Presets/Gone/", 0});
  browser.buildPresetMenu();
  EXPECT_EQ(browser.selection().folderPath, "");
}

TEST_F(PresetBrowserSelection, ThePlaceOfTheSelectedPresetFollowsANewScan) {
  Instance one(library, tree);
  one.step(true);
  EXPECT_EQ(one.browser.selection().itemIndex, 1);
  tree.addFile("/User Presets/Aha.txt");
  one.browser.buildPresetMenu();
  EXPECT_EQ(one.browser.selection().itemIndex, 2);
}

TEST_F(PresetBrowserSelection, AStateThatComesBetweenChoiceAndLoadDoesNotChangeWhatIsLoaded) {
  Instance one(library, tree);
  std::atomic<bool> done{false};
  std::vector<std::thread> hosts;
  for (int i = 0; i < 4; ++i) {
    hosts.emplace_back([&] {
      while (!done) one.browser.select({});
    });
  }
  std::set<std::string> asked;
  for (int i = 0; i < 4000; ++i) {
    for (const std::string& event : one.step(true)) asked.insert(event);
  }
  done = true;
  for (std::thread& host : hosts) host.join();
  EXPECT_FALSE(asked.contains("load .txt"));
  EXPECT_TRUE(asked.contains("load /User Presets/Mine.txt"));
}

TEST_F(PresetBrowserSelection, NothingIsSelectedBeforeItsValuesAreThere) {
  Instance one(library, tree);
  one.step(true);
  one.target.menu = nullptr;
  EXPECT_EQ(one.step(true), loaded("/User Presets/Echo/Slap.txt"));
  one.prompts.place = PresetMenuPlace{0, 4};
  one.browser.choosePresetFromMenu();
  EXPECT_EQ(one.browser.menu().selectedPath(), "/User Presets/Mine");
}

}  // namespace
}  // namespace orvantesco
