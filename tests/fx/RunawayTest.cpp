#include "fx/Runaway.h"

#include <gtest/gtest.h>

#include <limits>

#include "fx/FxTestSupport.h"

namespace orvantesco {
namespace {

using testing_support::Signal;

const double kBad[] = {std::numeric_limits<double>::quiet_NaN(), HUGE_VAL, -HUGE_VAL, 1.0000001e8,
                       -1e300};

TEST(Runaway, theLimitItselfIsSane) {
  EXPECT_TRUE(isSane(1e8) && isSane(-1e8) && isSane(0.0));
  for (double value : kBad) EXPECT_FALSE(isSane(value));
}

TEST(Runaway, oneBadSampleAnywhereIsFound) {
  for (double value : kBad) {
    for (size_t at = 0; at < kVectorLength; ++at) {
      Signal vector = testing_support::noise(1);
      vector[at] = value;
      EXPECT_FALSE(isSaneVector(vector.data())) << value << " at " << at;
      EXPECT_FALSE(isSaneSpan(vector.data() + at, 1));
      EXPECT_TRUE(isSaneSpan(vector.data(), static_cast<int>(at)));
    }
  }
}

TEST(Runaway, manyLoudSamplesTogetherAreSane) {
  for (double level : {1e8, -1e8, 5e6, 1e-310}) {
    const Signal vector(kVectorLength, level);
    EXPECT_TRUE(isSaneVector(vector.data())) << level;
  }
}

TEST(Runaway, whatIsNotSaneReadsAsZero) {
  EXPECT_EQ(saneOrZero(-0.5), -0.5);
  for (double value : kBad) EXPECT_EQ(saneOrZero(value), 0.0);
}

}  // namespace
}  // namespace orvantesco
