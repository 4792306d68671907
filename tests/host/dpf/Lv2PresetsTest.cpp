#include "host/dpf/Lv2Presets.h"

#include <gtest/gtest.h>

#include <set>

#include "host/dpf/EveryPreset.h"
#include "host/dpf/Lv2Host.h"

namespace orvantesco {
namespace {

bool holds(const std::string& text, const std::string& part) {
  return text.find(part) != text.npos;
}

/// The state in a preset's file.
std::string stateIn(const std::string& file) {
  const std::string key = "<urn:qlm-works:orvantesco#state> \"";
  const std::size_t begin = file.find(key) + key.size();
  return file.substr(begin, file.find('"', begin) - begin);
}

TEST(Lv2Presets, AreListedWithLabelBankAndFile) {
  const std::vector<FactoryState> presets{{"Lo-Fi", "Dust & Wax", "AAAA"},
                                          {"Lo-Fi", "Tape", "AAAA"}};
  const std::string manifest = lv2PresetManifest(presets);
  EXPECT_TRUE(holds(manifest, "<urn:qlm-works:orvantesco:preset:Lo-Fi/Dust%20%26%20Wax>\n"));
  EXPECT_TRUE(holds(manifest, "lv2:appliesTo <urn:qlm-works:orvantesco> ;"));
  EXPECT_TRUE(holds(manifest, "rdfs:label \"Lo-Fi: Dust & Wax\" ;"));
  EXPECT_TRUE(holds(manifest, "rdfs:seeAlso <Lo-Fi-Dust---Wax.ttl> ."));
  const std::string bank = "<urn:qlm-works:orvantesco:bank:Lo-Fi>\n\ta pset:Bank ;";
  ASSERT_TRUE(holds(manifest, bank));
  EXPECT_EQ(manifest.find(bank, manifest.find(bank) + 1), manifest.npos);
  EXPECT_FALSE(holds(manifest, "state:state"));
}

/// One such character, and hosts would refuse the bundle as a whole.
TEST(Lv2Presets, MayHaveAnyName) {
  const FactoryState preset{"A\"B", "C\\D\nE>\xC3\xBC", "AAAA"};
  const std::string manifest = lv2PresetManifest({&preset, 1});
  EXPECT_TRUE(holds(manifest, "rdfs:label \"A\\\"B: C\\\\D E>\xC3\xBC\" ;"));
  EXPECT_EQ(lv2PresetUri(preset), "urn:qlm-works:orvantesco:preset:A%22B/C%5CD%0AE%3E%C3%BC");
  EXPECT_EQ(lv2PresetFileName(preset), "A-B-C-D-E---.ttl");
}

TEST(Lv2Presets, HaveUrisAndFilesOfTheirOwn) {
  std::set<std::string> uris, files;
  for (const FactoryState& preset : everyPreset()) {
    uris.insert(lv2PresetUri(preset));
    files.insert(lv2PresetFileName(preset));
  }
  EXPECT_EQ(uris.size(), everyPreset().size());
  EXPECT_EQ(files.size(), everyPreset().size());
}

TEST(Lv2Presets, SoundAndAreSavedAsThoseThatAreLoadedDirectly) {
  std::size_t heard = 0;
  for (const FactoryState& preset : everyPreset()) {
    Lv2Host host;
    host.restore(stateIn(lv2PresetFile(preset)));
    DirectEffect direct;
    direct.load(pathOf(preset).c_str());
    if (playThrough<Lv2Block>(host, direct, preset) > 0.01) ++heard;
    ASSERT_EQ(host.save(), preset.stateText) << pathOf(preset);
  }
  EXPECT_GE(heard, everyPreset().size() * 9 / 10);
}

}  // namespace
}  // namespace orvantesco
