#include "params/IParam.h"

#include <gtest/gtest.h>

#include <limits>

namespace orvantesco {
namespace {

std::string shown(const IParam& param, double value, bool isNormalised = false,
                  bool useDisplayText = true) {
  char text[32];
  param.formatValue(value, isNormalised, text, useDisplayText);
  return text;
}

TEST(IParam, IsEmptyBeforeItsFirstInit) {
  const IParam param;
  EXPECT_EQ(param.type(), ParamType::none);
  EXPECT_EQ(param.value(), 0.0);
  EXPECT_EQ(param.min(), 0.0);
  EXPECT_EQ(param.max(), 0.0);
  EXPECT_EQ(param.step(), 0.0);
  EXPECT_EQ(param.shape(), 1.0);
  EXPECT_EQ(param.defaultValue(), 0.0);
  EXPECT_EQ(param.displayPrecision(), 0);
  EXPECT_STREQ(param.name(), "");
  EXPECT_STREQ(param.label(), "");
  EXPECT_STREQ(param.group(), "");
  EXPECT_TRUE(param.form().displayTexts.empty());
  EXPECT_EQ(param.getNormalized(), 0.0);
}

TEST(IParam, HasTheTypeNumbersThatHostsKnow) {
  EXPECT_EQ(static_cast<int>(ParamType::none), 0);
  EXPECT_EQ(static_cast<int>(ParamType::boolean), 1);
  EXPECT_EQ(static_cast<int>(ParamType::integer), 2);
  EXPECT_EQ(static_cast<int>(ParamType::enumeration), 3);
  EXPECT_EQ(static_cast<int>(ParamType::real), 4);
}

TEST(IParam, TheFirstInitFixesTheType) {
  IParam param;
  param.initDouble({"a"}, 0.5, {0.0, 10.0, 0.01});
  param.initEnum({"b"}, 1, 4);
  EXPECT_EQ(param.type(), ParamType::real);
  EXPECT_STREQ(param.name(), "b");
  EXPECT_EQ(param.max(), 3.0);
}

TEST(IParam, AnInitSetsTheValueUnlessItIsToStay) {
  IParam param;
  param.initDouble({"a"}, 0.5, {0.0, 10.0, 0.01});
  param.setValue(7.0);
  param.setDisplayText(0, "zero");
  param.initDouble({"a"}, 2.0, {0.0, 5.0, 0.01}, KeepValue::yes);
  EXPECT_EQ(param.value(), 7.0);
  EXPECT_EQ(param.defaultValue(), 2.0);
  EXPECT_TRUE(param.form().displayTexts.empty());
  param.setDisplayText(0, "zero");
  param.initDouble({"a"}, 2.0, {0.0, 5.0, 0.01});
  EXPECT_EQ(param.value(), 2.0);
  EXPECT_EQ(param.form().displayTexts.size(), 1u);
}

TEST(IParam, ARangeHasAtLeastOneStep) {
  IParam param;
  param.initDouble({"a"}, 1.0, {1.0, 1.0, 0.25});
  EXPECT_EQ(param.max(), 1.25);
  IParam single;
  single.initEnum({"b"}, 0, 1);
  EXPECT_EQ(single.max(), 1.0);
  IParam none;
  none.initEnum({"c"}, 0, 0);
  EXPECT_EQ(none.max(), 1.0);
}

TEST(IParam, AShapeOfZeroLeavesTheOldOne) {
  IParam param;
  param.initDouble({"a"}, 0.0, {0.0, 1.0, 0.1, 3.0});
  param.initDouble({"a"}, 0.0, {0.0, 1.0, 0.1, 0.0});
  EXPECT_EQ(param.shape(), 3.0);
  param.setShape(0.0);
  EXPECT_EQ(param.shape(), 3.0);
  param.setShape(2.0);
  EXPECT_EQ(param.shape(), 2.0);
}

TEST(IParam, LongNamesAndUnitsAreCutToTheirField) {
  const std::string longText(40, 'x');
  IParam param;
  param.initDouble({longText.c_str(), longText.c_str()}, 0.0, {});
  EXPECT_EQ(param.name(), std::string(31, 'x'));
  EXPECT_EQ(param.label(), std::string(31, 'x'));
}

TEST(IParam, AShapeOfTwoMapsTheMiddleToAQuarterOfTheRange) {
  IParam param;
  param.initDouble({"a"}, 0.0, {0.0, 100.0, 0.01, 2.0});
  EXPECT_DOUBLE_EQ(param.fromNormalized(0.5), 25.0);
  EXPECT_DOUBLE_EQ(param.toNormalized(25.0), 0.5);
}

TEST(IParam, NormalisationGoesBothWaysForEveryCurve) {
  for (const double shape : {0.5, 1.0, 2.0, 3.0, 4.0}) {
    IParam param;
    param.initDouble({"a"}, 0.0, {-60.0, 12.0, 0.1, shape});
    double worst = 0.0;
    for (int i = 0; i <= 1000; ++i) {
      const double x = i / 1000.0;
      const double plain = -60.0 + 72.0 * std::pow(x, shape);
      worst = std::max(worst, std::abs(param.fromNormalized(x) - plain));
      param.setNormalized(x);
      worst = std::max(worst, std::abs(param.fromNormalized(param.getNormalized()) - plain));
    }
    EXPECT_LT(worst, 1e-12) << shape;
    EXPECT_EQ(param.toNormalized(-60.0), 0.0);
    EXPECT_EQ(param.toNormalized(12.0), 1.0);
    EXPECT_EQ(param.fromNormalized(0.0), -60.0);
    EXPECT_EQ(param.fromNormalized(1.0), 12.0);
  }
}

TEST(IParam, AValueOutOfRangeNormalisesToTheEndButStays) {
  IParam param;
  param.initDouble({"a"}, 5.0, {1.0, 10.0, 0.1, 3.0});
  param.setValue(-4.0);
  EXPECT_EQ(param.value(), -4.0);
  EXPECT_EQ(param.getNormalized(), 0.0);
  param.setValue(400.0);
  EXPECT_EQ(param.value(), 400.0);
  EXPECT_EQ(param.getNormalized(), 1.0);
}

TEST(IParam, DiscreteValuesSnapToTheNearestStep) {
  IParam param;
  param.initInt({"a"}, 4, {1, 16});
  param.setNormalized(0.5);  // 8.5 of 1..16
  EXPECT_EQ(param.value(), 9.0);
  param.setNormalized(0.49);  // 8.35
  EXPECT_EQ(param.value(), 8.0);
  param.setNormalized(1.0);
  EXPECT_EQ(param.value(), 16.0);
  IParam real;
  real.initDouble({"b"}, 0.0, {0.0, 10.0, 1.0});
  real.setNormalized(0.44);
  EXPECT_DOUBLE_EQ(real.value(), 4.4);
}

TEST(IParam, WhatIsNoValueChangesNothing) {
  IParam param;
  param.initDouble({"a"}, 5.0, {1.0, 10.0, 0.1, 3.0});
  param.setValue(std::numeric_limits<double>::quiet_NaN());
  param.setValue(std::numeric_limits<double>::infinity());
  EXPECT_EQ(param.value(), 5.0);
  EXPECT_EQ(param.fromNormalized(std::numeric_limits<double>::quiet_NaN()), 1.0);
  EXPECT_EQ(param.fromNormalized(-0.5), 1.0);
  EXPECT_EQ(param.fromNormalized(2.0), 10.0);
  EXPECT_EQ(param.toNormalized(std::numeric_limits<double>::quiet_NaN()), 0.0);
}

TEST(IParam, AFormIsSwitchedAsAWholeAndTheValueStays) {
  IParam param;
  param.initDouble({"rate", "Hz"}, 0.5, {0.001, 500.0, 0.01, 4.0});
  param.setValue(3.0);
  EXPECT_EQ(param.addForm(), 1);
  param.initEnum({"note"}, 0, 8, KeepValue::yes);
  param.setDisplayText(3, "third");
  EXPECT_EQ(param.type(), ParamType::real);
  EXPECT_EQ(param.value(), 3.0);
  EXPECT_EQ(shown(param, 3.0), "third");
  EXPECT_EQ(param.shape(), 1.0);
  param.selectForm(0);
  EXPECT_EQ(shown(param, 3.0), "3.00");
  EXPECT_STREQ(param.name(), "rate");
  EXPECT_EQ(param.shape(), 4.0);
  param.selectForm(2);
  param.selectForm(-1);
  EXPECT_STREQ(param.name(), "rate");
}

TEST(IParam, AListOverARealNumberTakesAndShowsTheNearestEntry) {
  IParam param;
  param.initDouble({"rate"}, 0.5, {0.001, 500.0, 0.01, 4.0});
  param.initEnum({"note"}, 0, 8, KeepValue::yes);
  param.setDisplayText(3, "three");
  param.setDisplayText(4, "four");
  EXPECT_EQ(shown(param, 3.4), "three");
  EXPECT_EQ(shown(param, 3.6), "four");
  param.setNormalized(0.5);
  EXPECT_EQ(param.value(), 4.0);
}

TEST(IParam, ADiscreteRecordStaysDiscreteAsADouble) {
  IParam param;
  param.initInt({"a"}, 0, {0, 4});
  param.initDouble({"a"}, 0.0, {0.0, 4.0, 0.5});
  param.setNormalized(0.3);  // 1.2
  EXPECT_EQ(param.value(), 1.0);
}

}  // namespace
}  // namespace orvantesco
