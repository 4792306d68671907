#include "host/dpf/Vst3Preset.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>

#include "host/dpf/EveryPreset.h"
#include "host/dpf/Vst3Host.h"

namespace orvantesco {
namespace {

constexpr std::size_t headerBytes = 48;

/// A number that stands in a file, lowest byte first.
std::int64_t numberAt(const std::string& file, std::size_t at, std::size_t bytes) {
  std::int64_t number = 0;
  for (std::size_t i = 0; i < bytes; ++i) {
    number |= static_cast<std::int64_t>(static_cast<unsigned char>(file.at(at + i))) << (8 * i);
  }
  return number;
}

/// The component's state, found as a host finds it.
std::string componentIn(const std::string& file) {
  const auto list = static_cast<std::size_t>(numberAt(file, 40, 8));
  EXPECT_EQ(file.substr(list, 4), "List");
  EXPECT_EQ(numberAt(file, list + 4, 4), 1);
  EXPECT_EQ(file.substr(list + 8, 4), "Comp");
  EXPECT_EQ(list + 8 + 20, file.size());
  return file.substr(static_cast<std::size_t>(numberAt(file, list + 12, 8)),
                     static_cast<std::size_t>(numberAt(file, list + 20, 8)));
}

TEST(Vst3Preset, BeginsWithAHeaderThatNamesThePlugin) {
  const std::string file = vst3PresetFile("AAAA");
  EXPECT_EQ(file.substr(0, 4), "VST3");
  EXPECT_EQ(numberAt(file, 4, 4), 1);
  EXPECT_EQ(file.substr(8, 32), vst3ClassOfBundle());
  EXPECT_EQ(file.substr(headerBytes, componentIn(file).size()), componentIn(file));
}

TEST(Vst3Preset, HoldsWhatASessionHolds) {
  EXPECT_EQ(componentIn(vst3PresetFile("AAAA")), vst3StreamOf("AAAA"));
}

/// Names of files are all that hosts show.
TEST(Vst3Preset, HasAFileNameOfItsOwn) {
  std::set<std::string> names;
  for (const FactoryState& preset : everyPreset()) names.insert(vst3PresetFileName(preset));
  EXPECT_EQ(names.size(), everyPreset().size());
  EXPECT_EQ(vst3PresetFileName({"Echo", "Dub Quarter", ""}), "Echo - Dub Quarter.vstpreset");
}

TEST(Vst3Preset, SoundsAndIsSavedAsThePresetThatIsLoadedDirectly) {
  std::size_t heard = 0;
  for (const FactoryState& preset : everyPreset()) {
    Vst3Host host;
    ASSERT_TRUE(host.setState(componentIn(vst3PresetFile(preset.stateText))));
    host.activate(rateHz, longestBlock);
    DirectEffect direct;
    direct.load(pathOf(preset).c_str());
    direct.effect.startAnew();
    if (playThrough<Vst3Block>(host, direct, preset) > 0.01) ++heard;
    ASSERT_NE(host.state().find(preset.stateText), std::string::npos) << pathOf(preset);
  }
  EXPECT_GE(heard, everyPreset().size() * 9 / 10);
}

}  // namespace
}  // namespace orvantesco
