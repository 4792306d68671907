#include "presets/FactoryPresets.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

#include "params/ParamBank.h"
#include "presets/PresetReader.h"

namespace orvantesco {
namespace {

namespace fs = std::filesystem;

std::string contentOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

TEST(FactoryPresets, TheProgramCarriesTheFilesOfTheProjectToTheByte) {
  const fs::path root = ORVANTESCO_PRESET_FILES;
  std::size_t files = 0;
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    if (!entry.is_regular_file()) continue;
    ++files;
    const fs::path relative = entry.path().lexically_relative(root);
    const FactoryPreset* const preset =
        findFactoryPreset(relative.parent_path().string(), relative.stem().string());
    ASSERT_NE(preset, nullptr) << relative;
    EXPECT_EQ(preset->text, contentOf(entry.path())) << relative;
    EXPECT_EQ(preset->relativePath(), "/Factory Presets/" + relative.string());
  }
  EXPECT_GT(files, 0u);
  EXPECT_EQ(factoryPresets().size(), files);
}

TEST(FactoryPresets, EveryOneIsOfTheCurrentVersionAndNamesParametersOnly) {
  ParamBank bank;
  bank.buildParameterBank();
  const std::set<std::string> keys(bank.keys().begin(), bank.keys().end());
  for (const FactoryPreset& preset : factoryPresets()) {
    const PresetResult result = parsePreset(preset.text);
    const auto* const reading = std::get_if<PresetReading>(&result);
    ASSERT_NE(reading, nullptr) << preset.relativePath();
    EXPECT_EQ(reading->preset.version, kPresetVersion) << preset.relativePath();
    EXPECT_TRUE(reading->problems.empty()) << preset.relativePath();
    for (const PresetValue& value : reading->preset.values) {
      EXPECT_TRUE(keys.contains(value.key)) << preset.relativePath() << ": " << value.key;
    }
  }
}

TEST(FactoryPresets, TheyAreSortedAndNoTwoShareTheirPlace) {
  std::vector<std::string> paths;
  for (const FactoryPreset& preset : factoryPresets()) paths.push_back(preset.relativePath());
  EXPECT_TRUE(std::is_sorted(paths.begin(), paths.end()));
  EXPECT_EQ(std::adjacent_find(paths.begin(), paths.end()), paths.end());
}

TEST(FactoryPresets, WhatIsNotThereIsNotFound) {
  EXPECT_EQ(findFactoryPreset("", ""), nullptr);
  EXPECT_EQ(findFactoryPreset("Basics", "default"), nullptr);
}

}  // namespace
}  // namespace orvantesco
