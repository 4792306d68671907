#include "fx/RateValues.h"

#include <gtest/gtest.h>

#include <limits>

namespace orvantesco {
namespace {

class RateValuesTest : public ::testing::Test {
 protected:
  void TearDown() override { setRateValues(44100.0); }
};

TEST_F(RateValuesTest, everyValueFollowsFromTheRate) {
  setRateValues(48000.0);
  EXPECT_DOUBLE_EQ(sampleRate, 48000.0);
  EXPECT_DOUBLE_EQ(millisecondSamples, 48.0);
  EXPECT_DOUBLE_EQ(nyquist, 24000.0);
  EXPECT_DOUBLE_EQ(inverseSampleRate, 1.0 / 48000.0);
  EXPECT_DOUBLE_EQ(hundredOverRate, 100.0 / 48000.0);
  EXPECT_DOUBLE_EQ(minDelay, 48.0);
  EXPECT_DOUBLE_EQ(minModDelay, 4.8);
  EXPECT_DOUBLE_EQ(rateRatio, 48000.0 / 44100.0);
  EXPECT_DOUBLE_EQ(inverseRateRatio, 44100.0 / 48000.0);
  EXPECT_EQ(limiterLookahead, 48);
  EXPECT_EQ(slowStep, 3840);
  EXPECT_EQ(fastStep, 9600);
  EXPECT_EQ(maxDelay, 385000);
  EXPECT_DOUBLE_EQ(initialisedRate, 48000.0);
}

TEST_F(RateValuesTest, lookaheadIsWholeSamplesRoundedDown) {
  setRateValues(44100.0);
  EXPECT_EQ(limiterLookahead, 44);
  EXPECT_DOUBLE_EQ(minDelay, 44.1);
  EXPECT_EQ(slowStep, 3528);
  EXPECT_EQ(fastStep, 8820);
  EXPECT_EQ(maxDelay, 353800);
}

TEST_F(RateValuesTest, ratesAboveTheRangeKeepTheirTrueRatio) {
  setRateValues(192000.0);
  EXPECT_DOUBLE_EQ(sampleRate, 96000.0);
  EXPECT_DOUBLE_EQ(rateRatio, 192000.0 / 44100.0);
  EXPECT_EQ(limiterLookahead, 96);
  EXPECT_DOUBLE_EQ(initialisedRate, 192000.0);
}

TEST_F(RateValuesTest, ratesBelowTheRangeAreServedAtItsLowerEnd) {
  setRateValues(22050.0);
  EXPECT_DOUBLE_EQ(sampleRate, 32000.0);
  EXPECT_DOUBLE_EQ(rateRatio, 0.5);
  EXPECT_DOUBLE_EQ(inverseRateRatio, 2.0);
}

TEST_F(RateValuesTest, impossibleRatesAreIgnored) {
  setRateValues(48000.0);
  for (double rate : {0.0, -44100.0, std::numeric_limits<double>::infinity(),
                      std::numeric_limits<double>::quiet_NaN()}) {
    setRateValues(rate);
    EXPECT_DOUBLE_EQ(sampleRate, 48000.0);
    EXPECT_DOUBLE_EQ(initialisedRate, 48000.0);
  }
}

}  // namespace
}  // namespace orvantesco
