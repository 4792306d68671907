#include "host/IPlugAAX.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <numeric>
#include <thread>

#include "host/PlugFixture.h"

namespace orvantesco {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// Buffers of a host and the block that it hands over.
struct HostBuffers {
  explicit HostBuffers(int frames)
      : left(static_cast<std::size_t>(frames), 1.0),
        right(left.size(), 2.0),
        side(left.size(), 3.0),
        outLeft(left.size(), -1.0),
        outRight(left.size(), -1.0) {
    block.inputs = inputs.data();
    block.inputCount = 2;
    block.outputs = outputs.data();
    block.outputCount = 2;
    block.frames = frames;
  }
  std::vector<double> left, right, side, outLeft, outRight;
  std::array<double*, 2> inputs{left.data(), right.data()};
  std::array<double*, 2> outputs{outLeft.data(), outRight.data()};
  AudioBlock block;
};

TEST(IPlugAAX, TellsTheHostAndDispatchesWhatTheEditorSets) {
  RecordingPort port;
  NotingPlug plug(&port);
  plug.BeginInformHostOfParamChange(kTapStepTime);
  plug.SetParameterFromGUI(kTapStepTime, 0.25);
  plug.EndInformHostOfParamChange(kTapStepTime);
  EXPECT_EQ(port.calls, (std::vector<std::string>{"begin 384", "inform 384 0.250000", "end 384"}));
  EXPECT_EQ(plug.dispatched, std::vector<int>{kTapStepTime});
  EXPECT_EQ(plug.valueAtDispatch, 25.0);
}

TEST(IPlugAAX, IgnoresAnIndexOutOfRangeFromTheEditor) {
  RecordingPort port;
  NotingPlug plug(&port);
  plug.SetParameterFromGUI(1095, 0.5);
  plug.SetParameterFromGUI(-1, 0.5);
  EXPECT_TRUE(port.calls.empty());
  EXPECT_TRUE(plug.dispatched.empty());
}

/// While it runs, the host tries the lock from another thread.
class LockProbe : public RecordingPort {
 public:
  void informParamChange(int, double) override {
    std::thread([this] {
      wasFree = plug->mutex.try_lock();
      if (wasFree) plug->mutex.unlock();
    }).join();
  }
  IPlugBase* plug = nullptr;
  bool wasFree = true;
};

TEST(IPlugAAX, HoldsTheLockWhileItTellsTheHost) {
  LockProbe port;
  NotingPlug plug(&port);
  port.plug = &plug;
  plug.SetParameterFromGUI(kTapStepTime, 0.25);
  EXPECT_FALSE(port.wasFree);
}

TEST(IPlugAAX, PassesTransportResizeAndLatencyBetweenEffectAndHost) {
  RecordingPort port;
  port.transport.numerator = 7;
  port.transport.denominator = 8;
  port.transport.samplePos = 1000.0;
  NotingPlug plug(&port);
  int numerator = 0;
  int denominator = 0;
  plug.GetTimeSig(numerator, denominator);
  plug.frameInBlock = 31;
  plug.SetLatency(80);
  EXPECT_EQ(plug.GetTempo(), 133.0);
  EXPECT_EQ(plug.GetSamplePos(), 1031.0);
  EXPECT_EQ(numerator, 7);
  EXPECT_EQ(denominator, 8);
  EXPECT_EQ(port.latency, 80);
  EXPECT_EQ(plug.latency, 80);
  EXPECT_TRUE(plug.ResizeGraphics(800, 400));
  EXPECT_EQ(port.calls, std::vector<std::string>{"resize 800x400"});
  EXPECT_EQ(plug.GetAPI(), 4);
}

TEST(IPlugAAX, TakesTheRateFromTheHost) {
  RecordingPort port;
  NotingPlug plug(&port);
  EXPECT_EQ(plug.sampleRate, 44100.0);
  EXPECT_EQ(plug.GetSampleRate(), 48000.0);
  port.rate = 96000.0;
  EXPECT_EQ(plug.GetSampleRate(), 96000.0);
  EXPECT_EQ(plug.sampleRate, 96000.0);
}

TEST(IPlugAAX, KeepsTheLastTempoWhereTheHostGivesNone) {
  RecordingPort port;
  NotingPlug plug(&port);
  EXPECT_EQ(plug.GetTempo(), 133.0);
  for (const double bad : {0.0, -120.0, nan, infinity}) {
    port.beatsPerMinute = bad;
    port.transport.tempo = bad;
    HostTimeInfo time;
    plug.GetTime(&time);
    EXPECT_EQ(plug.GetTempo(), 133.0) << bad;
    EXPECT_EQ(time.tempo, 133.0) << bad;
  }
  port.beatsPerMinute = 20.0;
  EXPECT_EQ(plug.GetTempo(), 20.0);
}

TEST(IPlugAAX, CountsPositionsThatAreNotFiniteAsZero) {
  for (const double bad : {nan, infinity, -infinity}) {
    RecordingPort port;
    port.transport.samplePos = bad;
    port.transport.ppqPos = bad;
    port.transport.cycleStart = bad;
    port.transport.cycleEnd = bad;
    NotingPlug plug(&port);
    HostTimeInfo time;
    plug.GetTime(&time);
    EXPECT_EQ(time.samplePos, 0.0);
    EXPECT_EQ(time.ppqPos, 0.0);
    EXPECT_EQ(time.cycleStart, 0.0);
    EXPECT_EQ(time.cycleEnd, 0.0);
  }
}

TEST(IPlugAAX, RunsWithoutAHost) {
  NotingPlug plug;
  HostBuffers buffers(64);
  plug.SetParameterFromGUI(kTapStepTime, 0.5);
  plug.RenderAudio(buffers.block);
  EXPECT_EQ(buffers.outLeft, std::vector<double>(64, 2.0));
  EXPECT_EQ(plug.GetTempo(), 120.0);
  EXPECT_FALSE(plug.ResizeGraphics(1, 1));
}

TEST(IPlugAAX, ConnectsTheChannelsThatTheHostHandsOver) {
  NotingPlug plug;
  HostBuffers buffers(8);
  plug.RenderAudio(buffers.block);
  EXPECT_TRUE(plug.IsInChannelConnected(1));
  EXPECT_FALSE(plug.IsInChannelConnected(2));
  EXPECT_FALSE(plug.sideChainActive());
  EXPECT_EQ(buffers.outRight, std::vector<double>(8, 3.0));
  buffers.block.inputCount = 1;
  plug.RenderAudio(buffers.block);
  EXPECT_FALSE(plug.IsInChannelConnected(1));
  EXPECT_EQ(buffers.outRight, std::vector<double>(8, 1.0)) << "an absent input is silent";
}

TEST(IPlugAAX, PutsTheSideChainBehindTheMainInputsAndFollowsItInEveryCall) {
  NotingPlug plug;
  HostBuffers buffers(8);
  buffers.block.sideChain = buffers.side.data();
  plug.RenderAudio(buffers.block);
  EXPECT_TRUE(plug.sideChainActive());
  EXPECT_TRUE(plug.IsInChannelConnected(2));
  EXPECT_EQ(plug.sideSample, 3.0);
  buffers.block.inputCount = 1;
  plug.RenderAudio(buffers.block);
  EXPECT_TRUE(plug.IsInChannelConnected(1));
  EXPECT_FALSE(plug.IsInChannelConnected(2));
  EXPECT_EQ(plug.sideSample, 3.0);
  buffers.block.sideChain = nullptr;
  plug.RenderAudio(buffers.block);
  EXPECT_FALSE(plug.sideChainActive());
  EXPECT_FALSE(plug.IsInChannelConnected(1));
}

TEST(IPlugAAX, TakesALongBlockInPiecesThatKnowTheirPlaceInIt) {
  RecordingPort port;
  NotingPlug plug(&port);
  plug.SetBlockSize(100);
  HostBuffers buffers(250);
  std::iota(buffers.left.begin(), buffers.left.end(), 0.0);
  plug.RenderAudio(buffers.block);
  EXPECT_EQ(plug.blocks, (std::vector<int>{100, 100, 50}));
  EXPECT_EQ(plug.positions, (std::vector<double>{99.0, 199.0, 249.0}));
  std::vector<double> expected(250);
  std::iota(expected.begin(), expected.end(), 1.0);
  EXPECT_EQ(buffers.outLeft, expected);
}

TEST(IPlugAAX, HoldsABypassedSignalBackByTheLatency) {
  NotingPlug plug;
  plug.SetLatency(3);
  HostBuffers buffers(8);
  std::iota(buffers.left.begin(), buffers.left.end(), 1.0);
  buffers.block.sideChain = buffers.side.data();
  buffers.block.bypass = true;
  plug.RenderAudio(buffers.block);
  EXPECT_EQ(buffers.outLeft, (std::vector<double>{0, 0, 0, 1, 2, 3, 4, 5}));
  EXPECT_EQ(buffers.outRight, (std::vector<double>{0, 0, 0, 2, 2, 2, 2, 2}));
  EXPECT_TRUE(plug.blocks.empty());
}

TEST(IPlugAAX, KeepsTheSideChainOutOfABypassedMonoSignal) {
  NotingPlug plug;
  plug.SetLatency(0);
  HostBuffers buffers(8);
  buffers.block.inputCount = 1;
  buffers.block.sideChain = buffers.side.data();
  buffers.block.bypass = true;
  plug.RenderAudio(buffers.block);
  EXPECT_EQ(buffers.outLeft, std::vector<double>(8, 1.0));
  EXPECT_EQ(buffers.outRight, std::vector<double>(8, 0.0));
}

TEST(IPlugAAX, ForgetsWhatItHeldWhenBypassBeginsAnew) {
  NotingPlug plug;
  plug.SetLatency(4);
  HostBuffers buffers(4);
  buffers.block.bypass = true;
  plug.RenderAudio(buffers.block);
  buffers.block.bypass = false;
  plug.RenderAudio(buffers.block);
  buffers.block.bypass = true;
  plug.RenderAudio(buffers.block);
  EXPECT_EQ(buffers.outLeft, std::vector<double>(4, 0.0));
}

}  // namespace
}  // namespace orvantesco
