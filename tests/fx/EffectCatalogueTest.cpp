#include "fx/EffectCatalogue.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace orvantesco {
namespace {

using Ids = std::vector<int>;
using Words = std::vector<std::string>;

Ids idsOf(EffectStage stage) {
  const auto ids = effectTypeIds(stage);
  return {ids.begin(), ids.end()};
}

Words captionsOf(int id) {
  Words words;
  for (int i = 0; i < kFxParamCount; ++i) words.emplace_back(fxParameter(id, i).caption);
  return words;
}

std::vector<double> defaultsOf(int id) {
  std::vector<double> values;
  for (int i = 0; i < kFxParamCount; ++i) values.push_back(fxParameter(id, i).initial);
  return values;
}

Words labelsOf(int id, int index) {
  const auto labels = fxParamLabels(id, index);
  return {labels.begin(), labels.end()};
}

TEST(EffectCatalogue, eachStageOffersItsOwnList) {
  const Ids outer{0, 1,  2,  3,  4,  5,  14, 16, 18, 20, 23, 22,
                  6, 29, 30, 31, 33, 56, 57, 34, 35, 36, 37};
  EXPECT_EQ(idsOf(EffectStage::pre), outer);
  EXPECT_EQ(idsOf(EffectStage::post), outer);
  EXPECT_EQ(idsOf(EffectStage::feedback),
            (Ids{0, 1, 2, 4, 5, 15, 17, 19, 21, 24, 22, 32, 56, 57, 37}));
}

TEST(EffectCatalogue, oneListIndexNamesDifferentEffectsInTheTwoLists) {
  EXPECT_EQ(effectTypeIdAt(EffectStage::pre, 4), 4);
  EXPECT_EQ(effectTypeIdAt(EffectStage::feedback, 4), 5);
  EXPECT_STREQ(effectRecord(effectTypeIdAt(EffectStage::feedback, 4)).menuName, "PITCH SHIFT ST");
}

TEST(EffectCatalogue, indexAndIdConvertBothWays) {
  for (EffectStage stage : {EffectStage::pre, EffectStage::feedback, EffectStage::post}) {
    const int count = static_cast<int>(effectTypeIds(stage).size());
    for (int i = 0; i < count; ++i) {
      EXPECT_EQ(effectListIndex(stage, effectTypeIdAt(stage, i)), i);
    }
    EXPECT_EQ(effectTypeIdAt(stage, count), -1);
    EXPECT_EQ(effectTypeIdAt(stage, -1), -1);
  }
  EXPECT_EQ(effectListIndex(EffectStage::feedback, 3), -1);
}

TEST(EffectCatalogue, everyTypeHasItsMenuNameAndIcon) {
  const std::map<int, std::pair<std::string, std::string>> expected{
      {0, {"OFF", "fxic_off"}},           {1, {"FREQ SHIFT", "fxic_frq"}},
      {2, {"RING MOD", "fxic_rm"}},       {3, {"PHASE", "fxic_ph"}},
      {4, {"PITCH SHIFT", "fxic_ps1"}},   {5, {"PITCH SHIFT ST", "fxic_ps2"}},
      {6, {"WAVE SHAPE", "fxic_ws"}},     {7, {"", ""}},
      {14, {"SATURATE", "fxic_sat"}},     {15, {"SATURATE", "fxic_sat"}},
      {16, {"RECTIFY", "fxic_rect"}},     {17, {"RECTIFY", "fxic_rect"}},
      {18, {"DESTROY", "fxic_dest"}},     {19, {"DESTROY", "fxic_dest"}},
      {20, {"NOISE", "fxic_nois"}},       {21, {"NOISE", "fxic_nois"}},
      {22, {"LOFI II", "fxic_lofi2"}},    {23, {"LOFI I", "fxic_lofi1"}},
      {24, {"LOFI I", "fxic_lofi1"}},     {29, {"MULTI SVF", "fxic_svf"}},
      {30, {"HP/LP 24dB", "fxic_cheb"}},  {31, {"MULTI 12dB", "fxic_bt"}},
      {32, {"MULTI 12dB", "fxic_bt"}},    {33, {"PEAK", "fxic_pk"}},
      {34, {"PHASEBP", "fxic_phb"}},      {35, {"COMB", "fxic_comb"}},
      {36, {"VOWEL", "fxic_vow"}},        {37, {"COMPRESSOR", "fxic_comp"}},
      {56, {"DRIVE LP+HP", "fxic_lphp"}}, {57, {"VARAIBLE LPHP", "fxic_varilphp"}}};
  for (const auto& [id, words] : expected) {
    EXPECT_EQ(effectRecord(id).id, id);
    EXPECT_EQ(effectRecord(id).menuName, words.first);
    EXPECT_EQ(effectRecord(id).icon, words.second);
  }
}

TEST(EffectCatalogue, idsWithoutAnEffectReadAsOff) {
  for (int id = -1; id < 70; ++id) {
    const bool gap = id < 0 || (id >= 8 && id <= 13) || (id >= 25 && id <= 28) ||
                     (id >= 38 && id <= 55) || id > 57;
    EXPECT_EQ(effectRecord(id).id, gap ? 0 : id);
    EXPECT_EQ(effectRecord(id).build.kind == EffectClass::none, gap || id == 0);
  }
}

TEST(EffectCatalogue, theFiltersAreBuiltInTheirModes) {
  auto build = [](int id) {
    const EffectBuild& recipe = effectRecord(id).build;
    EXPECT_EQ(recipe.kind, EffectClass::biquad);
    return std::pair(recipe.argument, recipe.stages);
  };
  EXPECT_EQ(build(30), std::pair(16, 4));
  EXPECT_EQ(build(31), std::pair(0, 1));
  EXPECT_EQ(build(32), std::pair(25, 1));
  EXPECT_EQ(build(33), std::pair(10, 2));
  EXPECT_EQ(build(36), std::pair(21, 2));
}

TEST(EffectCatalogue, shapersAreBuiltByTheirIdAndPitchShiftersByTheirVoices) {
  for (int id : {6, 7, 14, 15, 16, 17, 18, 19, 20, 21, 23, 24}) {
    EXPECT_EQ(effectRecord(id).build.kind, EffectClass::shaper);
    EXPECT_EQ(effectRecord(id).build.argument, id);
  }
  EXPECT_EQ(effectRecord(4).build.argument, 0);
  EXPECT_EQ(effectRecord(5).build.argument, 1);
  EXPECT_EQ(effectRecord(34).build.argument, 5);
}

TEST(EffectCatalogue, everyKnobHasItsCaption) {
  const std::vector<std::pair<Ids, Words>> expected{
      {{1}, {"FREQ", "SCALE", "FB", "SPREAD", "MIX"}},
      {{2}, {"FREQ", "SHAPE", "WIDTH", "SPREAD", "MIX"}},
      {{3}, {"PHASE", "DEPTH", "STAGES", "SPREAD", "FB"}},
      {{4}, {"COARSE", "FINE", "SIZE", "DETUNE", "MIX"}},
      {{5}, {"COARSE L", "COARSE R", "SIZE", "DETUNE", "MIX"}},
      {{6}, {"MODE", "GAIN", "FREQ", "Q", "SPREAD"}},
      {{14, 16, 18, 20}, {"GAIN", "LOPASS", "Q", "SPREAD", "MIX"}},
      {{15, 17, 19, 21}, {"GAIN", "FREQ", "MODE", "SPREAD", "MIX"}},
      {{22}, {"DRIVE", "NOISE", "DNSAMPLE", "BITCRUSH", "MIX"}},
      {{23}, {"RATE", "HIPASS", "Q", "SPREAD", "MIX"}},
      {{24}, {"RATE", "FREQ", "MODE", "SPREAD", "MIX"}},
      {{29, 30, 31}, {"FREQ", "Q", "SPREAD", "MODE", "MIX"}},
      {{32}, {"FREQ", "SLOPE", "SPREAD", "MODE", "MIX"}},
      {{33}, {"FREQ", "Q", "SPREAD", "GAIN", "DIM"}},
      {{34}, {"FREQ", "Q", "SPREAD", "POLES", "MIX"}},
      {{35}, {"FREQ", "FB", "HIPASS", "LOPASS", "SPREAD"}},
      {{36}, {"VOWEL POS", "MODE", "SPREAD", "GAIN", "DIM"}},
      {{37}, {"THRESH", "RATIO", "ATTACK", "RELEASE", "GAIN"}},
      {{56}, {"FREQ HP", "FREQ LP", "GAIN", "MODE", "MIX"}},
      {{57}, {"FREQ HP", "HP SLOPE", "FREQ LP", "LP SLOPE", "MIX"}}};
  for (const auto& [ids, captions] : expected) {
    for (int id : ids) EXPECT_EQ(captionsOf(id), captions) << id;
  }
}

TEST(EffectCatalogue, choosingATypeSetsTheseValues) {
  const std::vector<std::pair<Ids, std::vector<double>>> expected{
      {{1}, {0.5, 0, 0, 0.5, 1}},
      {{2}, {0.1, 0, 1, 0.5, 1}},
      {{3}, {0.5, 1, 0, 0.5, 0.5}},
      {{4}, {0.5, 0.5, 0.5, 0.5, 0.5}},
      {{5}, {0.5, 0.5, 0.5, 0.1, 0.5}},
      {{6}, {0, 0, 0, 0, 0.5}},
      {{14, 16, 18, 20}, {0, 1, 0, 0.5, 1}},
      {{15, 17, 19, 21}, {0, 1, 0, 0.5, 0.5}},
      {{23}, {0, 0, 0, 0.5, 1}},
      {{24}, {0, 0, 0, 0.5, 0.5}},
      {{22}, {0, 0, 0, 0, 1}},
      {{29, 30, 31, 32, 34}, {0.5, 0, 0.5, 0, 1}},
      {{33}, {0.5, 0, 0.5, 0.5, 1}},
      {{35}, {0, 0.5, 0, 0.5, 0.5}},
      {{36}, {0, 0, 0.5, 0, 0}},
      {{37}, {0, 0, 0, 0, 0}},
      {{56}, {0, 0.7, 0, 0, 1}},
      {{57}, {0, 0, 0.7, 0, 1}}};
  for (const auto& [ids, values] : expected) {
    for (int id : ids) EXPECT_EQ(defaultsOf(id), values) << id;
  }
}

TEST(EffectCatalogue, bipolarKnobsAreThoseThatRestInTheMiddle) {
  const std::vector<std::pair<int, int>> bipolar{
      {1, 0},  {1, 3},  {2, 3},  {3, 3},  {4, 0},  {4, 1},  {4, 3},  {5, 0},
      {5, 1},  {6, 4},  {23, 3}, {14, 3}, {19, 3}, {24, 3}, {29, 2}, {30, 2},
      {31, 2}, {32, 2}, {33, 2}, {33, 3}, {34, 2}, {35, 4}, {36, 2}};
  for (const auto& [id, index] : bipolar) {
    EXPECT_TRUE(isBipolarFxParam(id, index)) << id << " P" << index;
    double shown = 0.5, native = 0.0;
    fxParamScale(id, index, &shown, &native);
    EXPECT_EQ(shown, 0.0);
  }
  EXPECT_FALSE(isBipolarFxParam(5, 3));
  EXPECT_FALSE(isBipolarFxParam(34, 4));
  EXPECT_FALSE(isBipolarFxParam(37, 0));
  EXPECT_FALSE(isBipolarFxParam(1, 7));
}

TEST(EffectCatalogue, selectionsHaveTheirLabels) {
  EXPECT_EQ(labelsOf(6, 0),
            (Words{"SATURATE", "TUBE", "RECT", "SIN1", "SIN2", "SIN3", "ASYM1", "ASYM2"}));
  for (auto [id, index] : {std::pair(32, 1), std::pair(57, 1)}) {
    EXPECT_EQ(labelsOf(id, index), (Words{"12dB", "24dB", "36dB", "48dB"}));
  }
  for (int id : {15, 17, 19, 21, 24}) {
    EXPECT_EQ(labelsOf(id, 2), (Words{"OFF", "LP", "HP", "BP", "NOTCH"}));
  }
  EXPECT_EQ(labelsOf(31, 3), (Words{"LP", "HP", "BP", "AP"}));
  EXPECT_EQ(labelsOf(32, 3), (Words{"LP", "HP", "BP", "AP"}));
  EXPECT_EQ(labelsOf(29, 3), (Words{"LP", "HP", "BP1", "BP2"}));
  EXPECT_EQ(labelsOf(30, 3), (Words{"LP", "HP"}));
  EXPECT_EQ(labelsOf(56, 3), (Words{"24db-S", "48db-S", "72db-S", "24db-P", "48db-P", "72db-P"}));
  EXPECT_EQ(labelsOf(57, 3), (Words{"12db", "24db", "36db", "48db", "48db"}));
  EXPECT_TRUE(fxParamLabels(31, 0).empty());
  EXPECT_EQ(fxParamLabel(31, 0, 3.0), nullptr);
}

TEST(EffectCatalogue, aLabelNamesWhatRuns) {
  auto label = [](int id, int index, double x) {
    double native = 0.0;
    fxParamScale(id, index, &x, &native);
    return std::string(fxParamLabel(id, index, x));
  };
  EXPECT_EQ(label(32, 1, 0.0), "12dB");
  EXPECT_EQ(label(32, 1, 0.3), "24dB");
  EXPECT_EQ(label(32, 1, 0.5), "36dB");
  EXPECT_EQ(label(32, 1, 0.9), "48dB");
  EXPECT_EQ(label(32, 1, 1.0), "48dB");
  EXPECT_EQ(label(6, 0, 1.0), "ASYM2");
  EXPECT_EQ(label(57, 3, 1.0), "48db");
  EXPECT_EQ(label(56, 3, 0.6), "24db-P");
}

TEST(EffectCatalogue, readoutsFallBackToAPlainPercent) {
  EXPECT_STREQ(fxReadout(0, 0).name, "");
  EXPECT_STREQ(fxReadout(0, 0).format, "%.2f");
  EXPECT_STREQ(fxReadout(0, 0).unit, " %");
  EXPECT_STREQ(fxReadout(4, 0).name, "PITCH COARSE");
  EXPECT_STREQ(fxReadout(4, 0).unit, " ST");
}

TEST(EffectCatalogue, fourTypesUseTheirFifthKnobForSomethingElseThanMix) {
  for (EffectStage stage : {EffectStage::pre, EffectStage::feedback}) {
    for (int id : effectTypeIds(stage)) {
      EXPECT_EQ(fifthParamIsMix(id), id != 6 && id != 35 && id != 36 && id != 37);
    }
  }
}

TEST(EffectCatalogue, masterEffectsHaveTheirPanels) {
  const std::vector<std::pair<std::string, std::vector<double>>> expected{
      {"OFF", {0, 0, 0, 0, 0}},
      {"ORVANT", {0.25, 0.5, 0.3, 0.4, 0}},
      {"REVERB", {0.4, 0.1, 0.2, 0.5, 0}},
      {"ROOM", {0.5, 0.1, 0.1, 0.2, 0}},
      {"FIX EQ", {0.5, 0, 0.5, 0.5, 0}},
      {"2 BAND EQ", {0.5, 0.25, 0.5, 0.65, 0}},
      {"LO/HI SHELF", {0.5, 0.25, 0.5, 0.5, 0}},
      {"DRIVE LP+HP", {0, 1, 0, 0, 0}}};
  for (int id = 38; id <= 45; ++id) {
    const MasterEffectRecord* record = masterEffectRecord(id);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->id, id);
    const auto& [name, values] = expected[static_cast<size_t>(id - 38)];
    EXPECT_EQ(record->menuName, name);
    for (size_t i = 0; i < 5; ++i) {
      EXPECT_EQ(record->defaults[i], values[i]);
      const bool quadruple = id == 43 && (i == 1 || i == 3);
      const bool twofold = id == 44 && i == 3;
      EXPECT_EQ(record->editorScale[i], quadruple ? 4.0 : twofold ? 2.0 : 1.0);
    }
  }
  EXPECT_EQ(masterEffectRecord(37), nullptr);
  EXPECT_EQ(masterEffectRecord(46), nullptr);
}

}  // namespace
}  // namespace orvantesco
