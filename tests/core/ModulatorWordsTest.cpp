// From the parameters to LFOs and gates: each setting arrives where it belongs. A modulator of the
// engine gives the same bits as one of its own that was set by hand.

#include <gtest/gtest.h>

#include "core/ModulatorPulses.h"
#include "mod/WaveTable.h"
#include "support/ModulatorRig.h"

namespace orvantesco {
namespace {

constexpr double kStepsPerBeat[] = {1.0,       2.0,       4.0,        8.0, 16.0, 2.0 / 3.0,
                                    4.0 / 3.0, 8.0 / 3.0, 16.0 / 3.0, 1.5, 3.0,  6.0};

TEST(ModulatorWords, ofAnLfoArriveInIt) {
  for (int number = 0; number < 4; ++number) {
    ModulatorRig rig;
    rig.host.setRunning(true);
    rig.hold(0, -0.4);
    rig.set(kLfoOn + number, 1);
    rig.set(kLfoWave + number, 9);
    rig.set(kLfoPol + number, 1);
    rig.set(kLfoSwap + number, 1);
    rig.set(kLfoReverse + number, 1);
    rig.set(kLfoMode + number, 1);
    rig.set(kLfoTrigger + number, 1);
    rig.set(kLfoRate + number, 17.3);
    rig.set(kLfoFreqModSource + number, kGate1);
    rig.set(kLfoFreqModDepth + number, 30);
    rig.set(kLfoDepth + number, 70);
    rig.set(kLfoPhase + number, 30);
    rig.set(kLfoGlide + number, 25);
    WaveLFO twin;
    twin.setWave(waveList[9]);
    twin.setPolarity(WaveLFO::Polarity::Negative);
    twin.setSwap(true);
    twin.setReverse(true);
    twin.setMode(WaveLFO::Mode::OneShot);
    twin.setTrigger(&rig.probe.triggers().quarterPulse);
    twin.setRate(17.3);
    twin.setRateModSource(rig.probe.outputs().gate[0].data());
    twin.setRateModDepth(0.3 * 0.3 * 0.3);
    twin.setDepth(0.7);
    twin.setPhase(0.3);
    twin.setGlide(25.0);
    AudioVector expected{};
    for (int i = 0; i < 2000; ++i) {
      const ModulatorOutputs now = rig.step();
      twin.process(expected.data());
      ASSERT_LT(std::fabs(now.lfo[static_cast<std::size_t>(number)][31] - expected[31]), 1e-12)
          << number << " at " << i;
    }
  }
}

TEST(ModulatorWords, everyTriggerOfTheMenuRestartsAnLfo) {
  ModulatorRig rig;
  TriggerFlags& flags = rig.probe.triggers();
  rig.ramp(0, 1.0);
  rig.set(kLfoGlide, 0);
  const std::vector<unsigned char*> menu{
      nullptr,
      &flags.quarterPulse,
      &flags.barPulse,
      &flags.twoBarPulse,
      &flags.envPulse[0],
      &flags.envPulse[1],
      &flags.gateLevelPulse[0],
      &flags.gateLevelPulse[1],
      &flags.gateLevelPulse[2],
      &flags.gateLevelPulse[3],
      &flags.gateStartPulse[0],
      &flags.gateStartPulse[1],
      &flags.gateStartPulse[2],
      &flags.gateStartPulse[3],
  };
  for (std::size_t entry = 0; entry < menu.size(); ++entry) {
    rig.set(kLfoTrigger, static_cast<double>(entry));
    for (std::size_t raised = 1; raised < menu.size(); ++raised) {
      const unsigned char* word = rig.probe.modulators().lfo[0].trigger;
      *menu[raised] = 1;
      EXPECT_EQ(*word != 0, entry == raised) << entry << ' ' << raised;
      *menu[raised] = 0;
    }
  }
}

struct GateSetting {
  int timebase;
  bool sync;
};

void expectGate(const GateSetting& setting, int number) {
  ModulatorRig rig;
  rig.host.setRunning(true);
  rig.host.setTempo(173.0);
  ArpGate twin;
  rig.set(kGateOn + number, 1);
  rig.set(kGateLength + number, 5);
  rig.set(kGateDirection + number, 2);
  rig.set(kGatePol + number, 2);
  rig.set(kGateTimebase + number, setting.timebase);
  rig.set(kGateSync + number, setting.sync);
  rig.set(kGateDepth + number, 60);
  rig.set(kGateGlide + number, 8);
  for (int step = 0; step < 16; ++step) {
    rig.set(kGateStep + number * 16 + step, 5.0 * step + 3.0);
    twin.setLevel(step, (5.0 * step + 3.0) * 0.01);
  }
  twin.setStepCount(5);
  twin.setDirection(ArpGate::Direction::ForwardBackward);
  twin.setPolarity(ArpGate::Polarity::Bipolar);
  twin.setStepsPerBeat(kStepsPerBeat[setting.timebase]);
  twin.setSync(setting.sync);
  twin.setDepth(0.6);
  twin.setGlide(8.0);
  AudioVector expected{};
  double largest = 0.0;
  for (int i = 0; i < 4000; ++i) {
    const ModulatorOutputs now = rig.step();
    twin.process({rig.probe.songPosition(), 173.0}, expected.data());
    const double heard = now.gate[static_cast<std::size_t>(number)][31];
    largest = std::max(largest, std::fabs(heard - expected[31]));
  }
  EXPECT_LT(largest, 1e-12) << setting.timebase << ' ' << setting.sync << ' ' << number;
}

TEST(ModulatorWords, ofAGateArriveInItInEveryTimebase) {
  for (int timebase = 0; timebase < 12; ++timebase) {
    expectGate({timebase, false}, timebase % 4);
    expectGate({timebase, true}, (timebase + 1) % 4);
  }
}

const unsigned char& flagOf(const TriggerFlags& flags, int timebase) {
  const auto entry = static_cast<std::size_t>(timebase - 12);
  if (entry < 2) return flags.envPulse[entry];
  return entry < 6 ? flags.gateLevelPulse[entry - 2] : flags.gateStartPulse[entry - 6];
}

TEST(ModulatorWords, everyClockedTimebaseIsTheFlagOfItsName) {
  for (int timebase = 12; timebase < 22; ++timebase) {
    ModulatorRig rig;
    startPulses(rig);
    rig.set(kGateOn + 3, 1);
    rig.set(kGateTimebase + 3, timebase);
    rig.set(kGateStep + 3 * 16 + 3, 100);
    unsigned char clock = 0;
    ArpGate twin;
    twin.setLevel(3, 1.0);
    twin.setGlide(0.0);
    twin.setClockSource(&clock);
    const bool ownFlag = timebase == 17 || timebase == 21;
    AudioVector expected{};
    int moves = 0;
    for (int i = 0; i < 8000; ++i) {
      const TriggerFlags before = rig.probe.triggers();
      const double heard = stepWithBursts(rig, i).gate[3][31];
      clock = flagOf(ownFlag ? before : rig.probe.triggers(), timebase);
      const int step = twin.currentStep();
      twin.process({0.0, 120.0}, expected.data());
      moves += twin.currentStep() != step;
      ASSERT_EQ(heard, expected[31]) << timebase << " at " << i;
    }
    EXPECT_EQ(moves > 4, !ownFlag) << timebase << ": " << moves;
  }
}

/// Pulses of a gate, told from a twin of it.
void expectGatePulses(double depthPercent, int polarity, double glideMs) {
  ModulatorRig rig;
  const double levels[] = {100, 100, 40, 95, 100, 0};
  ArpGate twin;
  rig.set(kGateOn + 1, 1);
  rig.set(kGateLength + 1, 6);
  rig.set(kGateTimebase + 1, 4);
  rig.set(kGateDepth + 1, depthPercent);
  rig.set(kGatePol + 1, polarity);
  rig.set(kGateGlide + 1, glideMs);
  for (int step = 0; step < 6; ++step) {
    rig.set(kGateStep + 16 + step, levels[step]);
    twin.setLevel(step, levels[step] * 0.01);
  }
  twin.setStepCount(6);
  twin.setStepsPerBeat(16.0);
  twin.setDepth(depthPercent * 0.01);
  twin.setPolarity(static_cast<ArpGate::Polarity>(polarity));
  twin.setGlide(glideMs);
  AudioVector out{};
  double previous = 0.0;
  for (int i = 0; i < 3000; ++i) {
    rig.step();
    const int before = twin.currentStep();
    twin.process({0.0, 120.0}, out.data());
    const double level = levels[twin.currentStep()];
    ASSERT_EQ(rig.probe.triggers().gateLevelPulse[1], previous < 1.0 && level == 100.0) << i;
    ASSERT_EQ(rig.probe.triggers().gateStartPulse[1], before != 0 && twin.currentStep() == 0) << i;
    previous = std::clamp(out[0], -1.0, 1.0);
  }
}

TEST(ModulatorWords, aGatesPulsesTellItsFullStepsAndItsStart) {
  expectGatePulses(100.0, 0, 0.0);
  expectGatePulses(100.0, 0, 1.0);
  expectGatePulses(50.0, 0, 0.0);
  expectGatePulses(100.0, 1, 0.0);
}

TEST(ModulatorWords, gatesDrawEachForItself) {
  ModulatorRig rig;
  for (int gate = 0; gate < 2; ++gate) {
    rig.set(kGateOn + gate, 1);
    rig.set(kGateDirection + gate, 3);
    rig.set(kGateLength + gate, 16);
    rig.set(kGateTimebase + gate, 4);
    for (int step = 0; step < 16; ++step) rig.set(kGateStep + gate * 16 + step, 6.0 * step);
  }
  int apart = 0;
  for (int i = 0; i < 2000; ++i) {
    const ModulatorOutputs now = rig.step();
    apart += now.gate[0] != now.gate[1];
  }
  EXPECT_GT(apart, 1000);
}

TEST(ModulatorWords, aSubBlockHasSeenTheTempo) {
  ModulatorRig rig;
  rig.step();
  rig.probe.takeTempo(77.0);
  EXPECT_TRUE(rig.probe.tempoIsNew());
  rig.probe.updateModulators();
  EXPECT_FALSE(rig.probe.tempoIsNew());
}

}  // namespace
}  // namespace orvantesco
