#include "mod/Envelope.h"

#include <gtest/gtest.h>

#include <limits>

#include "mod/ModTestSupport.h"
#include "mod/PlainEnvelope.h"

namespace orvantesco {
namespace {

using testing_support::Dice;
using testing_support::kRates;
using testing_support::largestDifference;
using testing_support::PlainEnvelope;
using Settings = testing_support::EnvelopeSettings;
using testing_support::ScopedRate;
using testing_support::Vector32;

Settings anySettings(Dice& dice) {
  Settings s;
  s.follower = dice.oneIn(2);
  s.linear = dice.oneIn(2);
  s.gain = dice.between(1.0, 8.0);
  s.attackMs = dice.oneIn(4) ? 0.0 : dice.between(0.0, 200.0);
  s.releaseMs = dice.between(10.0, 300.0);
  s.holdMs = dice.oneIn(3) ? 0.0 : dice.between(0.0, 100.0);
  s.threshold = dice.between(0.0, 1.0);
  s.locut = dice.between(0.0, 0.8);
  s.hicut = dice.between(0.2, 1.0);
  s.depth = dice.between(0.0, 1.0);
  return s;
}

TEST(Envelope, isItsModelInBothModes) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    Dice dice(41);
    Envelope envelope;
    PlainEnvelope model(rate);
    Settings settings;
    double worst = 0.0;
    for (int vector = 0; vector < 20000; ++vector) {
      if (dice.oneIn(400)) settings = anySettings(dice);
      // Bursts and rests, so that both sides of the ballistics run.
      const double loudness = (vector / 150) % 3 == 0 ? 0.9 : 0.0;
      const Vector32 in = dice.vector(-loudness, loudness);
      Vector32 out{};
      settings.giveTo(envelope);
      envelope.run(in.data(), out.data());
      const Vector32 expected = model.run(settings, in);
      worst = std::fmax(worst, largestDifference(out, expected));
      worst = std::fmax(worst, std::fabs(envelope.value() - model.value));
    }
    EXPECT_LT(worst, 1e-11) << rate;
  }
}

/// A steady square wave, so that the level is its amplitude as soon as the mean has settled.
Vector32 steady(double amplitude) {
  Vector32 vector{};
  for (std::size_t i = 0; i < vector.size(); ++i) vector[i] = (i & 4) != 0 ? amplitude : -amplitude;
  return vector;
}

struct GateRig {
  Envelope envelope;
  Settings settings;
  GateRig() {
    settings.follower = false;
    settings.attackMs = 20.0;
    settings.releaseMs = 40.0;
    settings.giveTo(envelope);
  }
  double next(double amplitude) {
    const Vector32 in = steady(amplitude);
    Vector32 out{};
    envelope.run(in.data(), out.data());
    return out[0];
  }
};

TEST(Envelope, gateRunsItsShapeToTheEndAndRests) {
  GateRig rig;
  double highest = 0.0;
  for (int i = 0; i < 300; ++i) highest = std::fmax(highest, rig.next(0.9));
  EXPECT_EQ(highest, 1.0);
  for (int i = 0; i < 3000; ++i) rig.next(0.0);
  EXPECT_EQ(rig.next(0.0), 0.0);
}

TEST(Envelope, aRetriggerInTheDecayStartsFromTheLevelReached) {
  GateRig rig;
  for (int i = 0; i < 300; ++i) rig.next(0.9);
  double last = rig.next(0.0);
  while (last > 0.5) last = rig.next(0.0);
  ASSERT_GT(last, 0.0);
  const double step = 32.0 / (0.02 * 2.0 * 44100.0);
  double lowest = last;
  for (int i = 0; i < 400; ++i) {
    const double now = rig.next(0.9);
    EXPECT_GT(now, last - 2.0 * step);
    lowest = std::fmin(lowest, now);
    last = now;
  }
  EXPECT_GT(lowest, 0.2);
  EXPECT_EQ(last, 1.0);
}

TEST(Envelope, silenceSettlesAtTheFloor) {
  Envelope envelope;
  Settings settings;
  settings.linear = true;
  settings.giveTo(envelope);
  const Vector32 silence{};
  Vector32 out{};
  for (int i = 0; i < 20000; ++i) envelope.run(silence.data(), out.data());
  const double fixedPoint = std::sqrt(1e-9 / 0.015 - 1e-9);
  EXPECT_NEAR(envelope.detectedLevel(), fixedPoint, 1e-12);
  EXPECT_NEAR(out[31], 0.0, 1e-12) << "the floor of the level is an output of 0";
}

TEST(Envelope, fullScaleReachesATriggerAndStaysBelowOnePointFive) {
  Envelope envelope;
  Settings settings;
  settings.giveTo(envelope);
  const Vector32 full = steady(1.0);
  Vector32 out{};
  for (int i = 0; i < 3000; ++i) envelope.run(full.data(), out.data());
  EXPECT_GE(envelope.value(), 0.97);
  settings.linear = true;
  settings.giveTo(envelope);
  for (int i = 0; i < 3000; ++i) envelope.run(full.data(), out.data());
  EXPECT_GE(envelope.value(), 1.0);
  EXPECT_LT(envelope.value(), 1.5);
}

double levelOfTone(double hz, const Settings& settings) {
  Envelope envelope;
  settings.giveTo(envelope);
  Vector32 in{};
  Vector32 out{};
  for (int i = 0, frame = 0; i < 3000; ++i) {
    for (double& sample : in) sample = std::sin(2.0 * std::numbers::pi * hz * frame++ / 44100.0);
    envelope.run(in.data(), out.data());
  }
  return envelope.detectedLevel();
}

TEST(Envelope, hearsTheBandBetweenItsLimits) {
  Settings settings;
  settings.locut = std::log(500.0 / 50.0) / std::log(400.0);
  settings.hicut = std::log(2000.0 / 50.0) / std::log(400.0);
  const double inBand = levelOfTone(1000.0, settings);
  EXPECT_GT(inBand, 0.5);
  EXPECT_LT(levelOfTone(60.0, settings), 0.1 * inBand);
  EXPECT_LT(levelOfTone(15000.0, settings), 0.1 * inBand);
}

TEST(Envelope, getsOverInputThatIsNoNumber) {
  Envelope envelope;
  Settings settings;
  settings.giveTo(envelope);
  Vector32 bad;
  bad.fill(std::numeric_limits<double>::infinity());
  Vector32 out{};
  envelope.run(bad.data(), out.data());
  for (double value : out) EXPECT_TRUE(std::isfinite(value));
  EXPECT_TRUE(std::isinf(bad[0])) << "a bus that others read is not written";
  const Vector32 good = steady(0.5);
  for (int i = 0; i < 3000; ++i) envelope.run(good.data(), out.data());
  EXPECT_NEAR(envelope.detectedLevel(), 0.5, 0.05);
}

/// Something to remember: noise, and a shape that is under way.
void hear(Envelope& envelope, int vectors) {
  Dice dice(8);
  Vector32 out{};
  for (int i = 0; i < vectors; ++i) {
    const Vector32 in = dice.vector();
    envelope.run(in.data(), out.data());
  }
}

/// Both give the same bits from here on, whatever they hear.
void expectAlike(Envelope& a, Envelope& b, const char* what) {
  Dice dice(2);
  Vector32 outA{};
  Vector32 outB{};
  double highest = 0.0;
  for (int i = 0; i < 3000; ++i) {
    // Rests that are long enough for a hold and a decay.
    const double loudness = i % 1000 < 300 ? 1.0 : 0.0;
    const Vector32 in = dice.vector(-loudness, loudness);
    a.run(in.data(), outA.data());
    b.run(in.data(), outB.data());
    ASSERT_EQ(outA, outB) << what << " at " << i;
    ASSERT_EQ(a.value(), b.value()) << what << " at " << i;
    highest = std::fmax(highest, a.value());
  }
  EXPECT_GE(highest, 0.5) << what << " must come to hear something";
}

Settings lively(bool follower) {
  Settings settings;
  settings.follower = follower;
  settings.holdMs = 30.0;
  settings.gain = 4.0;
  settings.locut = 0.3;
  settings.hicut = 0.7;
  return settings;
}

TEST(Envelope, followsAChangeOfRate) {
  for (bool follower : {true, false}) {
    // In the attack, in the hold and in the decay of the gate's shape.
    for (int vectors : {0, 15, 60, 500}) {
      Envelope moved;
      lively(follower).giveTo(moved);
      hear(moved, vectors);
      ScopedRate scope(96000.0);
      moved.rateChanged();
      moved.reset();
      EXPECT_EQ(moved.value(), 0.0);
      EXPECT_EQ(moved.detectedLevel(), 0.0);
      Envelope fresh;
      lively(follower).giveTo(fresh);
      expectAlike(moved, fresh, follower ? "follower" : "gate");
    }
  }
}

TEST(Envelope, keepsNothingOfWhatItHasHeardWhereItsMemoriesAreCleared) {
  for (bool follower : {true, false}) {
    for (int vectors : {15, 60, 500}) {
      Envelope cleared;
      lively(follower).giveTo(cleared);
      hear(cleared, vectors);
      cleared.clearMemories();
      Envelope fresh;
      lively(follower).giveTo(fresh);
      // The filters' knobs glide from 0 in both.
      fresh.clearMemories();
      expectAlike(cleared, fresh, follower ? "follower" : "gate");
    }
  }
}

TEST(Envelope, aResetDropsTheBandAndItsMeanSquare) {
  Envelope envelope;
  lively(true).giveTo(envelope);
  hear(envelope, 300);
  envelope.reset();
  const Vector32 silence{};
  Vector32 out{};
  envelope.run(silence.data(), out.data());
  for (int i = 0; i < kVectorLength; ++i) EXPECT_EQ(envelope.filteredInput()[i], 0.0);
  EXPECT_NEAR(envelope.detectedLevel(), 0.0, 1e-12);
}

TEST(Envelope, isNewWithTheTimesOfItsKnobsAt10And100) {
  Envelope fresh;
  Envelope set;
  fresh.setLinear(true);
  set.setLinear(true);
  set.setAttack(11.0);
  set.setAttack(10.0);
  set.setRelease(101.0);
  set.setRelease(100.0);
  expectAlike(fresh, set, "times");
}

TEST(Envelope, timesThatAreNoNumbersAreIgnored) {
  Envelope plain;
  Envelope asked;
  lively(false).giveTo(plain);
  lively(false).giveTo(asked);
  for (double ms : {std::numeric_limits<double>::quiet_NaN(), HUGE_VAL}) {
    asked.setAttack(ms);
    asked.setRelease(ms);
    asked.setHold(ms);
  }
  expectAlike(plain, asked, "times");
}

TEST(Envelope, readsAnotherVectorThanItWrites) {
  Envelope a;
  Envelope b;
  lively(true).giveTo(a);
  lively(true).giveTo(b);
  Vector32 in = steady(0.5);
  Vector32 outA{};
  Vector32 outB{};
  for (int i = 0; i < 100; ++i) {
    a.run(in.data(), outA.data());
    b.process(in.data(), outB.data());
    ASSERT_EQ(outA, outB);
  }
  EXPECT_EQ(in, steady(0.5));
}

TEST(Envelope, aLevelAtTheThresholdOpensTheGate) {
  const Vector32 tone = steady(0.4);
  Vector32 out{};
  Settings settings;
  Envelope probe;
  settings.giveTo(probe);
  probe.run(tone.data(), out.data());
  settings.follower = false;
  settings.threshold = probe.detectedLevel();
  Envelope gate;
  settings.giveTo(gate);
  gate.run(tone.data(), out.data());
  EXPECT_GT(gate.value(), 0.0);
}

}  // namespace
}  // namespace orvantesco
