#include "fx/kernels/Allocators.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace orvantesco {
namespace {

bool isAligned(const void* p) { return reinterpret_cast<std::uintptr_t>(p) % 64 == 0; }

TEST(Allocators, StorageStartsAtALineAndHoldsAllElements) {
  for (const int n : {1, 2, 7, 8, 31, 33, 1000}) {
    float* floats = allocFloats(n);
    double* doubles = allocDoubles(n);
    std::uint8_t* bytes = allocBytes(n);
    ASSERT_TRUE(floats != nullptr && doubles != nullptr && bytes != nullptr);
    EXPECT_TRUE(isAligned(floats) && isAligned(doubles) && isAligned(bytes)) << n;
    for (int i = 0; i < n; ++i) {
      floats[i] = 1.0f;
      doubles[i] = 2.0;
      bytes[i] = 3;
    }
    EXPECT_EQ(floats[n - 1] + static_cast<float>(doubles[n - 1]), 3.0f);
    vecFree(floats);
    vecFree(doubles);
    vecFree(bytes);
  }
}

TEST(Allocators, LengthsBelowOneGiveNull) {
  for (const int n : {0, -1, std::numeric_limits<int>::min()}) {
    EXPECT_EQ(allocFloats(n), nullptr);
    EXPECT_EQ(allocDoubles(n), nullptr);
    EXPECT_EQ(allocBytes(n), nullptr);
  }
}

TEST(Allocators, SizesOfTwoGibibytesGiveNull) {
  EXPECT_EQ(allocFloats(1 << 29), nullptr);
  EXPECT_EQ(allocDoubles(1 << 28), nullptr);
  EXPECT_EQ(allocDoubles(std::numeric_limits<int>::max()), nullptr);
}

TEST(Allocators, NullMayBeFreed) { vecFree(nullptr); }

}  // namespace
}  // namespace orvantesco
