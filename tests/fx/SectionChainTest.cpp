#include "fx/SectionChain.h"

#include <gtest/gtest.h>

#include "fx/ShifterModel.h"

namespace orvantesco {
namespace {

using testing_support::largestDifference;
using testing_support::noise;
using testing_support::PlainSection;
using testing_support::Signal;

constexpr BiquadSection kLow = {0.3, 0.6, 0.3, 1.2, -0.4, 0.5};
constexpr BiquadSection kHigh = {0.8, -1.6, 0.8, 1.0, -1.5, 0.6};

struct PlainChain {
  std::vector<PlainSection> sections;

  void retune(const BiquadSection& s) {
    for (PlainSection& section : sections) {
      section.b0 = s.b0, section.b1 = s.b1, section.b2 = s.b2;
      section.a0 = s.a0, section.a1 = s.a1, section.a2 = s.a2;
    }
  }
  Signal run(Signal signal) {
    for (double& sample : signal) {
      testing_support::Real x = sample;
      for (PlainSection& section : sections) x = section.step(x);
      sample = static_cast<double>(x);
    }
    return signal;
  }
};

TEST(SectionChain, isItsSectionsInSequenceThroughAChangeOfDesign) {
  for (int count : {1, 4, 6, 8}) {
    SectionChain chain;
    PlainChain plain{std::vector<PlainSection>(static_cast<size_t>(count))};
    for (const BiquadSection& section : {kLow, kHigh}) {
      chain.design(section, count);
      plain.retune(section);
      const Signal in = noise(50);
      EXPECT_LT(largestDifference(testing_support::run(chain, in), plain.run(in)), 1e-12) << count;
    }
  }
}

TEST(SectionChain, passesItsInputBeforeTheFirstDesign) {
  SectionChain chain;
  const Signal in = noise(3);
  EXPECT_EQ(testing_support::run(chain, in), in);
}

TEST(SectionChain, keepsItsDesignWhereANewOneIsNone) {
  SectionChain chain, other;
  chain.design(kLow, 4);
  other.design(kLow, 4);
  chain.design({0.0, 1.0, 0.0, 1.0, 0.0, 0.0}, 4);
  chain.design({0.3, 0.6, 0.3, 0.0, -0.4, 0.5}, 4);
  const Signal in = noise(10);
  EXPECT_EQ(testing_support::run(chain, in), testing_support::run(other, in));
}

TEST(SectionChain, canBeClearedBeforeTheFirstDesign) {
  SectionChain chain;
  chain.clear();
  const Signal in = noise(3);
  EXPECT_EQ(testing_support::run(chain, in), in);
}

TEST(SectionChain, clearLeavesSilence) {
  SectionChain chain;
  chain.design(kHigh, 6);
  testing_support::run(chain, noise(10));
  chain.clear();
  EXPECT_EQ(testing_support::run(chain, Signal(64, 0.0)), Signal(64, 0.0));
}

TEST(SectionChain, itsTailEndsInZerosAndNotInDenormals) {
  SectionChain chain;
  chain.design(kHigh, 6);
  testing_support::run(chain, noise(10));
  const Signal tail = testing_support::run(chain, Signal(3000 * 32, 0.0));
  const auto isDenormal = [](double x) { return std::fpclassify(x) == FP_SUBNORMAL; };
  EXPECT_TRUE(std::none_of(tail.begin(), tail.end(), isDenormal));
  EXPECT_LT(std::fabs(tail.back()), 1e-29);
}

}  // namespace
}  // namespace orvantesco
