#include "presets/FactoryPresets.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

#include "params/ParamBank.h"
#include "presets/PresetCheck.h"

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

TEST(FactoryPresets, EveryOneIsOfTheCurrentVersionAndHasNoProblem) {
  ParamBank bank;
  bank.buildParameterBank();
  for (const FactoryPreset& preset : factoryPresets()) {
    const PresetResult result = parsePreset(preset.text);
    const auto* const reading = std::get_if<PresetReading>(&result);
    ASSERT_NE(reading, nullptr) << preset.relativePath();
    EXPECT_EQ(reading->preset.version, kPresetVersion) << preset.relativePath();
    for (const PresetProblem& problem : presetProblems(*reading, bank)) {
      ADD_FAILURE() << preset.relativePath() << ":" << problem.line << ": " << problem.message;
    }
  }
}

TEST(FactoryPresets, ThereAreManyAndEachHasANameOfItsOwn) {
  EXPECT_GE(factoryPresets().size(), 96u);
  std::map<std::string, std::string> places;
  for (const FactoryPreset& preset : factoryPresets()) {
    std::string name(preset.name);
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::toupper(letter)); });
    const auto [place, isNew] = places.try_emplace(name, preset.relativePath());
    EXPECT_TRUE(isNew) << place->second << " and " << preset.relativePath();
  }
}

TEST(FactoryPresets, NoFolderIsEmptyAndNoneLiesInAnother) {
  for (const auto& folder : fs::directory_iterator(ORVANTESCO_PRESET_FILES)) {
    ASSERT_TRUE(folder.is_directory()) << folder.path();
    int files = 0;
    for (const auto& file : fs::directory_iterator(folder)) {
      EXPECT_TRUE(file.is_regular_file() && file.path().extension() == ".txt") << file.path();
      ++files;
    }
    EXPECT_GT(files, 0) << folder.path();
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
