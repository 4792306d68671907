#include "mod/LogicUnit.h"

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

double sign(double x) { return x > 0.0 ? 1.0 : (x < 0.0 ? -1.0 : 0.0); }

double combined(int type, double a, double b, bool hasSecond) {
  const double magnitudeA = std::fabs(a);
  const double magnitudeB = std::fabs(b);
  switch (type) {
    case 0:
      return a + b;
    case 1:
      return hasSecond ? a * b : a;
    case 2:
      return sign(a) * std::fmin(magnitudeA, magnitudeB);
    case 3:
      return sign(a) * std::fmax(magnitudeA, magnitudeB);
    case 4:
      return std::fmin(a, b);
    case 5:
      return std::fmax(a, b);
    case 6:
      return magnitudeA >= magnitudeB ? a : 0.0;
    case 7:
      return a > b ? 1.0 : 0.0;
    default:
      return a < b ? 1.0 : 0.0;
  }
}

struct Case {
  LogicUnit::Operand first, second, modulation;
  double depth = 1.0, smoothMs = 0.0;
  int type = 0;

  void giveTo(LogicUnit& unit) const {
    unit.setType(static_cast<LogicUnit::Type>(type));
    unit.setOperand(0, first);
    unit.setOperand(1, second);
    unit.setSmooth(smoothMs);
    unit.setDepth(depth);
    unit.setDepthModulation(modulation);
  }
  Vector32 run() const {
    LogicUnit unit;
    giveTo(unit);
    Vector32 out{};
    unit.process(out.data());
    return out;
  }
};

double at(const LogicUnit::Operand& operand, std::size_t i) {
  return operand.source != nullptr ? operand.source[i] * operand.depth : 0.0;
}

Vector32 model(const Case& c, PlainGlide& glide, double rate) {
  glide.setTime(c.smoothMs, rate);
  Vector32 out{};
  for (std::size_t i = 0; i < out.size(); ++i) {
    const double x = glide.tickOffset(
        combined(c.type, at(c.first, i), at(c.second, i), c.second.source != nullptr));
    const double depth = c.depth + at(c.modulation, i);
    out[i] = std::fmin(std::fmax(x * depth, -1.0), 1.0);
  }
  return out;
}

TEST(LogicUnit, isItsModelInEveryType) {
  for (double rate : kRates) {
    ScopedRate scope(rate);
    Dice dice(31);
    LogicUnit unit;
    PlainGlide glide(0.0, rate);
    Case c;
    double worst = 0.0;
    for (int round = 0; round < 4000; ++round) {
      const Vector32 a = dice.vector(-1.5, 1.5);
      const Vector32 b = dice.vector(-1.5, 1.5);
      const Vector32 d = dice.vector();
      if (round % 20 == 0) {
        c.type = dice.below(LogicUnit::kTypes);
        c.depth = dice.between(0.0, 1.0);
        c.smoothMs = dice.oneIn(2) ? 0.0 : dice.between(0.0, 100.0);
        c.first.depth = dice.between(-1.0, 1.0);
        c.second.depth = dice.between(-1.0, 1.0);
        c.modulation.depth = dice.between(-1.0, 1.0);
      }
      c.first.source = dice.oneIn(10) ? nullptr : a.data();
      c.second.source = dice.oneIn(10) ? nullptr : b.data();
      c.modulation.source = dice.oneIn(2) ? nullptr : d.data();
      c.giveTo(unit);
      Vector32 out{};
      unit.process(out.data());
      worst = std::fmax(worst, largestDifference(out, model(c, glide, rate)));
    }
    EXPECT_LT(worst, 1e-12) << rate;
  }
}

TEST(LogicUnit, isSilentUntilItsDepthIsRaised) {
  Vector32 ones;
  ones.fill(1.0);
  LogicUnit unit;
  unit.setOperand(0, {ones.data(), 1.0});
  unit.setSmooth(0.0);
  Vector32 out;
  out.fill(0.5);
  unit.process(out.data());
  EXPECT_EQ(out, Vector32{});
}

TEST(LogicUnit, comparesEqualSourcesAndNoSourcesAsNotHigher) {
  const Vector32 a = Dice(1).vector();
  Case same{{a.data(), 1.0}, {a.data(), 1.0}, {}, 1.0, 0.0, 7};
  EXPECT_EQ(same.run(), Vector32{});
  Case none{{}, {}, {}, 1.0, 0.0, 7};
  EXPECT_EQ(none.run(), Vector32{});
  Case gate{{}, {}, {}, 1.0, 0.0, 6};
  EXPECT_EQ(gate.run(), Vector32{});
}

TEST(LogicUnit, gatePassesASourceAsLargeAsTheOther) {
  const Vector32 a = Dice(1).vector();
  for (double sign : {1.0, -1.0}) {
    Case c{{a.data(), 1.0}, {a.data(), sign}, {}, 1.0, 0.0, 6};
    EXPECT_EQ(c.run(), a);
  }
}

TEST(LogicUnit, magnitudesOfSignlessInputsVanish) {
  Vector32 zeros{};
  Vector32 ones;
  ones.fill(1.0);
  for (int type : {2, 3}) {
    Case c{{zeros.data(), 1.0}, {ones.data(), 1.0}, {}, 1.0, 0.0, type};
    EXPECT_EQ(c.run(), Vector32{});
  }
}

TEST(LogicUnit, addClampsAtOne) {
  Vector32 ones;
  ones.fill(1.0);
  Case c{{ones.data(), 1.0}, {ones.data(), 1.0}, {}, 1.0, 0.0, 0};
  EXPECT_EQ(c.run(), ones);
}

TEST(LogicUnit, readsItsOwnLastVector) {
  Vector32 small;
  small.fill(0.1);
  LogicUnit unit;
  Vector32 out{};
  unit.setOperand(0, {out.data(), 1.0});
  unit.setOperand(1, {small.data(), 1.0});
  unit.setSmooth(0.0);
  unit.setDepth(1.0);
  for (int round = 1; round <= 20; ++round) {
    unit.process(out.data());
    EXPECT_NEAR(out[7], std::fmin(1.0, 0.1 * round), 1e-12);
  }
}

TEST(LogicUnit, getsOverAValueThatIsNoNumber) {
  Vector32 bad;
  bad.fill(std::numeric_limits<double>::quiet_NaN());
  LogicUnit unit;
  Vector32 out{};
  unit.setOperand(0, {bad.data(), 1.0});
  unit.setOperand(1, {out.data(), 0.5});
  unit.setSmooth(0.0);
  unit.setDepth(1.0);
  unit.process(out.data());
  for (double value : out) EXPECT_EQ(value, 0.0);
}

TEST(LogicUnit, getsOverAValueThatIsNoNumberInEveryTypeAndBesideItself) {
  Vector32 bad;
  bad.fill(std::numeric_limits<double>::quiet_NaN());
  bad[3] = std::numeric_limits<double>::infinity();
  for (int type = 0; type < LogicUnit::kTypes; ++type) {
    for (double smoothMs : {0.0, 10.0}) {
      Vector32 good;
      good.fill(0.5);
      Case c{{bad.data(), 1.0}, {good.data(), 1.0}, {}, 1.0, smoothMs, type};
      LogicUnit unit;
      c.giveTo(unit);
      Vector32 out{};
      unit.process(out.data());
      for (double value : out) ASSERT_LE(std::fabs(value), 1.0) << type;
      c.first.source = good.data();
      c.giveTo(unit);
      for (int i = 0; i < 2000; ++i) unit.process(out.data());
      EXPECT_LT(
          largestDifference(out, Case{{good.data(), 1.0}, c.second, {}, 1.0, 0.0, type}.run()),
          1e-9)
          << type;
    }
  }
}

TEST(LogicUnit, followsAChangeOfRate) {
  Dice dice(12);
  const Vector32 a = dice.vector();
  const Vector32 b = dice.vector();
  const Case c{{a.data(), 1.0}, {b.data(), 1.0}, {}, 1.0, 40.0, 0};
  LogicUnit moved;
  c.giveTo(moved);
  Vector32 out{};
  for (int i = 0; i < 100; ++i) moved.process(out.data());
  ScopedRate scope(96000.0);
  moved.rateChanged();
  LogicUnit fresh;
  c.giveTo(fresh);
  Vector32 expected{};
  for (int i = 0; i < 100; ++i) {
    moved.process(out.data());
    fresh.process(expected.data());
    ASSERT_EQ(out, expected);
  }
}

TEST(LogicUnit, smoothingGoesOnFromWhereTheWireWas) {
  Vector32 ones;
  ones.fill(1.0);
  LogicUnit unit;
  unit.setOperand(0, {ones.data(), 1.0});
  unit.setSmooth(0.0);
  unit.setDepth(1.0);
  Vector32 out{};
  unit.process(out.data());
  unit.setSmooth(500.0);
  unit.process(out.data());
  for (double value : out) EXPECT_NEAR(value, 1.0, 1e-12);
}

}  // namespace
}  // namespace orvantesco
