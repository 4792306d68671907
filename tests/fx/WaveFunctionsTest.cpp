#include "fx/WaveFunctions.h"

#include <gtest/gtest.h>

#include "fx/FxTestSupport.h"

namespace orvantesco {
namespace {

using testing_support::Signal;

const Signal kOnes(kVectorLength, 1.0);

Signal joinedTo(double last, double next) {
  WaveFunctions waves;
  Signal first(kVectorLength, 0.0), second(kVectorLength, next), out(kVectorLength);
  first.back() = last;
  waves.saturate({first.data(), kOnes.data(), kOnes.data()}, out.data());
  waves.saturate({second.data(), kOnes.data(), kOnes.data()}, out.data());
  return out;
}

TEST(WaveFunctions, joinTheFirstSampleOfAVectorToTheLastOfTheOneBefore) {
  const double t = std::sqrt(1.25), t0 = std::sqrt(1.0 + 0.3 * 0.3);
  EXPECT_DOUBLE_EQ(joinedTo(0.3, 0.5)[0], 0.8 / (t + t0));
}

TEST(WaveFunctions, rememberNoSampleThatHasRunAway) {
  // Remembered, it would throw the next sample to full scale.
  for (double monster : {1e100, -1e9, HUGE_VAL}) EXPECT_EQ(joinedTo(monster, 0.0)[0], 0.0);
}

TEST(WaveFunctions, theHoldForgetsWhatHasRunAwayToo) {
  WaveFunctions waves;
  Signal in(kVectorLength, 1e100), out(kVectorLength);
  waves.sampleAndHold({in.data(), kOnes.data()}, 1.0, out.data());
  EXPECT_EQ(out[31], 1.0);
  waves.sampleAndHold({in.data(), kOnes.data()}, 0.0, out.data());
  EXPECT_EQ(out[0], 0.0);
}

TEST(WaveFunctions, clearingAllDropsTheHeldSample) {
  WaveFunctions waves;
  Signal in(kVectorLength, 0.5), out(kVectorLength);
  waves.sampleAndHold({in.data(), kOnes.data()}, 1.0, out.data());
  waves.clear();
  waves.sampleAndHold({in.data(), kOnes.data()}, 0.0, out.data());
  EXPECT_GT(out[0], 0.5);
  waves.clearAll();
  waves.sampleAndHold({in.data(), kOnes.data()}, 0.0, out.data());
  EXPECT_EQ(out[0], 0.0);
}

}  // namespace
}  // namespace orvantesco
