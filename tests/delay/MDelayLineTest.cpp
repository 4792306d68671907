#include "delay/MDelayLine.h"

#include <gtest/gtest.h>

#include "delay/MLPF1a.h"
#include "fx/FxTestSupport.h"

namespace orvantesco {
namespace {

using testing_support::noise;
using testing_support::Signal;

float single(double sample) { return static_cast<float>(sample); }

TEST(MDelayLine, GivesEachSampleBackAfterExactlyItsDelay) {
  const Signal in = noise(40);
  for (int delay : {1, 7, 49, 50}) {
    MDelayLine line;
    line.setDelay(delay);
    line.setMaxDelay(50);
    line.reset();
    bool isExact = true;
    for (size_t n = 0; n < in.size(); ++n) {
      const float out = line.read();
      line.write(single(in[n]));
      const auto back = static_cast<size_t>(delay);
      isExact = isExact && out == (n < back ? 0.0F : single(in[n - back]));
    }
    EXPECT_TRUE(isExact) << delay;
  }
}

TEST(MDelayLine, KeepsElevenSamplesOfReserve) {
  MDelayLine line;
  line.setMaxDelay(144000);
  EXPECT_EQ(line.ringLength(), 144011);
  EXPECT_EQ(line.memorySize(), 144011 * 4);
}

TEST(MDelayLine, ResetIsSilence) {
  MDelayLine line;
  line.setDelay(5);
  line.setMaxDelay(20);
  for (int n = 0; n < 100; ++n) line.write(1.0F);
  line.reset();
  float sum = 0.0F;
  for (int n = 0; n < 31; ++n) sum += std::fabs(line.read());
  EXPECT_EQ(sum, 0.0F);
}

TEST(MDelayLine, HoldsADelayBeyondItsMemory) {
  MDelayLine line;
  line.setDelay(1000);
  line.setMaxDelay(20);
  line.reset();
  int arrival = -1;
  for (int n = 0; n < 60; ++n) {
    if (line.read() != 0.0F && arrival < 0) arrival = n;
    line.write(n == 0 ? 1.0F : 0.0F);
  }
  EXPECT_EQ(arrival, 20);
}

TEST(MLPF1a, AddsItsInputAndTakesItsLastOutput) {
  MLPF1a filter;
  filter.setCoefficients(0.4F, -0.6F);
  float expected = 0.0F;
  bool isExact = true;
  for (double x : noise(10, 3)) {
    expected = 0.4F * single(x) - -0.6F * expected;
    isExact = isExact && filter.process(single(x)) == expected;
  }
  EXPECT_TRUE(isExact);
  filter.reset();
  EXPECT_EQ(filter.process(0.0F), 0.0F);
}

}  // namespace
}  // namespace orvantesco
