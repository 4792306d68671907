#include "presets/PresetBrowser.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <set>
#include <thread>
#include <vector>

#include "presets/FileContent.h"
#include "support/OrdinaryUser.h"
#include "support/PresetTree.h"

namespace orvantesco {
namespace {

using Texts = std::vector<std::string>;

/// Writes down what the library asks of it. Reads a file where there is one.
class RecordingTarget : public PresetTarget {
 public:
  explicit RecordingTarget(const PresetTree& presets) : tree(presets) {}

  bool presetIsLoading() const override { return isLoading; }
  bool loadPresetFile(const std::string& path) override {
    events.push_back("load " + path);
    return std::filesystem::exists(tree.full(path));
  }
  bool writePresetFile(const std::string& path) override {
    events.push_back("write");
    return !writeFile(path, "new").empty();
  }
  void showPreset(const std::string& name, const std::string& folder) override {
    events.push_back("show " + name + " in " + folder);
  }
  void showMessage(PresetMessage message) override {
    events.push_back("message " + std::to_string(static_cast<int>(message)));
  }

  /// What was asked since the last call.
  Texts asked() { return std::exchange(events, {}); }

  bool isLoading = false;

 private:
  const PresetTree& tree;
  Texts events;
};

/// A person who answers as told.
class TellingPrompts : public PresetPrompts {
 public:
  std::optional<PresetMenuPlace> chooseFrom(const PresetMenu& menu) override {
    shown = menu;
    return place;
  }
  std::optional<std::string> askForFile(const PresetSaveQuestion& asked) override {
    question = asked;
    return file;
  }
  void openFolder(const std::string& path) override { opened = path; }
  void releaseSaveButton() override { ++releases; }

  std::optional<PresetMenuPlace> place;
  std::optional<std::string> file;
  PresetMenu shown;
  PresetSaveQuestion question;
  std::string opened;
  int releases = 0;
};

/// One instance of the effect beside others that share the library.
struct Instance {
  Instance(PresetLibrary& library, const PresetTree& tree)
      : target(tree), browser(library, target, prompts) {
    browser.buildPresetMenu();
    (void)target.asked();
  }
  Texts step(bool forward) {
    browser.stepPreset(forward);
    return target.asked();
  }
  Texts saveAs(const std::string& path) {
    prompts.file = path;
    browser.savePresetAs();
    return target.asked();
  }

  RecordingTarget target;
  TellingPrompts prompts;
  PresetBrowser browser;
};

class PresetBrowserTest : public ::testing::Test {
 protected:
  PresetBrowserTest() {
    for (const char* path : {"/User Presets/Mine.txt", "/User Presets/Echo/Slap.txt",
                             "/Factory Presets/Wide/Far.txt", "/Factory Presets/Last.txt"}) {
      tree.addFile(path, "old");
    }
  }

  PresetTree tree;
  PresetLibrary library{tree.folders()};
};

Texts loaded(const std::string& path) { return {"load " + path}; }

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

TEST_F(PresetBrowserTest, AStateThatComesBetweenChoiceAndLoadDoesNotChangeWhatIsLoaded) {
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

TEST_F(PresetBrowserTest, AFolderWithoutAPresetStaysSelectedOverANewScan) {
  Instance one(library, tree);
  EXPECT_TRUE(one.browser.select({"/User Presets/Echo/", 99}));
  one.browser.buildPresetMenu();
  EXPECT_EQ(one.browser.selection().folderPath, "/User Presets/Echo/");
  EXPECT_EQ(one.browser.selection().itemIndex, -1);
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
  EXPECT_FALSE(one.prompts.shown.selectPath("/User Presets/Echo/Slap"));
}

TEST_F(PresetBrowserTest, AnEmptyPathLoadsNothing) {
  Instance one(library, tree);
  one.browser.loadPresetByPath("");
  EXPECT_EQ(one.target.asked(), Texts{});
}

TEST_F(PresetBrowserTest, ASavedPresetIsShownAndSelected) {
  Instance one(library, tree);
  EXPECT_EQ(one.saveAs(tree.full("/User Presets/Echo/a.b.txt")),
            (Texts{"write", "show a.b in U:Echo"}));
  EXPECT_EQ(tree.content("/User Presets/Echo/a.b.txt"), "new");
  EXPECT_EQ(one.browser.menu().selectedPath(), "/User Presets/Echo/a.b");
  EXPECT_EQ(one.browser.selection().folderPath, "/User Presets/Echo/");
  EXPECT_EQ(one.prompts.releases, 1);
  EXPECT_EQ(one.prompts.question.name, "New Preset");
  EXPECT_EQ(one.prompts.question.folder, tree.folders().userPresetPath());
  EXPECT_EQ(one.prompts.question.extension, "txt");
}

TEST_F(PresetBrowserTest, OtherInstancesSeeASavedPresetAtTheirNextActionAndItsOwnDoesNotScanAgain) {
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

TEST_F(PresetBrowserTest, NothingIsSavedIntoTheShippedTree) {
  Instance one(library, tree);
  EXPECT_EQ(one.saveAs(tree.full("/factory PRESETS/Last.txt")), Texts{"message 6"});
  EXPECT_EQ(one.saveAs(tree.full("/Factory Presets/Last.txt")), Texts{"message 6"});
  EXPECT_EQ(tree.content("/Factory Presets/Last.txt"), "old");
  EXPECT_EQ(one.prompts.releases, 2);
}

TEST_F(PresetBrowserTest, WhatIsSavedElsewhereIsThereButInNoMenu) {
  Instance one(library, tree);
  const int before = library.presetLibraryGeneration();
  EXPECT_EQ(one.saveAs(tree.full("/Elsewhere.txt")), (Texts{"write", "message 3"}));
  EXPECT_EQ(tree.content("/Elsewhere.txt"), "new");
  EXPECT_EQ(library.presetLibraryGeneration(), before);
  EXPECT_EQ(one.prompts.releases, 1);
}

TEST_F(PresetBrowserTest, ATreeOfAnotherSpellingIsNotTheUsers) {
  tree.addFolder("/user presets");
  Instance one(library, tree);
  EXPECT_EQ(one.saveAs(tree.full("/user presets/Slap.txt")),
            (Texts{"write", "show Slap in U:user presets", "message 3"}));
}

TEST_F(PresetBrowserTest, ASaveThatFailsIsToldAndLeavesTheOldFile) {
  Instance one(library, tree);
  EXPECT_EQ(one.saveAs(tree.full("/User Presets/Gone/Slap.txt")), (Texts{"write", "message 5"}));
  tree.setRights("/User Presets", 0555);
  const OrdinaryUser user;
  EXPECT_EQ(one.saveAs(tree.full("/User Presets/Mine.txt")), (Texts{"write", "message 5"}));
  EXPECT_EQ(tree.content("/User Presets/Mine.txt"), "old");
  EXPECT_EQ(one.prompts.releases, 2);
}

TEST_F(PresetBrowserTest, WhoTurnsAwayFromTheDialogSavesNothing) {
  Instance one(library, tree);
  one.browser.savePresetAs();
  EXPECT_EQ(one.target.asked(), Texts{});
  EXPECT_EQ(one.prompts.releases, 1);
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

TEST_F(PresetBrowserTest, AHostsStateSelectsAPresetAndStepsGoOnFromIt) {
  Instance one(library, tree);
  EXPECT_FALSE(one.browser.select({"/User Presets/Gone/", 0}));
  EXPECT_TRUE(one.browser.select({"/User Presets/Echo/", 0}));
  EXPECT_EQ(one.browser.selection().folderPath, "/User Presets/Echo/");
  EXPECT_EQ(one.step(true), loaded("/Factory Presets/Last.txt"));
}

TEST_F(PresetBrowserTest, ASelectionThatNamesNothingUnchecksThePreset) {
  Instance one(library, tree);
  one.step(true);
  EXPECT_TRUE(one.browser.select({}));
  EXPECT_EQ(one.browser.menu().selectedPath(), "");
  EXPECT_EQ(one.browser.selection().folderPath, "");
}

TEST_F(PresetBrowserTest, ASelectionFromBeforeTheFirstScanIsMadeWithIt) {
  RecordingTarget target(tree);
  TellingPrompts prompts;
  PresetBrowser browser(library, target, prompts);
  EXPECT_TRUE(browser.select({"/User Presets/Echo/", 0}));
  EXPECT_EQ(browser.selection().folderPath, "/User Presets/Echo/") << "and is not lost meanwhile";
  browser.buildPresetMenu();
  EXPECT_EQ(browser.menu().selectedPath(), "/User Presets/Echo/Slap");
  browser.stepPreset(true);
  browser.buildPresetMenu();
  EXPECT_EQ(browser.menu().selectedPath(), "/Factory Presets/Last") << "once only";
}

TEST_F(PresetBrowserTest, ASelectionOfAFolderThatTheFirstScanDoesNotFindIsDropped) {
  RecordingTarget target(tree);
  TellingPrompts prompts;
  PresetBrowser browser(library, target, prompts);
  browser.select({"/User Presets/Gone/", 0});
  browser.buildPresetMenu();
  EXPECT_EQ(browser.selection().folderPath, "");
}

TEST_F(PresetBrowserTest, ThePlaceOfTheSelectedPresetFollowsANewScan) {
  Instance one(library, tree);
  one.step(true);
  EXPECT_EQ(one.browser.selection().itemIndex, 1);
  tree.addFile("/User Presets/Aha.txt");
  one.browser.buildPresetMenu();
  EXPECT_EQ(one.browser.selection().itemIndex, 2);
}

}  // namespace
}  // namespace orvantesco
