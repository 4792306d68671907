#include "host/OfflineHost.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace orvantesco {
namespace {

HostTimeInfo timeAt(const OfflineHost& host, int frameInBlock) {
  HostTimeInfo info;
  host.transportAt(frameInBlock, info);
  return info;
}

/// Position of every frame, read in blocks whose lengths `nextBlock` gives.
template <class NextBlock>
std::vector<double> positions(double rate, int frames, NextBlock nextBlock) {
  OfflineHost host(rate);
  host.setTempo(133.7);
  host.locate(0.1);
  std::vector<double> all;
  while (static_cast<int>(all.size()) < frames) {
    const int length = std::min(nextBlock(), frames - static_cast<int>(all.size()));
    for (int i = 0; i < length; ++i) all.push_back(timeAt(host, i).ppqPos);
    host.advance(length);
  }
  return all;
}

TEST(OfflineHost, StartsAsARunningSongInFourFour) {
  const OfflineHost host;
  const HostTimeInfo info = timeAt(host, 0);
  EXPECT_EQ(host.sampleRate(), 44100.0);
  EXPECT_EQ(host.tempo(), 120.0);
  EXPECT_EQ(info.tempo, 120.0);
  EXPECT_EQ(info.ppqPos, 0.0);
  EXPECT_EQ(info.samplePos, 0.0);
  EXPECT_EQ(info.numerator, 4);
  EXPECT_EQ(info.denominator, 4);
  EXPECT_TRUE(info.transportIsRunning);
  EXPECT_FALSE(info.transportLoopEnabled);
}

TEST(OfflineHost, GivesTheSamePositionsBitForBitHoweverBlocksAreCut) {
  constexpr int frames = 20000;
  for (const double rate : {44100.0, 48000.0, 96000.0}) {
    const auto whole = positions(rate, frames, [] { return frames; });
    EXPECT_EQ(positions(rate, frames, [] { return 1; }), whole);
    EXPECT_EQ(positions(rate, frames, [] { return 32; }), whole);
    EXPECT_EQ(positions(rate, frames, [] { return 4096; }), whole);
    std::mt19937 draw(7);
    const auto random = [&draw] { return static_cast<int>(draw() % 4096 + 1); };
    EXPECT_EQ(positions(rate, frames, random), whole);
  }
}

TEST(OfflineHost, ComputesThePositionFromTheAbsoluteFrame) {
  OfflineHost host(48000.0);
  host.setTempo(97.3);
  host.locate(2.5);
  for (int i = 0; i < 1000; ++i) host.advance(4096);
  const double frame = 4096000.0 + 31.0;
  EXPECT_EQ(timeAt(host, 31).ppqPos, 2.5 + frame * 97.3 / (60.0 * 48000.0));
}

TEST(OfflineHost, GivesABlockOf4096FramesItsOwnPositionForEverySubBlock) {
  const OfflineHost host(48000.0);
  for (int subBlock = 1; subBlock < 128; ++subBlock) {
    const double step =
        timeAt(host, subBlock * 32 + 31).ppqPos - timeAt(host, subBlock * 32 - 1).ppqPos;
    EXPECT_NEAR(step, 32.0 * 2.0 / 48000.0, 1e-12) << subBlock;
  }
}

TEST(OfflineHost, StandsWhereItIsWhileStopped) {
  OfflineHost host(44100.0);
  host.locate(8.0);
  host.setRunning(false);
  host.advance(44100);
  EXPECT_EQ(timeAt(host, 31).ppqPos, 8.0);
  EXPECT_FALSE(timeAt(host, 31).transportIsRunning);
  host.setRunning(true);
  EXPECT_EQ(timeAt(host, 0).ppqPos, 8.0);
  EXPECT_NEAR(timeAt(host, 22050).ppqPos, 9.0, 1e-12);
}

TEST(OfflineHost, KeepsItsPositionThroughAChangeOfTempoOrRate) {
  OfflineHost host(48000.0);
  host.advance(48000);
  host.setTempo(60.0);
  EXPECT_EQ(timeAt(host, 0).ppqPos, 2.0);
  host.setSampleRate(96000.0);
  EXPECT_EQ(timeAt(host, 0).ppqPos, 2.0);
  host.advance(96000);
  EXPECT_EQ(timeAt(host, 0).ppqPos, 3.0);
}

TEST(OfflineHost, CountsSamplesFromTheStartOfTheSong) {
  OfflineHost host(48000.0);
  host.locate(4.0);
  EXPECT_EQ(timeAt(host, 0).samplePos, 96000.0);
  host.advance(100);
  EXPECT_EQ(timeAt(host, 31).samplePos, 96131.0);
}

TEST(OfflineHost, ReportsTimeSignatureAndLatency) {
  OfflineHost host;
  host.setTimeSignature(7, 8);
  EXPECT_EQ(timeAt(host, 0).numerator, 7);
  EXPECT_EQ(timeAt(host, 0).denominator, 8);
  EXPECT_EQ(host.latencySamples(), 0);
  host.latencyChanged(76);
  EXPECT_EQ(host.latencySamples(), 76);
}

TEST(HostPort, AnswersByItselfAsAStoppedSong) {
  HostPort port;
  HostTimeInfo info;
  info.ppqPos = 3.0;
  port.transportAt(5, info);
  EXPECT_EQ(info.ppqPos, 0.0);
  EXPECT_FALSE(info.transportIsRunning);
  EXPECT_EQ(port.sampleRate(), 44100.0);
  EXPECT_EQ(port.tempo(), 120.0);
  EXPECT_FALSE(port.resizeEditor(1, 1));
}

}  // namespace
}  // namespace orvantesco
