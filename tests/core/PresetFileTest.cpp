// Preset files that an effect reads, writes and brings up to date.

#include <gtest/gtest.h>

#include <random>
#include <sstream>

#include "core/PresetLoadRig.h"
#include "support/StateBytes.h"

namespace orvantesco {
namespace {

using PresetFile = PresetLoadRig;

TEST_F(PresetFile, AnOldPresetIsRewrittenInPlaceAndItsOldFileKept) {
  const std::string old = fileOf(13, "LastPage 4 EParams:\nFX1FB 13\n");
  folder.write("Presets/User Presets/Mine/a.txt", old);
  ASSERT_TRUE(load("Mine/a.txt"));
  EXPECT_EQ(folder.read("Presets/User Presets/Mine/a.txt"), savedText());
  EXPECT_EQ(folder.read("Preset Backups/User Presets/Mine/a.txt"), old);
  EXPECT_EQ(folder.files().size(), 2u) << "no temporary file is left";
}

TEST_F(PresetFile, ACurrentPresetIsNotRewritten) {
  const std::string text = fileOf(14, "  EParams:\r\nFeedback1 25.000\n");
  ASSERT_TRUE(loadText(text));
  EXPECT_EQ(folder.read("Presets/User Presets/a.txt"), text);
  EXPECT_EQ(folder.files().size(), 1u);
}

TEST_F(PresetFile, AFileWhoseVersionCannotBeReadIsNotRewritten) {
  const std::string text = "Orvantesco V. 1 F PresetVersion: ? EParams: Feedback1 25";
  ASSERT_TRUE(loadText(text));
  EXPECT_EQ(value(kFeedback), 50.0);
  EXPECT_EQ(folder.read("Presets/User Presets/a.txt"), text);
}

TEST_F(PresetFile, WritesToANewNameAndOverAnOldOne) {
  rig.set(kFeedback, 25.0);
  const std::string path = folder.file("mine.txt");
  EXPECT_FALSE(rig.effect.writePresetFile(path, false)) << "false is success";
  EXPECT_EQ(folder.read("mine.txt"), savedText());
  rig.set(kFeedback, 30.0);
  EXPECT_FALSE(rig.effect.writePresetFile(path, false));
  EXPECT_EQ(folder.read("mine.txt"), savedText());
  EXPECT_EQ(folder.files(), (std::vector<std::string>{"mine.txt"}));
}

TEST_F(PresetFile, AnEmptyPathWritesNothingAndSucceeds) {
  EXPECT_FALSE(rig.effect.writePresetFile("", false));
  EXPECT_TRUE(folder.files().empty());
}

TEST_F(PresetFile, APathThatCannotBeWrittenFails) {
  EXPECT_TRUE(rig.effect.writePresetFile(folder.file("no folder/a.txt"), false));
  EXPECT_TRUE(rig.effect.writePresetFile(folder.path(), false));
}

/// The lines behind "EParams:".
std::vector<std::string> valueLines(const std::string& text) {
  std::istringstream stream(text.substr(text.find("EParams:\n") + 9));
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

TEST_F(PresetFile, OnlyWhatDiffersInSinglePrecisionIsListed) {
  EXPECT_TRUE(valueLines(savedText()).empty());
  rig.set(kFeedback, 50.0 + 1e-9);
  EXPECT_TRUE(valueLines(savedText()).empty());
  rig.set(kFeedback, 50.0 + 1e-4);
  EXPECT_EQ(valueLines(savedText()), (std::vector<std::string>{"Feedback1 50.0001"}));
}

TEST_F(PresetFile, AFileThatIsMissingOrForeignChangesNothingButTheLabel) {
  std::mt19937 draw(5);
  rig.effect.UnserializeState(randomState(draw).chunk(), 0);
  const std::string before = savedText();
  editor.clear();
  EXPECT_FALSE(load("missing.txt"));
  EXPECT_EQ(rig.effect.settings().presetName(), "NO FILE");
  EXPECT_FALSE(loadText("RIFF...."));
  EXPECT_EQ(rig.effect.settings().presetName(), "WRONG FILE");
  EXPECT_EQ(savedText(), before);
  EXPECT_EQ(editor.lines(),
            (std::vector<std::string>{"showPresetName NO FILE", "showPresetName WRONG FILE"}));
}

TEST_F(PresetFile, NameAndFolderAreShown) {
  folder.write("Presets/Factory Presets/Echo/Slap Back.old.txt", fileOf(14, "EParams:\n"));
  ASSERT_TRUE(rig.effect.readPresetFile("/Factory Presets/Echo/Slap Back.old.txt"));
  rig.effect.applyLoadedPreset();
  EXPECT_EQ(rig.effect.settings().presetName(), "Slap Back");
  EXPECT_EQ(rig.effect.settings().presetFolderLabel(), "F:Echo");
  EXPECT_TRUE(editor.saw("showPresetName Slap Back"));
  EXPECT_TRUE(editor.saw("showPresetFolder F:Echo"));
}

}  // namespace
}  // namespace orvantesco
