// `orvantesco preset`, as a user calls it.

#include <filesystem>

#include "cli/SettingsFixture.h"

namespace orvantesco::cli {
namespace {

using PresetCommandTest = SettingsTest;

TEST_F(PresetCommandTest, SavesWhatWasSetToTheByte) {
  outputOf({"preset", "save", "-o", "a.txt", "--set", "Feedback 1=25", "--set", "LFO Rate 2=0.125",
            "--taps", "1:00FF:F0F0", "--step-mod", "2:1:0009"});
  EXPECT_EQ(read("a.txt"),
            "Orvantesco V. 1.2.0r14 PresetFile!\nPresetVersion: 14\n\nADDPARAMS:\n\nDelayTaps\n"
            "255 61680 65535 65535 65535 65535 65535 65535 \nLastPage\n2\nStepFX\n"
            "65535 65535 65535 65535 \nStepMod\n0 0 0 0 9 0 0 0 \n\nEParams:\nFeedback1 25\n"
            "LFORate2 0.125\n");
  EXPECT_EQ(folder.entries(), (std::vector<std::string>{"a.txt"}));
}

TEST_F(PresetCommandTest, ShowsWhatAFileSets) {
  write("a.txt", presetOf(14,
                          "LastPage 4 DelayTaps 1 2 3 4 5 6 7 8 StepMod 0 0 0 0 9 0 0 0 "
                          "EParams:\nFeedback1 25\nDelayMode2 3\nLFOSync1 1\nLFORate1 3\n"));
  const auto json = jsonOf({"preset", "show", "a.txt", "--json"});
  EXPECT_EQ(json["version"], 14);
  EXPECT_EQ(json["page"], 4);
  EXPECT_EQ(json["tapMask"], nlohmann::json({1, 2, 3, 4, 5, 6, 7, 8}));
  EXPECT_EQ(json["stepModMask"][1][0], 9);
  ASSERT_EQ(json["parameters"].size(), 4u);
  EXPECT_EQ(json["parameters"][0]["key"], "Feedback1");
  EXPECT_EQ(json["parameters"][0]["value"], 25.0);
  EXPECT_EQ(json["parameters"][1]["text"], "TAPPED");
  EXPECT_EQ(json["parameters"][3]["text"], "1/2") << "a rate in tempo mode is a note";
  const std::string table = outputOf({"preset", "show", "a.txt"});
  EXPECT_NE(table.find("version 14, page 4"), table.npos);
  EXPECT_NE(table.find("slot 2: taps 0003 | 0004"), table.npos);
  EXPECT_NE(table.find("TAPPED"), table.npos);
}

TEST_F(PresetCommandTest, ShowsTheValuesOfAnOldFileAsTheyAreMeantToday) {
  write("old.txt", presetOf(3, "EParams:\nFX1PR 18\nLevel1 0.5\n"));
  const auto json = jsonOf({"preset", "show", "old.txt", "--json"});
  EXPECT_EQ(json["version"], 3);
  EXPECT_NEAR(json["parameters"][0]["value"].get<double>(), -6.0206, 1e-3);
  EXPECT_EQ(json["parameters"][1]["value"], 21.0);
  EXPECT_TRUE(json["page"].is_null());
}

TEST_F(PresetCommandTest, ChecksFilesAndSaysWhatIsWrongWhere) {
  write("good.txt", presetOf(14, "EParams:\nFeedback1 25\n"));
  write("bad.txt", presetOf(14, "DelayTaps\n1 2\nEParams:\nFeedback1 999\nNoSuch 1\nLevel1 x\n"));
  write("foreign.txt", "RIFF");
  EXPECT_EQ(outputOf({"preset", "check", "good.txt"}), "good.txt: good, version 14\n");
  const ProgramResult result =
      run({"preset", "check", "bad.txt", "good.txt", "foreign.txt", "missing.txt"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.out,
            "bad.txt:6: expected eight tap masks\n"
            "bad.txt:7: Feedback 1 is out of range, expected 0..160 %\n"
            "bad.txt:8: no parameter is called \"NoSuch\"\n"
            "bad.txt:9: expected a number of single precision behind \"Level1\"; nothing behind it "
            "was read\n"
            "good.txt: good, version 14\n"
            "foreign.txt: is no preset file, expected \"Orvantesco\" as its first word\n"
            "missing.txt: cannot be read: No such file or directory\n");
}

TEST_F(PresetCommandTest, UpgradesOldFilesAndKeepsThem) {
  const std::string old = presetOf(12, "EParams:\nFX1FB 13\n");
  write("old.txt", old);
  write("new.txt", presetOf(14, "EParams:\n"));
  EXPECT_EQ(outputOf({"preset", "upgrade", "old.txt", "new.txt"}),
            "old.txt: version 12 is now 14\nnew.txt: is of version 14 already\n");
  EXPECT_NE(read("old.txt").find("PresetVersion: 14\n"), std::string::npos);
  EXPECT_NE(read("old.txt").find("EParams:\nFX1FB 14\n"), std::string::npos);
  EXPECT_EQ(read("old.txt.bak"), old);
  EXPECT_EQ(folder.entries(), (std::vector<std::string>{"new.txt", "old.txt", "old.txt.bak"}));
}

TEST_F(PresetCommandTest, AnUpgradeOfTheLibraryKeepsTheOldFileBelowTheBackups) {
  const std::string below = "qlm-works/Orvantesco/Presets/User Presets/";
  std::filesystem::create_directories(folder.file("data/" + below));
  write("data/" + below + "old.txt", presetOf(12, "EParams:\n"));
  outputOf({"preset", "upgrade", "data/" + below + "old.txt"});
  EXPECT_EQ(read("data/qlm-works/Orvantesco/Preset Backups/User Presets/old.txt"),
            presetOf(12, "EParams:\n"));
}

TEST_F(PresetCommandTest, AnUpgradeGoesOnBehindAFileThatFails) {
  write("foreign.txt", "RIFF");
  write("old.txt", presetOf(2, "EParams:\n"));
  const ProgramResult result = run({"preset", "upgrade", "foreign.txt", "old.txt"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.err.rfind("orvantesco: foreign.txt: is no preset file", 0), 0u) << result.err;
  EXPECT_EQ(result.out, "old.txt: version 2 is now 14\n");
  EXPECT_EQ(read("foreign.txt"), "RIFF");
}

TEST_F(PresetCommandTest, NeverOverwritesThePresetThatItReadsFromTheLibrary) {
  outputOf({"preset", "install"});
  const auto name = "Slap";
  outputOf({"preset", "save", "-o", "slap.txt", "--set", "Feedback 1=33"});
  std::string user;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.file("data"))) {
    if (entry.is_directory() && entry.path().filename() == "User Presets") user = entry.path();
  }
  ASSERT_NE(user, "");
  std::filesystem::copy_file(folder.file("slap.txt"), user + "/" + name + ".txt");
  const ProgramResult result =
      run({"preset", "save", "-o", user + "/Slap.txt", "--preset", name, "--set", "Feedback 1=44"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_NE(result.err.find("overwritten"), std::string::npos) << result.err;
  EXPECT_NE(read("slap.txt").find("Feedback1 33"), std::string::npos);
  std::ifstream kept(user + "/Slap.txt");
  EXPECT_NE(std::string(std::istreambuf_iterator<char>(kept), {}).find("Feedback1 33"),
            std::string::npos);
}

TEST_F(PresetCommandTest, RefusesWhatItCannotDo) {
  write("a.txt", presetOf(14, "EParams:\n"));
  expectRefusal(2, {"preset"}, "subcommand");
  expectRefusal(2, {"preset", "save"}, "-o");
  expectRefusal(2, {"preset", "save", "-o", "b.txt", "--set", "Feedbuck 1=3"}, "Feedback");
  expectRefusal(1, {"preset", "save", "-o", "b.txt", "--preset", "none"}, "none");
  expectRefusal(2, {"preset", "save", "-o", "a.txt", "--preset", "a.txt"}, "overwritten");
  expectRefusal(1, {"preset", "show", "b.txt"}, "b.txt: cannot be read");
  expectRefusal(1, {"preset", "save", "-o", "no folder/b.txt"}, "no folder/b.txt");
  EXPECT_EQ(read("a.txt"), presetOf(14, "EParams:\n"));
}

}  // namespace
}  // namespace orvantesco::cli
