// States and presets, as a host saves and loads them.

#include <gtest/gtest.h>

#include <numeric>

#include "host/clap/ClapParameters.h"
#include "host/clap/ClapPlugin.h"
#include "host/clap/ClapRender.h"
#include "presets/FactoryPresets.h"
#include "presets/StateChunk.h"
#include "support/FolderRig.h"

namespace orvantesco {
namespace {

std::vector<double> valuesOf(const ClapInstance& instance) {
  std::vector<double> values;
  for (clap_id id = 0; id < 1095; ++id) values.push_back(instance.value(id));
  values.push_back(instance.value(ClapParameters::bypassId));
  return values;
}

/// Every parameter off its default, as far as it goes.
void scatter(ClapInstance& instance) {
  for (clap_id id = 0; id < 1095; ++id) instance.in.value(0, id, (id * 37 % 100) / 99.0);
  instance.in.value(0, ClapParameters::bypassId, 1.0);
  instance.flush();
}

TEST(ClapState, BringsEverythingBackTheBypassToo) {
  ClapInstance one;
  scatter(one);
  ClapInstance other;
  ASSERT_TRUE(other.load(one.state()));
  EXPECT_EQ(valuesOf(other), valuesOf(one));
  EXPECT_EQ(other.state(), one.state());
  EXPECT_TRUE(other.host.rescanned & CLAP_PARAM_RESCAN_VALUES);
}

TEST(ClapState, ComesInPiecesOfAnySize) {
  ClapInstance one;
  scatter(one);
  for (const std::uint64_t atOnce : {1u, 3u, 4096u}) {
    ClapSink sink;
    sink.atOnce = atOnce;
    ASSERT_TRUE(one.save(sink));
    EXPECT_EQ(sink.bytes, one.state());
    ClapSource source(sink.bytes);
    source.atOnce = atOnce;
    ClapInstance other;
    ASSERT_TRUE(other.load(source));
    EXPECT_EQ(valuesOf(other), valuesOf(one));
  }
}

TEST(ClapState, IsTheEffectsBlockWithTheBypassBehindIt) {
  ClapInstance instance;
  scatter(instance);
  StateChunk chunk;
  ClapPlugin::behind(instance.plugin)->parts()->effect.SerializeState(chunk);
  const auto bytes = instance.state();
  ASSERT_EQ(bytes.size(), static_cast<std::size_t>(chunk.size()) + 5);
  EXPECT_TRUE(std::equal(chunk.data(), chunk.data() + chunk.size(), bytes.begin()));
}

TEST(ClapState, OfTheEffectAloneMeansNoBypass) {
  ClapInstance one;
  scatter(one);
  auto bytes = one.state();
  bytes.resize(bytes.size() - 5);
  ClapInstance other;
  other.in.value(0, ClapParameters::bypassId, 1.0);
  other.flush();
  ASSERT_TRUE(other.load(bytes));
  EXPECT_EQ(other.value(ClapParameters::bypassId), 0.0);
  EXPECT_EQ(other.value(kFeedback), one.value(kFeedback));
}

TEST(ClapState, OfAStreamThatFailsChangesNothing) {
  ClapInstance one;
  scatter(one);
  ClapInstance other;
  const auto before = other.state();
  ClapSource source(one.state());
  source.atOnce = 100;
  source.failsAt = 5000;
  EXPECT_FALSE(other.load(source));
  EXPECT_EQ(other.state(), before);
  ClapSink full;
  full.room = 1000;
  full.atOnce = 64;
  EXPECT_FALSE(one.save(full));
}

TEST(ClapState, ThatBreaksOffIsRefusedWhereverItDoes) {
  ClapInstance one;
  scatter(one);
  const auto whole = one.state();
  ClapInstance other;
  const auto before = other.state();
  const auto effectAlone = static_cast<std::ptrdiff_t>(whole.size() - 5);
  const auto load = [&](std::ptrdiff_t length) {
    return other.load({whole.begin(), whole.begin() + length});
  };
  for (std::ptrdiff_t length = 0; length < effectAlone; length += length < 160 ? 1 : 97) {
    EXPECT_FALSE(load(length)) << length;
  }
  EXPECT_FALSE(load(effectAlone - 1));
  for (std::ptrdiff_t behind = 1; behind < 5; ++behind) EXPECT_FALSE(load(effectAlone + behind));
  EXPECT_EQ(other.state(), before);
}

TEST(ClapState, ThatIsNoneOrOfAnotherAgeIsRefused) {
  ClapInstance instance;
  scatter(instance);
  const auto before = instance.state();
  auto newer = before;
  newer[0] = 0;
  newer[1] = 3;
  newer[2] = 9;
  EXPECT_FALSE(instance.load(newer));
  EXPECT_FALSE(instance.load(std::vector<std::uint8_t>{}));
  EXPECT_FALSE(instance.load(std::vector<std::uint8_t>{1, 2}));
  EXPECT_EQ(instance.state(), before);
}

class ClapPresetLoad : public testing::Test {
 protected:
  bool load(std::uint32_t kind, const char* location, const char* key) {
    const auto& loading = extensionOf<ClapPluginPresetLoad>(instance.plugin, kClapPresetLoadId);
    return loading.from_location(instance.plugin, kind, location, key);
  }
  ClapInstance instance;
};

TEST_F(ClapPresetLoad, TakesTheOnesThatThePluginCarries) {
  const auto fresh = valuesOf(instance);
  const FactoryPreset& preset = factoryPresets().front();
  const std::string key = std::string(preset.folder) + "/" + std::string(preset.name);
  ASSERT_TRUE(load(kClapPresetInPlugin, nullptr, key.c_str()));
  EXPECT_NE(valuesOf(instance), fresh);
  EXPECT_EQ(instance.host.presetsLoaded, 1);
  EXPECT_EQ(instance.host.dirtyMarks, 1);
  EXPECT_TRUE(instance.host.rescanned & CLAP_PARAM_RESCAN_VALUES);
}

TEST_F(ClapPresetLoad, TakesAFile) {
  const FolderRig folder;
  const FactoryPreset& preset = factoryPresets().front();
  const std::string path = folder.write("Mine.txt", std::string(preset.text));
  ASSERT_TRUE(load(kClapPresetInFile, path.c_str(), nullptr));
  ClapInstance other;
  const auto& loading = extensionOf<ClapPluginPresetLoad>(other.plugin, kClapPresetLoadDraftId);
  const std::string key = std::string(preset.folder) + "/" + std::string(preset.name);
  ASSERT_TRUE(loading.from_location(other.plugin, kClapPresetInPlugin, nullptr, key.c_str()));
  EXPECT_EQ(valuesOf(instance), valuesOf(other));
}

TEST_F(ClapPresetLoad, TellsWhyThereIsNone) {
  const auto before = instance.state();
  const FolderRig folder;
  const std::string foreign = folder.write("Foreign.txt", "no preset at all");
  EXPECT_FALSE(load(kClapPresetInFile, foreign.c_str(), nullptr));
  EXPECT_FALSE(load(kClapPresetInFile, folder.file("None.txt").c_str(), nullptr));
  EXPECT_FALSE(load(kClapPresetInFile, nullptr, nullptr));
  EXPECT_FALSE(load(kClapPresetInPlugin, nullptr, "Nowhere/Nothing"));
  EXPECT_FALSE(load(kClapPresetInPlugin, nullptr, "NoFolder"));
  EXPECT_FALSE(load(kClapPresetInPlugin, nullptr, nullptr));
  EXPECT_FALSE(load(99, "x", "y"));
  EXPECT_EQ(instance.host.lines().size(), 7u);
  EXPECT_EQ(instance.state(), before);
}

}  // namespace
}  // namespace orvantesco
