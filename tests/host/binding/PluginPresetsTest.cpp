#include "host/binding/PluginPresets.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <set>
#include <stop_token>
#include <thread>

#include "params/ParamIndex.h"
#include "presets/FactoryPresets.h"
#include "presets/PresetInstall.h"
#include "support/EngineRig.h"
#include "support/PresetTree.h"

namespace orvantesco {
namespace {

constexpr const char* loud =
    "Orvantesco V. 1.2.0r14 PresetFile!\nPresetVersion: 14\n\nEParams:\nFeedback1 11\n";

struct PresetsRig {
  double feedback() { return rig.effect.GetParam(kFeedback)->value(); }

  PresetTree tree;
  PresetLibrary library{tree.folders()};
  PresetPrompts prompts;
  EngineRig rig;
  PluginPresets presets{rig.effect, library, prompts};
};

/// The files that the library lists.
std::set<std::string> pathsIn(PresetLibrary& library) {
  std::set<std::string> paths;
  const auto catalogue = library.catalogue();
  for (const PresetEntry& entry : catalogue->presetOrder) {
    paths.insert(entry.relativePath + entry.extension);
  }
  return paths;
}

std::set<std::string> shippedPaths() {
  std::set<std::string> paths;
  for (const FactoryPreset& preset : factoryPresets()) paths.insert(preset.relativePath());
  return paths;
}

TEST(PluginPresets, InstallsWhatIsMissingAndListsIt) {
  PresetsRig rig;
  const FactoryPreset& first = factoryPresets().front();
  rig.presets.start();
  rig.presets.browser();
  EXPECT_EQ(pathsIn(rig.library), shippedPaths());
  EXPECT_EQ(rig.tree.content(first.relativePath()), first.text);
}

/// A host that looks at a plug-in and drops it does not wait for a library to be written.
TEST(PluginPresets, EndsBetweenTwoFiles) {
  PresetTree tree;
  std::stop_source stopped;
  stopped.request_stop();
  const PresetInstallReport report = installPresets(tree.folders(), stopped.get_token());
  EXPECT_EQ(report.written, 0);
  EXPECT_TRUE(report.faults.empty());
}

TEST(PluginPresets, ListTheLibraryWhenTheMenuIsWantedWithoutAStart) {
  PresetsRig rig;
  EXPECT_EQ(pathsIn(rig.library), std::set<std::string>());
  rig.presets.browser();
  EXPECT_EQ(pathsIn(rig.library), shippedPaths());
}

TEST(PluginPresets, TouchesNoDiskBeforeItStarts) {
  PresetsRig rig;
  EXPECT_FALSE(std::filesystem::exists(rig.tree.root()));
}

TEST(PluginPresets, AppliesAFileByItsPath) {
  PresetsRig rig;
  rig.tree.addFile("/User Presets/Mine/Loud.txt", loud);
  EXPECT_EQ(rig.presets.apply(rig.tree.full("/User Presets/Mine/Loud.txt")), "");
  EXPECT_EQ(rig.feedback(), 11.0);
  EXPECT_EQ(rig.rig.effect.settings().presetName(), "Loud");
}

TEST(PluginPresets, AppliesAPresetOfTheLibraryByItsName) {
  PresetsRig rig;
  rig.tree.addFile("/User Presets/Mine/Loud.txt", loud);
  EXPECT_EQ(rig.presets.apply("Mine/Loud"), "");
  EXPECT_EQ(rig.feedback(), 11.0);
}

TEST(PluginPresets, AppliesEveryPresetThatTheProgramCarries) {
  PresetsRig rig;
  for (const FactoryPreset& preset : factoryPresets()) {
    const std::string name = std::string(preset.folder) + "/" + std::string(preset.name);
    EXPECT_EQ(rig.presets.apply(name), "");
    EXPECT_EQ(rig.rig.effect.settings().presetName(), preset.name);
  }
}

TEST(PluginPresets, SaysWhyThereIsNone) {
  PresetsRig rig;
  rig.tree.addFile("/User Presets/Letter.txt", "Dear all,\n");
  const double before = rig.feedback();
  EXPECT_NE(rig.presets.apply("Nowhere/Nothing").find("Nowhere/Nothing"), std::string::npos);
  EXPECT_NE(rig.presets.apply("Letter").find("Letter"), std::string::npos);
  EXPECT_NE(rig.presets.apply(""), "");
  EXPECT_EQ(rig.feedback(), before);
}

TEST(PluginPresets, ServesManyInstancesAtOnce) {
  PresetTree tree;
  PresetLibrary library{tree.folders()};
  PresetPrompts prompts;
  std::atomic<int> served{0};
  std::vector<std::thread> hosts;
  for (int i = 0; i < 4; ++i) {
    hosts.emplace_back([&] {
      EngineRig rig;
      PluginPresets presets(rig.effect, library, prompts);
      presets.start();
      const FactoryPreset& last = factoryPresets().back();
      const std::string name = std::string(last.folder) + "/" + std::string(last.name);
      if (presets.apply(name).empty()) ++served;
      presets.browser();
    });
  }
  for (std::thread& host : hosts) host.join();
  EXPECT_EQ(served, 4);
  EXPECT_EQ(tree.content(factoryPresets().back().relativePath()), factoryPresets().back().text);
}

}  // namespace
}  // namespace orvantesco
