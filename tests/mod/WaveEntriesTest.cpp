#include "mod/WaveEntries.h"

#include <gtest/gtest.h>

#include "mod/ModTestSupport.h"

namespace orvantesco {
namespace {

using testing_support::Dice;

/// The running sum, one addition after the other.
void expectRunningSum(double start, double inc, const EntryRule& rule) {
  double position = start;
  WaveEntries expected{};
  for (int& entry : expected) {
    position += inc;
    entry = (static_cast<int>(position) + rule.shift) & 4095;
    if (rule.flip != 0) entry = 4095 - entry;
  }
  double phase = start;
  WaveEntries entries{};
  passEntries(inc, rule, phase, entries);
  ASSERT_EQ(phase, position) << start << " by " << inc;
  ASSERT_EQ(entries, expected) << start << " by " << inc;
}

EntryRule anyRule(Dice& dice) { return {dice.below(4096), dice.oneIn(2) ? 4095 : 0}; }

TEST(WaveEntries, areThoseOfARunningSumToTheBit) {
  Dice dice(77);
  for (int i = 0; i < 200000; ++i) {
    const double inc = 46.0 * std::pow(10.0, dice.between(-12.0, 0.0));
    const double start = dice.between(0.0, 4096.0 - 33.0 * inc);
    expectRunningSum(start, inc, anyRule(dice));
  }
}

TEST(WaveEntries, areThatAlsoForStepsMidwayBetweenTwoUnits) {
  Dice dice(78);
  for (int i = 0; i < 100000; ++i) {
    const double unit = std::ldexp(1.0, -52 + dice.below(12));
    const double power = unit * std::ldexp(1.0, 52);
    const int whole = 1 + dice.below(1 << 20);
    const double inc = unit * (whole + 0.5);
    expectRunningSum(power + unit * dice.below(1 << 20), inc, anyRule(dice));
    // From below the power, where units are half as wide: the first sum may be odd.
    expectRunningSum(power - unit * (dice.below(whole) + 0.5), inc, anyRule(dice));
  }
}

TEST(WaveEntries, areThatAlsoAcrossPowersOfTwoAndFromZero) {
  Dice dice(79);
  for (int i = 0; i < 50000; ++i) {
    const double inc = 40.0 * std::pow(10.0, dice.between(-3.0, 0.0));
    const double power = std::ldexp(1.0, dice.below(12));
    expectRunningSum(std::fmax(0.0, power - inc * dice.between(0.0, 33.0)), inc, anyRule(dice));
    expectRunningSum(0.0, inc, anyRule(dice));
  }
}

TEST(WaveEntries, ofAPhaseThatStandsAreAllTheSame) {
  for (double start : {0.0, 1.5, 4095.0}) expectRunningSum(start, 0.0, {7, 0});
}

}  // namespace
}  // namespace orvantesco
