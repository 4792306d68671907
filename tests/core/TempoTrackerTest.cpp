#include "core/TempoTracker.h"

#include <gtest/gtest.h>

#include <limits>

namespace orvantesco {
namespace {

constexpr double kRate = 48000.0;

HostTimeInfo runningAt(double quarterNotes, int numerator = 4) {
  HostTimeInfo time;
  time.transportIsRunning = true;
  time.ppqPos = quarterNotes;
  time.numerator = numerator;
  return time;
}

struct Tracker {
  TempoTracker tracker;
  TriggerFlags triggers;
  void at(double quarterNotes, int numerator = 4) {
    tracker.advance(runningAt(quarterNotes, numerator), triggers);
  }
};

TEST(TempoTracker, StartsAt120AndCountsTheFirstCallAsAChange) {
  TempoTracker tracker;
  EXPECT_EQ(tracker.tempo(), 120.0);
  EXPECT_FALSE(tracker.tempoChanged());
  tracker.takeTempo(120.0, kRate);
  EXPECT_TRUE(tracker.tempoChanged());
}

TEST(TempoTracker, KeepsTheChangeUpUntilASubBlockHasSeenIt) {
  TempoTracker tracker;
  tracker.takeTempo(90.0, kRate);
  tracker.takeTempo(90.0, kRate);
  EXPECT_TRUE(tracker.tempoChanged());
  tracker.tempoSeen();
  tracker.takeTempo(90.0, kRate);
  EXPECT_FALSE(tracker.tempoChanged());
  tracker.takeTempo(91.0, kRate);
  EXPECT_TRUE(tracker.tempoChanged());
}

TEST(TempoTracker, DerivesTimesOfSlowTemposFrom30) {
  TempoTracker tracker;
  tracker.takeTempo(20.0, kRate);
  EXPECT_EQ(tracker.tempo(), 20.0);
  EXPECT_EQ(tracker.secondsPerBeat(), 2.0);
  tracker.takeTempo(60.0, kRate);
  EXPECT_EQ(tracker.secondsPerBeat(), 1.0);
}

TEST(TempoTracker, IgnoresTemposThatAreNone) {
  TempoTracker tracker;
  tracker.takeTempo(100.0, kRate);
  for (const double bad : {0.0, -5.0, std::numeric_limits<double>::infinity(),
                           std::numeric_limits<double>::quiet_NaN()}) {
    tracker.takeTempo(bad, kRate);
    EXPECT_EQ(tracker.tempo(), 100.0);
  }
}

TEST(TempoTracker, RunsOnFromZeroWhenTheTransportStops) {
  Tracker t;
  t.tracker.takeTempo(120.0, kRate);
  t.at(17.25);
  EXPECT_EQ(t.tracker.position(), 17.25);
  const HostTimeInfo stopped;
  for (int n = 1; n <= 3; ++n) {
    t.tracker.advance(stopped, t.triggers);
    EXPECT_DOUBLE_EQ(t.tracker.position(), 32.0 * n * 2.0 / kRate);
  }
  t.at(3.0);
  t.tracker.advance(stopped, t.triggers);
  EXPECT_DOUBLE_EQ(t.tracker.position(), 32.0 * 2.0 / kRate) << "every stop starts at 0 again";
}

TEST(TempoTracker, CountsTheHostsTimeWhileStoppedWhateverTheClampOfTheEngine) {
  Tracker t;
  t.tracker.takeTempo(60.0, 192000.0);
  t.tracker.advance(HostTimeInfo{}, t.triggers);
  EXPECT_DOUBLE_EQ(t.tracker.position(), 32.0 / 192000.0);
}

TEST(TempoTracker, HoldsPositionsAtZeroAndAbove) {
  Tracker t;
  for (const double bad :
       {-4.0, std::numeric_limits<double>::quiet_NaN(), -std::numeric_limits<double>::infinity()}) {
    t.at(bad);
    EXPECT_EQ(t.tracker.position(), 0.0);
  }
}

TEST(TempoTracker, RaisesEachPulseForOneSubBlock) {
  Tracker t;
  t.at(0.0);
  EXPECT_FALSE(t.triggers.quarterPulse);
  t.at(0.99);
  EXPECT_FALSE(t.triggers.quarterPulse);
  t.at(1.0);
  EXPECT_TRUE(t.triggers.quarterPulse);
  EXPECT_FALSE(t.triggers.barPulse);
  t.at(1.01);
  EXPECT_FALSE(t.triggers.quarterPulse);
  t.at(4.0);
  EXPECT_TRUE(t.triggers.quarterPulse);
  EXPECT_TRUE(t.triggers.barPulse);
  EXPECT_TRUE(t.triggers.twoBarPulse) << "bar 1 is odd";
  t.at(8.0);
  EXPECT_TRUE(t.triggers.barPulse);
  EXPECT_FALSE(t.triggers.twoBarPulse);
}

TEST(TempoTracker, CountsBarsByTheNumerator) {
  Tracker t;
  t.at(2.9, 3);
  EXPECT_FALSE(t.triggers.barPulse);
  t.at(3.0, 3);
  EXPECT_TRUE(t.triggers.barPulse);
  t.at(3.5, 0);
  EXPECT_FALSE(t.triggers.barPulse) << "a numerator below 1 stands on bar 1";
}

TEST(TempoTracker, SurvivesJumpsBackAndHugePositions) {
  Tracker t;
  t.at(1e300);
  EXPECT_TRUE(t.triggers.barPulse);
  t.at(2.0);
  EXPECT_TRUE(t.triggers.barPulse);
  EXPECT_TRUE(t.triggers.quarterPulse);
}

}  // namespace
}  // namespace orvantesco
