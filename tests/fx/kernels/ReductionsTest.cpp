#include "fx/kernels/KernelTestSupport.h"

namespace orvantesco {
namespace {

using testing_support::AtEachLevel;
using testing_support::Draw;
using testing_support::Guarded;
using testing_support::kLongest;
using testing_support::kMisalignments;
using testing_support::same;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

/// The order of additions that every level keeps: 16 partial sums, then, L being the lanes of a
/// pack (4 doubles or 8 floats), the packs onto each other, and last the halves of the lanes.
template <class T>
T sumInLanes(const std::vector<T>& x, size_t lanes) {
  std::vector<T> part(16, T(0));
  for (size_t i = 0; i < x.size(); ++i) part[i % 16] += x[i];
  for (size_t step = lanes; step < 16; step *= 2) {
    for (size_t pack = 0; pack + step < 16; pack += 2 * step) {
      for (size_t i = 0; i < lanes; ++i) part[pack + i] += part[pack + step + i];
    }
  }
  for (size_t half = lanes / 2; half > 0; half /= 2) {
    for (size_t i = 0; i < half; ++i) part[i] += part[i + half];
  }
  return part[0];
}

class Reductions : public AtEachLevel {};

TEST_P(Reductions, MeanHasTheSameBitsAtEveryLevel) {
  for (int n = 1; n <= kLongest; ++n) {
    for (int shift = 0; shift < kMisalignments; ++shift) {
      Guarded<double> x(Draw<double>(static_cast<unsigned>(n)).plain(n), shift);
      double mean = 0.0;
      ASSERT_EQ(vecMean(x.data(), n, &mean), 0);
      ASSERT_TRUE(same(mean, sumInLanes(x.values(), 4) / n)) << n << " shift " << shift;
    }
  }
}

TEST_P(Reductions, FloatSumHasTheSameBitsAtEveryLevel) {
  for (int n = 1; n <= kLongest; ++n) {
    for (int shift = 0; shift < kMisalignments; ++shift) {
      Guarded<float> x(Draw<float>(static_cast<unsigned>(n)).plain(n), shift);
      float sum = 0.0f;
      ASSERT_EQ(vecSumF(x.data(), n, &sum, 0), 0);
      ASSERT_TRUE(same(sum, sumInLanes(x.values(), 8))) << n << " shift " << shift;
    }
  }
}

TEST_P(Reductions, MeanIsThatOfAnExactSum) {
  for (int n = 1; n <= kLongest; ++n) {
    const std::vector<double> x = Draw<double>(11).plain(n);
    long double exact = 0.0L;
    for (const double value : x) exact += value;
    double mean = 0.0;
    vecMean(x.data(), n, &mean);
    ASSERT_NEAR(mean, static_cast<double>(exact / n), 1e-15) << n;
  }
}

TEST_P(Reductions, MaxAbsFindsTheLargestMagnitudeWhereverItStands) {
  for (int n = 1; n <= kLongest; ++n) {
    for (int at = 0; at < n; ++at) {
      Guarded<double> x(Draw<double>(5).plain(n), at % kMisalignments);
      x.data()[at] = at % 2 == 0 ? 7.5 : -7.5;
      double largest = 0.0;
      ASSERT_EQ(vecMaxAbs(x.data(), n, &largest), 0);
      ASSERT_EQ(largest, 7.5) << n << " at " << at;
    }
  }
}

TEST_P(Reductions, MaxAbsPassesOverNanAndSeesInfinity) {
  for (const int n : {1, 3, 32, 45}) {
    std::vector<double> x(static_cast<size_t>(n), kNan);
    double largest = -1.0;
    vecMaxAbs(x.data(), n, &largest);
    EXPECT_TRUE(same(largest, 0.0));
    x.back() = -2.0;
    vecMaxAbs(x.data(), n, &largest);
    EXPECT_EQ(largest, 2.0);
    x.front() = -kInf;
    vecMaxAbs(x.data(), n, &largest);
    EXPECT_EQ(largest, kInf);
  }
}

TEST_P(Reductions, StaysWithinSeesEachElementBeyondTheLimit) {
  for (int n = 1; n <= kLongest; ++n) {
    Guarded<double> x(std::vector<double>(static_cast<size_t>(n), -1e8), n % kMisalignments);
    ASSERT_TRUE(vecStaysWithin(x.data(), n, 1e8)) << n;
    for (int at = 0; at < n; ++at) {
      for (const double bad : {1.0000001e8, -kInf, kInf, kNan}) {
        x.data()[at] = bad;
        ASSERT_FALSE(vecStaysWithin(x.data(), n, 1e8)) << n << " at " << at;
      }
      x.data()[at] = 0.0;
    }
  }
  EXPECT_TRUE(vecStaysWithin(nullptr, 4, 1.0));
}

TEST_P(Reductions, RefusedCallsWriteNoResult) {
  const double x[] = {1.0, 2.0};
  const float xF[] = {1.0f, 2.0f};
  double result = -3.0;
  float resultF = -3.0f;
  EXPECT_EQ(vecMaxAbs(x, 0, &result), -6);
  EXPECT_EQ(vecMaxAbs(nullptr, 2, &result), -8);
  EXPECT_EQ(vecMaxAbs(x, 2, nullptr), -8);
  EXPECT_EQ(vecMean(x, -1, &result), -6);
  EXPECT_EQ(vecMean(nullptr, 2, &result), -8);
  EXPECT_EQ(vecMean(x, 2, nullptr), -8);
  EXPECT_EQ(vecSumF(xF, 0, &resultF, 0), -6);
  EXPECT_EQ(vecSumF(nullptr, 2, &resultF, 0), -8);
  EXPECT_EQ(vecSumF(xF, 2, nullptr, 0), -8);
  EXPECT_EQ(result, -3.0);
  EXPECT_EQ(resultF, -3.0f);
}

INSTANTIATE_TEST_SUITE_P(Levels, Reductions, ::testing::ValuesIn(testing_support::kLevels),
                         testing_support::levelName);

}  // namespace
}  // namespace orvantesco
