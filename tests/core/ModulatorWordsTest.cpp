// From the parameters to the modulators: each setting arrives where it belongs. A modulator of the
// engine gives the same bits as one of its own that was set by hand.

#include <gtest/gtest.h>

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

/// Three gates and both envelopes at rates of their own: sources of pulses.
void startPulses(ModulatorRig& rig) {
  for (int n = 0; n < 3; ++n) {
    rig.set(kGateOn + n, 1);
    rig.set(kGateTimebase + n, 2 + n);
    rig.set(kGateLength + n, 3 + n);
    rig.set(kGateStep + n * 16 + 1 + (n & 1), 100);
  }
  for (int e = 0; e < 2; ++e) {
    rig.set(kEnvOn + e, 1);
    rig.set(kEnvMode + e, 1);
    rig.set(kEnvSource + e, 1 + e);
    rig.set(kEnvThreshold + e, -40);
    rig.set(kEnvAttack + e, 1);
    rig.set(kEnvDecay + e, 5);
  }
}

ModulatorOutputs stepWithBursts(ModulatorRig& rig, int vector) {
  for (std::size_t k = 0; k < rig.vector.size(); ++k) {
    const double tone = std::sin(0.3 * static_cast<double>(k));
    rig.vector.left[k] = vector % 900 < 60 ? tone : 0.0;
    rig.vector.right[k] = vector % 700 < 60 ? tone : 0.0;
  }
  rig.block(rig.vector, 0, kVectorLength);
  return rig.effect.modulatorOutputs();
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

void setEnvelope(ModulatorRig& rig, int number, bool follower) {
  rig.set(kEnvOn + number, 1);
  rig.set(kEnvMode + number, follower ? 0 : 1);
  rig.set(kEnvSource + number, 2);
  rig.set(kEnvGain + number, 6);
  rig.set(kEnvAttack + number, 3);
  rig.set(kEnvDecay + number, 30);
  rig.set(kEnvHold + number, 20);
  rig.set(kEnvThreshold + number, -20);
  rig.set(kEnvLocut + number, 200);
  rig.set(kEnvHicut + number, 5000);
  rig.set(kEnvDepth + number, 80);
  rig.set(kEnvOutput + number, follower ? 1 : 0);
}

void setTwin(Envelope& twin, bool follower) {
  twin.setFollower(follower);
  twin.setGain(std::exp(6.0 * 0.1151292546497));
  twin.setAttack(3.0);
  twin.setRelease(30.0);
  twin.setHold(20.0);
  twin.setThreshold(std::exp(-20.0 * 0.1151292546497));
  twin.setLocut(std::log(200.0 / 50.0) / std::log(400.0));
  twin.setHicut(std::log(5000.0 / 50.0) / std::log(400.0));
  twin.setDepth(0.8);
  twin.setLinear(follower);
}

TEST(ModulatorWords, ofAnEnvelopeArriveInIt) {
  for (int number = 0; number < 2; ++number) {
    for (bool follower : {true, false}) {
      ModulatorRig rig;
      setEnvelope(rig, number, follower);
      Envelope twin;
      setTwin(twin, follower);
      AudioVector expected{};
      double largest = 0.0;
      for (int i = 0; i < 3000; ++i) {
        const ModulatorOutputs now = stepWithBursts(rig, i);
        twin.run(rig.probe.buses().inR.data(), expected.data());
        const AudioVector& heard = now.envelope[static_cast<std::size_t>(number)];
        for (std::size_t k = 0; k < heard.size(); ++k) {
          largest = std::max(largest, std::fabs(heard[k] - expected[k]));
        }
      }
      EXPECT_LT(largest, 1e-12) << number << ' ' << follower;
    }
  }
}

TEST(ModulatorWords, anEnvelopesPulseIsUpWhereItCrossesFullScaleFromBelow) {
  ModulatorRig rig;
  startPulses(rig);
  double previous = 0.0;
  int pulses = 0;
  for (int i = 0; i < 6000; ++i) {
    const double now = stepWithBursts(rig, i).envelope[1][0];
    ASSERT_EQ(rig.probe.triggers().envPulse[1], previous < 1.0 && now >= 1.0) << i;
    pulses += rig.probe.triggers().envPulse[1];
    previous = now;
  }
  EXPECT_NEAR(pulses, 6000 / 700, 1);
}

TEST(ModulatorWords, pulsesFallWithTheSwitchOfTheirModulator) {
  ModulatorRig rig;
  TriggerFlags& flags = rig.probe.triggers();
  flags.envPulse.fill(1);
  flags.gateLevelPulse.fill(1);
  flags.gateStartPulse.fill(1);
  rig.step();
  EXPECT_EQ(flags.envPulse, (std::array<unsigned char, 2>{}));
  EXPECT_EQ(flags.gateLevelPulse, (std::array<unsigned char, 4>{}));
  EXPECT_EQ(flags.gateStartPulse, (std::array<unsigned char, 4>{}));
}

TEST(ModulatorWords, ofALogicUnitArriveInItInEveryType) {
  using Type = LogicUnit::Type;
  const Type menu[] = {Type::Add,    Type::Multiply, Type::Min,    Type::Max,  Type::AbsMin,
                       Type::AbsMax, Type::Gate,     Type::Higher, Type::Lower};
  for (int type = 0; type < LogicUnit::kTypes; ++type) {
    const int number = type % 4;
    ModulatorRig rig;
    rig.ramp(0, 31.0);
    rig.hold(0, 0.35);
    rig.hold(1, -0.6);
    rig.add(number, kLfo1, kGate1);
    rig.set(kLogicType + number, type);
    rig.set(kLogicSource1Depth + number, -80);
    rig.set(kLogicSource2Depth + number, 90);
    rig.set(kLogicSmooth + number, 7);
    rig.set(kLogicDepth + number, 60);
    rig.set(kLogicDepthModSource + number, kGate1 + 1);
    rig.set(kLogicDepthMod + number, 40);
    const ModulatorOutputs& outputs = rig.effect.modulatorOutputs();
    LogicUnit twin;
    twin.setType(menu[type]);
    // What runs behind a unit it reads as of the last vector, so the twin gets copies.
    AudioVector modulation{};
    twin.setOperand(0, {outputs.lfo[0].data(), -0.8});
    twin.setOperand(1, {outputs.gate[0].data(), 0.9});
    twin.setSmooth(7.0);
    twin.setDepth(0.6);
    twin.setDepthModulation({modulation.data(), 0.4});
    AudioVector expected{};
    for (int i = 0; i < 600; ++i) {
      const AudioVector before = outputs.gate[1];
      rig.step();
      modulation = number == 0 ? before : outputs.gate[1];
      twin.process(expected.data());
      ASSERT_EQ(outputs.logic[static_cast<std::size_t>(number)], expected) << type << " at " << i;
    }
  }
}

TEST(ModulatorWords, anEnvelopeHearsEverySlotTheSideChainAndTheMasterReturn) {
  for (int source = 0; source <= 16; ++source) {
    ModulatorRig rig;
    for (int slot = 0; slot < kSlots; ++slot) {
      rig.set(kSlotOn + slot, 1);
      rig.set(kDelayOn + slot, 0);
      rig.set(kLevel + slot, -3.0 * slot);
      rig.set(kPanning + slot, 20.0 - 10.0 * slot);
    }
    rig.set(kMasterFx, 1);
    rig.set(kMasterFxBypass, 1);
    rig.warmUp(0.5);
    rig.effect.connectInputs(2, true);
    setEnvelope(rig, 0, true);
    rig.set(kEnvSource, source);
    Envelope twin;
    setTwin(twin, true);
    StereoBuffer audio = noise(kVectorLength);
    const std::vector<double> side = noise(kVectorLength, 0.3, 9).left;
    AudioVector expected{};
    const auto heardNow = [&]() -> AudioVector {
      const Buses& buses = rig.probe.buses();
      if (source == 0) return buses.inMono;
      if (source == 1) return buses.inL;
      if (source == 2) return buses.inR;
      if (source == 15) return buses.sideIn;
      if (source == 16) return buses.masterReturn.left;
      const Slot& slot = rig.probe.engineSlot((source - 3) / 3);
      if (source % 3 == 0) return slot.slotMono;
      const auto stage = static_cast<std::size_t>(slot.controls.directOut.get());
      return source % 3 == 1 ? slot.stage[stage].left : slot.stage[stage].right;
    };
    double band = 0.0;
    for (int i = 0; i < 200; ++i) {
      std::vector<double> left = audio.left;
      std::vector<double> right(audio.right);
      std::vector<double> third = side;
      double* in[] = {left.data(), right.data(), third.data()};
      rig.effect.ProcessDoubleReplacing(in, in, kVectorLength);
      rig.host.advance(kVectorLength);
      const AudioVector now = heardNow();
      for (double sample : now) band = std::max(band, std::fabs(sample));
      twin.run(now.data(), expected.data());
    }
    EXPECT_GT(band, 0.01) << source;
    EXPECT_NEAR(rig.effect.modulatorOutputs().envelope[0][31], expected[31], 1e-12) << source;
  }
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
