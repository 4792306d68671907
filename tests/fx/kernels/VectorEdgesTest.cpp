#include "fx/kernels/KernelTestSupport.h"

namespace orvantesco {
namespace {

using testing_support::AtEachLevel;
using testing_support::Draw;
using testing_support::firstDifference;
using testing_support::Guarded;

using Vector = std::vector<double>;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

class VectorEdges : public AtEachLevel {
 protected:
  static int size(const Vector& x) { return static_cast<int>(x.size()); }
};

TEST_P(VectorEdges, SecondOperandIsTheMinuend) {
  const Vector a(33, 1.0), b(33, 10.0);
  Vector difference(33), inPlace(33, 10.0);
  EXPECT_EQ(vecSub(a.data(), b.data(), difference.data(), 33), 0);
  EXPECT_EQ(vecSubInPlace(a.data(), inPlace.data(), 33), 0);
  EXPECT_EQ(difference, Vector(33, 9.0));
  EXPECT_EQ(inPlace, Vector(33, 9.0));
}

TEST_P(VectorEdges, FactorZeroSilencesWhatIsNotFinite) {
  const Vector broken = {kNan, kInf, -kInf, -1.0, 5.0};
  for (const double zero : {0.0, -0.0}) {
    Vector copy(5, 1.0), inPlace = broken;
    vecMulConst(broken.data(), zero, copy.data(), 5);
    vecMulConstInPlace(zero, inPlace.data(), 5);
    EXPECT_EQ(firstDifference(copy, Vector(5, 0.0)), -1);
    EXPECT_EQ(firstDifference(inPlace, Vector(5, 0.0)), -1);
  }
  const std::vector<float> brokenF = {NAN, INFINITY, -1.0f};
  std::vector<float> copyF(3, 1.0f);
  vecMulConstF(brokenF.data(), 0.0f, copyF.data(), 3);
  EXPECT_EQ(firstDifference(copyF, std::vector<float>(3, 0.0f)), -1);
}

TEST_P(VectorEdges, ProductWithZeroAddsNothingWhateverTheSourceHolds) {
  const Vector source = {kNan, kInf, 1.0, 2.0, 3.0};
  Vector target = {1.0, -0.0, 2.0, -5.0, 0.5};
  const Vector before = target;
  EXPECT_EQ(vecAddProductConst(source.data(), 0.0, target.data(), 5), 0);
  EXPECT_EQ(firstDifference(target, before), -1);
}

TEST_P(VectorEdges, ThresholdBothTakesTheSign) {
  Vector x = {-3.0, 0.0, 4.0, -1e-300, 1e-300, -0.0, kNan};
  EXPECT_EQ(vecThresholdBothInPlace(x.data(), size(x), 0.0, -1.0, 0.0, 1.0), 0);
  EXPECT_EQ(firstDifference(x, {-1.0, 0.0, 1.0, -1.0, 1.0, -0.0, kNan}), -1);
}

TEST_P(VectorEdges, ThresholdsKeepTheLevelItself) {
  Vector low = {0.5, 0.49, 0.51}, high = low;
  vecThresholdLowInPlace(low.data(), 3, 0.5, -9.0);
  vecThresholdHighInPlace(high.data(), 3, 0.5, 9.0);
  EXPECT_EQ(low, (Vector{0.5, -9.0, 0.51}));
  EXPECT_EQ(high, (Vector{0.5, 0.49, 9.0}));
}

TEST_P(VectorEdges, ThresholdsTestEachElementAsItWas) {
  Vector x(40, -1.0);  // its new value lies above the high level and stays all the same
  EXPECT_EQ(vecThresholdBothInPlace(x.data(), 40, 0.0, 5.0, 1.0, 2.0), 0);
  EXPECT_EQ(x, Vector(40, 5.0));
}

TEST_P(VectorEdges, CrossedThresholdsAreRefused) {
  Vector x = {-2.0, 2.0};
  EXPECT_EQ(vecThresholdBothInPlace(x.data(), 2, 1.0, 0.0, 0.5, 0.0), -19);
  EXPECT_EQ(x, (Vector{-2.0, 2.0}));
  EXPECT_EQ(vecThresholdBothInPlace(nullptr, 2, 1.0, 0.0, 0.5, 0.0), -8);
  EXPECT_EQ(vecThresholdBothInPlace(x.data(), 0, 1.0, 0.0, 0.5, 0.0), -6);
}

TEST_P(VectorEdges, DivisionByAZeroElementWarnsWhereverItStands) {
  for (int n = 1; n <= testing_support::kLongest; ++n) {
    for (const int at : {0, n / 2, n - 1}) {
      Vector divisors(static_cast<size_t>(n), 2.0), x(static_cast<size_t>(n), 1.0);
      EXPECT_EQ(vecDivInPlace(divisors.data(), x.data(), n), 0) << n;
      divisors[static_cast<size_t>(at)] = -0.0;
      EXPECT_GT(vecDivInPlace(divisors.data(), x.data(), n), 0) << n << " at " << at;
      EXPECT_EQ(x[static_cast<size_t>(at)], -kInf) << n << " at " << at;
    }
  }
}

TEST_P(VectorEdges, DivisionByTheConstantZeroIsRefused) {
  Vector x = {1.0, 2.0};
  EXPECT_EQ(vecDivConstInPlace(0.0, x.data(), 2), -10);
  EXPECT_EQ(vecDivConstInPlace(-0.0, x.data(), 2), -10);
  EXPECT_EQ(x, (Vector{1.0, 2.0}));
  EXPECT_EQ(vecDivConstInPlace(0.0, nullptr, 2), -8);
  EXPECT_EQ(vecDivConstInPlace(0.0, x.data(), 0), -6);
}

TEST_P(VectorEdges, RootOfANegativeElementWarnsWhereverItStands) {
  for (int n = 1; n <= testing_support::kLongest; ++n) {
    for (const int at : {0, n / 2, n - 1}) {
      Vector x(static_cast<size_t>(n), 4.0);
      x[static_cast<size_t>(at)] = -0.0;
      EXPECT_EQ(vecSqrtInPlace(x.data(), n), 0) << n;
      x[static_cast<size_t>(at)] = -4.0;
      EXPECT_EQ(vecSqrtInPlace(x.data(), n), 3) << n << " at " << at;
      EXPECT_TRUE(std::isnan(x[static_cast<size_t>(at)])) << n << " at " << at;
    }
  }
}

TEST_P(VectorEdges, MoveCarriesOverlappingRangesEitherWay) {
  constexpr int kRoom = 300;
  const Vector before = Draw<double>(3).plain(kRoom);
  for (int n = 1; n <= testing_support::kLongest; ++n) {
    for (const int distance : {-99, -33, -8, -3, -1, 0, 1, 2, 5, 31, 64}) {
      Guarded<double> room(before, 1);
      EXPECT_EQ(vecMove(room.data() + 100, room.data() + 100 + distance, n), 0);
      Vector expected = before;
      for (int i = 0; i < n; ++i) {
        expected[static_cast<size_t>(100 + distance + i)] = before[static_cast<size_t>(100 + i)];
      }
      ASSERT_EQ(firstDifference(room.values(), expected), -1) << n << " by " << distance;
    }
  }
}

TEST_P(VectorEdges, TheTargetMayBeASource) {
  for (const int n : {1, 7, 32, 53}) {
    const Vector x = Draw<double>(7).plain(n), y = Draw<double>(8).plain(n);
    Vector sum = x, difference = y, product = x, scaled = x, power = x, accumulated = x;
    vecAdd(sum.data(), y.data(), sum.data(), n);
    vecSub(x.data(), difference.data(), difference.data(), n);
    vecMul(y.data(), product.data(), product.data(), n);
    vecMulConst(scaled.data(), 0.3, scaled.data(), n);
    vecSquare(power.data(), power.data(), n);
    vecAddProduct(accumulated.data(), accumulated.data(), accumulated.data(), n);
    for (size_t i = 0; i < x.size(); ++i) {
      ASSERT_EQ(sum[i], x[i] + y[i]);
      ASSERT_EQ(difference[i], y[i] - x[i]);
      ASSERT_EQ(product[i], x[i] * y[i]);
      ASSERT_EQ(scaled[i], x[i] * 0.3);
      ASSERT_EQ(power[i], x[i] * x[i]);
      ASSERT_EQ(accumulated[i], x[i] + x[i] * x[i]);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Levels, VectorEdges, ::testing::ValuesIn(testing_support::kLevels),
                         testing_support::levelName);

}  // namespace
}  // namespace orvantesco
