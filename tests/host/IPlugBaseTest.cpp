#include "host/IPlugBase.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <numeric>

#include "host/EditorPort.h"
#include "host/PlugFixture.h"
#include "presets/StateChunk.h"

namespace orvantesco {
namespace {

/// The base as it is, with a dispatch that counts.
class BarePlug : public IPlugBase {
 public:
  explicit BarePlug(const PlugInfo& info = stereoInfo()) : IPlugBase(info) {
    bank->buildParameterBank();
  }
  void OnParamChange(int paramIdx) override { dispatched.push_back(paramIdx); }
  std::vector<int> dispatched;
};

std::vector<int> allIndices() {
  std::vector<int> indices(kNumParams);
  std::iota(indices.begin(), indices.end(), 0);
  return indices;
}

TEST(IPlugBase, StartsWithWhatTheEffectSaysOfItself) {
  const BarePlug plug;
  EXPECT_EQ(plug.NParams(), 1095);
  EXPECT_EQ(plug.sampleRate, 44100.0);
  EXPECT_EQ(plug.latency, 44);
  EXPECT_EQ(plug.version, 0x10200);
  EXPECT_EQ(plug.uniqueId, 0x4F567343u);
  EXPECT_EQ(plug.manufacturerId, 0x514C4D77u);
  EXPECT_EQ(plug.inputChannels.size(), 3u);
  EXPECT_EQ(plug.outputChannels.size(), 2u);
  EXPECT_EQ(plug.graphics, nullptr);
  EXPECT_GT(plug.blockSize, 0);
}

TEST(IPlugBase, GivesNoRecordForAnIndexOutOfRange) {
  const BarePlug plug;
  EXPECT_NE(plug.GetParam(0), nullptr);
  EXPECT_NE(plug.GetParam(1094), nullptr);
  EXPECT_EQ(plug.GetParam(1095), nullptr);
  EXPECT_EQ(plug.GetParam(-1), nullptr);
  EXPECT_EQ(plug.GetParam(7), plug.bank->getParam(7));
}

TEST(IPlugBase, MapsTheMiddleOfASquareCurveToAQuarterOfTheRange) {
  const BarePlug plug;
  IParam& param = *plug.GetParam(kTapStepTime);
  param.setShape(2.0);
  param.setNormalized(0.5);
  EXPECT_DOUBLE_EQ(param.value(), param.min() + 0.25 * (param.max() - param.min()));
}

TEST(IPlugBase, NormalisesAValueOutsideTheRangeAsTheEndOfTheRange) {
  const BarePlug plug;
  const IParam& param = *plug.GetParam(kTapStepTime);
  EXPECT_EQ(param.toNormalized(-50.0), 0.0);
  EXPECT_EQ(param.toNormalized(500.0), 1.0);
}

TEST(IPlugBase, KnowsItsHostByName) {
  BarePlug plug;
  EXPECT_EQ(plug.GetHost(), EHost::unknown);
  plug.SetHost("Digital Workshop", 0x10203);
  EXPECT_EQ(static_cast<int>(plug.GetHost()), 23);
  EXPECT_EQ(plug.hostVersion, 0x10203);
  plug.SetHost("Something else", 1);
  EXPECT_EQ(plug.GetHost(), EHost::unknown);
}

TEST(IPlugBase, StoresAndDispatchesWhatTheEditorSets) {
  BarePlug plug;
  plug.SetParameterFromGUI(kTapStepTime, 0.25);
  EXPECT_EQ(plug.GetParam(kTapStepTime)->value(), 25.0);
  plug.SetParameterFromGUI(1095, 0.5);
  EXPECT_EQ(plug.dispatched, std::vector<int>{kTapStepTime});
}

TEST(IPlugBase, ConnectsOnlyChannelsThatThereAre) {
  BarePlug plug;
  plug.AttachInput({0, 2}, true);
  EXPECT_TRUE(plug.IsInChannelConnected(0));
  EXPECT_TRUE(plug.IsInChannelConnected(1));
  EXPECT_FALSE(plug.IsInChannelConnected(2));
  plug.AttachInput({2, 100}, true);
  EXPECT_TRUE(plug.IsInChannelConnected(2));
  EXPECT_FALSE(plug.IsInChannelConnected(3));
  EXPECT_FALSE(plug.IsInChannelConnected(-1));
  plug.AttachInput({-5, 6}, false);
  EXPECT_FALSE(plug.IsInChannelConnected(0));
  EXPECT_TRUE(plug.IsInChannelConnected(1));
  plug.AttachOutput({1, 1}, true);
  EXPECT_FALSE(plug.IsOutChannelConnected(0));
  EXPECT_TRUE(plug.IsOutChannelConnected(1));
  EXPECT_FALSE(plug.IsOutChannelConnected(2));
}

TEST(IPlugBase, PointsConnectedChannelsAtTheBlockAndOthersAtSilence) {
  BarePlug plug;
  std::array<double, 4> left{};
  std::array<double, 4> right{};
  std::array<double*, 2> buffers{left.data(), right.data()};
  plug.AttachInput({0, 3}, false);
  plug.AttachInput({1, 1}, true);
  plug.SetInputPointers({0, 2}, buffers.data(), 2);
  EXPECT_NE(plug.inputChannels[0].buffer, left.data());
  EXPECT_EQ(plug.inputChannels[0].buffer[0], 0.0);
  EXPECT_EQ(plug.inputChannels[1].buffer, right.data() + 2);
}

TEST(IPlugBase, ClearsItsScratchBuffersWhenTheBlockSizeChanges) {
  BarePlug plug;
  plug.AttachInput({0, 3}, false);
  plug.SetBlockSize(64);
  plug.inputChannels[0].buffer[63] = 5.0;
  plug.SetBlockSize(64);
  EXPECT_EQ(plug.inputChannels[0].buffer[63], 5.0);
  plug.SetBlockSize(128);
  EXPECT_EQ(plug.blockSize, 128);
  for (int i = 0; i < 128; ++i) ASSERT_EQ(plug.inputChannels[0].buffer[i], 0.0);
}

TEST(IPlugBase, CopiesConnectedInputsAndClearsTheOtherOutputs) {
  BarePlug plug;
  plug.AttachInput({0, 1}, true);
  plug.AttachOutput({0, 2}, true);
  std::array<float, 3> in0{1.0F, 2.0F, 3.0F};
  std::array<float, 3> in1{4.0F, 5.0F, 6.0F};
  std::array<float, 3> out0{};
  std::array<float, 3> out1{9.0F, 9.0F, 9.0F};
  std::array<float*, 2> inputs{in0.data(), in1.data()};
  std::array<float*, 2> outputs{out0.data(), out1.data()};
  plug.ProcessSingleReplacing(inputs.data(), outputs.data(), 3);
  EXPECT_EQ(out0, in0);
  EXPECT_EQ(out1, (std::array<float, 3>{}));
}

TEST(IPlugBase, ComparesParametersWithStoredOnesToOneInAHundredThousand) {
  BarePlug plug;
  StateChunk chunk;
  chunk.putInt32(1);
  ASSERT_TRUE(plug.SerializeParams(chunk));
  EXPECT_EQ(chunk.size(), 4 + 1095 * 8);
  EXPECT_TRUE(plug.CompareState(chunk, 4));
  IParam& param = *plug.GetParam(kTapStepTime);
  const double stored = param.value();
  param.setValue(stored + 0.5e-5);
  EXPECT_TRUE(plug.CompareState(chunk, 4));
  param.setValue(stored + 2e-5);
  EXPECT_FALSE(plug.CompareState(chunk, 4));
  param.setValue(stored);
  EXPECT_FALSE(plug.CompareState(chunk, 12));
}

TEST(IPlugBase, ReadsBackItsParametersAndDispatchesThemAll) {
  BarePlug plug;
  plug.GetParam(kTapStepTime)->setValue(12.5);
  StateChunk chunk;
  plug.SerializeState(chunk);
  plug.GetParam(kTapStepTime)->setValue(80.0);
  EXPECT_EQ(plug.UnserializeState(chunk, 0), chunk.size());
  EXPECT_EQ(plug.GetParam(kTapStepTime)->value(), 12.5);
  EXPECT_EQ(plug.dispatched, allIndices());
}

TEST(IPlugBase, ClampsStoredValuesAndKeepsTheRestOfAShortBlock) {
  BarePlug plug;
  StateChunk chunk;
  chunk.putDouble(std::numeric_limits<double>::quiet_NaN());
  chunk.putDouble(7.0);
  plug.GetParam(0)->setValue(1.0);
  plug.GetParam(2)->setValue(1.0);
  EXPECT_EQ(plug.UnserializeParams(chunk, 0), -1);
  EXPECT_EQ(plug.GetParam(0)->value(), plug.GetParam(0)->min());
  EXPECT_EQ(plug.GetParam(1)->value(), plug.GetParam(1)->max());
  EXPECT_EQ(plug.GetParam(2)->value(), 1.0);
  EXPECT_EQ(plug.dispatched, allIndices());
}

/// Keeps what each knob was set to.
class KnobRecorder : public EditorPort {
 public:
  void setKnobValue(int paramIdx, double normalized) noexcept override {
    knobs[static_cast<std::size_t>(paramIdx)] = normalized;
  }
  std::vector<double> knobs = std::vector<double>(kNumParams, -1.0);
};

TEST(IPlugBase, SetsEveryControlToItsStoredValue) {
  BarePlug plug;
  plug.RedrawParamControls();
  KnobRecorder editor;
  plug.graphics = &editor;
  plug.GetParam(kTapStepTime)->setValue(25.0);
  plug.RedrawParamControls();
  std::vector<double> expected;
  for (int i = 0; i < kNumParams; ++i) expected.push_back(plug.GetParam(i)->getNormalized());
  EXPECT_EQ(editor.knobs, expected);
  EXPECT_EQ(editor.knobs[kTapStepTime], 0.25);
}

TEST(IPlugBase, TakesItsLockTwiceInOneThread) {
  BarePlug plug;
  const std::lock_guard outer(plug.mutex);
  StateChunk chunk;
  EXPECT_TRUE(plug.SerializeParams(chunk));
}

}  // namespace
}  // namespace orvantesco
