#include "host/dpf/DpfParameters.h"

#include <gtest/gtest.h>

#include <cctype>
#include <set>
#include <string>

#include "core/EffectMenu.h"
#include "host/binding/ParameterGroup.h"
#include "params/ParamIndex.h"

namespace orvantesco {
namespace {

bool isIdentifier(const std::string& symbol) {
  if (symbol.empty() || std::isdigit(static_cast<unsigned char>(symbol[0])) != 0) return false;
  return symbol.find_first_not_of(
             "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_") ==
         std::string::npos;
}

template <class Check>
void forEachParameter(Check check) {
  for (std::uint32_t index = 0; index < kDpfParameters; ++index) {
    DISTRHO::Parameter parameter;
    describeParameter(index, parameter);
    check(index, parameter);
  }
}

TEST(DpfParameters, HaveSymbolsOfTheirOwn) {
  std::set<std::string> seen;
  forEachParameter([&seen](std::uint32_t index, const DISTRHO::Parameter& parameter) {
    const std::string symbol = parameter.symbol.buffer();
    EXPECT_TRUE(isIdentifier(symbol)) << index << ": " << symbol;
    EXPECT_TRUE(seen.insert(symbol).second) << index << ": " << symbol;
  });
  EXPECT_EQ(seen.size(), 1096U);
}

TEST(DpfParameters, HaveNamesAndRangesThatHoldTheirDefaults) {
  forEachParameter([](std::uint32_t index, const DISTRHO::Parameter& parameter) {
    EXPECT_TRUE(parameter.name.isNotEmpty()) << index;
    EXPECT_LT(parameter.ranges.min, parameter.ranges.max) << index;
    EXPECT_LE(parameter.ranges.min, parameter.ranges.def) << index;
    EXPECT_GE(parameter.ranges.max, parameter.ranges.def) << index;
    EXPECT_TRUE(parameter.hints & DISTRHO::kParameterIsAutomatable) << index;
  });
}

TEST(DpfParameters, HaveALabelForEachValueOfAList) {
  int lists = 0;
  forEachParameter([&lists](std::uint32_t index, const DISTRHO::Parameter& parameter) {
    const auto& labels = parameter.enumValues;
    if (!labels.restrictedMode) return;
    ++lists;
    EXPECT_TRUE(parameter.hints & DISTRHO::kParameterIsInteger) << index;
    EXPECT_GE(static_cast<float>(labels.count), parameter.ranges.max - parameter.ranges.min + 1)
        << index;
  });
  EXPECT_GT(lists, 300);
}

/// What lies behind the end of a menu runs nothing, as its first entry does.
TEST(DpfParameters, NameTheEffectThatAStageRuns) {
  for (int index = kFxTypePre; index < kFxTypePre + 12; ++index) {
    const LabelList menu = effectMenuOf(index);
    DISTRHO::Parameter parameter;
    describeParameter(static_cast<std::uint32_t>(index), parameter);
    const auto& labels = parameter.enumValues;
    ASSERT_EQ(labels.count, 25) << index;
    EXPECT_TRUE(labels.restrictedMode) << index;
    for (std::size_t i = 0; i < labels.count; ++i) {
      EXPECT_EQ(labels.values[i].value, static_cast<float>(i));
      EXPECT_STREQ(labels.values[i].label.buffer(), menu[i < menu.size() ? i : 0]) << index;
    }
  }
}

TEST(DpfParameters, StandInGroupsThatHaveNamesAndSymbols) {
  std::set<std::uint32_t> groups;
  forEachParameter([&groups](std::uint32_t index, const DISTRHO::Parameter& parameter) {
    if (index != kDpfBypass) groups.insert(parameter.groupId);
  });
  ASSERT_EQ(groups.size(), parameterGroups().size());
  EXPECT_EQ(*groups.begin(), 0U);  // the wrapper wants them counted from 0 without a gap
  EXPECT_EQ(*groups.rbegin(), groups.size() - 1);
  for (const std::uint32_t id : groups) {
    DISTRHO::PortGroup group;
    describeGroup(id, group);
    EXPECT_TRUE(group.name.isNotEmpty()) << id;
    EXPECT_TRUE(isIdentifier(group.symbol.buffer())) << id;
  }
}

TEST(DpfParameters, EndWithTheBypass) {
  DISTRHO::Parameter parameter;
  describeParameter(kDpfBypass, parameter);
  EXPECT_EQ(parameter.designation, DISTRHO::kParameterDesignationBypass);
  EXPECT_EQ(defaultPortValue(kDpfBypass), 0.0F);
  EXPECT_EQ(kDpfBypass, 1095U);
}

TEST(DpfParameters, GiveTheRateOfAnLfoRoomForHzAndNotes) {
  DISTRHO::Parameter parameter;
  describeParameter(kLfoRate, parameter);
  EXPECT_EQ(parameter.ranges.min, 0.0F);
  EXPECT_EQ(parameter.ranges.max, 500.0F);
  EXPECT_EQ(parameter.enumValues.count, 0);
}

}  // namespace
}  // namespace orvantesco
