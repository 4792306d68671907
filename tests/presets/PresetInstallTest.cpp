#include "presets/PresetInstall.h"

#include <gtest/gtest.h>

#include "presets/FactoryPresets.h"
#include "presets/PresetScan.h"
#include "support/OrdinaryUser.h"
#include "support/PresetTree.h"

namespace orvantesco {
namespace {

using Texts = std::vector<std::string>;

int shipped() { return static_cast<int>(factoryPresets().size()); }

TEST(PresetInstall, MakesBothTreesAndWritesEveryShippedPreset) {
  PresetTree tree;
  const PresetInstallReport report = installPresets(tree.folders());
  EXPECT_EQ(report.written, shipped());
  EXPECT_EQ(report.kept, 0);
  EXPECT_EQ(report.faults, Texts{});
  EXPECT_TRUE(std::filesystem::is_directory(tree.folders().userPresetPath()));
  for (const FactoryPreset& preset : factoryPresets()) {
    EXPECT_EQ(tree.content(preset.relativePath()), preset.text) << preset.relativePath();
  }
  const PresetCatalogue found = scanPresets(tree.root());
  EXPECT_EQ(found.presetFiles.size(), factoryPresets().size()) << "and nothing else";
}

TEST(PresetInstall, NeverOverwritesAndBringsBackWhatIsMissing) {
  PresetTree tree;
  installPresets(tree.folders());
  const std::string changed = factoryPresets().front().relativePath();
  tree.addFile(changed, "mine");
  PresetInstallReport again = installPresets(tree.folders());
  EXPECT_EQ(again.written, 0);
  EXPECT_EQ(again.kept, shipped());
  EXPECT_EQ(tree.content(changed), "mine");
  std::filesystem::remove(tree.full(changed));
  again = installPresets(tree.folders());
  EXPECT_EQ(again.written, 1);
  EXPECT_EQ(tree.content(changed), factoryPresets().front().text);
}

TEST(PresetInstall, TellsEachFolderThatCannotBeMade) {
  PresetTree tree;
  tree.addFolder("");
  tree.addFile("/User Presets", "a file in the way");
  tree.setRights("", 0555);
  const OrdinaryUser user;
  const PresetInstallReport report = installPresets(tree.folders());
  EXPECT_EQ(report.written, 0);
  ASSERT_EQ(report.faults.size(), 2u);
  EXPECT_TRUE(report.faults[0].starts_with(tree.folders().userPresetPath() + ": "));
  EXPECT_EQ(report.faults[1], tree.folders().factoryPresetPath() + ": Permission denied");
}

TEST(PresetInstall, WithoutAFolderForDataNothingIsMade) {
  const PresetInstallReport report = installPresets(presetFoldersIn(""));
  EXPECT_EQ(report.written, 0);
  EXPECT_EQ(report.faults.size(), 1u);
}

}  // namespace
}  // namespace orvantesco
