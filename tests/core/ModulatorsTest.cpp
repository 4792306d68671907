#include <gtest/gtest.h>

#include <limits>
#include <numbers>

#include "support/ModulatorRig.h"

namespace orvantesco {
namespace {

constexpr double kRate = 48000.0;

TEST(Modulators, seeWhatRanBeforeThemAsOfNowAndTheRestAsOfTheLastVector) {
  ModulatorRig rig;
  rig.ramp(0, 3.0);
  rig.ramp(1, 5.0);
  rig.add(0, kLfo1, kSourceOff);
  rig.add(1, kLogic1, kSourceOff);
  rig.add(2, kLogic1 + 3, kSourceOff);
  rig.add(3, kLfo2, kSourceOff);
  rig.steps(20);
  ModulatorOutputs before = rig.step();
  for (int i = 0; i < 50; ++i) {
    const ModulatorOutputs now = rig.step();
    EXPECT_EQ(now.logic[0], now.lfo[0]) << "LFO 1 runs before logic unit 1";
    EXPECT_EQ(now.logic[1], now.logic[0]) << "so does logic unit 1 before logic unit 2";
    EXPECT_EQ(now.logic[2], before.logic[3]) << "logic unit 4 runs behind logic unit 3";
    EXPECT_NE(now.lfo[0], before.lfo[0]);
    before = now;
  }
  rig.set(kLogicSource1, kLfo2);
  before = rig.step();
  for (int i = 0; i < 50; ++i) {
    const ModulatorOutputs now = rig.step();
    EXPECT_EQ(now.logic[0], before.lfo[1]) << "LFO 2 runs behind logic unit 1";
    before = now;
  }
}

TEST(Modulators, envelopesRunFirst) {
  ModulatorRig rig;
  rig.set(kEnvOn + 1, 1);
  rig.add(0, kEnv1 + 1, kSourceOff);
  for (int i = 0; i < 100; ++i) {
    const ModulatorOutputs now = rig.step(0.5, 0.5);
    for (std::size_t k = 0; k < now.logic[0].size(); ++k) {
      ASSERT_EQ(now.logic[0][k], std::min(1.0, now.envelope[1][k]));
    }
  }
}

/// Gate `clocked` runs on the starts of gate `clock`: by how many vectors it is late.
int latenessOfClock(int clocked, int clock) {
  ModulatorRig rig;
  rig.set(kGateOn + clock, 1);
  rig.set(kGateOn + clocked, 1);
  rig.set(kGateTimebase + clock, 2);
  rig.set(kGateLength + clock, 2);
  rig.set(kGateTimebase + clocked, 18 + clock);
  for (int step = 0; step < 16; ++step) {
    rig.set(kGateStep + clocked * 16 + step, step % 2 == 0 ? 0 : 100);
  }
  const auto gate = static_cast<std::size_t>(clocked);
  double last = rig.step().gate[gate][31];
  int sincePulse = 0;
  for (int i = 0; i < 2000; ++i) {
    const double now = rig.step().gate[gate][31];
    sincePulse = rig.probe.triggers().gateStartPulse[static_cast<std::size_t>(clock)] != 0
                     ? 0
                     : sincePulse + 1;
    if (now != last) return sincePulse;
    last = now;
  }
  return -1;
}

TEST(Modulators, aGateHearsAnEarlierGateAtOnceAndALaterOneAVectorLater) {
  EXPECT_EQ(latenessOfClock(1, 0), 0);
  EXPECT_EQ(latenessOfClock(0, 1), 1);
}

/// LFO `lfo` starts anew at the starts of gate `clock`: by how many vectors it is late.
int latenessOfTrigger(int lfo, int clock) {
  ModulatorRig rig;
  rig.ramp(lfo, 1.0);
  rig.set(kLfoGlide + lfo, 0);
  rig.set(kLfoTrigger + lfo, 10 + clock);
  rig.set(kGateOn + clock, 1);
  rig.set(kGateTimebase + clock, 3);
  rig.set(kGateLength + clock, 3);
  int sincePulse = -1;
  for (int i = 0; i < 2000; ++i) {
    const double now = rig.step().lfo[static_cast<std::size_t>(lfo)][0];
    const bool pulse = rig.probe.triggers().gateStartPulse[static_cast<std::size_t>(clock)] != 0;
    if (pulse) sincePulse = 0;
    if (sincePulse >= 0 && now == -1.0) return sincePulse;
    if (sincePulse >= 0) ++sincePulse;
  }
  return -1;
}

TEST(Modulators, anLfoHearsItsOwnGateAtOnceAndALaterOneAVectorLater) {
  EXPECT_EQ(latenessOfTrigger(0, 0), 0);
  EXPECT_EQ(latenessOfTrigger(3, 3), 0);
  EXPECT_EQ(latenessOfTrigger(0, 1), 1);
  EXPECT_EQ(latenessOfTrigger(2, 1), 0);
}

TEST(Modulators, anLfoThatTakesSampleAndHoldDrawsOnceAndThenHolds) {
  ModulatorRig rig;
  rig.set(kLfoOn, 1);
  rig.set(kLfoRate, 0.1);
  rig.set(kLfoGlide, 0);
  rig.set(kLfoPol, kBipolar);
  rig.set(kLfoDepth, 100);
  rig.set(kLfoTrigger, 0);
  rig.set(kLfoWave, 26);
  const double first = rig.step().lfo[0][31];
  EXPECT_NE(first, -1.0) << "the level of a fresh generator is 0, which is no draw";
  for (int i = 0; i < 50; ++i) EXPECT_EQ(rig.step().lfo[0][31], first);
}

TEST(Modulators, aGateThatClocksItselfFromItsStartNeverMoves) {
  ModulatorRig rig;
  rig.set(kGateOn, 1);
  rig.set(kGateTimebase, 18);
  rig.set(kGateStep, 30);
  rig.set(kGateStep + 1, 100);
  rig.steps(5000);
  EXPECT_NEAR(rig.step().gate[0][0], 0.3, 1e-12);
}

TEST(Modulators, syncDoesNothingWithAClockedTimebase) {
  ModulatorRig rig;
  rig.set(kGateOn, 1);
  rig.set(kGateTimebase, 12);
  rig.set(kGateSync, 1);
  for (int step = 1; step < 16; ++step) rig.set(kGateStep + step, 100);
  rig.steps(5000);
  EXPECT_EQ(rig.step().gate[0][31], 0.0);
}

TEST(Modulators, aSyncedGateFollowsTheSongBackwardToo) {
  ModulatorRig rig;
  rig.host.setRunning(true);
  rig.set(kGateOn, 1);
  rig.set(kGateSync, 1);
  rig.set(kGateLength, 4);
  for (int step = 0; step < 4; ++step) rig.set(kGateStep + step, 25.0 * (step + 1));
  for (double beat : {0.5, 2.5, 1.5, 401.5, 3.5}) {
    rig.host.locate(beat);
    EXPECT_NEAR(rig.step().gate[0][31], 0.25 * (std::fmod(std::floor(beat), 4.0) + 1.0), 1e-12);
  }
}

TEST(Modulators, switchedOffLfosAndEnvelopesGiveZerosGatesAndLogicHold) {
  ModulatorRig rig;
  rig.ramp(0, 2.0);
  rig.set(kEnvOn, 1);
  rig.set(kGateOn, 1);
  rig.set(kGateStep, 60);
  rig.set(kGatePol, 1);
  rig.add(0, kLfo1, kGate1);
  for (int i = 0; i < 100; ++i) rig.step(0.5, 0.5);
  const ModulatorOutputs before = rig.step(0.5, 0.5);
  ASSERT_NE(before.lfo[0][5], 0.0);
  ASSERT_NE(before.envelope[0][5], 0.0);
  for (int index : {kLfoOn, kEnvOn, kGateOn, kLogicOn}) rig.set(index, 0);
  rig.step(0.5, 0.5);
  const ModulatorOutputs after = rig.step(0.5, 0.5);
  EXPECT_EQ(after.lfo[0], AudioVector{});
  EXPECT_EQ(after.envelope[0], AudioVector{});
  EXPECT_EQ(after.gate[0], before.gate[0]);
  EXPECT_EQ(after.logic[0], before.logic[0]);
}

/// Entries of the wave that an LFO passes in a second.
double entriesPerSecond(ModulatorRig& rig) {
  rig.steps(50);
  const double from = rig.step().lfo[0][31];
  rig.steps(29);
  const double to = rig.step().lfo[0][31];
  return (to - from) / 2.0 * 4095.0 / (30 * kVectorLength / kRate);
}

TEST(Modulators, anLfoInTempoModeFollowsTheTempo) {
  struct Case {
    int sync, note;
    double beats;
  };
  for (const Case& c : {Case{1, 2, 4.0}, Case{1, 4, 1.0}, Case{2, 4, 1.5}, Case{3, 2, 4.0 / 1.5}}) {
    ModulatorRig rig;
    rig.ramp(0, 0.1);
    rig.set(kLfoSync, c.sync);
    rig.set(kLfoRate, c.note);
    rig.set(kLfoTrigger, 2);
    rig.host.setTempo(150.0);
    rig.steps(2);
    EXPECT_NEAR(entriesPerSecond(rig), 4096.0 * 2.5 / c.beats, 60.0) << c.sync << ' ' << c.note;
    rig.host.setTempo(75.0);
    rig.steps(2);
    EXPECT_NEAR(entriesPerSecond(rig), 4096.0 * 1.25 / c.beats, 60.0) << c.sync << ' ' << c.note;
  }
}

TEST(Modulators, anEnvelopeHearsTheSourceOfItsMenu) {
  struct Case {
    int source;
    bool hears;
  };
  // The input sounds on the left alone; slot 1 is on and passes it, slot 2 is off.
  for (const Case& c : {Case{0, true}, Case{1, true}, Case{2, false}, Case{3, true}, Case{4, true},
                        Case{5, false}, Case{6, false}, Case{15, false}, Case{16, false}}) {
    ModulatorRig rig;
    rig.set(kEnvOn, 1);
    rig.set(kEnvSource, c.source);
    rig.set(kSlotOn, 1);
    rig.set(kInput, 3);  // stereo
    rig.set(kDelayOn, 0);
    AudioVector last{};
    for (int i = 0; i < 1500; ++i) {
      for (std::size_t k = 0; k < rig.vector.size(); ++k) {
        rig.vector.left[k] =
            std::sin(0.1 * static_cast<double>(i * kVectorLength) + 0.1 * static_cast<double>(k));
        rig.vector.right[k] = 0.0;
      }
      rig.block(rig.vector, 0, kVectorLength);
      last = rig.effect.modulatorOutputs().envelope[0];
    }
    EXPECT_EQ(last[31] > 0.5, c.hears) << "source " << c.source << ": " << last[31];
  }
}

TEST(Modulators, listeningBringsTheEnvelopesBandToBothOutputs) {
  ModulatorRig rig;
  rig.set(kEnvOn + 1, 1);
  rig.set(kEnvSource + 1, 1);
  rig.set(kEnvGain + 1, 20);
  rig.warmUp();
  rig.set(kEnvOn, 1);
  rig.set(kEnvGain, -20);
  rig.effect.listenToEnvelope(1);
  StereoBuffer tone(4800);
  for (std::size_t i = 0; i < tone.size(); ++i) {
    tone.left[i] =
        0.01 * std::sin(2.0 * std::numbers::pi * 1000.0 * static_cast<double>(i) / kRate);
  }
  rig.render(tone);
  double peak = 0.0;
  for (std::size_t i = 2400; i < tone.size(); ++i) {
    peak = std::max(peak, std::fabs(tone.right[i]));
    ASSERT_EQ(tone.left[i], tone.right[i]);
  }
  EXPECT_NEAR(peak, 0.1, 0.02);
}

TEST(Modulators, onlyTheEnvelopeThatIsListenedToIsHeard) {
  ModulatorRig rig;
  for (int e = 0; e < 2; ++e) {
    rig.set(kEnvOn + e, 1);
    rig.set(kEnvSource + e, 1 + e);
  }
  rig.warmUp();
  rig.effect.listenToEnvelope(0);
  double left = 0.0;
  for (int i = 0; i < 100; ++i) {
    for (std::size_t k = 0; k < rig.vector.size(); ++k) {
      rig.vector.left[k] = 0.1 * std::sin(0.2 * static_cast<double>(k));
      rig.vector.right[k] = 0.0;
    }
    rig.block(rig.vector, 0, kVectorLength);
    for (double sample : rig.vector.right) left = std::max(left, std::fabs(sample));
  }
  EXPECT_GT(left, 0.05) << "the first envelope hears the left input, the second silence";
}

/// What the modulators of an engine give once its rate has become 96000 Hz.
ModulatorOutputs afterChangeOfRate(double rateBefore) {
  ModulatorRig rig(EngineRig::seeded(), rateBefore);
  rig.ramp(0, 3.0);
  rig.set(kLfoTrigger, 1);
  rig.set(kLfoGlide, 60);
  rig.hold(0, 1.0);
  rig.set(kGateGlide, 90);
  rig.set(kEnvOn, 1);
  rig.set(kEnvSource, 1);
  rig.set(kEnvOn + 1, 1);
  rig.set(kEnvSource + 1, 1);
  rig.set(kEnvMode + 1, 1);
  rig.set(kEnvThreshold + 1, -90);
  rig.set(kEnvAttack + 1, 300);
  rig.add(3, kGate1, kSourceOff);
  rig.set(kLogicSmooth + 3, 80);
  rig.host.setRunning(true);
  if (rateBefore != 96000.0) {
    for (int i = 0; i < 300; ++i) rig.step(0.5, 0.5);
    rig.host.setSampleRate(96000.0);
  }
  rig.host.locate(0.99999);
  rig.step();
  for (int i = 0; i < 20; ++i) rig.step();
  return rig.effect.modulatorOutputs();
}

TEST(Modulators, beginAnewAtAnotherRateAsIfBuiltAtIt) {
  const ModulatorOutputs moved = afterChangeOfRate(48000.0);
  const ModulatorOutputs fresh = afterChangeOfRate(96000.0);
  for (std::size_t k = 0; k < moved.gate[0].size(); ++k) {
    ASSERT_NEAR(moved.lfo[0][k], fresh.lfo[0][k], 1e-12) << "LFO";
    ASSERT_NEAR(moved.gate[0][k], fresh.gate[0][k], 1e-12) << "gate";
    ASSERT_NEAR(moved.envelope[0][k], fresh.envelope[0][k], 1e-12) << "follower";
    ASSERT_NEAR(moved.envelope[1][k], fresh.envelope[1][k], 1e-12) << "gate of an envelope";
    ASSERT_NEAR(moved.logic[3][k], fresh.logic[3][k], 1e-12) << "logic unit";
  }
  EXPECT_GT(fresh.gate[0][31], 0.1);
  EXPECT_LT(fresh.gate[0][31], 0.9);
}

TEST(Modulators, drawTheSameWithTheSameSeedAndOthersWithout) {
  const auto levels = [](std::uint32_t seed) {
    OrvantescoOptions options;
    options.seed = seed;
    ModulatorRig rig(options);
    rig.ramp(0, 400.0);
    rig.ramp(1, 400.0);
    rig.set(kLfoWave, 26);
    rig.set(kLfoWave + 1, 26);
    std::vector<double> drawn;
    bool apart = false;
    for (int i = 0; i < 200; ++i) {
      const ModulatorOutputs now = rig.step();
      drawn.push_back(now.lfo[0][31]);
      apart = apart || now.lfo[0] != now.lfo[1];
    }
    EXPECT_TRUE(apart) << "each LFO draws for itself";
    return drawn;
  };
  EXPECT_EQ(levels(7), levels(7));
  EXPECT_NE(levels(7), levels(8));
}

TEST(Modulators, theMainModulatorMovesAtItsKnob) {
  ModulatorRig slow;
  ModulatorRig fast;
  slow.set(kMainModRate, 1);
  fast.set(kMainModRate, 100);
  double slowest = 0.0;
  double fastest = 0.0;
  auto slowBefore = slow.step().mainMod;
  auto fastBefore = fast.step().mainMod;
  for (int i = 0; i < 3000; ++i) {
    const auto slowNow = slow.step().mainMod;
    const auto fastNow = fast.step().mainMod;
    slowest += std::fabs(slowNow[0] - slowBefore[0]);
    fastest += std::fabs(fastNow[0] - fastBefore[0]);
    slowBefore = slowNow;
    fastBefore = fastNow;
  }
  EXPECT_GT(fastest, 10.0 * slowest);
  EXPECT_GT(slowest, 0.0);
}

TEST(Modulators, aNegativeDepthOnALevelDucks) {
  ModulatorRig rig;
  rig.set(kSlotOn, 1);
  rig.set(kDryLevel, 0);
  rig.set(kDelayOn, 0);
  rig.set(kEnvOn, 1);
  rig.set(kEnvSource, 2);
  rig.set(kLevelModSource, kEnv1);
  rig.set(kLevelModDepth, -100);
  rig.warmUp();
  const auto loudness = [&](double duckingTone) {
    StereoBuffer audio(48000);
    for (std::size_t i = 0; i < audio.size(); ++i) {
      audio.left[i] = 0.3 * std::sin(0.05 * static_cast<double>(i));
      audio.right[i] = duckingTone * std::sin(0.3 * static_cast<double>(i));
    }
    rig.render(audio);
    double sum = 0.0;
    for (std::size_t i = 24000; i < audio.size(); ++i) sum += audio.left[i] * audio.left[i];
    return std::sqrt(sum / 24000.0);
  };
  const double free = loudness(0.0);
  const double ducked = loudness(0.9);
  EXPECT_GT(free, 0.05);
  EXPECT_LT(ducked, 0.2 * free);
}

TEST(Modulators, getOverHostsThatGiveImpossibleTimes) {
  ModulatorRig rig;
  rig.host.setRunning(true);
  for (int n = 0; n < 4; ++n) {
    rig.ramp(n, 0.3);
    rig.set(kLfoSync + n, 1);
    rig.set(kGateOn + n, 1);
    rig.set(kGateSync + n, n % 2);
    rig.set(kGateDirection + n, n);
    for (int step = 0; step < 16; ++step) rig.set(kGateStep + n * 16 + step, 50 + step);
  }
  const double bad[] = {-1e9, 1e300, std::numeric_limits<double>::quiet_NaN(),
                        std::numeric_limits<double>::infinity(), 0.0};
  for (double value : bad) {
    rig.host.setTempo(value);
    rig.host.locate(value);
    const ModulatorOutputs now = rig.step();
    for (std::size_t n = 0; n < 4; ++n) {
      for (double sample : now.lfo[n]) ASSERT_LE(std::fabs(sample), 1.0);
      for (double sample : now.gate[n]) ASSERT_LE(std::fabs(sample), 1.0);
    }
  }
  rig.host.setTempo(120.0);
  rig.host.locate(0.0);
  rig.steps(10);
  const double first = rig.step().gate[1][31];
  rig.host.locate(1.0);
  EXPECT_NE(rig.step().gate[1][31], first) << "the gates run on";
}

}  // namespace
}  // namespace orvantesco
