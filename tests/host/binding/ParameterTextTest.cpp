#include "host/binding/ParameterText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "fx/EffectCatalogue.h"
#include "params/ParamIndex.h"

namespace orvantesco {
namespace {

class ParameterTextTest : public ::testing::Test {
 protected:
  ParameterTextTest() { bank.buildParameterBank(); }

  /// The first fault in both ways through text at eleven positions of a parameter, else empty.
  std::string faultOf(int index) const {
    const IParam& param = *bank.getParam(index);
    for (int step = 0; step <= 10; ++step) {
      const double value = param.fromNormalized(step / 10.0);
      const std::string text = parameterText(bank, index, value);
      if (text.empty()) return "no text at " + std::to_string(value);
      const auto back = parameterValue(bank, index, text);
      if (!back) return "\"" + text + "\" is not read";
      if (*back < param.min() || *back > param.max()) return "\"" + text + "\" leaves the range";
      if (parameterText(bank, index, *back) != text) return "\"" + text + "\" becomes another text";
    }
    return {};
  }

  ParamBank bank;
};

TEST_F(ParameterTextTest, ReadsBackEveryTextThatItShows) {
  for (int index = 0; index < kNumParams; ++index) {
    EXPECT_EQ(faultOf(index), "") << index << " " << bank.getParam(index)->name();
  }
}

TEST_F(ParameterTextTest, ReadsBackTheNotesOfALfoInTempoMode) {
  for (int lfo = 0; lfo < numLfos; ++lfo) {
    bank.setLfoRateInNotes(lfo, true);
    EXPECT_EQ(faultOf(kLfoRate + lfo), "");
  }
}

TEST_F(ParameterTextTest, ReadsBackNormalisedValuesToo) {
  for (int index = 0; index < kNumParams; ++index) {
    for (int step = 0; step <= 10; ++step) {
      const std::string text = normalizedParameterText(bank, index, step / 10.0);
      const auto back = normalizedParameterValue(bank, index, text);
      ASSERT_TRUE(back.has_value()) << text;
      ASSERT_EQ(normalizedParameterText(bank, index, *back), text) << index;
    }
  }
}

TEST_F(ParameterTextTest, ShowsUnitsAndLabels) {
  EXPECT_EQ(parameterText(bank, kDelayTimeL, 500.0), "500.00 ms");
  EXPECT_EQ(parameterText(bank, kDelayMode, 1.0), bank.getParam(kDelayMode)->getDisplayText(1));
  EXPECT_EQ(parameterValue(bank, kDelayTimeL, "250"), 250.0);
  EXPECT_EQ(parameterValue(bank, kDelayTimeL, " 250 MS "), 250.0);
}

TEST_F(ParameterTextTest, NamesTheEffectThatRuns) {
  for (const auto stage : {EffectStage::pre, EffectStage::feedback, EffectStage::post}) {
    const int index = kFxTypePre + static_cast<int>(stage) * numSlots;
    double entry = 0.0;
    for (const int type : effectTypeIds(stage)) {
      EXPECT_EQ(parameterText(bank, index, entry), effectRecord(type).menuName);
      EXPECT_EQ(parameterValue(bank, index, effectRecord(type).menuName), entry);
      entry += 1.0;
    }
    EXPECT_EQ(parameterText(bank, index, entry), "OFF");
  }
}

TEST_F(ParameterTextTest, GivesAZeroNoSign) {
  EXPECT_EQ(parameterText(bank, kLROffset, -0.001), "0.00 ms");
  EXPECT_EQ(parameterText(bank, kLROffset, -0.01), "-0.01 ms");
}

TEST_F(ParameterTextTest, HoldsWhatItGetsToTheRange) {
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  constexpr double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(parameterText(bank, kDelayTimeL, infinity), "4000.00 ms");
  EXPECT_EQ(parameterText(bank, kDelayTimeL, nan), "1.00 ms");
  EXPECT_EQ(parameterText(bank, kFxTypePre, -infinity), "OFF");
  EXPECT_EQ(parameterValue(bank, kDelayTimeL, "1e300"), 4000.0);
  EXPECT_EQ(parameterValue(bank, kFxTypePre, "900"), 24.0);
}

TEST_F(ParameterTextTest, RefusesWhatIsNoValue) {
  for (const char* text : {"", " ", "nan", "five", "12 parsecs", "--3", "ms"}) {
    EXPECT_FALSE(parameterValue(bank, kDelayTimeL, text).has_value()) << text;
    EXPECT_FALSE(parameterValue(bank, kFxTypePre, text).has_value()) << text;
  }
}

TEST_F(ParameterTextTest, KnowsNoParameterOutsideTheBank) {
  for (const int index : {-1, kNumParams}) {
    EXPECT_EQ(parameterText(bank, index, 0.0), "");
    EXPECT_FALSE(parameterValue(bank, index, "0").has_value());
    EXPECT_FALSE(normalizedParameterValue(bank, index, "0").has_value());
  }
}

}  // namespace
}  // namespace orvantesco
