// The files that the build writes for hosts of LV2 and VST3.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

#include "host/dpf/EveryPreset.h"
#include "host/dpf/Lv2Presets.h"
#include "host/dpf/Vst3Preset.h"

namespace orvantesco {
namespace {

using Files = std::map<std::string, std::string>;

Files filesIn(const char* folder) {
  Files files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (!entry.is_regular_file()) continue;
    std::ifstream file(entry.path(), std::ios::binary);
    files[std::filesystem::relative(entry.path(), folder)].assign(
        std::istreambuf_iterator<char>(file), {});
  }
  return files;
}

/// Not compared as a whole, since a difference would be printed for minutes.
void expectSame(const Files& built, const Files& expected) {
  EXPECT_EQ(built.size(), expected.size());
  for (const auto& [name, content] : expected) {
    const auto found = built.find(name);
    ASSERT_NE(found, built.end()) << name;
    EXPECT_TRUE(found->second == content) << name;
  }
}

TEST(BuiltPresets, OfTheLv2AreAllThatAreShipped) {
  Files expected{{"manifest.ttl", lv2PresetManifest(everyPreset())}};
  for (const FactoryState& preset : everyPreset()) {
    expected[lv2PresetFileName(preset)] = lv2PresetFile(preset);
  }
  expectSame(filesIn(ORVANTESCO_LV2_PRESETS), expected);
}

TEST(BuiltPresets, OfTheVst3AreAllThatAreShipped) {
  Files expected;
  for (const FactoryState& preset : everyPreset()) {
    expected[vst3PresetFileName(preset)] = vst3PresetFile(preset.stateText);
  }
  EXPECT_EQ(expected.size(), factoryPresets().size());
  expectSame(filesIn(ORVANTESCO_VST3_PRESETS), expected);
}

}  // namespace
}  // namespace orvantesco
