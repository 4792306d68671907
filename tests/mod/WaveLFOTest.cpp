#include "mod/WaveLFO.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <vector>

#include "mod/ModTestSupport.h"
#include "mod/PlainLfo.h"
#include "mod/WaveTable.h"

namespace orvantesco {
namespace {

using testing_support::Dice;
using testing_support::kRates;
using testing_support::largestDifference;
using testing_support::PlainLfo;
using Settings = testing_support::LfoSettings;
using testing_support::ScopedRate;
using testing_support::Vector32;

constexpr int kRampWave = 11;
constexpr int kHoldWave = 26;

/// An LFO at rest: no glide, bipolar, full depth.
struct LfoRig {
  WaveLFO lfo;
  Settings settings;
  unsigned char trigger = 0;

  LfoRig() { lfo.setTrigger(&trigger); }
  Vector32 next() {
    Vector32 out{};
    settings.giveTo(lfo);
    lfo.process(out.data());
    return out;
  }
  Vector32 nextTriggered() {
    trigger = 1;
    const Vector32 out = next();
    trigger = 0;
    return out;
  }
  /// Vectors until the end of a cycle that does not loop.
  void runToEnd() {
    for (int i = 0; i < 4000; ++i) next();
  }
};

Settings anySettings(Dice& dice) {
  Settings s;
  const double rates[] = {0.001, 0.5, 3.0, 40.0, 500.0, 499.0};
  s.hz = rates[dice.below(6)];
  s.phase = dice.oneIn(3) ? 1.0 : dice.between(0.0, 1.0);
  s.glideMs = dice.oneIn(2) ? 0.0 : dice.between(1.0, 300.0);
  s.depth = dice.between(0.0, 1.0);
  s.modDepth = dice.between(-1.0, 1.0);
  s.wave = dice.below(kOfferedWaves);
  s.polarity = dice.below(3);
  s.mode = dice.below(3);
  s.swap = dice.oneIn(2);
  s.reverse = dice.oneIn(2);
  return s;
}

TEST(WaveLFO, isItsModelThroughAllModesAndSettings) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    Dice dice(17);
    WaveLFO lfo;
    lfo.seed(5);
    PlainLfo model(rate);
    unsigned char trigger = 0;
    lfo.setTrigger(&trigger);
    Settings settings;
    Vector32 source{};
    double worst = 0.0;
    for (int vector = 0; vector < 6000; ++vector) {
      if (dice.oneIn(40)) settings = anySettings(dice);
      source[0] = dice.between(-1.0, 1.0);
      const double* modulation = (vector / 100) % 3 == 0 ? source.data() : nullptr;
      trigger = dice.oneIn(25) ? 1 : 0;
      settings.giveTo(lfo);
      lfo.setRateModSource(modulation);
      Vector32 out{};
      lfo.process(out.data());
      worst =
          std::fmax(worst, largestDifference(out, model.run(settings, trigger != 0, modulation)));
      ASSERT_EQ(lfo.value(), out[0]);
      ASSERT_EQ(lfo.rawValue(), model.raw);
    }
    EXPECT_LT(worst, 1e-12) << rate;
  }
}

TEST(WaveLFO, fiveHundredHertzIsHeldAt46EntriesASample) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    LfoRig rig;
    rig.settings.hz = 500.0;
    rig.settings.wave = kRampWave;
    const Vector32 out = rig.next();
    const double entries = std::fmin(46.0, 500.0 * 4096.0 / rate);
    // To within the entry that a phase is cut to at both ends.
    EXPECT_NEAR((out[30] - out[0]) * 4095.0 / 2.0, 30.0 * entries, 1.01);
    EXPECT_EQ(rig.lfo.getRate(), 500.0);
  }
}

TEST(WaveLFO, fullPhaseIsOneEntryBeforeTheStart) {
  LfoRig rig;
  rig.settings.hz = 0.0;
  rig.settings.wave = kRampWave;
  rig.settings.phase = 1.0;
  EXPECT_EQ(rig.next()[0], 1.0);
}

TEST(WaveLFO, loopStartsAnewAtATriggerOncePerVector) {
  LfoRig rig;
  rig.settings.wave = kRampWave;
  rig.settings.hz = 44.1;
  for (int i = 0; i < 10; ++i) rig.next();
  const Vector32 out = rig.nextTriggered();
  EXPECT_EQ(out[0], -1.0);
  EXPECT_GT(out[31], out[0]);
}

TEST(WaveLFO, oneShotStaysAtItsEndUntilATrigger) {
  LfoRig rig;
  rig.settings.wave = kRampWave;
  rig.settings.mode = 1;
  rig.runToEnd();
  EXPECT_EQ(rig.next()[31], 1.0);
  EXPECT_EQ(rig.next()[0], 1.0);
  EXPECT_LT(rig.nextTriggered()[5], -0.99);
  EXPECT_LT(rig.nextTriggered()[0], -0.99) << "also within a cycle";
}

TEST(WaveLFO, latchIgnoresATriggerUntilItsEnd) {
  LfoRig rig;
  rig.settings.wave = kRampWave;
  rig.settings.mode = 2;
  for (int i = 0; i < 300; ++i) rig.next();
  const double before = rig.next()[31];
  EXPECT_GE(rig.nextTriggered()[0], before);
  rig.runToEnd();
  EXPECT_EQ(rig.next()[0], 1.0);
  EXPECT_LT(rig.nextTriggered()[31], -0.99);
}

TEST(WaveLFO, sampleAndHoldDrawsAtEachCycleAndHoldsBetween) {
  LfoRig rig;
  rig.settings.wave = kHoldWave;
  rig.settings.hz = 20.0;
  std::set<double> levels;
  int changes = 0;
  double last = 2.0;
  const int vectors = 44100 / kVectorLength;
  for (int i = 0; i < vectors; ++i) {
    const Vector32 out = rig.next();
    levels.insert(out[31]);
    if (out[31] != last) ++changes;
    last = out[31];
  }
  EXPECT_NEAR(changes, 20, 2);
  EXPECT_GE(levels.size(), 18u);
  EXPECT_LT(*levels.begin(), -0.5);
  EXPECT_GT(*levels.rbegin(), 0.5);
}

TEST(WaveLFO, reverseAndSwapLeaveDrawnLevelsAlone) {
  LfoRig plain;
  LfoRig turned;
  plain.lfo.seed(9);
  turned.lfo.seed(9);
  plain.settings.wave = turned.settings.wave = kHoldWave;
  plain.settings.hz = turned.settings.hz = 100.0;
  turned.settings.reverse = turned.settings.swap = true;
  for (int i = 0; i < 100; ++i) EXPECT_EQ(plain.next(), turned.next());
}

TEST(WaveLFO, withoutAWaveTheVectorStays) {
  WaveLFO lfo;
  lfo.setRate(10.0);
  Vector32 out;
  out.fill(0.25);
  lfo.process(out.data());
  EXPECT_EQ(out[0], 0.25);
  EXPECT_EQ(out[31], 0.25);
}

TEST(WaveLFO, itsOwnVectorMayMoveItsRate) {
  LfoRig rig;
  rig.settings.modDepth = 1.0;
  rig.settings.hz = 1.0;
  Vector32 vector{};
  rig.lfo.setRateModSource(vector.data());
  bool moved = false;
  for (int i = 0; i < 2000; ++i) {
    rig.settings.giveTo(rig.lfo);
    rig.lfo.process(vector.data());
    for (double value : vector) ASSERT_LE(std::fabs(value), 1.0);
    moved = moved || vector[0] > 0.5;
  }
  EXPECT_TRUE(moved);
}

/// Rates whose increment is rounded now up, now down at the upper end of the table: those midway
/// between two of the units that a phase of 2048 and more is counted in.
std::vector<double> ratesBetweenUnits(double sampleRateHz) {
  std::vector<double> rates;
  const double unit = std::ldexp(1.0, -41);
  for (int i = 0; i < 200000; ++i) {
    const double hz = 12.0 + i * 1e-5;
    if (std::fmod(4096.0 * hz / sampleRateHz, unit) == unit / 2.0) rates.push_back(hz);
  }
  return rates;
}

TEST(WaveLFO, readsTheEntriesOfARunningSumWhateverItsRounding) {
  const std::vector<double> midway = ratesBetweenUnits(44100.0);
  ASSERT_GT(midway.size(), 10u);
  std::vector<double> rates{44.1, 441.0, 1e-9, 44100.0 / 4096.0, 44100.0 / 4096.0 / 3.0};
  rates.insert(rates.end(), midway.begin(), midway.begin() + 10);
  for (double hz : rates) {
    LfoRig rig;
    rig.settings.wave = kRampWave;
    rig.settings.hz = hz;
    PlainLfo model(44100.0);
    for (int i = 0; i < 3000; ++i) {
      const Vector32 expected = model.run(rig.settings, false, nullptr);
      ASSERT_LT(largestDifference(rig.next(), expected), 1e-12) << hz << " at " << i;
    }
  }
}

TEST(WaveLFO, limitsAWaveOfOthersToItsRange) {
  static WaveRecord loud = *waveList[kRampWave];
  for (double& sample : loud.samples) sample *= 3.0;
  for (bool triggered : {false, true}) {
    LfoRig rig;
    rig.settings.hz = 100.0;
    rig.next();
    rig.lfo.setWave(&loud);
    unsigned char flag = triggered ? 1 : 0;
    rig.lfo.setTrigger(&flag);
    double lowest = 0.0;
    double highest = 0.0;
    for (int i = 0; i < 400; ++i) {
      Vector32 out{};
      rig.lfo.process(out.data());
      lowest = std::fmin(lowest, *std::min_element(out.begin(), out.end()));
      highest = std::fmax(highest, *std::max_element(out.begin(), out.end()));
      flag = 0;
    }
    EXPECT_EQ(lowest, -1.0);
    EXPECT_EQ(highest, 1.0);
  }
}

TEST(WaveLFO, isNewWithAPositiveOutput) {
  WaveLFO lfo;
  lfo.setWave(waveList[kRampWave]);
  lfo.setRate(100.0);
  double lowest = 1.0;
  for (int i = 0; i < 100; ++i) {
    Vector32 out{};
    lfo.process(out.data());
    lowest = std::fmin(lowest, *std::min_element(out.begin(), out.end()));
  }
  EXPECT_GE(lowest, 0.0);
}

TEST(WaveLFO, aPhaseBeyondTheCycleIsHeldAtItsEnds) {
  LfoRig rig;
  rig.settings.hz = 0.0;
  rig.settings.wave = kRampWave;
  rig.settings.phase = 1.5;
  EXPECT_EQ(rig.next()[0], 1.0);
  rig.settings.phase = -0.5;
  EXPECT_EQ(rig.next()[0], -1.0);
}

TEST(WaveLFO, aSourceThatIsNoNumberStopsTheRateButNotTheLfo) {
  LfoRig rig;
  rig.settings.wave = kRampWave;
  rig.settings.hz = 5.0;
  rig.settings.modDepth = 1.0;
  rig.next();
  Vector32 source;
  source.fill(std::numeric_limits<double>::quiet_NaN());
  rig.lfo.setRateModSource(source.data());
  const double before = rig.next()[31];
  EXPECT_EQ(rig.next()[31], before);
  source.fill(0.0);
  rig.next();
  EXPECT_GT(rig.next()[31], before);
}

TEST(WaveLFO, ratesThatAreNoNumbersAreIgnored) {
  LfoRig rig;
  rig.settings.giveTo(rig.lfo);
  rig.lfo.setRate(std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(rig.lfo.getRate(), 1.0);
  Vector32 source{};
  source[0] = std::numeric_limits<double>::infinity();
  rig.lfo.setRateModSource(source.data());
  rig.settings.modDepth = 1.0;
  for (double value : rig.next()) EXPECT_LE(std::fabs(value), 1.0);
}

TEST(WaveLFO, followsAChangeOfRate) {
  Settings settings;
  settings.glideMs = 40.0;
  settings.hz = 7.0;
  WaveLFO moved;
  settings.giveTo(moved);
  ScopedRate scope(96000.0);
  moved.rateChanged();
  WaveLFO fresh;
  settings.giveTo(fresh);
  Vector32 a{};
  Vector32 b{};
  for (int i = 0; i < 50; ++i) {
    moved.process(a.data());
    fresh.process(b.data());
    ASSERT_EQ(a, b);
  }
}

}  // namespace
}  // namespace orvantesco
