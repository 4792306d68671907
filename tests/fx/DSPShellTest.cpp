#include "fx/DSPShell.h"

#include <gtest/gtest.h>

#include <limits>

#include "fx/FxTestSupport.h"

namespace orvantesco {
namespace {

using testing_support::Signal;

/// Writes down what the base calls and offers its protected state.
class RecordingBlock : public DSPShell {
 public:
  explicit RecordingBlock(bool isRight = false) : DSPShell(isRight) {}

  void reset() noexcept override {
    DSPShell::reset();
    ++resets;
  }
  void modSourceChanged(int index, const double* source) noexcept override {
    lastIndex = index;
    lastSource = source;
  }
  void modDepthChanged(int index, const double* depth) noexcept override {
    lastIndex = index;
    lastDepth = depth;
  }
  void processBlock() noexcept override {
    ++processed;
    for (int i = 0; i < blockSize; ++i) {
      output[i] = input[i] * factor;
      output2[i] = input2[i] * -factor;
    }
  }
  void onStateCleared() noexcept override { ++statesCleared; }
  void clearMemories() noexcept override {
    DSPShell::clearMemories();
    ++memoriesCleared;
  }

  bool tickControl(int period) { return everyNthBlock(period); }
  double sign() const { return channelSign; }
  double modulation(int index) const { return modulationOf(index); }
  bool isDirty() const { return controlDirty; }
  void clean() { controlDirty = false; }
  Smoother& slow() { return slowSmoother; }
  Smoother& fast() { return fastSmoother; }
  double* scratch() { return scratchB; }

  double factor = 2.0;
  int resets = 0;
  int processed = 0;
  int statesCleared = 0;
  int memoriesCleared = 0;
  int lastIndex = -1;
  const double* lastSource = nullptr;
  const double* lastDepth = nullptr;
};

TEST(DSPShell, startsUnconnectedWetAndAudible) {
  RecordingBlock block;
  for (int i = 0; i < DSPShell::kControlCount; ++i) {
    EXPECT_EQ(block.modSourceOf(i), nullptr);
    EXPECT_EQ(block.modDepthOf(i), &kZeroDepth);
  }
  EXPECT_EQ(block.wetShare(), 1.0);
  EXPECT_FALSE(block.isBypassed());
  EXPECT_TRUE(block.isDirty());
  EXPECT_EQ(block.slow().tick(1.0), Smoother(50.0).tick(1.0));
  EXPECT_EQ(block.fast().tick(1.0), Smoother(10.0).tick(1.0));
}

TEST(DSPShell, theChannelsCarryOppositeSigns) {
  EXPECT_EQ(RecordingBlock(false).sign(), 1.0);
  EXPECT_EQ(RecordingBlock(true).sign(), -1.0);
}

TEST(DSPShell, theBaseBlockCopies) {
  DSPShell block;
  Signal in = testing_support::noise(1);
  Signal out(kVectorLength, 0.0);
  block.process(in.data(), out.data());
  EXPECT_EQ(in, out);
  block.process(in.data(), nullptr);
  EXPECT_EQ(in, out);
}

TEST(DSPShell, oneChannelRunsInPlaceWithoutAnOutput) {
  RecordingBlock block;
  Signal signal(kVectorLength, 0.25);
  block.process(signal.data(), nullptr);
  EXPECT_EQ(signal, Signal(kVectorLength, 0.5));
}

TEST(DSPShell, twoChannelsRunInPlaceWithoutAnOutput) {
  RecordingBlock block;
  Signal left(kVectorLength, 0.25), right(kVectorLength, 0.5);
  block.process(left.data(), right.data(), nullptr, nullptr);
  EXPECT_EQ(left, Signal(kVectorLength, 0.5));
  EXPECT_EQ(right, Signal(kVectorLength, -1.0));
}

TEST(DSPShell, twoChannelsWriteTheirOutputs) {
  RecordingBlock block;
  Signal left(kVectorLength, 0.25), right(kVectorLength, 0.5);
  Signal outLeft(kVectorLength, 0.0), outRight(kVectorLength, 0.0);
  block.process(left.data(), right.data(), outLeft.data(), outRight.data());
  EXPECT_EQ(left, Signal(kVectorLength, 0.25));
  EXPECT_EQ(outLeft, Signal(kVectorLength, 0.5));
  EXPECT_EQ(outRight, Signal(kVectorLength, -1.0));
}

TEST(DSPShell, aBypassedBlockWritesNothing) {
  RecordingBlock block;
  block.setBypass(true);
  Signal in(kVectorLength, 0.25), out(kVectorLength, 7.0);
  block.process(in.data(), out.data());
  block.process(in.data(), in.data(), out.data(), out.data());
  EXPECT_EQ(out, Signal(kVectorLength, 7.0));
  EXPECT_EQ(block.processed, 0);
}

TEST(DSPShell, switchingEitherWayResets) {
  RecordingBlock block;
  block.setBypass(true);
  block.setBypass(false);
  EXPECT_EQ(block.resets, 2);
}

TEST(DSPShell, sourcesAndDepthsAreStoredBeforeTheBlockHears) {
  RecordingBlock block;
  const double source[kVectorLength] = {0.5};
  const double depth = -0.5;
  block.setModSource(3, source);
  EXPECT_EQ(block.lastIndex, 3);
  EXPECT_EQ(block.lastSource, source);
  EXPECT_EQ(block.modulation(3), 0.0);
  block.setModDepth(3, &depth);
  EXPECT_EQ(block.lastDepth, &depth);
  EXPECT_EQ(block.modulation(3), -0.25);
  EXPECT_EQ(block.modulation(2), 0.0);
}

TEST(DSPShell, aDepthIsNeverNull) {
  RecordingBlock block;
  block.setModDepth(1, nullptr);
  EXPECT_EQ(block.modDepthOf(1), &kZeroDepth);
}

TEST(DSPShell, theControlRateDividesTheBlocks) {
  RecordingBlock block;
  int ticks = 0;
  for (int i = 1; i <= 16; ++i) {
    const bool ticked = block.tickControl(4);
    EXPECT_EQ(ticked, i % 4 == 0);
    ticks += ticked ? 1 : 0;
  }
  EXPECT_EQ(ticks, 4);
}

TEST(DSPShell, prepareDropsSourcesAndKeepsMix) {
  RecordingBlock block(true);
  const double source[kVectorLength] = {};
  block.setModSource(0, source);
  block.setModDepth(0, source);
  block.setMix(0.3);
  block.setBypass(true);
  block.clean();
  const int resetsBefore = block.resets;
  block.prepare();
  EXPECT_EQ(block.modSourceOf(0), nullptr);
  EXPECT_EQ(block.modDepthOf(0), &kZeroDepth);
  EXPECT_EQ(block.wetShare(), 0.3);
  EXPECT_EQ(block.sign(), -1.0);
  EXPECT_TRUE(block.isDirty());
  EXPECT_FALSE(block.isBypassed());
  EXPECT_EQ(block.resets, resetsBefore + 1);
}

TEST(DSPShell, aRateChangeKeepsSourcesAndTakesTimesAnew) {
  RecordingBlock block;
  const double source[kVectorLength] = {};
  block.setModSource(0, source);
  block.setModDepth(0, source);
  block.slow().tick(1.0);
  block.clean();
  testing_support::ScopedRate scope(96000.0);
  block.rateChanged();
  EXPECT_EQ(block.modSourceOf(0), source);
  EXPECT_EQ(block.modDepthOf(0), source);
  EXPECT_TRUE(block.isDirty());
  EXPECT_EQ(block.slow().tick(1.0), Smoother(50.0).tick(1.0));
  EXPECT_EQ(block.fast().tick(1.0), Smoother(10.0).tick(1.0));
}

TEST(DSPShell, clearStateEmptiesScratchAndResets) {
  RecordingBlock block;
  block.scratch()[0] = block.scratch()[63] = 1.0;
  block.clearState();
  EXPECT_EQ(block.scratch()[0], 0.0);
  EXPECT_EQ(block.scratch()[63], 0.0);
  EXPECT_EQ(block.statesCleared, 1);
  EXPECT_EQ(block.resets, 1);
}

TEST(DSPShell, aRunawayVectorIsSilentAndDropsAllMemories) {
  const double bad[] = {std::numeric_limits<double>::quiet_NaN(),
                        std::numeric_limits<double>::infinity(), -1.01e8};
  for (double value : bad) {
    for (size_t at : {0U, 13U, 31U}) {
      RecordingBlock block;
      block.factor = 1.0;
      Signal in(kVectorLength, 0.5), out(kVectorLength, 7.0);
      in[at] = value;
      block.process(in.data(), out.data());
      EXPECT_EQ(out, Signal(kVectorLength, 0.0));
      EXPECT_EQ(block.memoriesCleared, 1);
      in[at] = 0.5;
      block.process(in.data(), out.data());
      EXPECT_EQ(out, in);
    }
  }
}

TEST(DSPShell, aRunawayOfTheRightChannelSilencesBoth) {
  RecordingBlock block;
  Signal left(kVectorLength, 0.5), right(kVectorLength, INFINITY);
  block.process(left.data(), right.data(), nullptr, nullptr);
  EXPECT_EQ(left, Signal(kVectorLength, 0.0));
  EXPECT_EQ(right, Signal(kVectorLength, 0.0));
  EXPECT_EQ(block.memoriesCleared, 1);
}

TEST(DSPShell, loudButSaneVectorsPass) {
  RecordingBlock block;
  block.factor = 1.0;
  Signal in(kVectorLength, 1e8), out(kVectorLength, 0.0);
  block.process(in.data(), out.data());
  EXPECT_EQ(out, in);
  EXPECT_EQ(block.memoriesCleared, 0);
}

}  // namespace
}  // namespace orvantesco
