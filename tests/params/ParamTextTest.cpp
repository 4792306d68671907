#include "params/ParamText.h"

#include <gtest/gtest.h>

#include <array>

#include "params/ParamBank.h"

namespace orvantesco {
namespace {

class ParamTextTest : public testing::Test {
 protected:
  ParamTextTest() { bank.buildParameterBank(); }
  const IParam& at(int index) const { return *bank.getParam(index); }

  double valueOf(int index, const char* text, LabelList menu = {}) const {
    const auto result = parseValue(at(index), text, menu);
    if (const auto* error = std::get_if<ParamError>(&result)) ADD_FAILURE() << error->message;
    return std::holds_alternative<double>(result) ? std::get<double>(result) : -1e9;
  }

  std::string errorOf(int index, const char* text, LabelList menu = {}) const {
    const auto result = parseValue(at(index), text, menu);
    const auto* error = std::get_if<ParamError>(&result);
    return error ? error->message : "no error";
  }

  ParamBank bank;
};

TEST_F(ParamTextTest, ValuesShowTheirUnitOrTheirText) {
  EXPECT_EQ(displayText(at(kDelayTimeL), 500.0), "500.00 ms");
  EXPECT_EQ(displayText(at(kDelayMode), 3.0), "TAPPED");
  EXPECT_EQ(displayText(at(kLevel), -3.0), "-3.0 %");
  EXPECT_EQ(displayText(at(kDelayFactorL), 4.0), "4");
  EXPECT_EQ(displayText(at(kGateLength), 8.0), "8 Steps");
}

TEST_F(ParamTextTest, NumbersAreInTheParametersOwnUnit) {
  EXPECT_EQ(valueOf(kDelayTimeL, "250.5"), 250.5);
  EXPECT_EQ(valueOf(kLevel, " -12 "), -12.0);
  EXPECT_EQ(valueOf(kDelayMode, "2"), 2.0);
  EXPECT_EQ(valueOf(kDelayTimeL, "1"), 1.0);
  EXPECT_EQ(valueOf(kDelayTimeL, "4e3"), 4000.0);
  EXPECT_FALSE(std::signbit(valueOf(kPanning, "-0")));
}

TEST_F(ParamTextTest, DisplayTextsAreTakenInAnyCase) {
  EXPECT_EQ(valueOf(kDelayMode, "BACKWARD"), 1.0);
  EXPECT_EQ(valueOf(kDelayMode, "backward"), 1.0);
  EXPECT_EQ(valueOf(kTimebase, "1/8d"), 5.0);
  EXPECT_EQ(valueOf(kSlotOn, "on"), 1.0);
  EXPECT_EQ(valueOf(kNoOp, "ON"), 1.0);
  EXPECT_EQ(valueOf(kInput + 3, "SLOT 1+2+3"), 11.0);
}

TEST_F(ParamTextTest, WhatReadsAsANumberIsTheNumberUnlessItIsMarkedAsText) {
  EXPECT_EQ(valueOf(kDelayTaps, "8"), 8.0);
  EXPECT_EQ(valueOf(kDelayTaps, "t:8"), 7.0);
  EXPECT_EQ(valueOf(kDelayTapFb, "t:16"), 16.0);
  EXPECT_EQ(valueOf(kDelayMode, "t: grain"), 2.0);
  EXPECT_EQ(errorOf(kDelayTimeL, "t:500"),
            "Delay TimeL 1: \"t:500\" is no number; expected 1..4000 ms");
}

TEST_F(ParamTextTest, NormalisedValuesFollowTheCurve) {
  EXPECT_EQ(valueOf(kDelayTimeL, "n:0"), 1.0);
  EXPECT_EQ(valueOf(kDelayTimeL, "n:1"), 4000.0);
  EXPECT_DOUBLE_EQ(valueOf(kDelayTimeL, "n:0.5"), 1.0 + 3999.0 * 0.125);
  EXPECT_EQ(valueOf(kDelayMode, "n:0.5"), 2.0);
  for (const char* text : {"n:1.1", "n:-0.1", "n:", "n:x", "n:nan"})
    EXPECT_NE(errorOf(kDelayTimeL, text).find("n:X takes X in 0..1"), std::string::npos) << text;
}

TEST_F(ParamTextTest, DiscreteParametersTakeTheNearestStep) {
  EXPECT_EQ(valueOf(kDelayFactorL, "3.4"), 3.0);
  EXPECT_EQ(valueOf(kDelayMode, "1.5"), 2.0);
}

TEST_F(ParamTextTest, AnErrorNamesTheParameterAndItsRange) {
  EXPECT_EQ(errorOf(kDelayTimeL, "5000"), "Delay TimeL 1: \"5000\" is out of range 1..4000 ms");
  EXPECT_EQ(errorOf(kInputGain, "-60.1"), "Input Gain 1: \"-60.1\" is out of range -60..12 dB");
  EXPECT_EQ(errorOf(kDelayFactorL, "0"), "DelayFactorL 1: \"0\" is out of range 1..16");
  EXPECT_EQ(errorOf(kDelayTimeL, "1e999"), "Delay TimeL 1: \"1e999\" is out of range 1..4000 ms");
  EXPECT_EQ(rangeText(at(kLfoRate)), "0.001..500 Hz");
}

TEST_F(ParamTextTest, AnErrorNamesTheTextsThatThereAre) {
  EXPECT_EQ(errorOf(kOutputMode, "NORMAL"),
            "Output Mode 1: \"NORMAL\" is no number and no display text; expected 0..2 or "
            "\"NORM\", \"SWAP\", \"MUTE\"");
  EXPECT_EQ(errorOf(kDelayTimeL, "long"),
            "Delay TimeL 1: \"long\" is no number; expected 1..4000 ms");
  EXPECT_NE(errorOf(kFxTypePre, ""), "no error");
  EXPECT_NE(errorOf(kFxTypePre, "t:"), "no error");
}

TEST_F(ParamTextTest, AMenuReplacesTheTextsAndEndsTheRange) {
  const std::array<const char*, 3> menu{"OFF", "FIRST", "SECOND"};
  EXPECT_EQ(valueOf(kFxTypeFeedback, "second", menu), 2.0);
  EXPECT_EQ(valueOf(kFxTypeFeedback, "2", menu), 2.0);
  EXPECT_EQ(errorOf(kFxTypeFeedback, "3", menu), "FX1 FB: \"3\" is out of range 0..2");
  EXPECT_EQ(errorOf(kFxTypeFeedback, "FREQ SHIFT", menu),
            "FX1 FB: \"FREQ SHIFT\" is no number and no display text; expected 0..2 or "
            "\"OFF\", \"FIRST\", \"SECOND\"");
  EXPECT_EQ(errorOf(kFxTypeFeedback, "n:1", menu), "FX1 FB: \"n:1\" is out of range 0..2");
}

TEST_F(ParamTextTest, TheRateOfAnLfoIsReadInItsPresentMode) {
  EXPECT_EQ(valueOf(kLfoRate, "12.5"), 12.5);
  EXPECT_NE(errorOf(kLfoRate, "1/4"), "no error");
  bank.setLfoRateInNotes(0, true);
  EXPECT_EQ(valueOf(kLfoRate, "1/4"), 4.0);
  EXPECT_EQ(errorOf(kLfoRate, "12.5"), "LFO Sync 1: \"12.5\" is out of range 0..7");
}

TEST_F(ParamTextTest, AHostsTextLeadsBackToItsValue) {
  for (int index = 0; index < kNumParams; ++index) {
    const IParam& param = at(index);
    const auto value = valueOfDisplayText(param, displayText(param, param.value()));
    ASSERT_TRUE(value) << param.name();
    EXPECT_NEAR(*value, param.value(), param.step() * 0.5) << param.name();
  }
  EXPECT_EQ(valueOfDisplayText(at(kDelayTaps), "8"), 7.0);
  EXPECT_EQ(valueOfDisplayText(at(kDelayTimeL), "250 MS"), 250.0);
  EXPECT_EQ(valueOfDisplayText(at(kDelayTimeL), "250"), 250.0);
  EXPECT_EQ(valueOfDisplayText(at(kDelayTimeL), "9999"), 4000.0);
  EXPECT_EQ(valueOfDisplayText(at(kFxTypePre), "23"), 23.0);
  EXPECT_EQ(valueOfDisplayText(at(kDelayTimeL), "ms"), std::nullopt);
  EXPECT_EQ(valueOfDisplayText(at(kDelayMode), "SIDEWAYS"), std::nullopt);
}

}  // namespace
}  // namespace orvantesco
