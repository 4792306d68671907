// `orvantesco state`, and settings that a render starts from.

#include <filesystem>

#include "cli/SettingsFixture.h"
#include "support/StateBytes.h"

namespace orvantesco::cli {
namespace {

class StateCommandTest : public SettingsTest {
 protected:
  void writeState(const std::string& name, const StateBytes& state) {
    const auto bytes = state.bytes();
    write(name, std::string(bytes.begin(), bytes.end()));
  }
};

TEST_F(StateCommandTest, AStateThatIsLoadedAndSavedStaysAsItIs) {
  std::mt19937 draw(51);
  for (int i = 0; i < 5; ++i) {
    writeState("in.state", randomState(draw));
    outputOf({"state", "save", "-o", "out.state", "--state", "in.state"});
    EXPECT_EQ(read("out.state") == read("in.state"), true) << i;
  }
}

TEST_F(StateCommandTest, ShowsEveryField) {
  std::mt19937 draw(52);
  StateBytes state = randomState(draw);
  state.name = "Slap";
  state.values[kFeedback] = 33.0;
  writeState("a.state", state);
  const auto json = jsonOf({"state", "show", "a.state", "--json"});
  EXPECT_EQ(json["stateVersion"], 0x10200);
  EXPECT_EQ(json["colourSet"], state.colourSet);
  EXPECT_EQ(json["currentPage"], state.page);
  EXPECT_EQ(json["attenuation"], state.attenuation);
  EXPECT_EQ(json["presetName"], "Slap");
  EXPECT_EQ(json["presetFolderLabel"], "U:Folder");
  EXPECT_EQ(json["presetItemIndex"], state.item);
  EXPECT_EQ(json["presetFolderPath"], state.folderPath);
  EXPECT_EQ(json["touchedParam"], state.touched);
  EXPECT_EQ(json["tapMask"], nlohmann::json(state.taps));
  EXPECT_EQ(json["stepFxMask"], nlohmann::json(state.stepFx));
  EXPECT_EQ(json["stepModMask"], nlohmann::json(state.stepMod));
  EXPECT_EQ(json["dryLock"], state.dryLock != 0);
  EXPECT_EQ(json["parameters"], nlohmann::json(state.values));
  const std::string table = outputOf({"state", "show", "a.state"});
  EXPECT_NE(table.find("stateVersion        1.2.0\n"), table.npos);
  EXPECT_NE(table.find("#68   Feedback 1"), table.npos) << table;
}

TEST_F(StateCommandTest, AnOldStateIsSavedAsOneOfToday) {
  StateBytes state;
  state.version = 0x1015F;
  state.values = defaultValues();
  state.values[kFxTypePre] = 18.0;
  writeState("old.state", state);
  EXPECT_TRUE(jsonOf({"state", "show", "old.state", "--json"})["colourSet"] == 0);
  outputOf({"state", "save", "-o", "new.state", "--state", "old.state"});
  const auto json = jsonOf({"state", "show", "new.state", "--json"});
  EXPECT_EQ(json["stateVersion"], 0x10200);
  EXPECT_EQ(json["parameters"][kFxTypePre], 19.0);
}

TEST_F(StateCommandTest, SettingsComeInTheirOrder) {
  StateBytes state;
  state.colourSet = 5;
  state.values = defaultValues();
  state.values[kFeedback] = 11.0;
  writeState("a.state", state);
  write("Slap.txt", presetOf(14, "EParams:\nFeedback1 22\nFeedback2 22\n"));
  outputOf({"state", "save", "-o", "b.state", "--preset", "Slap.txt", "--state", "a.state", "--set",
            "Feedback 2=44"});
  const auto json = jsonOf({"state", "show", "b.state", "--json"});
  EXPECT_EQ(json["colourSet"], 5) << "the preset knows nothing of colours";
  EXPECT_EQ(json["parameters"][kFeedback], 22.0);
  EXPECT_EQ(json["parameters"][kFeedback + 1], 44.0);
  EXPECT_EQ(json["presetName"], "Slap");
}

TEST_F(StateCommandTest, APresetOnTopOfAStateBringsItsNameItsMasksAndNoPlaceInTheMenu) {
  std::mt19937 draw(54);
  StateBytes state = randomState(draw);
  state.page = 12;
  writeState("a.state", state);
  write("Slap.txt", presetOf(14,
                             "DelayTaps\n1 2 3 4 5 6 7 8\nLastPage\n4\nStepFX\n9 10 11 12\n"
                             "StepMod\n13 14 15 16 17 18 19 20\n\nEParams:\nFeedback1 22\n"));
  outputOf({"state", "save", "-o", "b.state", "--state", "a.state", "--preset", "Slap.txt"});
  const auto json = jsonOf({"state", "show", "b.state", "--json"});
  EXPECT_EQ(json["presetName"], "Slap");
  EXPECT_EQ(json["presetFolderLabel"], "U:") << "it lies in no folder of the library";
  EXPECT_EQ(json["presetFolderPath"], "");
  EXPECT_EQ(json["presetItemIndex"], -1);
  EXPECT_EQ(json["touchedParam"], -1);
  EXPECT_EQ(json["currentPage"], 4);
  EXPECT_EQ(json["tapMask"], nlohmann::json({1, 2, 3, 4, 5, 6, 7, 8}));
  EXPECT_EQ(json["stepFxMask"], nlohmann::json({9, 10, 11, 12}));
  EXPECT_EQ(json["stepModMask"], nlohmann::json({{13, 14, 15, 16}, {17, 18, 19, 20}}));
  EXPECT_EQ(json["attenuation"], state.attenuation) << "of which a preset says nothing";
  EXPECT_EQ(json["dryLock"], state.dryLock != 0);
  for (int index = 0; index < kNumParams; ++index) {
    const double expected =
        index == kFeedback ? 22.0 : defaultValues()[static_cast<std::size_t>(index)];
    ASSERT_EQ(json["parameters"][static_cast<std::size_t>(index)], expected) << index;
  }
}

TEST_F(StateCommandTest, APresetOfTheLibraryGoesByItsName) {
  const std::string below = "data/qlm-works/Orvantesco/Presets/User Presets/Echo";
  std::filesystem::create_directories(folder.file(below));
  write(below + "/Slap.txt", presetOf(14, "EParams:\nFeedback1 22\n"));
  outputOf({"state", "save", "-o", "b.state", "--preset", "Echo/Slap"});
  EXPECT_EQ(jsonOf({"state", "show", "b.state", "--json"})["parameters"][kFeedback], 22.0);
}

TEST_F(StateCommandTest, ARenderStartsFromStateAndPreset) {
  writeSound(folder.file("in.wav"), impulse(4800, 100));
  write("dry.txt", presetOf(14, "EParams:\nWetLevel 0\nDryLevel 100\n"));
  outputOf({"state", "save", "-o", "dry.state", "--preset", "dry.txt"});
  const Arguments start{"render", "in.wav", "--format", "double", "--tail", "0"};
  outputOf(start + Arguments{"-o", "a.wav"} + dryOnly());
  outputOf(start + Arguments{"-o", "b.wav", "--preset", "dry.txt"});
  outputOf(start + Arguments{"-o", "c.wav", "--state", "dry.state"});
  EXPECT_EQ(read("a.wav") == read("b.wav"), true);
  EXPECT_EQ(read("a.wav") == read("c.wav"), true);
}

TEST_F(StateCommandTest, RefusesWhatIsNoState) {
  std::mt19937 draw(53);
  StateBytes state = randomState(draw);
  writeState("good.state", state);
  write("short.state", "ab");
  write("cut.state", read("good.state").substr(0, 4000));
  state.version = 0x10300;
  writeState("newer.state", state);
  expectRefusal(1, {"state", "show", "none.state"}, "none.state: cannot be read");
  expectRefusal(1, {"state", "show", "short.state"}, "too short");
  expectRefusal(1, {"state", "show", "cut.state"}, "expected 1095");
  expectRefusal(1, {"state", "show", "newer.state"}, "1.3.0");
  expectRefusal(1, {"state", "save", "-o", "x", "--state", "newer.state"}, "1.3.0");
  expectRefusal(2, {"state", "save", "-o", "good.state", "--state", "good.state"}, "overwritten");
  expectRefusal(2, {"state", "show"}, "FILE");
}

}  // namespace
}  // namespace orvantesco::cli
