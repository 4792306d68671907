// What became of the values of old presets, against the list of all changes.

#include "presets/PresetMigration.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

#include "params/ParamIndex.h"

namespace orvantesco {
namespace {

ParamBank& bank() {
  static ParamBank built;
  [[maybe_unused]] static const bool once = (built.buildParameterBank(), true);
  return built;
}

int indexOf(const std::string& key) {
  const ParamKeys& keys = bank().keys();
  return static_cast<int>(std::find(keys.begin(), keys.end(), key) - keys.begin());
}

MigratedValues valuesOf(int version, const std::vector<PresetValue>& listed) {
  Preset preset;
  preset.version = version;
  preset.values = listed;
  return migrated(preset, bank().keys());
}

float migratedValue(int version, const std::string& key, float value) {
  const auto values = valuesOf(version, {{key, value, 1}});
  const auto& found = values.byIndex[static_cast<std::size_t>(indexOf(key))];
  EXPECT_TRUE(found) << key;
  return found.value_or(std::nanf(""));
}

/// One change of meaning, as a person would write it down.
struct Change {
  int firstGoodVersion;
  std::vector<std::string> keys;
  float (*rule)(float);
};

const std::vector<Change>& changes() {
  static const std::vector<Change> all{
      {13, {"FX1FB", "FX2FB", "FX3FB", "FX4FB"}, [](float v) { return v > 12 ? v + 1 : v; }},
      {12,
       {"FX1PR", "FX2PR", "FX3PR", "FX4PR", "FX1PO", "FX2PO", "FX3PO", "FX4PO"},
       [](float v) { return v > 17 ? v + 1 : v; }},
      {9,
       {"FX1PR", "FX2PR", "FX3PR", "FX4PR", "FX1PO", "FX2PO", "FX3PO", "FX4PO"},
       [](float v) { return v > 10 ? v + 2 : v; }},
      {9, {"FX1FB", "FX2FB", "FX3FB", "FX4FB"}, [](float v) { return v > 9 ? v + 1 : v; }},
      {6,
       {"LFOWave1", "LFOWave2", "LFOWave3", "LFOWave4"},
       [](float v) { return v > 18 ? v + 4 : v; }},
      {5,
       {"Timebase1", "Timebase2", "Timebase4"},
       [](float v) {
         static const std::map<int, float> list{{0, 0}, {1, 2}, {2, 3}, {3, 4},
                                                {4, 8}, {5, 9}, {6, 10}};
         const auto found = list.find(static_cast<int>(v));
         return found == list.end() ? 10 : found->second;
       }},
      {5,
       {"TapTimebase1", "TapTimebase2", "TapTimebase3", "TapTimebase4"},
       [](float v) {
         static const std::map<int, float> list{{0, 0}, {1, 1}, {2, 2}, {3, 3},
                                                {4, 4}, {5, 8}, {6, 9}, {7, 10}};
         const auto found = list.find(static_cast<int>(v));
         return found == list.end() ? 10 : found->second;
       }},
      {4,
       {"Level1", "Level2", "Level3", "Level4"},
       [](float v) { return static_cast<float>(std::log(double{v}) * 8.685889638065037); }},
  };
  return all;
}

float expected(int version, const std::string& key, float value) {
  for (const Change& change : changes()) {
    const bool isMeant =
        std::find(change.keys.begin(), change.keys.end(), key) != change.keys.end();
    if (isMeant && version < change.firstGoodVersion) value = change.rule(value);
  }
  return value;
}

/// Parameters that a value of some version does not become what the list says, a value for all.
int wrongOnes(int version, float value) {
  const ParamKeys& keys = bank().keys();
  std::vector<PresetValue> listed;
  for (const std::string& key : keys) listed.push_back({key, value, 1});
  const auto values = valuesOf(version, listed).byIndex;
  int wrong = 0;
  for (std::size_t i = 0; i < keys.size(); ++i) {
    if (values[i] != expected(version, keys[i], value)) ++wrong;
  }
  return wrong;
}

TEST(PresetMigration, EveryParameterOfEveryVersionFollowsTheListOfChanges) {
  for (int version = 0; version <= 15; ++version) {
    for (int quarter = 0; quarter <= 100; ++quarter) {
      const float value = 0.25f * static_cast<float>(quarter);
      EXPECT_EQ(wrongOnes(version, value), 0) << "version " << version << ", value " << value;
    }
  }
}

TEST(PresetMigration, ChangesOfOneValueStack) {
  EXPECT_EQ(migratedValue(5, "FX1PR", 18.0f), 21.0f);
  EXPECT_EQ(migratedValue(8, "FX2FB", 13.0f), 15.0f);
  EXPECT_EQ(migratedValue(9, "FX1PR", 18.0f), 19.0f);
  EXPECT_EQ(migratedValue(12, "FX1PR", 18.0f), 18.0f);
}

TEST(PresetMigration, TheThirdTimebaseKeepsItsNumber) {
  EXPECT_EQ(migratedValue(4, "Timebase3", 4.0f), 4.0f);
  EXPECT_EQ(migratedValue(4, "Timebase2", 4.0f), 8.0f);
  EXPECT_EQ(migratedValue(5, "Timebase2", 4.0f), 4.0f);
}

TEST(PresetMigration, ValuesThatNoOldMenuHadTakeItsNearestEntry) {
  for (const float wild : {7.0f, 1e30f, std::numeric_limits<float>::infinity()}) {
    EXPECT_EQ(migratedValue(4, "Timebase1", wild), 10.0f);
  }
  EXPECT_EQ(migratedValue(4, "Timebase1", -1e30f), 0.0f);
  EXPECT_EQ(migratedValue(4, "TapTimebase1", 2.9f), 2.0f) << "the fraction does not count";
}

TEST(PresetMigration, ALevelThatWasAGainBecomesDecibels) {
  EXPECT_NEAR(migratedValue(3, "Level1", 1.0f), 0.0f, 1e-6f);
  EXPECT_NEAR(migratedValue(3, "Level1", 0.5f), -6.0206f, 1e-4f);
  EXPECT_EQ(migratedValue(3, "Level1", 0.0f), -std::numeric_limits<float>::infinity());
  EXPECT_TRUE(std::isnan(migratedValue(3, "Level1", -1.0f)));
}

TEST(PresetMigration, ATappedDelayOnTheMixRouteIsQuietened) {
  for (const int version : {0, 7, 13, 14}) {
    const auto values = valuesOf(version, {{"DelayMode1", 3, 1},
                                           {"DelayRoute1", 6, 2},
                                           {"DelayMode3", 3, 3},
                                           {"DelayRoute2", 6, 4},
                                           {"DelayRoute4", 6, 5},
                                           {"DelayMode4", 3, 6}});
    const bool old = version < 14;
    EXPECT_EQ(values.quietenFeedback, (std::array<bool, 4>{old, false, false, old})) << version;
  }
}

TEST(PresetMigration, WhatIsNotListedHasNoValue) {
  const auto values = valuesOf(14, {{"Feedback2", 7, 1}, {"NoSuchKey", 9, 2}});
  ASSERT_EQ(values.byIndex.size(), 1095u);
  EXPECT_EQ(std::count(values.byIndex.begin(), values.byIndex.end(), std::nullopt), 1094);
  EXPECT_EQ(values.byIndex[kFeedback + 1], 7.0f);
}

TEST(PresetMigration, OfTwoParametersOfOneNameTheFirstTakesTheFirstLine) {
  const std::string key = bank().keys()[kLogicSmooth + 1];
  ASSERT_EQ(bank().keys()[kLogicSmooth + 2], key);
  const auto both = valuesOf(14, {{key, 1, 1}, {key, 2, 2}, {key, 3, 3}}).byIndex;
  EXPECT_EQ(both[kLogicSmooth + 1], 1.0f);
  EXPECT_EQ(both[kLogicSmooth + 2], 2.0f);
  const auto one = valuesOf(14, {{key, 1, 1}}).byIndex;
  EXPECT_EQ(one[kLogicSmooth + 1], 1.0f);
  EXPECT_FALSE(one[kLogicSmooth + 2]);
}

TEST(PresetMigration, OnlyVersionsBelowTheCurrentOneAreOld) {
  for (int version = -2; version <= 16; ++version) {
    Preset preset;
    preset.version = version;
    EXPECT_EQ(isOldPreset(preset), version >= 0 && version <= 13) << version;
  }
}

}  // namespace
}  // namespace orvantesco
