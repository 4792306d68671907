#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "presets/FileContent.h"
#include "presets/PresetBrowser.h"
#include "support/PresetTree.h"

namespace orvantesco {

using Texts = std::vector<std::string>;

/// Writes down what the library asks of it. What it is to load or has saved it selects.
class RecordingTarget : public PresetTarget {
 public:
  explicit RecordingTarget(const PresetTree& presets) : tree(presets) {}

  bool presetIsLoading() const override { return isLoading; }
  bool loadPresetFile(const std::string& path) override {
    events.push_back("load " + path);
    if (menu != nullptr) menu->selectFile(path);
    return std::filesystem::exists(tree.full(path));
  }
  bool writePresetFile(const std::string& path) override {
    events.push_back("write");
    return !writeFile(path, "new").empty();
  }
  bool showSavedPreset(const std::string& path) override {
    events.push_back("show " + path);
    return menu->selectFile(path);
  }
  void showMessage(PresetMessage message) override {
    events.push_back("message " + std::to_string(static_cast<int>(message)));
  }

  /// What was asked since the last call.
  Texts asked() { return std::exchange(events, {}); }

  bool isLoading = false;
  PresetMenuPort* menu = nullptr;

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
    target.menu = &browser;
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

/// A library of four presets.
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

inline Texts loaded(const std::string& path) { return {"load " + path}; }

}  // namespace orvantesco
