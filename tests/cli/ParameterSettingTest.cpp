#include "cli/ParameterSetting.h"

#include <gtest/gtest.h>

#include "cli/Failing.h"
#include "params/ParamIndex.h"
#include "params/ParamText.h"

namespace orvantesco::cli {
namespace {

class ParameterSettingTest : public testing::Test {
 protected:
  ParameterSettingTest() { bank.buildParameterBank(); }
  ParameterSetting parse(const std::string& text) { return parseAssignment(bank, text); }
  std::string refusal(const std::string& text) {
    return failureOf(ExitCode::badCall, [&] { parse(text); });
  }
  ParamBank bank;
};

TEST_F(ParameterSettingTest, TakesNamesKeysAndIndices) {
  for (const char* name : {"Feedback 1", "FEEDBACK 1", "Feedback1", "feedback1", "#68"}) {
    const ParameterSetting setting = parse(std::string(name) + "=12.5");
    EXPECT_EQ(setting.index, kFeedback) << name;
    EXPECT_EQ(setting.value, 12.5) << name;
  }
}

TEST_F(ParameterSettingTest, TakesNumbersTextsAndNormalisedValues) {
  EXPECT_EQ(parse("SlotOn 2=1").value, 1.0);
  EXPECT_EQ(parse("SlotOn 2=on").value, 1.0);
  EXPECT_EQ(parse("Feedback 1=n:1").value, bank.getParam(kFeedback)->max());
}

TEST_F(ParameterSettingTest, OffersForAnEffectTypeTheMenuOfItsStage) {
  EXPECT_EQ(parse("FX1 PR=PEAK").value, 16.0);
  EXPECT_EQ(parse("FX1 FB=VARAIBLE LPHP").value, 13.0);
  EXPECT_EQ(parse("FX1 FB=compressor").value, 14.0);
  EXPECT_NE(refusal("FX1 FB=PEAK").find("VARAIBLE LPHP"), std::string::npos);
}

TEST_F(ParameterSettingTest, RefusesWhatIsNoAssignment) {
  EXPECT_NE(refusal("Feedback 1").find("NAME=VALUE"), std::string::npos);
  EXPECT_NE(refusal("Feedbak 1=5").find("Feedback1"), std::string::npos);
  EXPECT_NE(refusal("Feedback 1=soft").find("Feedback 1"), std::string::npos);
  EXPECT_NE(refusal("Feedback 1=1000").find(rangeText(*bank.getParam(kFeedback))),
            std::string::npos);
  EXPECT_NE(refusal("=5"), "");
  EXPECT_NE(refusal("Feedback 1="), "");
}

}  // namespace
}  // namespace orvantesco::cli
