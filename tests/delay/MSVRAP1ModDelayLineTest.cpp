#include "delay/MSVRAP1ModDelayLine.h"

#include <gtest/gtest.h>

#include <cmath>

#include "delay/MSinOsc.h"
#include "fx/FxTestSupport.h"

namespace orvantesco {
namespace {

using testing_support::noise;
using testing_support::Signal;

float single(double sample) { return static_cast<float>(sample); }

/// Says how often it was asked, and answers with what it is told.
struct Counting : MModulator {
  float tick() noexcept override {
    ++ticks;
    return value;
  }
  int ticks = 0;
  float value = 0.0F;
};

void ready(MSVRAP1ModDelayLine& line, int centre, int depth) {
  line.setMaxDelay(200);
  line.setCentreDelay(centre);
  line.setModDepth(depth);
  line.reset();
}

TEST(MSVRAP1ModDelayLine, StandingStillItDelaysByItsCentre) {
  MSVRAP1ModDelayLine line;
  ready(line, 100, 50);
  const Signal in = noise(40);
  bool isExact = true;
  for (size_t n = 0; n < in.size(); ++n) {
    const float out = line.process(0.0F);
    line.write(single(in[n]));
    isExact = isExact && out == (n < 100 ? 0.0F : single(in[n - 100]));
  }
  EXPECT_TRUE(isExact);
}

TEST(MSVRAP1ModDelayLine, TicksItsModulatorOnceInAPeriod) {
  for (int period : {1, 7, 50}) {
    Counting modulator;
    MSVRAP1ModDelayLine line;
    line.setModulator(&modulator);
    line.setModPeriod(period);
    ready(line, 100, 10);
    for (int n = 0; n < 350; ++n) line.process(0.0F);
    EXPECT_EQ(modulator.ticks, 350 / period);
  }
}

TEST(MSVRAP1ModDelayLine, NeverSwingsAsFarAsItsCentre) {
  MSVRAP1ModDelayLine line;
  ready(line, 30, 30);
  EXPECT_EQ(line.modulationDepth(), 29);
  line.setModDepth(1000);
  EXPECT_EQ(line.modulationDepth(), 29);
  line.setModDepth(12);
  EXPECT_EQ(line.modulationDepth(), 12);
  line.setCentreDelay(5);
  EXPECT_EQ(line.modulationDepth(), 4);
}

/// The line's samples from the whole history of its input, in doubles where the line has floats.
Signal modelled(const Signal& in, int centre, int depth, int period, const Signal& swings) {
  Signal out;
  double y = 0.0;
  double position = 0.0;
  size_t tick = 0;
  const auto at = [&](long i) { return i < 0 ? 0.0 : in[static_cast<size_t>(i)]; };
  for (size_t n = 0; n < in.size(); ++n) {
    if (n % static_cast<size_t>(period) == 0) {
      position = static_cast<double>(n) - centre + swings[tick++] * depth;
    } else {
      position += 1.0;
    }
    const double whole = std::floor(position);
    const auto index = static_cast<long>(whole);
    y = at(index) + (at(index + 1) - y) * (position - whole);
    out.push_back(y);
  }
  return out;
}

/// Swings in steps of 1/1024, so that at a depth of 64 a float holds every position exactly.
struct Stepping : MModulator {
  float tick() noexcept override {
    phase = (phase + 37) % 2048;
    return static_cast<float>(std::abs(phase - 1024) - 512) / 512.0F * 0.5F;
  }
  int phase = 0;
};

TEST(MSVRAP1ModDelayLine, InterpolatesAsTheFormulaSays) {
  for (int period : {1, 5, 50}) {
    Stepping modulator, again;
    Signal swings(10000);
    for (double& swing : swings) swing = static_cast<double>(again.tick());
    MSVRAP1ModDelayLine line;
    line.setModulator(&modulator);
    line.setModPeriod(period);
    ready(line, 100, 64);
    const Signal in = noise(200, 5);
    const Signal expected = modelled(in, 100, 64, period, swings);
    double worst = 0.0;
    for (size_t n = 0; n < in.size(); ++n) {
      const auto out = static_cast<double>(line.process(0.0F));
      line.write(single(in[n]));
      worst = std::max(worst, std::fabs(out - expected[n]));
    }
    EXPECT_LT(worst, 1e-5) << period << " (single precision)";
  }
}

TEST(MSVRAP1ModDelayLine, StaysInsideItsRingWhateverThePeriod) {
  Counting modulator;
  modulator.value = -7.0F;
  MSVRAP1ModDelayLine line;
  line.setModulator(&modulator);
  line.setModPeriod(100000);
  ready(line, 200, 199);
  float last = 0.0F;
  for (int n = 0; n < 300000; ++n) {
    line.write(1.0F);
    last = line.process(0.0F);
  }
  EXPECT_EQ(last, 1.0F);
}

TEST(MSinOsc, StartsAtItsPhaseAndFollowsTheSine) {
  MSinOsc oscillator;
  oscillator.setFrequency(2.0F, 882.0F, 30.0F);
  double worst = 0.0;
  const double w = 2.0 * M_PI * 2.0 / 882.0;
  for (int n = 1; n < 100; ++n) {
    const double expected = std::sin(M_PI / 6.0 + n * w);
    worst = std::max(worst, std::fabs(static_cast<double>(oscillator.tick()) - expected));
  }
  EXPECT_LT(worst, 1e-6);
}

TEST(MSinOsc, ReachesOneAtItsPeaksAndStaysWithinThemForever) {
  for (float hz : {0.1F, 2.0F, 100.0F, 400.0F}) {
    MSinOsc oscillator;
    oscillator.setFrequency(hz, 882.0F, 90.0F);
    float highest = -2.0F;
    float lowest = 2.0F;
    double sumOfLastSquares = 0.0;
    constexpr int kTicks = 400000;
    for (int n = 0; n < kTicks; ++n) {
      const float y = oscillator.tick();
      highest = std::max(highest, y);
      lowest = std::min(lowest, y);
      if (n >= kTicks / 2) sumOfLastSquares += static_cast<double>(y) * static_cast<double>(y);
    }
    EXPECT_LE(highest, 1.0F);
    EXPECT_GE(lowest, -1.0F);
    EXPECT_GT(highest, 0.9999F) << hz;
    EXPECT_NEAR(sumOfLastSquares / (kTicks / 2), 0.5, 0.01) << hz;
  }
}

TEST(MSinOsc, IgnoresWhatIsNoFrequency) {
  MSinOsc oscillator;
  oscillator.setFrequency(NAN, 882.0F, 0.0F);
  oscillator.setFrequency(1.0F, 0.0F, 0.0F);
  EXPECT_EQ(oscillator.frequencyHz(), 0.0F);
  EXPECT_EQ(oscillator.tick(), 0.0F);
}

}  // namespace
}  // namespace orvantesco
