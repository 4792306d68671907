#include "fx/kernels/IirReference.h"

namespace orvantesco {
namespace {

using testing_support::drawDirect;
using testing_support::drawSections;

class IirStatus : public ::testing::Test {
 protected:
  void SetUp() override { buffer = allocBytes(16800); }
  void TearDown() override { vecFree(buffer); }

  std::uint8_t* buffer = nullptr;
  IirState* state = nullptr;
};

TEST_F(IirStatus, DesignWorkSpaceIsToldForOrdersUpToTwelve) {
  for (int order = 1; order <= 12; ++order) {
    int size = 0;
    EXPECT_EQ(iirDesignBufferSize(order, &size), 0);
    EXPECT_EQ(size, 16800);
  }
  for (const int order : {13, 0, -1, 1000}) {
    int size = 77;
    EXPECT_EQ(iirDesignBufferSize(order, &size), -206);
    EXPECT_EQ(size, 77);
  }
  EXPECT_EQ(iirDesignBufferSize(12, nullptr), -8);
}

TEST_F(IirStatus, StateSizeHoldsADirectFormAndTwelveSectionsFitTheDesignSpace) {
  int one = 0, twelve = 0, many = 0;
  EXPECT_EQ(iirBiquadStateSize(1, &one), 0);
  EXPECT_EQ(iirBiquadStateSize(12, &twelve), 0);
  EXPECT_EQ(iirBiquadStateSize(100, &many), 0);
  EXPECT_GT(one, 38 * 8);
  EXPECT_LE(twelve, 16800);
  EXPECT_GT(many, 100 * 7 * 8);
  int size = 77;
  EXPECT_EQ(iirBiquadStateSize(0, &size), -25);
  EXPECT_EQ(iirBiquadStateSize(-3, &size), -25);
  EXPECT_EQ(iirBiquadStateSize(4, nullptr), -8);
  EXPECT_EQ(size, 77);
}

TEST_F(IirStatus, OrdersBelowOneAndAboveTheLongestAreRefused) {
  const std::vector<double> taps(200, 1.0);
  for (const int order : {0, -1, 13}) {
    EXPECT_EQ(iirInitDirect(&state, taps.data(), order, nullptr, buffer), -25);
    EXPECT_EQ(state, nullptr);
  }
  for (const int sections : {0, -1}) {
    EXPECT_EQ(iirInitBiquads(&state, taps.data(), sections, nullptr, buffer), -25);
    EXPECT_EQ(state, nullptr);
  }
}

TEST_F(IirStatus, AZeroFirstATapIsRefusedInADirectForm) {
  std::vector<double> taps = drawDirect(4);
  taps[5] = 0.0;
  EXPECT_EQ(iirInitDirect(&state, taps.data(), 4, nullptr, buffer), -10);
  EXPECT_EQ(state, nullptr);
  taps = drawDirect(4);
  taps[0] = 0.0;  // a numerator may start with 0 here
  EXPECT_EQ(iirInitDirect(&state, taps.data(), 4, nullptr, buffer), 0);
}

TEST_F(IirStatus, AZeroA0OrB0InAnySectionIsRefused) {
  for (size_t section = 0; section < 5; ++section) {
    for (const size_t tap : {0u, 3u}) {
      std::vector<double> taps = drawSections(5, 1);
      taps[section * 6 + tap] = 0.0;
      EXPECT_EQ(iirInitBiquads(&state, taps.data(), 5, nullptr, buffer), -10) << section;
      EXPECT_EQ(state, nullptr);
    }
    for (const size_t tap : {1u, 2u, 4u, 5u}) {
      std::vector<double> taps = drawSections(5, 1);
      taps[section * 6 + tap] = 0.0;
      EXPECT_EQ(iirInitBiquads(&state, taps.data(), 5, nullptr, buffer), 0) << section;
    }
  }
}

TEST_F(IirStatus, NullIsRefusedBeforeAnythingElse) {
  const std::vector<double> taps = drawSections(2, 1);
  EXPECT_EQ(iirInitDirect(nullptr, taps.data(), 2, nullptr, buffer), -8);
  EXPECT_EQ(iirInitDirect(&state, nullptr, 0, nullptr, buffer), -8);
  EXPECT_EQ(iirInitDirect(&state, taps.data(), 2, nullptr, nullptr), -8);
  EXPECT_EQ(iirInitBiquads(nullptr, taps.data(), 2, nullptr, buffer), -8);
  EXPECT_EQ(iirInitBiquads(&state, nullptr, 0, nullptr, buffer), -8);
  EXPECT_EQ(iirInitBiquads(&state, taps.data(), 2, nullptr, nullptr), -8);
}

TEST_F(IirStatus, AFailedInitLeavesAHandleThatEverythingRefuses) {
  ASSERT_EQ(iirInitBiquads(&state, drawSections(2, 1).data(), 2, nullptr, buffer), 0);
  ASSERT_EQ(iirInitBiquads(&state, drawSections(2, 1).data(), 0, nullptr, buffer), -25);
  double x[4] = {1, 2, 3, 4};
  EXPECT_EQ(iirFilterInPlace(x, 4, state), -8);
  EXPECT_EQ(iirSetDelayLine(state, x), -8);
  EXPECT_EQ(iirGetDelayLine(state, x), -8);
  EXPECT_EQ(x[0] + x[1] + x[2] + x[3], 10.0);
}

TEST_F(IirStatus, FilteringRefusesNullAndBadLength) {
  ASSERT_EQ(iirInitBiquads(&state, drawSections(2, 1).data(), 2, nullptr, buffer), 0);
  double x[4] = {1, 2, 3, 4}, y[4] = {9, 9, 9, 9};
  EXPECT_EQ(iirFilter(nullptr, y, 4, state), -8);
  EXPECT_EQ(iirFilter(x, nullptr, 4, state), -8);
  EXPECT_EQ(iirFilter(x, y, 4, nullptr), -8);
  EXPECT_EQ(iirFilter(x, y, 0, state), -6);
  EXPECT_EQ(iirFilter(x, y, -5, state), -6);
  EXPECT_EQ(iirFilterInPlace(x, 0, state), -6);
  EXPECT_EQ(iirGetDelayLine(state, nullptr), -8);
  EXPECT_EQ(y[0] + y[1] + y[2] + y[3], 36.0);
}

}  // namespace
}  // namespace orvantesco
