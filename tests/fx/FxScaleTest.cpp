#include "fx/FxScale.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <limits>
#include <set>

#include "fx/EffectCatalogue.h"
#include "fx/FxScaleTable.h"

namespace orvantesco {
namespace {

using testing_support::expectedEffectRows;
using testing_support::KnobCell;

bool agrees(double actual, double expected) {
  return std::fabs(actual - expected) <= 1e-12 * std::max(1.0, std::fabs(expected));
}

void expectKnob(int id, int index, const KnobCell& expected) {
  const FxParameter& parameter = fxParameter(id, index);
  EXPECT_EQ(parameter.name, expected.name) << id << " P" << index;
  EXPECT_EQ(parameter.unit, expected.unit) << id << " P" << index;
  int wrong = 0;
  for (int percent = 0; percent <= 1000; ++percent) {
    const double x = percent * 0.1 * 0.01;
    double value = x;
    double native = -1e9;
    fxParamScale(id, index, &value, &native);
    const auto model = expected.rule(x);
    if (!agrees(value, model.shown) || !agrees(native, model.control)) ++wrong;
  }
  EXPECT_EQ(wrong, 0) << id << " P" << index;
}

TEST(FxScale, everyKnobOfEveryEffectShowsAndSendsItsNumbers) {
  std::set<int> seen;
  for (const auto& row : expectedEffectRows()) {
    for (int id : row.ids) {
      seen.insert(id);
      for (int index = 0; index < kFxParamCount; ++index) {
        expectKnob(id, index, row.knobs[static_cast<size_t>(index)]);
      }
    }
  }
  for (EffectStage stage : {EffectStage::pre, EffectStage::feedback, EffectStage::post}) {
    for (int id : effectTypeIds(stage)) EXPECT_TRUE(id == kNoEffect || seen.contains(id)) << id;
  }
}

TEST(FxScale, endsAndMiddlesReadAsAPersonExpects) {
  auto shown = [](int id, int index, double x) {
    double native = 0.0;
    fxParamScale(id, index, &x, &native);
    return x;
  };
  EXPECT_DOUBLE_EQ(shown(30, 0, 0.0), 50.0);
  EXPECT_NEAR(shown(30, 0, 1.0), 20000.0, 1e-9);
  EXPECT_DOUBLE_EQ(shown(4, 0, 0.5), 0.0);
  EXPECT_DOUBLE_EQ(shown(4, 0, 0.0), -12.0);
  EXPECT_DOUBLE_EQ(shown(33, 3, 1.0), 24.0);
  EXPECT_DOUBLE_EQ(shown(37, 0, 1.0), -50.0);
  EXPECT_DOUBLE_EQ(shown(35, 0, 1.0), 10000.0);
  EXPECT_DOUBLE_EQ(shown(3, 2, 1.0), 8.0);
  EXPECT_DOUBLE_EQ(shown(34, 3, 1.0), 7.0);
  EXPECT_DOUBLE_EQ(shown(1, 1, 1.0), 1000.0);
}

struct Selection {
  FxScale scale;
  double first, last;
};

constexpr Selection kSelections[] = {
    {FxScale::shapeMode, 0, 7}, {FxScale::shaperFilterMode, 0, 4}, {FxScale::svfMode, 0, 3},
    {FxScale::steepMode, 0, 1}, {FxScale::multiMode, 0, 3},        {FxScale::pairMode, 0, 5},
    {FxScale::sideSlope, 0, 3}, {FxScale::shiftDecade, 10, 1000},  {FxScale::phaserStages, 1, 8},
};

TEST(FxScale, selectionsStayWithinTheirListForAnyInput) {
  for (double x : {-5.0, 1.5, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
    for (const auto& [scale, first, last] : kSelections) {
      const double shown = scaleFxParam(scale, x).shown;
      EXPECT_EQ(shown, x > 1.0 ? last : first) << static_cast<int>(scale) << " at " << x;
    }
  }
}

/// A read-out has no "-0": where a whole number is 0 it has no sign.
TEST(FxScale, aWholeNumberJustBelowTheMiddleIsPlainZero) {
  for (FxScale scale : {FxScale::semitones, FxScale::peakGainDb}) {
    char text[16];
    std::snprintf(text, sizeof text, formatOfScale(scale), scaleFxParam(scale, 0.495).shown);
    EXPECT_STREQ(text, "0") << static_cast<int>(scale);
  }
}

TEST(FxScale, wholeNumbersPrintWithoutDecimals) {
  EXPECT_STREQ(formatOfScale(FxScale::semitones), "%.0f");
  EXPECT_STREQ(formatOfScale(FxScale::phaserStages), "%.0f");
  EXPECT_STREQ(formatOfScale(FxScale::percent), "%.2f");
  EXPECT_STREQ(formatOfScale(FxScale::frequency), "%.2f");
}

}  // namespace
}  // namespace orvantesco
