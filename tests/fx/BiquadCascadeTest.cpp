#include "fx/BiquadCascade.h"

#include <gtest/gtest.h>

#include "fx/FxTestSupport.h"

namespace orvantesco {
namespace {

using testing_support::largestDifference;
using testing_support::noise;
using testing_support::Signal;

/// Transposed direct form II, one sample and one section after the other.
Signal plain(const std::vector<BiquadSection>& sections, Signal signal) {
  for (const BiquadSection& s : sections) {
    double p = 0.0, q = 0.0;
    for (double& sample : signal) {
      const double x = sample;
      const double y = s.b0 / s.a0 * x + p;
      p = (q + s.b1 / s.a0 * x) - s.a1 / s.a0 * y;
      q = s.b2 / s.a0 * x - s.a2 / s.a0 * y;
      sample = y;
    }
  }
  return signal;
}

std::vector<BiquadSection> threeSections() {
  return {lowpassSection(shapeSection(0.1, 2.0)), peakSection(shapeSection(0.02, 5.0), 2.0),
          highpassSection(shapeSection(0.01, 1.45))};
}

TEST(BiquadCascade, isThePlainRecursion) {
  for (double corner : {0.01, 0.1, 0.25, 0.45}) {
    for (double divisor : {0.5, 1.45, 9.45}) {
      const SectionShape shape = shapeSection(corner, divisor);
      for (const BiquadSection& section :
           {lowpassSection(shape), highpassSection(shape), bandpassSection(shape),
            allpassSection(shape), peakSection(shape, 2.0), lowShelfSection(shape, 2.0)}) {
        BiquadCascade cascade;
        cascade.design(&section, 1, 1);
        const Signal in = noise(200);
        EXPECT_LT(largestDifference(testing_support::run(cascade, in), plain({section}, in)),
                  1e-12);
      }
    }
  }
}

TEST(BiquadCascade, repeatsItsSectionsInTurn) {
  const auto three = threeSections();
  for (int distinct : {1, 2, 3}) {
    for (int count : {1, 3, 7, 12}) {
      BiquadCascade cascade;
      cascade.design(three.data(), distinct, count);
      std::vector<BiquadSection> sections;
      for (int i = 0; i < count; ++i) sections.push_back(three[static_cast<size_t>(i % distinct)]);
      const Signal in = noise(100);
      const Signal expected = plain(sections, in);
      const double peak = *std::max_element(expected.begin(), expected.end());
      EXPECT_LT(largestDifference(testing_support::run(cascade, in), expected),
                1e-12 * std::max(1.0, peak))
          << distinct << " of " << count;
    }
  }
}

TEST(BiquadCascade, everyPlaceOfAnImpulseGivesTheSameAnswer) {
  const auto three = threeSections();
  Signal first;
  for (size_t place = 0; place < 8; ++place) {
    BiquadCascade cascade;
    cascade.design(three.data(), 3, 3);
    Signal in(20 * 32, 0.0);
    in[place] = 1.0;
    Signal answer = testing_support::run(cascade, in);
    answer.erase(answer.begin(), answer.begin() + static_cast<std::ptrdiff_t>(place));
    answer.resize(19 * 32);
    if (place == 0) first = answer;
    EXPECT_LT(largestDifference(answer, first), 1e-13) << place;
  }
}

TEST(BiquadCascade, aNewDesignKeepsTheMemory) {
  const auto three = threeSections();
  BiquadCascade cascade;
  cascade.design(&three[0], 1, 1);
  testing_support::run(cascade, noise(5));
  cascade.design(&three[1], 1, 1);
  EXPECT_NE(testing_support::run(cascade, Signal(32, 0.0)), Signal(32, 0.0));
  cascade.clear();
  EXPECT_EQ(testing_support::run(cascade, Signal(32, 0.0)), Signal(32, 0.0));
}

TEST(BiquadCascade, runsInPlace) {
  const auto three = threeSections();
  BiquadCascade apart, inPlace;
  apart.design(three.data(), 3, 3);
  inPlace.design(three.data(), 3, 3);
  Signal signal = noise(1);
  const Signal expected = testing_support::run(apart, signal);
  inPlace.process(signal.data(), signal.data());
  EXPECT_EQ(signal, expected);
}

TEST(BiquadCascade, passesBeforeItsFirstDesign) {
  BiquadCascade cascade;
  const Signal in = noise(3);
  EXPECT_EQ(testing_support::run(cascade, in), in);
}

TEST(BiquadCascade, tailsEndInExactSilence) {
  const BiquadSection section = lowpassSection(shapeSection(0.05, 1.45));
  BiquadCascade cascade;
  cascade.design(&section, 1, 1);
  testing_support::run(cascade, noise(5));
  Signal tail = testing_support::run(cascade, Signal(2000 * 32, 0.0));
  EXPECT_TRUE(std::none_of(tail.begin(), tail.end(),
                           [](double s) { return std::fpclassify(s) == FP_SUBNORMAL; }));
}

}  // namespace
}  // namespace orvantesco
