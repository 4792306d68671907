// `orvantesco preset install` and `orvantesco preset list` as whole programs.

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "cli/PresetListReport.h"
#include "cli/ProgramRun.h"
#include "presets/FactoryPresets.h"
#include "presets/PresetScan.h"
#include "support/PresetTree.h"

namespace orvantesco::cli {
namespace {

using Json = nlohmann::json;

/// The library of the user is a folder of the test.
class PresetLibraryCommandTest : public ::testing::Test {
 protected:
  PresetLibraryCommandTest() { ::setenv("XDG_DATA_HOME", tree.data().c_str(), 1); }
  ~PresetLibraryCommandTest() override { ::unsetenv("XDG_DATA_HOME"); }

  ProgramResult run(const std::vector<std::string>& arguments) const {
    std::vector<std::string> all{"preset"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return runProgramIn(tree.data(), all);
  }
  Json listed() const { return Json::parse(run({"list", "--json"}).out); }

  PresetTree tree;
  const std::string shipped = std::to_string(factoryPresets().size());
};

TEST_F(PresetLibraryCommandTest, InstallWritesWhatIsMissingAndSaysSo) {
  ProgramResult result = run({"install"});
  EXPECT_EQ(result.exitCode, 0) << result.err;
  EXPECT_TRUE(result.out.starts_with(tree.root() + ": " + shipped + " preset")) << result.out;
  EXPECT_TRUE(result.out.ends_with(" written, 0 presets there already\n")) << result.out;
  const FactoryPreset& first = factoryPresets().front();
  EXPECT_EQ(tree.content(first.relativePath()), first.text);
  tree.addFile(first.relativePath(), "mine");
  result = run({"install"});
  EXPECT_TRUE(result.out.starts_with(tree.root() + ": 0 presets written, " + shipped));
  EXPECT_EQ(tree.content(first.relativePath()), "mine");
}

TEST_F(PresetLibraryCommandTest, AnInstallThatFailsSaysWhereAndExitsWithOne) {
  tree.addFile("", "a file where the root belongs");
  const ProgramResult result = run({"install"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_NE(result.err.find(tree.folders().factoryPresetPath() + ": "), std::string::npos);
}

TEST_F(PresetLibraryCommandTest, AListHasFolderNameAndPathOfEveryPreset) {
  run({"install"});
  tree.addFile("/User Presets/Deep/a.b.txt");
  const Json document = listed();
  EXPECT_EQ(document["root"], tree.root());
  ASSERT_EQ(document["presets"].size(), factoryPresets().size() + 1);
  EXPECT_EQ(document["presets"][0], Json({{"folder", "User Presets/Deep"},
                                          {"name", "a.b"},
                                          {"path", tree.full("/User Presets/Deep/a.b.txt")}}));
  const FactoryPreset& first = factoryPresets().front();
  EXPECT_EQ(document["presets"][1]["folder"], "Factory Presets/" + std::string(first.folder));
  EXPECT_EQ(document["presets"][1]["path"], tree.full(first.relativePath()));
}

TEST_F(PresetLibraryCommandTest, WithoutFoldersTheListShowsWhatTheProgramCarries) {
  const ProgramResult result = run({"list", "--json"});
  EXPECT_EQ(result.exitCode, 0);
  const Json document = Json::parse(result.out);
  ASSERT_EQ(document["presets"].size(), factoryPresets().size());
  EXPECT_TRUE(document["presets"][0]["path"].is_null());
  EXPECT_NE(result.err.find("preset install"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(tree.root())) << "a list writes nothing";
}

TEST_F(PresetLibraryCommandTest, TheTableHasALineForEachPreset) {
  tree.addFile("/User Presets/Two\nLines.txt");
  const ProgramResult result = run({"list"});
  const std::string path = tree.full("/User Presets/Two Lines.txt");
  EXPECT_EQ(result.out.substr(0, result.out.find('\n')).find("User Presets/Two Lines  "), 0u);
  EXPECT_NE(result.out.find(path + "\n"), std::string::npos) << result.out;
  EXPECT_EQ(std::count(result.out.begin(), result.out.end(), '\n'),
            static_cast<int>(factoryPresets().size()) + 1);
}

TEST_F(PresetLibraryCommandTest, AFolderThatCannotBeReadFailsTheListWhichIsPrintedAllTheSame) {
  tree.addFile("/User Presets/Slap.txt");
  const std::string tooLong = kUserTree + std::string(250, 'x');
  tree.addFile(tooLong + "/Slap.txt");
  const ProgramResult result = run({"list", "--json"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_NE(result.err.find(tree.full(tooLong)), std::string::npos);
  EXPECT_EQ(Json::parse(result.out)["presets"].size(), factoryPresets().size() + 1);
}

TEST_F(PresetLibraryCommandTest, NamesOfAnyBytesGiveJsonThatReads) {
  tree.addFile("/User Presets/\xFF\xFE\x01.txt");
  EXPECT_EQ(listed()["presets"][0]["name"], "\xEF\xBF\xBD\xEF\xBF\xBD\x01");
}

TEST_F(PresetLibraryCommandTest, ACarriedPresetCanBeNamedWithoutAnInstall) {
  const FactoryPreset& first = factoryPresets().front();
  const std::string name = std::string(first.folder) + "/" + std::string(first.name);
  EXPECT_EQ(run({"save", "-o", "copy.txt", "--preset", name}).exitCode, 0);
  EXPECT_FALSE(std::filesystem::exists(tree.root())) << "and nothing is installed";
}

TEST_F(PresetLibraryCommandTest, WithoutAHomeThereIsNoLibrary) {
  const PresetFolders none = presetFoldersIn("");
  EXPECT_EQ(listedPresets(scanPresets(none.presetRootPath), none).size(), factoryPresets().size());
}

}  // namespace
}  // namespace orvantesco::cli
