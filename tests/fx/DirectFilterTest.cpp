#include "fx/DirectFilter.h"

#include <gtest/gtest.h>

#include "fx/BiquadModel.h"

namespace orvantesco {
namespace {

using testing_support::noise;
using testing_support::Signal;

Signal filtered(DirectFilter& filter, const Signal& in) {
  Signal out(in.size());
  filter.process(in.data(), out.data(), static_cast<int>(in.size()));
  return out;
}

TEST(DirectFilter, passesBeforeItsFirstDesign) {
  DirectFilter filter, other;
  const Signal in = noise(2);
  EXPECT_EQ(filtered(filter, in), in);
  Signal a = in, b = in;
  DirectFilter::processPair({filter, a.data()}, {other, b.data()}, 64);
  EXPECT_EQ(a, in);
  EXPECT_EQ(b, in);
}

TEST(DirectFilter, isTheDesignByPoles) {
  for (FilterBand band : {FilterBand::lowpass, FilterBand::highpass}) {
    for (double ripple : {0.0, 3.0}) {
      const DirectDesign design{ripple > 0.0 ? kChebyshev1 : kButterworth, band, 6, 0.15, ripple};
      DirectFilter filter;
      EXPECT_TRUE(filter.design(design));
      testing_support::PlainRecursion model;
      testing_support::designByPoles(6, 0.15, ripple, band == FilterBand::highpass, model);
      const Signal in = noise(60);
      Signal expected = in;
      for (double& sample : expected) sample = model.tick(sample);
      EXPECT_LT(testing_support::largestDifference(filtered(filter, in), expected), 1e-12);
    }
  }
}

TEST(DirectFilter, refusesWhatIsOutOfRangeAndRunsOn) {
  const DirectDesign good{kButterworth, FilterBand::lowpass, 4, 0.1, 0.0};
  DirectFilter refusing, other;
  EXPECT_TRUE(refusing.design(good) && other.design(good));
  EXPECT_FALSE(refusing.design({kButterworth, FilterBand::lowpass, 13, 0.1, 0.0}));
  EXPECT_FALSE(refusing.design({kButterworth, FilterBand::lowpass, 4, 0.5, 0.0}));
  EXPECT_FALSE(refusing.design({kChebyshev1, FilterBand::highpass, 4, 0.1, 0.0}));
  const Signal in = noise(3);
  EXPECT_EQ(filtered(refusing, in), filtered(other, in));
}

TEST(DirectFilter, aNewDesignKeepsTheMemoryAndClearDropsIt) {
  DirectFilter filter;
  filter.design({kButterworth, FilterBand::lowpass, 4, 0.1, 0.0});
  filtered(filter, noise(3));
  filter.design({kButterworth, FilterBand::lowpass, 4, 0.2, 0.0});
  EXPECT_NE(filtered(filter, Signal(32, 0.0)), Signal(32, 0.0));
  filter.clear();
  EXPECT_EQ(filtered(filter, Signal(32, 0.0)), Signal(32, 0.0));
}

}  // namespace
}  // namespace orvantesco
