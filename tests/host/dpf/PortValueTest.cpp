#include "host/dpf/PortValue.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "host/OfflineHost.h"
#include "params/ParamBank.h"
#include "params/ParamIndex.h"

namespace orvantesco {
namespace {

class PortValue : public testing::Test {
 protected:
  double valueOf(int index) { return effect.GetParam(index)->value(); }

  OfflineHost host;
  Orvantesco effect{host};
};

TEST_F(PortValue, IsTheDecimalThatAPersonMeant) {
  EXPECT_EQ(decimalOf(33.3F), 33.3);
  EXPECT_EQ(decimalOf(-0.01F), -0.01);
  EXPECT_EQ(decimalOf(350.07F), 350.07);
  EXPECT_EQ(decimalOf(7.0F), 7.0);
  EXPECT_EQ(decimalOf(0.0F), 0.0);
}

TEST_F(PortValue, ReachesTheParameter) {
  takePortValue(effect, kFeedback, 33.3F);
  EXPECT_EQ(valueOf(kFeedback), 33.3);
}

TEST_F(PortValue, ChangesNothingWhereItIsTheValueRoundedToAFloat) {
  for (const double value : {33.3 + 1e-7, 0.1 + 1e-9, 159.999999999, 100.0 / 3.0}) {
    effect.GetParam(kFeedback)->setValue(value);
    takePortValue(effect, kFeedback, static_cast<float>(value));
    EXPECT_EQ(valueOf(kFeedback), value);
  }
}

TEST_F(PortValue, IsHeldToTheRange) {
  takePortValue(effect, kFeedback, 1e9F);
  EXPECT_EQ(valueOf(kFeedback), 160.0);
  takePortValue(effect, kFeedback, -1e9F);
  EXPECT_EQ(valueOf(kFeedback), 0.0);
}

TEST_F(PortValue, IsRoundedWhereTheParameterHasWholeSteps) {
  takePortValue(effect, kInput, 3.4F);
  EXPECT_EQ(valueOf(kInput), 3.0);
}

TEST_F(PortValue, IsRefusedWhereItIsNoNumber) {
  const double before = valueOf(kFeedback);
  takePortValue(effect, kFeedback, std::nanf(""));
  takePortValue(effect, kFeedback, std::numeric_limits<float>::infinity());
  EXPECT_EQ(valueOf(kFeedback), before);
}

TEST_F(PortValue, IsRefusedWhereThereIsNoSuchParameter) {
  takePortValue(effect, -1, 1.0F);
  takePortValue(effect, kNumParams, 1.0F);
}

TEST_F(PortValue, SpeaksOfNotesWhereAnLfoDoes) {
  effect.bank->setLfoRateInNotes(0, true);
  takePortValue(effect, kLfoRate, 4.6F);
  EXPECT_EQ(valueOf(kLfoRate), 5.0);
  effect.bank->setLfoRateInNotes(0, false);
  takePortValue(effect, kLfoRate, 4.6F);
  EXPECT_EQ(valueOf(kLfoRate), 4.6);
}

TEST_F(PortValue, IsHeldToTheFormThatAnLfoSpeaks) {
  takePortValue(effect, kLfoRate, 0.0F);
  EXPECT_EQ(valueOf(kLfoRate), 0.001);
  effect.bank->setLfoRateInNotes(0, true);
  takePortValue(effect, kLfoRate, 500.0F);
  EXPECT_EQ(valueOf(kLfoRate), 7.0);
  takePortValue(effect, kLfoRate, 0.0F);
  EXPECT_EQ(valueOf(kLfoRate), 0.0);
}

}  // namespace
}  // namespace orvantesco
