#include "params/dispatch/DispatchRig.h"

namespace orvantesco {
namespace {

using ModulatorFamiliesTest = DispatchRig;

TEST_F(ModulatorFamiliesTest, LfoWords) {
  const LfoControls& lfo = probe.modulators().lfo[2];
  set(kLfoOn + 2, 1);
  set(kLfoWave + 2, 26);
  set(kLfoPol + 2, 2);
  set(kLfoSwap + 2, 1);
  set(kLfoReverse + 2, 1);
  set(kLfoMode + 2, 2);
  set(kLfoDepth + 2, 80.0);
  set(kLfoPhase + 2, 25.0);
  set(kLfoGlide + 2, 55.0);
  EXPECT_TRUE(lfo.on);
  EXPECT_EQ(lfo.wave, 26);
  EXPECT_EQ(lfo.polarity, 2);
  EXPECT_TRUE(lfo.swap);
  EXPECT_TRUE(lfo.reverse);
  EXPECT_EQ(lfo.mode, 2);
  EXPECT_DOUBLE_EQ(lfo.depth, 0.8);
  EXPECT_DOUBLE_EQ(lfo.phase, 0.25);
  EXPECT_DOUBLE_EQ(lfo.glideMs, 55.0);
  EXPECT_EQ(editor.linesOf("refreshModulator").size(), 6u);
  EXPECT_TRUE(editor.saw("refreshModulator Lfo 2"));
}

TEST_F(ModulatorFamiliesTest, LfoModulation) {
  const LfoControls& lfo = probe.modulators().lfo[1];
  set(kLfoFreqModDepth + 1, -50.0);
  EXPECT_DOUBLE_EQ(lfo.rateModDepth, -0.125);
  set(kLfoFreqModSource + 1, 2);
  EXPECT_EQ(lfo.rateModSource, probe.outputs().lfo[1].data()) << "an LFO may drive itself";
  EXPECT_TRUE(editor.saw("setRing 865 Lfo yes"));
}

TEST_F(ModulatorFamiliesTest, GateWords) {
  const GateControls& gate = probe.modulators().gate[3];
  set(kGateLength + 3, 16);
  set(kGateOn + 3, 1);
  set(kGateTimebase + 3, 21);
  set(kGateDirection + 3, 3);
  set(kGateSync + 3, 1);
  set(kGateGlide + 3, 500.0);
  set(kGateDepth + 3, 60.0);
  set(kGatePol + 3, 2);
  set(kGateSteps + 3, 5);
  set(gateStepIndex(3, 15), 70.0);
  EXPECT_EQ(gate.length, 16);
  EXPECT_TRUE(gate.on);
  EXPECT_EQ(gate.timebase, 21);
  EXPECT_EQ(gate.direction, 3);
  EXPECT_TRUE(gate.sync);
  EXPECT_DOUBLE_EQ(gate.glideMs, 500.0);
  EXPECT_DOUBLE_EQ(gate.depth, 0.6);
  EXPECT_EQ(gate.polarity, 2);
  EXPECT_EQ(gate.quantisation, 5);
  EXPECT_DOUBLE_EQ(gate.level[15], 0.7);
  EXPECT_TRUE(editor.saw("setLaneGrid 923 5"));
}

TEST_F(ModulatorFamiliesTest, AGateTakesItsLengthAnewWhenItIsSwitchedOn) {
  rig.effect.GetParam(kGateLength)->setValue(3);
  set(kGateOn, 0);
  EXPECT_EQ(probe.modulators().gate[0].length, 8);
  set(kGateOn, 1);
  EXPECT_EQ(probe.modulators().gate[0].length, 3);
}

TEST_F(ModulatorFamiliesTest, AGateThatIsClockedByAnotherCannotBeSynced) {
  set(kGateTimebase, 11);
  EXPECT_TRUE(editor.saw("enableKnob 904 yes"));
  set(kGateTimebase, 12);
  EXPECT_TRUE(editor.saw("enableKnob 904 no"));
}

TEST_F(ModulatorFamiliesTest, EnvelopeWords) {
  const EnvelopeControls& envelope = probe.modulators().envelope[1];
  set(kEnvOn + 1, 1);
  set(kEnvMode + 1, 1);
  set(kEnvSource + 1, 16);
  set(kEnvGain + 1, 20.0);
  set(kEnvAttack + 1, 33.0);
  set(kEnvDecay + 1, 333.0);
  set(kEnvHold + 1, 44.0);
  set(kEnvThreshold + 1, -20.0);
  set(kEnvLocut + 1, 1000.0);
  set(kEnvHicut + 1, 20000.0);
  set(kEnvDepth + 1, 50.0);
  set(kEnvOutput + 1, 1);
  EXPECT_TRUE(envelope.on);
  EXPECT_FALSE(envelope.follower);
  EXPECT_EQ(envelope.source, 16);
  EXPECT_NEAR(envelope.gain, 10.0, 1e-9);
  EXPECT_DOUBLE_EQ(envelope.attackMs, 33.0);
  EXPECT_DOUBLE_EQ(envelope.releaseMs, 333.0);
  EXPECT_DOUBLE_EQ(envelope.holdMs, 44.0);
  EXPECT_NEAR(envelope.threshold, 0.1, 1e-11);
  EXPECT_DOUBLE_EQ(envelope.locut, 0.5);
  EXPECT_DOUBLE_EQ(envelope.hicut, 1.0);
  EXPECT_DOUBLE_EQ(envelope.depth, 0.5);
  EXPECT_TRUE(envelope.linear);
  set(kEnvThreshold + 1, -90.0);
  EXPECT_GT(envelope.threshold, 0.0) << "-90 dB is a threshold, not silence";
}

TEST_F(ModulatorFamiliesTest, EnvelopesOfAMonoMainInputListenToTheLeft) {
  rig.effect.connectInputs(1, false);
  for (int source = 0; source < 5; ++source) {
    set(kEnvSource, source);
    EXPECT_EQ(probe.modulators().envelope[0].source, source < 3 ? 1 : source);
  }
  set(kEnvSource, 2);
  rig.effect.connectInputs(2, false);
  EXPECT_EQ(probe.modulators().envelope[0].source, 2) << "the right input is back";
}

TEST_F(ModulatorFamiliesTest, LogicWords) {
  const LogicControls& logic = probe.modulators().logic[1];
  set(kLogicOn + 1, 1);
  set(kLogicSource1Depth + 1, -30.0);
  set(kLogicSource2Depth + 1, 40.0);
  set(kLogicSource1 + 1, 14);
  set(kLogicSource2 + 1, 5);
  set(kLogicSmooth + 1, 12.0);
  set(kLogicDepth + 1, 90.0);
  set(kLogicDepthMod + 1, -90.0);
  set(kLogicDepthModSource + 1, 1);
  EXPECT_TRUE(logic.on);
  EXPECT_DOUBLE_EQ(logic.sourceDepth[0], -0.3);
  EXPECT_DOUBLE_EQ(logic.sourceDepth[1], 0.4);
  EXPECT_EQ(logic.source[0], probe.outputs().logic[3].data());
  EXPECT_EQ(logic.source[1], probe.outputs().gate[0].data());
  EXPECT_DOUBLE_EQ(logic.smoothMs, 12.0);
  EXPECT_DOUBLE_EQ(logic.depth, 0.9);
  EXPECT_DOUBLE_EQ(logic.depthMod, -0.9);
  EXPECT_EQ(logic.depthSource, probe.outputs().lfo[0].data());
  EXPECT_TRUE(editor.saw("setRing 1041 Lfo yes"));
}

TEST_F(ModulatorFamiliesTest, LogicMenuPositionsAreNotTheUnitsNumbers) {
  const std::vector<int> types{0, 1, 4, 5, 2, 3, 6, 7, 8};
  for (std::size_t entry = 0; entry < types.size(); ++entry) {
    set(kLogicType + 3, static_cast<double>(entry));
    EXPECT_EQ(probe.modulators().logic[3].type, types[entry]);
  }
}

}  // namespace
}  // namespace orvantesco
