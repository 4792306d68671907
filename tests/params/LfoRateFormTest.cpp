#include <gtest/gtest.h>

#include "params/ParamBank.h"
#include "params/ParamText.h"

namespace orvantesco {
namespace {

class LfoRateFormTest : public testing::Test {
 protected:
  LfoRateFormTest() { bank.buildParameterBank(); }

  ParamBank bank;
  IParam& rate = *bank.getParam(kLfoRate + 1);
};

TEST_F(LfoRateFormTest, SpeaksOfHzAtFirst) {
  EXPECT_STREQ(rate.name(), "LFO Rate 2");
  EXPECT_EQ(displayText(rate, rate.value()), "0.50 Hz");
}

TEST_F(LfoRateFormTest, OffersEightNotesInTempoMode) {
  bank.setLfoRateInNotes(1, true);
  EXPECT_STREQ(rate.name(), "LFO Sync 2");
  EXPECT_STREQ(rate.label(), "");
  EXPECT_EQ(rate.min(), 0.0);
  EXPECT_EQ(rate.max(), 7.0);
  EXPECT_EQ(rate.step(), 1.0);
  EXPECT_EQ(rate.shape(), 1.0);
  EXPECT_EQ(rate.displayPrecision(), 0);
  EXPECT_EQ(rate.type(), ParamType::real);
  const std::vector<std::string> notes{"4 BARS", "2 BARS", "1 BAR", "1/2",
                                       "1/4",    "1/8",    "1/16",  "1/32"};
  for (int i = 0; i < 8; ++i) EXPECT_EQ(displayText(rate, i), notes.at(std::size_t(i)));
}

TEST_F(LfoRateFormTest, KeepsItsValueThroughBothChanges) {
  rate.setValue(2.25);
  bank.setLfoRateInNotes(1, true);
  EXPECT_EQ(rate.value(), 2.25);
  EXPECT_EQ(displayText(rate, rate.value()), "1 BAR");
  bank.setLfoRateInNotes(1, false);
  EXPECT_EQ(rate.value(), 2.25);
  EXPECT_EQ(displayText(rate, rate.value()), "2.25 Hz");
  EXPECT_EQ(rate.defaultValue(), 0.5);
  EXPECT_EQ(rate.max(), 500.0);
  EXPECT_EQ(rate.min(), 0.001);
  EXPECT_EQ(rate.shape(), 4.0);
}

TEST_F(LfoRateFormTest, AHostsPositionLandsOnANoteAndShowsIt) {
  bank.setLfoRateInNotes(1, true);
  for (int note = 0; note < 8; ++note) {
    rate.setNormalized((note + 0.3) / 7.0);
    EXPECT_EQ(rate.value(), note);
    EXPECT_DOUBLE_EQ(rate.getNormalized(), note / 7.0);
  }
}

TEST_F(LfoRateFormTest, TheOtherLfosAndTheKeysStayAsTheyAre) {
  bank.setLfoRateInNotes(1, true);
  EXPECT_STREQ(bank.getParam(kLfoRate)->name(), "LFO Rate 1");
  EXPECT_STREQ(bank.getParam(kLfoRate + 2)->name(), "LFO Rate 3");
  EXPECT_EQ(bank.keys()[kLfoRate + 1], "LFORate2");
}

TEST_F(LfoRateFormTest, AnLfoThatDoesNotExistChangesNothing) {
  bank.setLfoRateInNotes(-1, true);
  bank.setLfoRateInNotes(4, true);
  EXPECT_STREQ(bank.getParam(kLfoRate - 1)->name(), "LFO Trigger 4");
  EXPECT_EQ(bank.getParam(kLfoRate + 4)->max(), 100.0);
}

}  // namespace
}  // namespace orvantesco
