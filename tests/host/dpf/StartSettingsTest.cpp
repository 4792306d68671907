#include "host/dpf/StartSettings.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "host/dpf/Base64.h"
#include "host/dpf/DirectEffect.h"
#include "host/dpf/DpfState.h"

namespace orvantesco {
namespace {

class StartSettingsTest : public testing::Test {
 protected:
  StartSettingsTest() { ::setenv("XDG_DATA_HOME", ORVANTESCO_TEST_DATA, 1); }

  static std::string fileWith(const std::string& name, const std::string& content) {
    const std::string path = testing::TempDir() + "orvantesco-start-" + name;
    std::ofstream(path, std::ios::binary) << content;
    return path;
  }

  /// A state block as a file holds it, with a feedback of its own.
  static std::string stateBlock(double feedback) {
    DirectEffect saved;
    saved.set(kFeedback, feedback);
    saved.set(kWetLevel, 12.5);
    const auto bytes = fromBase64(stateText(saved.effect)).value();
    return {bytes.begin(), bytes.end()};
  }

  double value(int index) { return started.effect.GetParam(index)->value(); }
  void start() { settings.applyTo(started.effect); }

  StartSettings settings;
  DirectEffect started;
};

TEST_F(StartSettingsTest, LeaveAnEffectAsItIsWhereNothingWasAskedFor) {
  const std::string before = stateText(started.effect);
  start();
  EXPECT_TRUE(stateText(started.effect) == before);
}

TEST_F(StartSettingsTest, TakeAPresetOfTheLibraryByFolderAndName) {
  EXPECT_EQ(settings.takePreset("Echo/Dub Quarter"), "");
  start();
  EXPECT_EQ(value(kFeedback), 62.0);
  EXPECT_EQ(started.effect.settings().presetName(), "Dub Quarter");
}

TEST_F(StartSettingsTest, TakeAPresetFromAnyFile) {
  const std::string path = fileWith("own.txt",
                                    "Orvantesco V. 1.2.0r14 PresetFile!\nPresetVersion: 14\n\n"
                                    "EParams:\nFeedback1 41.5\n");
  EXPECT_EQ(settings.takePreset(path), "");
  start();
  EXPECT_EQ(value(kFeedback), 41.5);
}

TEST_F(StartSettingsTest, TakeAStateFromAFile) {
  EXPECT_EQ(settings.takeState(fileWith("whole.state", stateBlock(33.25))), "");
  start();
  EXPECT_EQ(value(kFeedback), 33.25);
  EXPECT_EQ(value(kWetLevel), 12.5);
}

TEST_F(StartSettingsTest, PutThePresetOnTopOfTheState) {
  EXPECT_EQ(settings.takeState(fileWith("below.state", stateBlock(33.25))), "");
  EXPECT_EQ(settings.takePreset("Echo/Dub Quarter"), "");
  start();
  EXPECT_EQ(value(kFeedback), 62.0);
}

TEST_F(StartSettingsTest, SayWhyThereIsNoPreset) {
  EXPECT_EQ(settings.takePreset("Echo/Nowhere"),
            "Echo/Nowhere: neither a file nor a preset of the library");
  const std::string path = fileWith("foreign.txt", "a shopping list\n");
  EXPECT_EQ(settings.takePreset(path).rfind(path + ": ", 0), 0U);
  const std::string before = stateText(started.effect);
  start();
  EXPECT_TRUE(stateText(started.effect) == before);
}

TEST_F(StartSettingsTest, SayWhyThereIsNoState) {
  const std::string before = stateText(started.effect);
  const std::string whole = stateBlock(33.25);
  const std::string unread = ": holds no state block that can be read";
  for (const std::string& content :
       {std::string(), std::string("words"), whole.substr(0, 7), whole.substr(0, whole.size() / 2),
        whole.substr(0, whole.size() - 1)}) {
    const std::string path = fileWith("broken.state", content);
    EXPECT_EQ(settings.takeState(path), path + unread) << content.size();
  }
  const std::string missing = testing::TempDir() + "orvantesco-start-missing";
  EXPECT_EQ(settings.takeState(missing).rfind(missing + ": ", 0), 0U);
  start();
  EXPECT_TRUE(stateText(started.effect) == before);
}

}  // namespace
}  // namespace orvantesco
