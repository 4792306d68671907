// The host's transport, at the frame that the effect asks for.

#include "host/clap/ClapTransport.h"

#include <gtest/gtest.h>

#include <cmath>

namespace orvantesco {
namespace {

constexpr double kFixed = 2147483648.0;
constexpr double kRate = 48000.0;

clap_event_transport_t playing() {
  clap_event_transport_t event{};
  event.flags = CLAP_TRANSPORT_HAS_TEMPO | CLAP_TRANSPORT_HAS_BEATS_TIMELINE |
                CLAP_TRANSPORT_HAS_SECONDS_TIMELINE | CLAP_TRANSPORT_HAS_TIME_SIGNATURE |
                CLAP_TRANSPORT_IS_PLAYING;
  event.tempo = 90.0;
  event.song_pos_beats = std::llround(12.5 * kFixed);
  event.song_pos_seconds = std::llround(8.25 * kFixed);
  event.tsig_num = 7;
  event.tsig_denom = 8;
  return event;
}

TEST(ClapTransport, MovesOnFromTheLastWordOfTheHost) {
  ClapTransport transport;
  const auto event = playing();
  transport.take(&event, 100);
  const HostTimeInfo time = transport.at(148, kRate);
  EXPECT_TRUE(time.transportIsRunning);
  EXPECT_EQ(time.tempo, 90.0);
  EXPECT_NEAR(time.ppqPos, 12.5 + 48.0 / 48000.0 * 1.5, 1.0 / kFixed);
  EXPECT_EQ(time.samplePos, 8.25 * kRate + 48.0);
  EXPECT_EQ(time.numerator, 7);
  EXPECT_EQ(time.denominator, 8);
}

TEST(ClapTransport, GivesPositionsThatTheStandardCanCarry) {
  ClapTransport transport;
  const auto event = playing();
  transport.take(&event, 0);
  for (int frame = 0; frame < 100; ++frame) {
    const double carried = transport.at(frame, kRate).ppqPos * kFixed;
    EXPECT_EQ(carried, std::floor(carried)) << frame;
  }
}

TEST(ClapTransport, StandsWhereItStopped) {
  ClapTransport transport;
  auto event = playing();
  event.flags &= ~static_cast<unsigned>(CLAP_TRANSPORT_IS_PLAYING);
  transport.take(&event, 0);
  const HostTimeInfo time = transport.at(400, kRate);
  EXPECT_FALSE(time.transportIsRunning);
  EXPECT_EQ(time.ppqPos, 12.5);
  EXPECT_EQ(time.samplePos, 8.25 * kRate);
}

/// A tempo that slides moves the position by the sum of its values.
TEST(ClapTransport, FollowsATempoThatSlides) {
  ClapTransport transport;
  auto event = playing();
  event.tempo_inc = 0.01;
  transport.take(&event, 0);
  double beats = 12.5;
  for (int frame = 0; frame < 1000; ++frame) beats += (90.0 + 0.01 * frame) / (60.0 * kRate);
  EXPECT_NEAR(transport.at(1000, kRate).ppqPos, beats, 2.0 / kFixed);
  EXPECT_DOUBLE_EQ(transport.tempoAt(1000), 100.0);
}

TEST(ClapTransport, ReckonsWithOneTimelineWhereTheOtherIsMissing) {
  ClapTransport transport;
  auto event = playing();
  event.flags &= ~static_cast<unsigned>(CLAP_TRANSPORT_HAS_BEATS_TIMELINE);
  transport.take(&event, 0);
  EXPECT_EQ(transport.at(0, kRate).ppqPos, 8.25 * 1.5);
  event = playing();
  event.flags &= ~static_cast<unsigned>(CLAP_TRANSPORT_HAS_SECONDS_TIMELINE);
  transport.take(&event, 0);
  EXPECT_DOUBLE_EQ(transport.at(0, kRate).samplePos, 12.5 / 1.5 * kRate);
}

TEST(ClapTransport, OfAHostThatTellsNothingIsAtRestWithoutATempo) {
  ClapTransport transport;
  const auto event = playing();
  transport.take(&event, 0);
  transport.take(nullptr, 0);
  const HostTimeInfo time = transport.at(64, kRate);
  EXPECT_EQ(time.tempo, 0.0);
  EXPECT_FALSE(time.transportIsRunning);
  EXPECT_EQ(time.ppqPos, 0.0);
  EXPECT_EQ(time.numerator, 4);
}

TEST(ClapTransport, TellsTheLoop) {
  ClapTransport transport;
  auto event = playing();
  event.flags |= CLAP_TRANSPORT_IS_LOOP_ACTIVE;
  event.loop_start_beats = std::llround(4.0 * kFixed);
  event.loop_end_beats = std::llround(8.5 * kFixed);
  transport.take(&event, 0);
  const HostTimeInfo time = transport.at(0, kRate);
  EXPECT_TRUE(time.transportLoopEnabled);
  EXPECT_EQ(time.cycleStart, 4.0);
  EXPECT_EQ(time.cycleEnd, 8.5);
}

TEST(ClapTransport, RoundsNothingAwayFarOut) {
  EXPECT_EQ(roundedToFixedPoint(1e12 + 0.25), 1e12 + 0.25);
  EXPECT_TRUE(std::isnan(roundedToFixedPoint(std::nan(""))));
  EXPECT_EQ(roundedToFixedPoint(-0.5), -0.5);
}

}  // namespace
}  // namespace orvantesco
