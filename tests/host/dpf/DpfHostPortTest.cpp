#include "host/dpf/DpfHostPort.h"

#include <gtest/gtest.h>

#include <cmath>

namespace orvantesco {
namespace {

/// The wrapper's picture of a position, in beats since bar 1 of a steady meter.
DISTRHO::TimePosition at(double beats, float beatsPerBar, float beatType) {
  DISTRHO::TimePosition position;
  position.playing = true;
  position.frame = 1000;
  auto& bbt = position.bbt;
  bbt.valid = true;
  bbt.beatsPerBar = beatsPerBar;
  bbt.beatType = beatType;
  bbt.ticksPerBeat = 1920.0;
  bbt.beatsPerMinute = 90.0;
  const double bar = std::floor(beats / static_cast<double>(beatsPerBar));
  const double inBar = beats - bar * static_cast<double>(beatsPerBar);
  bbt.bar = static_cast<int>(bar) + 1;
  bbt.beat = static_cast<int>(inBar) + 1;
  bbt.tick = (inBar - std::floor(inBar)) * bbt.ticksPerBeat;
  return position;
}

HostTimeInfo answered(const DpfHostPort& port, int frame) {
  HostTimeInfo info;
  port.transportAt(frame, info);
  return info;
}

TEST(DpfHostPort, CountsQuarterNotesInEveryMeter) {
  DpfHostPort port;
  port.takePosition(at(9.25, 4, 4));
  EXPECT_NEAR(answered(port, 0).ppqPos, 9.25, 1e-9);
  port.takePosition(at(9.5, 7, 8));
  EXPECT_NEAR(answered(port, 0).ppqPos, 4.75, 1e-9);
  EXPECT_EQ(answered(port, 0).numerator, 7);
  EXPECT_EQ(answered(port, 0).denominator, 8);
  port.takePosition(at(3.5, 3, 2));
  EXPECT_NEAR(answered(port, 0).ppqPos, 7.0, 1e-9);
}

/// Hosts tell quarter notes a minute, whatever note their meter counts.
TEST(DpfHostPort, CountsTheTempoInQuarterNotesInEveryMeter) {
  for (const float beatType : {2.0F, 4.0F, 8.0F}) {
    DpfHostPort port;
    port.takePosition(at(8.0, 6, beatType));
    EXPECT_EQ(answered(port, 0).tempo, 90.0);
  }
}

TEST(DpfHostPort, MovesOnWithTheFramesOfABlockWhileItPlays) {
  DpfHostPort port;
  port.setSampleRate(48000.0);
  port.takePosition(at(8.0, 4, 4));
  const HostTimeInfo info = answered(port, 320);
  EXPECT_NEAR(info.ppqPos, 8.0 + 320 * 90.0 / (60.0 * 48000.0), 1e-12);
  EXPECT_EQ(info.samplePos, 1320.0);
  EXPECT_TRUE(info.transportIsRunning);
  EXPECT_EQ(port.tempo(), 90.0);
}

TEST(DpfHostPort, StandsStillWhileTheHostIsStopped) {
  DpfHostPort port;
  auto position = at(8.0, 4, 4);
  position.playing = false;
  port.takePosition(position);
  EXPECT_EQ(answered(port, 320).ppqPos, answered(port, 0).ppqPos);
  EXPECT_FALSE(answered(port, 320).transportIsRunning);
}

TEST(DpfHostPort, CountsFramesWhereTheHostHasNoBars) {
  DpfHostPort port;
  port.setSampleRate(48000.0);
  DISTRHO::TimePosition position;
  position.playing = true;
  position.frame = 48000;
  port.takePosition(position);
  EXPECT_NEAR(answered(port, 0).ppqPos, 2.0, 1e-12);  // at the tempo of 120 that it starts with
}

TEST(DpfHostPort, KeepsItsTempoWhereTheHostGivesNoneThatIsOne) {
  DpfHostPort port;
  port.takePosition(at(0.0, 4, 4));
  for (const double tempo : {0.0, -3.0, std::nan("")}) {
    auto position = at(0.0, 4, 4);
    position.bbt.beatsPerMinute = tempo;
    port.takePosition(position);
    EXPECT_EQ(port.tempo(), 90.0) << tempo;
  }
}

}  // namespace
}  // namespace orvantesco
