// The model against facts worked out by hand, so that it can be trusted as a reference.

#include "model/EngineModel.h"

#include <gtest/gtest.h>

#include <cmath>

namespace orvantesco::model {
namespace {

/// Only the first slot, wet alone, at full level, without filters in the echo, on the main times.
Settings plainSlot() {
  return {{"Dry Level", 0},       {"Wet Level", 100},        {"Main ModDepth", 0},
          {"Input 1", 3},         {"Input Gain 1", 0},       {"Level 1", 0},
          {"Feedback 1", 0},      {"Timebase 1", 0},         {"Delay TimeL 1", 100},
          {"Delay TimeR 1", 200}, {"Delay Lopass 1", 20000}, {"Delay Hipass 1", 20}};
}

Settings with(Settings base, const Settings& changes) {
  for (const auto& [name, value] : changes) base[name] = value;
  return base;
}

/// What is heard of `signal` after a second of silence, which ends the fade and all glides.
Signal settledRender(EngineModel& engine, const Signal& signal, double sampleRate = 44100.0) {
  const auto lead = static_cast<size_t>(sampleRate);
  return part(engine.render(joined(silence(lead), signal)), lead, lead + signal.size());
}

double sumOfLeft(const Signal& s, size_t from, size_t to) {
  double sum = 0.0;
  for (size_t i = from; i < to; ++i) sum += s.left[i];
  return sum;
}

TEST(EngineModel, DrySignalIsDelayedByTheLatencyAtEveryRate) {
  const std::pair<double, size_t> cases[] = {
      {44100, 76}, {48000, 80}, {96000, 128}, {192000, 128}, {22050, 64}};
  for (const auto& [rate, latency] : cases) {
    EngineModel engine({rate}, {{"Wet Level", 0}, {"Dry Level", 100}, {"SlotOn 1", 0}});
    const Signal out = settledRender(engine, impulse(300, 10, 0.5, -0.25), rate);
    EXPECT_EQ(out.left[10 + latency], 0.5) << rate;
    EXPECT_EQ(out.right[10 + latency], -0.25) << rate;
    EXPECT_DOUBLE_EQ(peak(out), 0.5) << rate;
  }
}

TEST(EngineModel, FadeRisesWithTheSquareOverATenthOfASecond) {
  EngineModel engine({44100}, {{"Dry Level", 100}, {"SlotOn 1", 0}});
  const Signal out = engine.render(constant(8000, 1.0, 1.0));
  const double step = 32.0 / 4410.0;
  for (size_t k = 0; k < 137; ++k) {
    const double position = static_cast<double>(k) * step;
    EXPECT_NEAR(out.left[76 + 32 * k], position * position, 1e-12) << k;
  }
  EXPECT_GT(out.left[76 + 32 * 138], 1.0) << "the last step lies above 1";
  EXPECT_EQ(out.left[76 + 32 * 139], 1.0);
}

TEST(EngineModel, EchoComesAtItsTimeWithUnitArea) {
  EngineModel engine({44100}, plainSlot());
  const Signal out = settledRender(engine, impulse(12000, 0));
  // The band-limiting filter spreads the impulse, but its area stays.
  EXPECT_NEAR(sumOfLeft(out, 76 + 4410, 76 + 4410 + 500), 1.0, 1e-9);
  EXPECT_LT(std::abs(out.left[76 + 4409]), 1e-9);
  EXPECT_GT(out.left[76 + 4410], 1e-4);
  EXPECT_LT(std::abs(out.right[76 + 8819]), 1e-9);
  EXPECT_GT(out.right[76 + 8820], 1e-4);
}

TEST(EngineModel, FeedbackRepeatsWithItsGain) {
  EngineModel engine({44100}, with(plainSlot(), {{"Feedback 1", 50}}));
  const Signal out = settledRender(engine, impulse(16000, 0));
  const double first = sumOfLeft(out, 76 + 4410, 76 + 8820);
  const double second = sumOfLeft(out, 76 + 8820, 76 + 13230);
  EXPECT_NEAR(first, 1.0, 1e-9);
  // What goes round passes the constant-blocking filter, which takes a little of the area.
  EXPECT_NEAR(second, 0.5 * std::pow(0.9999, 4410), 0.02);
}

TEST(EngineModel, SummedPingPongEntersWithTwoThirds) {
  EngineModel engine({44100}, with(plainSlot(), {{"Delay Route 1", 2}, {"Delay TimeR 1", 4000}}));
  const Signal out = settledRender(engine, constant(12000, 1.0, 1.0));
  EXPECT_NEAR(out.left[11000], 1.32, 1e-9);
  EXPECT_NEAR(out.right[11000], 0.0, 1e-9);
}

TEST(EngineModel, MixRouteCrossesDifferenceAndSum) {
  const Settings settings =
      with(plainSlot(), {{"Delay Route 1", 6}, {"Feedback 1", 100}, {"Delay TimeR 1", 100}});
  EngineModel engine({44100}, settings);
  const Signal out = settledRender(engine, impulse(13000, 0, 0.0, 0.5));
  // From the right alone: the first echo is R, what goes round is -0.7 R left and +0.7 R right.
  const size_t second = 76 + 2 * 4410;
  EXPECT_NEAR(sumOfLeft(out, second, second + 300), -0.35, 0.02);
}

TEST(EngineModel, LoopAboveUnitySettlesBelowOneAndAHalf) {
  const Settings settings = with(
      plainSlot(),
      {{"Feedback 1", 160}, {"Feedback Master", 50}, {"Delay TimeL 1", 50}, {"Delay TimeR 1", 50}});
  EngineModel engine({44100}, settings);
  const Signal out = engine.render(joined(noise(44100, 7), silence(8 * 44100)));
  const double tail = peak(part(out, 7 * 44100, 9 * 44100));
  EXPECT_GT(tail, 0.5);
  EXPECT_LT(tail, 2.4) << "1.6 times the clipped loop";
}

TEST(EngineModel, ProportionalFeedbackDecaysAlike) {
  EngineModel engine({44100}, with(plainSlot(), {{"Feedback 1", 50}, {"FBProportional 1", 1}}));
  const Signal out = settledRender(engine, impulse(20000, 0, 0.5, 0.5));
  // After 200 ms the left has gone round once with 0.5^(1/2).
  EXPECT_NEAR(sumOfLeft(out, 76 + 8820, 76 + 8820 + 200), 0.5 * std::sqrt(0.5), 0.01);
}

TEST(EngineModel, OffsetRoundsToWholeMilliseconds) {
  const auto firstSound = [](double offset) {
    EngineModel engine({44100}, with(plainSlot(), {{"L/R Offset 1", offset}, {"DelayOn 1", 0}}));
    const Signal out = settledRender(engine, impulse(2000, 0));
    size_t i = 0;
    while (std::abs(out.left[i]) < 1e-5) ++i;
    return i;
  };
  EXPECT_EQ(firstSound(0.4), firstSound(0.0));
  EXPECT_EQ(firstSound(-1.0), firstSound(0.0) + 44);
  EXPECT_EQ(firstSound(1.0), firstSound(0.0));
}

TEST(EngineModel, NarrowestWidthCarriesTheScaledSumOnBothSides) {
  EngineModel engine({44100}, with(plainSlot(), {{"Width 1", 0}, {"DelayOn 1", 0}}));
  const Signal out = settledRender(engine, constant(4000, 0.5, 0.25));
  EXPECT_NEAR(out.left[3000], 0.75 * std::sqrt(0.5), 1e-9);
  EXPECT_NEAR(out.right[3000], 0.75 * std::sqrt(0.5), 1e-9);
}

TEST(EngineModel, InputFilterIsThreeDecibelsDownAtItsCorner) {
  for (const double rate : {44100.0, 48000.0, 96000.0}) {
    EngineModel engine({rate}, with(plainSlot(), {{"DelayOn 1", 0}}));
    const auto second = static_cast<size_t>(rate);
    const Signal out = part(engine.render(sine(2 * second, 15000, rate)), second, 2 * second);
    double power = 0.0;
    for (const double x : out.left) power += x * x;
    EXPECT_NEAR(power / rate, 0.25, 1e-6) << rate;
  }
}

TEST(EngineModel, TappedPatternStepsAtTheInterval) {
  const Settings settings = with(plainSlot(), {{"Delay Mode 1", 3},
                                               {"DelayTaps 1", 2},
                                               {"Delay Taps Time 1", 20},
                                               {"TapDelay1 Step2 Level", 50},
                                               {"DelayTap DI Out 1", 1}});
  EngineModel engine({44100}, settings);
  const Signal out = settledRender(engine, impulse(4000, 0));
  EXPECT_NEAR(sumOfLeft(out, 76 + 882, 76 + 882 + 400), 1.0, 1e-9);
  EXPECT_NEAR(sumOfLeft(out, 76 + 1764, 76 + 1764 + 400), 0.5, 1e-9);
  EXPECT_NEAR(sumOfLeft(out, 76 + 2646, 76 + 2646 + 400), 1.0, 1e-9);
  EXPECT_NEAR(sumOfLeft(out, 76 + 3528, 4000), 0.0, 1e-9);
}

TEST(EngineModel, GrainsAtUnitSpeedKeepTheSignal) {
  const Settings settings = with(plainSlot(), {{"Delay Mode 1", 2}, {"Grain Fade 1", 10}});
  EngineModel engine({44100}, settings);
  const Signal out = settledRender(engine, constant(44100, 0.5, 0.5));
  EXPECT_NEAR(out.left[44000], 0.5, 1e-6);
}

TEST(EngineModel, BackwardCyclePlaysAnImpulseTwiceItsAgeLater) {
  const Settings settings = with(plainSlot(), {{"Delay Mode 1", 1}, {"Reverse X-Fade 1", 1}});
  EngineModel engine({44100}, settings);
  const Signal out = settledRender(engine, impulse(20000, 0, 1.0, 1.0));
  EXPECT_NEAR(sumOfLeft(out, 76, 20000), 1.0, 1e-6);
}

}  // namespace
}  // namespace orvantesco::model
