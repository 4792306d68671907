#include "cli/ParamsReport.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "core/EffectMenu.h"
#include "params/ParamText.h"

namespace orvantesco::cli {
namespace {

using Json = nlohmann::json;

class ParamsReportTest : public testing::Test {
 protected:
  ParamsReportTest() { bank.buildParameterBank(); }
  Json parameters(std::string_view match = "") const {
    return Json::parse(paramsJson(bank, match)).at("parameters");
  }

  ParamBank bank;
};

std::size_t linesOf(const std::string& text) {
  return static_cast<std::size_t>(std::ranges::count(text, '\n'));
}

TEST_F(ParamsReportTest, JsonHoldsEveryParameterInIndexOrder) {
  const Json all = parameters();
  ASSERT_EQ(all.size(), 1095u);
  for (int index = 0; index < kNumParams; ++index)
    ASSERT_EQ(all[static_cast<std::size_t>(index)].at("index"), index);
}

TEST_F(ParamsReportTest, JsonSaysAllOfAParameter) {
  const Json time = parameters()[kDelayTimeL];
  EXPECT_EQ(time, Json::parse(R"({"index": 344, "name": "Delay TimeL 1", "key": "DelayTimeL1",
      "type": "double", "default": 500.0, "min": 1.0, "max": 4000.0, "step": 0.01, "unit": "ms",
      "shape": 3.0, "labels": null})"));
  const Json mode = parameters()[kDelayMode];
  EXPECT_EQ(mode.at("type"), "enum");
  EXPECT_EQ(mode.at("labels"), Json({"FORWARD", "BACKWARD", "GRAIN", "TAPPED"}));
  EXPECT_EQ(parameters()[kSlotOn].at("type"), "int");
  EXPECT_EQ(parameters()[kNoOp].at("type"), "bool");
  EXPECT_EQ(parameters()[kNoOp].at("labels"), Json({"off", "on"}));
}

TEST_F(ParamsReportTest, AnEffectTypeHasTheMenuOfItsStageBesidesItsLabels) {
  const Json type = parameters()[kFxTypeFeedback];
  EXPECT_EQ(type.at("labels").size(), 25u);
  EXPECT_EQ(type.at("labels")[13], "COMPRESSOR");
  ASSERT_EQ(type.at("menu").size(), 15u);
  EXPECT_EQ(type.at("menu")[13], "VARAIBLE LPHP");
  EXPECT_EQ(type.at("menu")[14], "COMPRESSOR");
  EXPECT_EQ(parameters()[kFxTypePost].at("menu").size(), 23u);
  EXPECT_FALSE(parameters()[kDelayMode].contains("menu"));
}

TEST_F(ParamsReportTest, MatchLooksIntoNamesAndKeysInAnyCase) {
  EXPECT_EQ(parameters("delay timel").size(), 12u);
  EXPECT_EQ(parameters("DELAYTIMEL1").size(), 1u);
  EXPECT_EQ(parameters("Limiter").size(), 2u);
  EXPECT_EQ(parameters("no such thing").size(), 0u);
}

TEST_F(ParamsReportTest, TheTableHasALineForEachParameter) {
  EXPECT_EQ(linesOf(paramsTable(bank, "")), 1095u);
  EXPECT_EQ(paramsTable(bank, "DelayTimeL1"),
            "#344  Delay TimeL 1               double 500.00 ms     1..4000 ms\n");
  EXPECT_EQ(paramsTable(bank, "DelayMode1"),
            "#308  Delay Mode 1                enum   FORWARD       0..3                "
            "FORWARD, BACKWARD, GRAIN, TAPPED\n");
  EXPECT_EQ(paramsTable(bank, "no such thing"), "");
}

TEST_F(ParamsReportTest, AnEffectIsChosenByTheNameThatItsStageOffers) {
  const auto value = [&](int index, const char* text) {
    return parseValue(*bank.getParam(index), text, effectMenuOf(index));
  };
  EXPECT_EQ(std::get<double>(value(kFxTypeFeedback + 2, "VARAIBLE LPHP")), 13.0);
  EXPECT_EQ(std::get<double>(value(kFxTypeFeedback, "COMPRESSOR")), 14.0);
  EXPECT_EQ(std::get<double>(value(kFxTypePre, "COMPRESSOR")), 22.0);
  EXPECT_TRUE(std::holds_alternative<ParamError>(value(kFxTypeFeedback, "15")));
  EXPECT_TRUE(effectMenuOf(kFxTypePre - 1).empty());
  EXPECT_TRUE(effectMenuOf(kFxTypePost + 4).empty());
}

}  // namespace
}  // namespace orvantesco::cli
