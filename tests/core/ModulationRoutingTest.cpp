// From a modulator's vector to the value that it moves: scale, limits and place of reading.

#include <gtest/gtest.h>

#include "core/Modulated.h"
#include "support/ModulatorRig.h"

namespace orvantesco {
namespace {

/// A slot whose controls gate 1 moves, and what has become of them.
struct RoutingRig : ModulatorRig {
  const Slot& slot = probe.engineSlot(0);

  explicit RoutingRig(double modulator = 1.0) {
    hold(0, modulator);
    set(kSlotOn, 1);
    set(kDelayOn, 0);
    warmUp(0.5);
  }
  void settle() { warmUp(1.0); }
  void route(int source, int depth, double percent) {
    set(source, kGate1);
    set(depth, percent);
  }
};

struct Case {
  double modulator, base, depthPercent, expected;
};

double decibels(double gain) { return 20.0 * std::log10(gain); }

/// Values of a control of 0..4 whose depth is cubed, the base in dB.
const Case kGains[] = {
    {1.0, 0.0, 50.0, 1.125},          {1.0, 0.0, -50.0, 0.875},
    {-1.0, 0.0, 50.0, 0.875},         {1.0, 0.0, 0.0, 1.0},
    {1.0, 0.0, -100.0, 0.0},          {-1.0, decibels(0.5), 100.0, 0.0},
    {1.0, decibels(3.5), 100.0, 4.0}, {0.4, 0.0, 100.0, 1.4},
};

TEST(ModulationRouting, levelIsMovedByACubedDepthWithin0And4) {
  for (const Case& c : kGains) {
    RoutingRig rig(c.modulator);
    rig.set(kLevel, c.base);
    rig.route(kLevelModSource, kLevelModDepth, c.depthPercent);
    rig.settle();
    EXPECT_NEAR(rig.slot.levelSmoother.state(), c.expected, 1e-3) << c.base << ' ' << c.expected;
  }
}

TEST(ModulationRouting, inputGainIsMovedByACubedDepthWithin0And4) {
  for (const Case& c : kGains) {
    RoutingRig rig(c.modulator);
    rig.set(kInputGain, c.base);
    rig.route(kInputGainModSource, kInputGainModDepth, c.depthPercent);
    rig.settle();
    EXPECT_NEAR(rig.slot.inputSmoother.state(), c.expected, 1e-3) << c.base << ' ' << c.expected;
  }
}

TEST(ModulationRouting, panIsMovedByALinearDepthWithinItsEnds) {
  for (const Case& c :
       {Case{1.0, 0.0, 50.0, 0.5}, Case{-1.0, 20.0, 50.0, -0.3}, Case{1.0, 80.0, 50.0, 1.0},
        Case{-1.0, -80.0, 50.0, -1.0}, Case{1.0, -30.0, 0.0, -0.3}}) {
    RoutingRig rig(c.modulator);
    rig.set(kPanning, c.base);
    rig.route(kPanningModSource, kPanningModDepth, c.depthPercent);
    rig.settle();
    EXPECT_NEAR(rig.slot.panSmoother.state(), c.expected, 1e-9) << c.base;
  }
}

TEST(ModulationRouting, sendIsMovedByALinearDepthWithin0And1) {
  for (const Case& c :
       {Case{1.0, 20.0, 50.0, 0.7}, Case{-1.0, 80.0, 50.0, 0.3}, Case{1.0, 80.0, 50.0, 1.0},
        Case{-1.0, 20.0, 50.0, 0.0}, Case{1.0, 40.0, 0.0, 0.4}}) {
    RoutingRig rig(c.modulator);
    rig.set(kMasterFx, 1);
    rig.set(kMasterFxBypass, 1);  // the send passes to the return as it is
    rig.set(kMasterFxSend, c.base);
    rig.route(kMasterFxSendModSource, kMasterFxSendModDepth, c.depthPercent);
    rig.settle();
    for (int i = 0; i < 10; ++i) rig.step(0.3, 0.3);
    const auto stage = static_cast<std::size_t>(rig.slot.controls.masterSource.get());
    const double sent = rig.slot.stage[stage].left[31];
    ASSERT_GT(std::fabs(sent), 1e-3);
    EXPECT_NEAR(rig.probe.buses().masterReturn.left[31] / sent, c.expected, 1e-9) << c.base;
  }
}

TEST(ModulationRouting, feedbackIsMovedByACubedDepthWithin0And1Point6) {
  for (const Case& c :
       {Case{1.0, 40.0, 50.0, 0.525}, Case{-1.0, 40.0, 50.0, 0.275}, Case{1.0, 100.0, 100.0, 1.6},
        Case{-1.0, 100.0, 100.0, 0.0}, Case{-1.0, 40.0, 100.0, 0.0}, Case{1.0, 40.0, 0.0, 0.4}}) {
    RoutingRig rig(c.modulator);
    rig.set(kFeedback, c.base);
    rig.route(kFeedbackModSource, kFeedbackModDepth, c.depthPercent);
    rig.steps(3);
    EXPECT_NEAR(rig.slot.feedbackL, c.expected, 1e-12) << c.base;
    EXPECT_EQ(rig.slot.feedbackL, rig.slot.feedbackR);
  }
}

TEST(ModulationRouting, feedbackUnderABipolarLfoStaysWithinItsLimits) {
  RoutingRig rig;
  rig.ramp(0, 20.0);
  rig.set(kFeedback, 100);
  rig.set(kFeedbackModSource, kLfo1);
  rig.set(kFeedbackModDepth, 100);
  double lowest = 1.0;
  double highest = 1.0;
  for (int i = 0; i < 500; ++i) {
    const double source = rig.step().lfo[0][0];
    rig.step();
    lowest = std::min(lowest, rig.slot.feedbackL);
    highest = std::max(highest, rig.slot.feedbackL);
    EXPECT_NEAR(rig.slot.feedbackL, std::clamp(1.0 + source, 0.0, 1.6), 1e-12)
        << "the first sample of the vector of the sub-block before";
  }
  EXPECT_LT(lowest, 0.1);
  EXPECT_EQ(highest, 1.6);
}

TEST(ModulationRouting, controlsReadTheFirstSampleOfTheLastVector) {
  RoutingRig rig;
  rig.ramp(0, 200.0);
  rig.set(kPanningModSource, kLfo1);
  rig.set(kPanningModDepth, 100);
  const double coefficient = std::exp(-2.0 * 3.14159265358979323846 / (0.06 * 48000.0));
  const double share = std::pow(coefficient, kVectorLength);
  double before = rig.step().lfo[0][0];
  double pan = rig.slot.panSmoother.state();
  for (int i = 0; i < 100; ++i) {
    const double now = rig.step().lfo[0][0];
    pan = share * pan + (1.0 - share) * before;
    EXPECT_NEAR(rig.slot.panSmoother.state(), pan, 1e-9);
    before = now;
  }
}

TEST(ModulationRouting, offLeavesTheBaseUnlimitedAndADepthAsItWas) {
  RoutingRig rig;
  rig.set(kLevel, 0);
  rig.route(kLevelModSource, kLevelModDepth, 50.0);
  rig.set(kLevelModSource, kSourceOff);
  rig.settle();
  EXPECT_NEAR(rig.slot.levelSmoother.state(), 1.0, 1e-9);
  EXPECT_EQ(rig.effect.GetParam(kLevelModDepth)->value(), 50.0);
  rig.set(kLevelModSource, kGate1);
  rig.settle();
  EXPECT_NEAR(rig.slot.levelSmoother.state(), 1.125, 1e-9);
  // Fader and attenuation together may pass 4, where a source would hold the gain down.
  EXPECT_EQ(modulatedFirst({}, 7.0, 0.0, 4.0), 7.0);
}

TEST(ModulationRouting, theDelaysControlsGetTheirSourcesAndScaledDepths) {
  struct Control {
    int source, depth, control;
    double scale;
  };
  for (const Control& c : {Control{kDelayModSource, kDelayModDepth, 0, 48000.0 * 0.025},
                           Control{kGrainPositionModSource, kGrainPositionModDepth, 3, 1.0},
                           Control{kGrainSpeedModSource, kGrainSpeedModDepth, 4, 1.0},
                           Control{kGrainSizeModSource, kGrainSizeModDepth, 5, 1.0},
                           Control{kDelayTapsTimeModSource, kDelayTapsTimeModDepth, 6, 0.5}}) {
    for (int number = 0; number < numSlots; ++number) {
      ModulatorRig rig;
      rig.set(kSlotOn + number, 1);
      rig.set(kDelayOn + number, 1);
      rig.set(c.source + number, kLfo2);
      rig.set(c.depth + number, -50.0);
      rig.step();
      for (const QLMMultiDelay& line : rig.probe.engineSlot(number).delay) {
        for (int other : {0, 3, 4, 5, 6}) {
          EXPECT_EQ(line.modSourceOf(other),
                    other == c.control ? rig.probe.outputs().lfo[1].data() : nullptr);
        }
        EXPECT_NEAR(*line.modDepthOf(c.control), -0.125 * c.scale, 1e-9) << c.control;
      }
    }
  }
}

/// Delay of a slot's channels, in samples, told from the place of a slow ramp.
struct DelayTimes {
  double left, right;
};

DelayTimes timesOf(ModulatorRig& rig) {
  constexpr double kSlope = 1e-6;
  const std::size_t frames = 48000;
  StereoBuffer audio(frames);
  for (std::size_t i = 0; i < frames; ++i) {
    audio.left[i] = audio.right[i] = kSlope * static_cast<double>(i);
  }
  rig.render(audio);
  const std::size_t at = frames - 1;
  const double gain = (audio.left[at] - audio.left[at - 1000]) / 1000.0 / kSlope;
  const auto delayOf = [&](const std::vector<double>& heard) {
    return static_cast<double>(at) - heard[at] / (gain * kSlope);
  };
  return {delayOf(audio.left), delayOf(audio.right)};
}

/// A slot whose delay alone is heard.
void hearDelay(ModulatorRig& rig, int slot) {
  for (int other = 0; other < numSlots; ++other) rig.set(kSlotOn + other, other == slot);
  rig.set(kDelayOn + slot, 1);
  rig.set(kInput + slot, 3);
  rig.set(kTimebase + slot, 0);
  rig.set(kDelayTimeL + slot, 50);
  rig.set(kDelayTimeR + slot, 50);
  rig.set(kDirectIn + slot, 0);
  rig.set(kFeedback + slot, 0);
  rig.set(kDryLevel, 0);
  rig.set(kLimiterOn, 0);
  rig.set(kMainModDepth, 0);
}

TEST(ModulationRouting, timeModulationMovesTheTwoChannelsApart) {
  ModulatorRig rig;
  rig.hold(0, 0.8);
  hearDelay(rig, 0);
  rig.warmUp(2.0);
  const DelayTimes before = timesOf(rig);
  rig.set(kDelayModSource, kGate1);
  rig.set(kDelayModDepth, 50);
  rig.warmUp(2.0);
  const DelayTimes after = timesOf(rig);
  const double swing = 48000.0 * 0.125 * 0.025 * 0.8;
  EXPECT_NEAR(after.left - before.left, swing, 1.0);
  EXPECT_NEAR(after.right - before.right, -swing, 1.0);
}

TEST(ModulationRouting, theMainModulatorSwingsEachSlotByItsOwnPairOfOutputs) {
  for (int slot = 0; slot < numSlots; ++slot) {
    ModulatorRig rig;
    hearDelay(rig, slot);
    rig.set(kDelayModulation + slot, 50);
    rig.set(kMainModRate, 100);
    rig.warmUp(8.0);
    rig.set(kMainModRate, 0);  // the modulator as good as stands
    rig.warmUp(2.0);
    const DelayTimes before = timesOf(rig);
    rig.set(kMainModDepth, 80);
    rig.warmUp(2.0);
    const DelayTimes after = timesOf(rig);
    const auto mod = rig.effect.modulatorOutputs().mainMod;
    const auto pair = static_cast<std::size_t>(slot / 2);
    const double swing = (slot % 2 == 0 ? -0.5 : 0.5) * 80.0;
    ASSERT_GT(std::fabs(mod[0] - mod[1]), 0.1);
    EXPECT_NEAR(after.right - before.right, swing * mod[pair], 0.5) << slot;
    EXPECT_NEAR(after.left - before.left, swing * mod[pair + 1], 0.5) << slot;
  }
}

}  // namespace
}  // namespace orvantesco
