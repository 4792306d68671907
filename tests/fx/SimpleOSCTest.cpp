#include "fx/SimpleOSC.h"

#include <gtest/gtest.h>

#include <limits>

#include "fx/FxTestSupport.h"

namespace orvantesco {
namespace {

struct OpenOscillator : SimpleOSC {
  using SimpleOSC::halfRatio;
  using SimpleOSC::rate;
  using SimpleOSC::ratio;

  double ratioBefore = -1.0, rateBefore = -1.0, ratioAfter = -1.0;

 protected:
  void rateStored() noexcept override {
    rateBefore = rate;
    ratioBefore = ratio;
  }
  void update() noexcept override { ratioAfter = ratio; }
};

TEST(SimpleOSC, countsWith44100StepsWhateverTheSampleRate) {
  for (double sampleRateHz : testing_support::kRates) {
    testing_support::ScopedRate scope(sampleRateHz);
    OpenOscillator oscillator;
    oscillator.setRate(441.0);
    EXPECT_DOUBLE_EQ(oscillator.ratio, 0.01);
    EXPECT_DOUBLE_EQ(oscillator.halfRatio, 0.005);
  }
}

TEST(SimpleOSC, tellsWhoDerivesFromItBeforeAndBehindTheComputation) {
  OpenOscillator oscillator;
  oscillator.setRate(4410.0);
  EXPECT_EQ(oscillator.rateBefore, 4410.0);
  EXPECT_EQ(oscillator.ratioBefore, 0.0);
  EXPECT_DOUBLE_EQ(oscillator.ratioAfter, 0.1);
}

TEST(SimpleOSC, ignoresARateThatIsNoNumber) {
  OpenOscillator oscillator;
  oscillator.setRate(100.0);
  oscillator.setRate(std::numeric_limits<double>::quiet_NaN());
  oscillator.setRate(std::numeric_limits<double>::infinity());
  EXPECT_EQ(oscillator.rate, 100.0);
}

}  // namespace
}  // namespace orvantesco
