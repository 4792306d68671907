#include "fx/kernels/Level.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "fx/Kernels.h"

namespace orvantesco::kernels {
namespace {

/// Each test starts from, and leaves, a library that has not been called yet.
class LevelChoice : public ::testing::Test {
 protected:
  void SetUp() override { forgetLevel(); }
  void TearDown() override { forgetLevel(); }

  static Level best() {
    if (supports(Level::kAvx2)) return Level::kAvx2;
    return supports(Level::kSse2) ? Level::kSse2 : Level::kScalar;
  }
};

TEST_F(LevelChoice, TheFirstCallTakesTheBestLevel) {
  double x[4] = {};
  EXPECT_FALSE(isChosen());
  vecSet(1.0, x, 4);
  EXPECT_TRUE(isChosen());
  EXPECT_EQ(levelInForce(), best());
  EXPECT_EQ(x[3], 1.0);
}

TEST_F(LevelChoice, LaterCallsChangeNothing) {
  double x[4] = {};
  vecSet(1.0, x, 4);
  const auto first = active.add.of(4);
  for (int i = 0; i < 100; ++i) vecAddInPlace(x, x, 4);
  EXPECT_EQ(active.add.of(4), first);
}

TEST_F(LevelChoice, ATestMayForceALevelBeforeTheFirstCall) {
  ASSERT_TRUE(forceLevel(Level::kScalar));
  double x[4] = {};
  vecSet(1.0, x, 4);
  EXPECT_EQ(levelInForce(), Level::kScalar);
}

TEST_F(LevelChoice, ATestMayForceALevelAfterwards) {
  double x[4] = {};
  vecSet(1.0, x, 4);
  ASSERT_TRUE(forceLevel(Level::kScalar));
  vecAddConstInPlace(1.0, x, 4);
  EXPECT_EQ(levelInForce(), Level::kScalar);
  EXPECT_EQ(x[0], 2.0);
}

TEST_F(LevelChoice, AFilterSurvivesAChangeOfLevel) {
  double taps[26] = {}, work[1] = {}, whole[96] = {1.0}, pieces[96] = {1.0};
  iirDesignLowpass(0.2, 0.0, 12, taps, kButterworth, work);
  int size = 0;
  iirDesignBufferSize(12, &size);
  std::uint8_t* buffer = allocBytes(size);
  IirState* state = nullptr;
  iirInitDirect(&state, taps, 12, nullptr, buffer);
  iirFilterInPlace(whole, 96, state);
  iirSetDelayLine(state, nullptr);
  int at = 0;
  for (const Level level : {Level::kScalar, Level::kSse2, Level::kAvx2}) {
    forceLevel(level);
    iirFilterInPlace(pieces + at, 32, state);
    at += 32;
  }
  vecFree(buffer);
  EXPECT_EQ(std::vector<double>(pieces, pieces + 96), std::vector<double>(whole, whole + 96));
}

TEST_F(LevelChoice, ThreadsThatMeetAtTheFirstCallAgree) {
  for (int round = 0; round < 50; ++round) {
    forgetLevel();
    double sums[2] = {};
    const auto work = [](double* sum) {
      double x[32];
      vecSet(1.0, x, 32);
      vecMean(x, 32, sum);
    };
    std::thread first(work, &sums[0]), second(work, &sums[1]);
    first.join();
    second.join();
    ASSERT_EQ(sums[0] + sums[1], 2.0);
    ASSERT_EQ(levelInForce(), best());
  }
}

/// Calls one operation as the very first one and says whether it chose the level and did its work.
template <class Call>
bool choosesAtFirst(Call call) {
  forgetLevel();
  return call() == 0 && isChosen();
}

TEST_F(LevelChoice, AnyOperationMayBeTheFirst) {
  double a[40] = {1.0, 2.0}, b[40] = {3.0, 4.0}, result = 0.0;
  float f[40] = {1.0f}, sum = 0.0f;
  for (const int n : {32, 33}) {
    EXPECT_TRUE(choosesAtFirst([&] { return vecMul(a, b, b, n); }));
    EXPECT_TRUE(choosesAtFirst([&] { return vecThresholdBothInPlace(a, n, -1, -1, 1, 1); }));
    EXPECT_TRUE(choosesAtFirst([&] { return vecMaxAbs(a, n, &result); }));
    EXPECT_TRUE(choosesAtFirst([&] { return vecSumF(f, n, &sum, 0); }));
    EXPECT_EQ(result, 1.0);
    EXPECT_EQ(sum, 1.0f);
  }
}

TEST_F(LevelChoice, AFilterMayBeTheFirst) {
  const double taps[] = {1.0, 0.5, 1.0, -0.25};
  alignas(64) std::uint8_t buffer[2048];
  IirState* state = nullptr;
  double x[2] = {1.0, 0.0}, line[1] = {};
  EXPECT_TRUE(choosesAtFirst([&] { return iirInitDirect(&state, taps, 1, nullptr, buffer); }));
  EXPECT_TRUE(choosesAtFirst([&] { return iirFilterInPlace(x, 2, state); }));
  EXPECT_TRUE(choosesAtFirst([&] { return iirGetDelayLine(state, line); }));
  EXPECT_TRUE(choosesAtFirst([&] { return iirSetDelayLine(state, line); }));
  EXPECT_EQ(x[1], 0.75);
  EXPECT_EQ(line[0], 0.1875);
}

TEST_F(LevelChoice, LevelsHaveNames) {
  EXPECT_STREQ(nameOf(Level::kScalar), "scalar");
  EXPECT_STREQ(nameOf(Level::kSse2), "SSE2");
  EXPECT_STREQ(nameOf(Level::kAvx2), "AVX2");
}

}  // namespace
}  // namespace orvantesco::kernels
