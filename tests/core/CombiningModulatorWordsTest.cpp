// From the parameters to the envelopes and logic units, and from the signals to the envelopes. A
// modulator of the engine gives the same bits as one of its own that was set by hand.

#include <gtest/gtest.h>

#include "core/ModulatorPulses.h"
#include "fx/RateValues.h"
#include "support/ModulatorRig.h"

namespace orvantesco {
namespace {

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

TEST(CombiningModulatorWords, ofAnEnvelopeArriveInIt) {
  for (int number = 0; number < 2; ++number) {
    for (bool follower : {true, false}) {
      ModulatorRig rig;
      setEnvelope(rig, number, follower);
      setRateValues(48000.0);  // the rig's first block brings its rate; the twin is built before
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

TEST(CombiningModulatorWords, anEnvelopesPulseIsUpWhereItCrossesFullScaleFromBelow) {
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

TEST(CombiningModulatorWords, pulsesFallWithTheSwitchOfTheirModulator) {
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

TEST(CombiningModulatorWords, ofALogicUnitArriveInItInEveryType) {
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

TEST(CombiningModulatorWords, anEnvelopeHearsEverySlotTheSideChainAndTheMasterReturn) {
  for (int source = 0; source <= 16; ++source) {
    ModulatorRig rig;
    for (int slot = 0; slot < numSlots; ++slot) {
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

}  // namespace
}  // namespace orvantesco
