#include "mod/ArpGate.h"

#include <gtest/gtest.h>

#include <limits>

#include "mod/ModTestSupport.h"

namespace orvantesco {
namespace {

using testing_support::Dice;
using testing_support::kRates;
using testing_support::largestDifference;
using testing_support::PlainGlide;
using testing_support::ScopedRate;
using testing_support::Vector32;

struct Settings {
  int length = 8, direction = 0, polarity = 0;
  bool sync = false;
  double stepsPerBeat = 1.0, depth = 1.0, glideMs = 0.0;
  std::array<double, 16> levels{};

  void giveTo(ArpGate& gate) const {
    gate.setStepCount(length);
    gate.setDirection(static_cast<ArpGate::Direction>(direction));
    gate.setPolarity(static_cast<ArpGate::Polarity>(polarity));
    gate.setSync(sync);
    gate.setStepsPerBeat(stepsPerBeat);
    gate.setDepth(depth);
    gate.setGlide(glideMs);
    for (int step = 0; step < 16; ++step) {
      gate.setLevel(step, levels[static_cast<std::size_t>(step)]);
    }
  }
};

/// The same gate, in plain numbers.
struct PlainGate {
  double rate;
  PlainGlide glide;
  RandomDraw random{3};
  int counter = 0, step = 0, lastCounter = -1, lastClock = 0;
  double fraction = 0.0;

  explicit PlainGate(double sampleRateHz) : rate(sampleRateHz), glide(0.0, sampleRateHz) {}

  void place(const Settings& s) {
    const int n = s.length;
    if (s.direction == 0) step = counter;
    if (s.direction == 1) step = n - counter - 1;
    if (s.direction == 2) step = counter < n ? counter : 2 * n - counter - 1;
    if (s.direction == 3) {
      const float share = static_cast<float>(random.next() / 32767.0);
      step = static_cast<int>(static_cast<float>(n) * share);
    }
  }

  Vector32 run(const Settings& s, double beat, double tempo, const unsigned char* clock) {
    const int cycle = s.direction == 2 ? 2 * s.length : s.length;
    if (s.sync) {
      int c = static_cast<int>(s.stepsPerBeat * beat);
      if (c != lastCounter) {
        if (s.direction != 3) c = static_cast<int>(std::fmod(c, cycle));
        counter = c;
        place(s);
        lastCounter = c;
      }
    } else {
      if (clock != nullptr) {
        if (*clock == 1 && lastClock < 1) counter += 1;
        lastClock = *clock;
      } else {
        fraction = (32.0 * s.stepsPerBeat * tempo / rate) / 60.0 + fraction;
        counter += static_cast<int>(fraction);
      }
      if (counter != lastCounter) {
        if (s.direction != 3 && counter >= cycle) counter = 0;
        place(s);
        lastCounter = counter;
      }
    }
    if (fraction >= 1.0) fraction -= 1.0;
    const double level = step < 16 ? s.levels[static_cast<std::size_t>(step)] : 0.0;
    const double target = s.polarity == 0 ? level : (s.polarity == 1 ? -level : 2.0 * level - 1.0);
    glide.setTime(1.5 * s.glideMs, rate);
    Vector32 out{};
    for (double& sample : out) sample = glide.tick(target) * s.depth;
    return out;
  }
};

Settings anySettings(Dice& dice) {
  static constexpr double kNotes[] = {1.0, 2.0, 4.0, 8.0, 16.0, 2.0 / 3.0, 16.0 / 3.0, 1.5, 6.0};
  Settings s;
  s.length = 1 + dice.below(16);
  s.direction = dice.below(4);
  s.polarity = dice.below(3);
  s.sync = dice.oneIn(3);
  s.stepsPerBeat = kNotes[dice.below(9)];
  s.depth = dice.between(0.0, 1.0);
  s.glideMs = dice.oneIn(2) ? 0.0 : dice.between(0.0, 400.0);
  for (double& level : s.levels) level = dice.between(0.0, 1.0);
  return s;
}

TEST(ArpGate, isItsModelThroughAllModesAndSettings) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    Dice dice(23);
    ArpGate gate;
    gate.seed(3);
    PlainGate model(rate);
    Settings settings;
    unsigned char clock = 0;
    bool clocked = false;
    double beat = 0.0;
    double worst = 0.0;
    for (int vector = 0; vector < 20000; ++vector) {
      const double tempo = 40.0 + 260.0 * (vector % 7) / 6.0;
      if (dice.oneIn(300)) {
        settings = anySettings(dice);
        clocked = dice.oneIn(3);
      }
      beat = dice.oneIn(500) ? dice.between(0.0, 900.0) : beat + 32.0 * tempo / 60.0 / rate;
      clock = dice.oneIn(5) ? 1 : 0;
      const unsigned char* source = clocked ? &clock : nullptr;
      settings.giveTo(gate);
      gate.setClockSource(source);
      Vector32 out{};
      gate.process({beat, tempo}, out.data());
      worst = std::fmax(worst, largestDifference(out, model.run(settings, beat, tempo, source)));
    }
    EXPECT_LT(worst, 1e-12) << rate;
  }
}

/// A synced gate whose step shows at once, in its position and its output.
struct SyncRig {
  ArpGate gate;
  explicit SyncRig(int direction, int length = 4) {
    Settings settings;
    settings.direction = direction;
    settings.length = length;
    settings.sync = true;
    for (std::size_t i = 0; i < 16; ++i) settings.levels[i] = static_cast<double>(i) / 15.0;
    settings.giveTo(gate);
  }
  int stepAt(double beat) {
    Vector32 out{};
    gate.process({beat, 120.0}, out.data());
    for (double value : out) EXPECT_NEAR(value, gate.currentStep() / 15.0, 1e-12);
    return gate.currentStep();
  }
};

TEST(ArpGate, forwardAndBackwardPlaysTheEndStepsTwice) {
  SyncRig rig(2);
  const int expected[] = {0, 1, 2, 3, 3, 2, 1, 0, 0, 1};
  for (int beat = 0; beat < 10; ++beat) EXPECT_EQ(rig.stepAt(beat), expected[beat]) << beat;
}

TEST(ArpGate, atTheTopOfTheSongStandsOnTheFirstStepOrTheLast) {
  EXPECT_EQ(SyncRig(0).stepAt(0.0), 0);
  EXPECT_EQ(SyncRig(1).stepAt(0.0), 3);
}

TEST(ArpGate, songPositionAloneDecidesTheSyncedStep) {
  SyncRig rig(0);
  EXPECT_EQ(rig.stepAt(6.5), 2);
  EXPECT_EQ(rig.stepAt(1000001.0), 1);
  EXPECT_EQ(rig.stepAt(3.0), 3) << "backward jump";
}

TEST(ArpGate, getsOverPositionsThatNoSongHas) {
  const double bad[] = {-5.0, 1e300, std::numeric_limits<double>::quiet_NaN(),
                        std::numeric_limits<double>::infinity(), -1e300};
  for (int direction = 0; direction < 4; ++direction) {
    SyncRig rig(direction);
    for (double position : bad) {
      const int step = rig.stepAt(position);
      EXPECT_GE(step, 0);
      EXPECT_LE(step, 4);
    }
    if (direction == 0) {
      EXPECT_EQ(rig.stepAt(2.0), 2) << "goes on from where the song is";
      EXPECT_EQ(rig.stepAt(3.0), 3);
    }
  }
}

TEST(ArpGate, getsOverTemposThatNoSongHas) {
  ArpGate gate;
  Settings settings;
  settings.levels.fill(0.5);
  settings.stepsPerBeat = 16.0;
  settings.giveTo(gate);
  Vector32 out{};
  for (double tempo : {1e300, std::numeric_limits<double>::max(),
                       std::numeric_limits<double>::quiet_NaN(), -4.0, 1e6, 1e9, 0.0}) {
    for (int i = 0; i < 5000; ++i) gate.process({0.0, tempo}, out.data());
    EXPECT_EQ(out[31], 0.5) << tempo;
  }
  const int before = gate.currentStep();
  int moves = 0;
  for (int i = 0, last = before; i < 44100 / 32 * 4; ++i) {
    gate.process({0.0, 120.0}, out.data());
    if (gate.currentStep() != last) ++moves;
    last = gate.currentStep();
  }
  EXPECT_NEAR(moves, 128, 1) << "goes on at the song's tempo";
}

TEST(ArpGate, oneStepIsHeldInEveryDirection) {
  for (int direction = 0; direction < 3; ++direction) {
    SyncRig rig(direction, 1);
    for (int beat = 0; beat < 5; ++beat) EXPECT_EQ(rig.stepAt(beat), 0);
  }
}

TEST(ArpGate, theHighestRandomDrawReadsSilenceBehindTheLastStep) {
  ArpGate gate;
  Settings settings;
  settings.length = 16;
  settings.direction = 3;
  settings.sync = true;
  settings.levels.fill(1.0);
  settings.giveTo(gate);
  Vector32 out{};
  int beyond = 0;
  for (int beat = 0; beat < 400000; ++beat) {
    gate.process({static_cast<double>(beat), 120.0}, out.data());
    ASSERT_LE(gate.currentStep(), 16);
    if (gate.currentStep() == 16) {
      ++beyond;
      EXPECT_NEAR(out[31], 0.0, 1e-12);
      EXPECT_EQ(gate.stepValue(-1, false), 0.0);
    }
  }
  EXPECT_GT(beyond, 0);
}

TEST(ArpGate, movesOnTheRisingEdgeOfItsClockAlone) {
  ArpGate gate;
  Settings settings;
  settings.giveTo(gate);
  unsigned char clock = 0;
  gate.setClockSource(&clock);
  Vector32 out{};
  const unsigned char flags[] = {0, 1, 1, 1, 0, 0, 1, 0, 1};
  const int steps[] = {0, 1, 1, 1, 1, 1, 2, 2, 3};
  for (int i = 0; i < 9; ++i) {
    clock = flags[i];
    gate.process({0.0, 120.0}, out.data());
    EXPECT_EQ(gate.currentStep(), steps[i]) << i;
  }
}

TEST(ArpGate, followsAChangeOfRate) {
  Settings settings;
  settings.glideMs = 30.0;
  settings.stepsPerBeat = 16.0;
  settings.levels = {0.1, 0.9, 0.4, 0.7, 0.2, 1.0, 0.3, 0.6};
  ArpGate moved;
  settings.giveTo(moved);
  ScopedRate scope(96000.0);
  moved.rateChanged();
  ArpGate fresh;
  settings.giveTo(fresh);
  Vector32 a{};
  Vector32 b{};
  for (int i = 0; i < 2000; ++i) {
    moved.process({0.0, 130.0}, a.data());
    fresh.process({0.0, 130.0}, b.data());
    ASSERT_EQ(a, b);
  }
}

TEST(ArpGate, keepsItsPaceInSecondsAcrossAChangeOfRate) {
  ArpGate gate;
  Settings settings;
  settings.length = 16;
  settings.giveTo(gate);
  Vector32 out{};
  for (int i = 0; i < 10; ++i) gate.process({0.0, 120.0}, out.data());
  ScopedRate scope(88200.0);
  gate.rateChanged();
  int moves = 0;
  for (int i = 0; i < 88200 * 4 / kVectorLength; ++i) {
    const int before = gate.currentStep();
    gate.process({0.0, 120.0}, out.data());
    moves += gate.currentStep() != before;
  }
  EXPECT_NEAR(moves, 8, 1);
}

TEST(ArpGate, lengthsBeyondItsStepsAreHeldAtTheEnds) {
  SyncRig none(0, 0);
  SyncRig many(0, 40);
  for (int beat = 0; beat < 40; ++beat) {
    EXPECT_EQ(none.stepAt(beat), 0);
    EXPECT_EQ(many.stepAt(beat), beat % 16);
  }
}

TEST(ArpGate, runsThroughHugeTemposInEveryDirection) {
  for (int direction = 0; direction < 4; ++direction) {
    ArpGate gate;
    Settings settings;
    settings.direction = direction;
    settings.length = 16;
    settings.giveTo(gate);
    Vector32 out{};
    for (int i = 0; i < 100; ++i) {
      gate.process({0.0, 1e300}, out.data());
      ASSERT_GE(gate.currentStep(), 0);
      ASSERT_LE(gate.currentStep(), 16);
    }
  }
}

TEST(ArpGate, tellsTheLevelOfAStepWithAndWithoutDepth) {
  ArpGate gate;
  gate.setLevel(3, 0.8);
  gate.setDepth(0.5);
  EXPECT_EQ(gate.stepValue(3, false), 0.8);
  EXPECT_EQ(gate.stepValue(3, true), 0.4);
}

}  // namespace
}  // namespace orvantesco
