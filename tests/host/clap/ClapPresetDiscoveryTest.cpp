// What a host's preset browser finds, and that what it finds can be loaded.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "host/clap/ClapInstance.h"
#include "host/clap/ClapTestIndexer.h"
#include "presets/FactoryPresets.h"
#include "support/FolderRig.h"

namespace orvantesco {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::SizeIs;

/// A user whose presets lie in a folder of the test's own.
class ClapPresetDiscovery : public testing::Test {
 protected:
  ClapPresetDiscovery() { ::setenv("XDG_DATA_HOME", home.path().c_str(), 1); }
  ~ClapPresetDiscovery() override { ::setenv("XDG_DATA_HOME", before.c_str(), 1); }

  std::string save(const std::string& name, std::string_view text) const {
    return home.write("qlm-works/Orvantesco/Presets/User Presets/" + name, std::string(text));
  }

  /// It makes the folder that all instances of the process share.
  ClapInstance instance;
  const std::string before = std::getenv("XDG_DATA_HOME");
  const FolderRig home;
  ClapTestIndexer browser;
};

bool load(const ClapInstance& into, const ListedPreset& preset) {
  const auto& loading = extensionOf<ClapPluginPresetLoad>(into.plugin, kClapPresetLoadId);
  return loading.from_location(into.plugin, preset.kind, preset.locationOrNull(),
                               preset.keyOrNull());
}

TEST_F(ClapPresetDiscovery, IsFoundUnderBothNamesOfTheStandard) {
  EXPECT_NE(clap_entry.get_factory(kClapPresetDiscoveryId), nullptr);
  EXPECT_EQ(clap_entry.get_factory(kClapPresetDiscoveryId),
            clap_entry.get_factory(kClapPresetDiscoveryDraftId));
}

TEST_F(ClapPresetDiscovery, ListsEveryShippedPresetOnce) {
  ASSERT_TRUE(browser.start());
  browser.crawl();
  const auto shipped = factoryPresets();
  ASSERT_EQ(browser.presets.size(), shipped.size());
  for (std::size_t i = 0; i < shipped.size(); ++i) {
    const ListedPreset& listed = browser.presets[i];
    EXPECT_EQ(listed.name, shipped[i].name);
    EXPECT_EQ(listed.description, shipped[i].folder);
    EXPECT_EQ(listed.plugin, "clap:com.qlm-works.orvantesco");
    EXPECT_EQ(listed.flags, kClapPresetIsFactoryContent);
    EXPECT_EQ(listed.creator, "qlm-works");
    EXPECT_THAT(listed.features, Contains(std::string(shipped[i].folder)));
    EXPECT_THAT(listed.features, Contains("delay"));
  }
  EXPECT_EQ(browser.errors, std::vector<std::string>{});
}

TEST_F(ClapPresetDiscovery, WhatIsListedLoadsAsTheSameSettings) {
  ASSERT_TRUE(browser.start());
  browser.crawl();
  const ClapInstance byFile;
  const FolderRig folder;
  for (std::size_t i = 0; i < browser.presets.size(); ++i) {
    const ListedPreset& listed = browser.presets[i];
    ASSERT_TRUE(load(instance, listed)) << listed.key;
    if (i % 20 != 0) continue;
    const std::string path = folder.write("One.txt", std::string(factoryPresets()[i].text));
    ASSERT_TRUE(load(byFile, {.kind = kClapPresetInFile, .location = path}));
    for (clap_id id = 0; id < 1095; ++id) {
      ASSERT_EQ(instance.value(id), byFile.value(id)) << listed.key << ", parameter " << id;
    }
  }
  EXPECT_EQ(instance.host.presetsLoaded, static_cast<int>(browser.presets.size()));
}

TEST_F(ClapPresetDiscovery, ListsWhatTheUserHasSavedWithItsFolder) {
  const FactoryPreset& preset = factoryPresets().back();
  const std::string mine = save("Band/Live/Mine.txt", preset.text);
  save("Direct.txt", preset.text);
  save("Notes.md", "no preset, and not looked into");
  ASSERT_TRUE(browser.start());
  ASSERT_EQ(browser.places.size(), 2u);
  EXPECT_EQ(browser.places[1].flags, kClapPresetIsUserContent);
  browser.crawl();
  ASSERT_EQ(browser.presets.size(), factoryPresets().size() + 2);
  const auto found = std::find_if(browser.presets.begin(), browser.presets.end(),
                                  [](const auto& listed) { return listed.name == "Mine"; });
  ASSERT_NE(found, browser.presets.end());
  EXPECT_EQ(found->location, mine);
  EXPECT_EQ(found->key, "");
  EXPECT_EQ(found->description, "Band/Live");
  EXPECT_EQ(found->flags, kClapPresetIsUserContent);
  EXPECT_EQ(found->creator, "");
  EXPECT_GT(found->modified, 1'500'000'000u);
  ASSERT_TRUE(load(instance, *found));
  const ClapInstance other;
  const std::string key = std::string(preset.folder) + "/" + std::string(preset.name);
  ASSERT_TRUE(load(other, {.kind = kClapPresetInPlugin, .key = key}));
  for (clap_id id = 0; id < 1095; ++id) EXPECT_EQ(instance.value(id), other.value(id));
}

TEST_F(ClapPresetDiscovery, AUserWithoutAFolderHasNoPlace) {
  ASSERT_TRUE(browser.start());
  ASSERT_EQ(browser.places.size(), 1u);
  EXPECT_EQ(browser.places[0].kind, kClapPresetInPlugin);
  EXPECT_EQ(browser.places[0].location, "");
  EXPECT_EQ(home.files(), std::vector<std::string>{});
}

TEST_F(ClapPresetDiscovery, TellsWhyAFileIsNone) {
  const std::string foreign = save("Foreign.txt", "no preset at all");
  ASSERT_TRUE(browser.start());
  EXPECT_FALSE(browser.read(kClapPresetInFile, foreign.c_str()));
  EXPECT_FALSE(browser.read(kClapPresetInFile, home.file("None.txt").c_str()));
  EXPECT_FALSE(browser.read(kClapPresetInFile, home.path().c_str()));
  EXPECT_FALSE(browser.read(kClapPresetInFile, nullptr));
  EXPECT_FALSE(browser.read(7, foreign.c_str()));
  ASSERT_THAT(browser.errors, SizeIs(5));
  EXPECT_THAT(browser.errors[0], HasSubstr("Foreign.txt: "));
  EXPECT_THAT(browser.errors[1], HasSubstr("None.txt: "));
  EXPECT_THAT(browser.presets, SizeIs(0));
}

TEST_F(ClapPresetDiscovery, ALoadOfWhatIsNotThereTellsTheHostWhy) {
  const ListedPreset gone{.kind = kClapPresetInFile, .location = home.file("Gone.txt")};
  EXPECT_FALSE(load(instance, gone));
  ASSERT_THAT(instance.host.lines(), SizeIs(1));
  EXPECT_THAT(instance.host.lines()[0], HasSubstr("Gone.txt"));
}

TEST_F(ClapPresetDiscovery, StopsWhereTheBrowserHasEnough) {
  browser.room = 3;
  ASSERT_TRUE(browser.start());
  EXPECT_TRUE(browser.read(kClapPresetInPlugin, nullptr));
  EXPECT_THAT(browser.presets, SizeIs(3));
}

TEST_F(ClapPresetDiscovery, OfABrowserThatOffersLittleAsksNoMore) {
  browser.isBare = true;
  ASSERT_TRUE(browser.start());
  browser.crawl();
  EXPECT_EQ(browser.presets.size(), factoryPresets().size());
  EXPECT_FALSE(browser.read(kClapPresetInFile, "nowhere"));
}

TEST_F(ClapPresetDiscovery, OfABrowserThatTakesNoPlaceFails) {
  browser.takesPlaces = false;
  EXPECT_FALSE(browser.start());
}

TEST(ClapPresetFactory, RefusesWhatItDoesNotKnow) {
  const auto& factory = *static_cast<const ClapPresetDiscoveryFactory*>(
      clap_entry.get_factory(kClapPresetDiscoveryId));
  EXPECT_EQ(factory.count(&factory), 1u);
  EXPECT_EQ(factory.get_descriptor(&factory, 1), nullptr);
  const char* const id = factory.get_descriptor(&factory, 0)->id;
  ClapPresetIndexer indexer{};
  indexer.clap_version = CLAP_VERSION;
  EXPECT_EQ(factory.create(&factory, nullptr, id), nullptr);
  EXPECT_EQ(factory.create(&factory, &indexer, nullptr), nullptr);
  EXPECT_EQ(factory.create(&factory, &indexer, "com.example.other"), nullptr);
  // One that has no room for what would be declared.
  const ClapPresetProvider* const provider = factory.create(&factory, &indexer, id);
  ASSERT_NE(provider, nullptr);
  EXPECT_FALSE(provider->init(provider));
  EXPECT_EQ(provider->get_extension(provider, "clap.any"), nullptr);
  EXPECT_FALSE(provider->get_metadata(provider, kClapPresetInPlugin, nullptr, nullptr));
  provider->destroy(provider);
  indexer.clap_version = {0, 24, 0};
  EXPECT_EQ(factory.create(&factory, &indexer, id), nullptr);
}

}  // namespace
}  // namespace orvantesco
