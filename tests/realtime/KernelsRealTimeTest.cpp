#include <gtest/gtest.h>

#include <cstdint>

#include "fx/Kernels.h"
#include "fx/kernels/Level.h"
#include "realtime/AudioThreadGuard.h"

namespace orvantesco {
namespace {

/// What a block does with a filter in one vector: design, build over the kept memory, run.
void redesignAndRun(IirState** state, double* x, double* line, void* buffer) {
  double taps[26] = {};
  std::uint8_t work[1] = {};
  iirDesignLowpass(0.2, 0.5, 12, taps, kChebyshev1, work);
  iirInitDirect(state, taps, 12, line, buffer);
  iirFilterInPlace(x, kVectorLength, *state);
  iirGetDelayLine(*state, line);
  const double sections[12] = {0.5, 0.1, 0.2, 1.0, -0.3, 0.2, 0.5, 0.1, 0.2, 1.0, -0.3, 0.2};
  iirInitBiquads(state, sections, 2, line, buffer);
  iirFilterInPlace(x, kVectorLength, *state);
  iirSetDelayLine(*state, nullptr);
}

TEST(KernelsRealTime, NothingButTheAllocatorsTouchesTheHeapOrALock) {
  if (!AudioThreadGuard::works()) GTEST_SKIP() << "the allocator belongs to a sanitizer";
  double x[kVectorLength], y[kVectorLength], line[24] = {}, figure = 0.0;
  IirState* state = nullptr;
  int size = 0;
  iirDesignBufferSize(12, &size);
  std::uint8_t* buffer = allocBytes(size);
  kernels::forgetLevel();  // the choice at the first call belongs to it
  {
    const AudioThreadGuard guard;
    vecSet(0.5, x, kVectorLength);
    vecCopy(x, y, kVectorLength - 1);
    vecMove(x, x + 1, kVectorLength - 1);
    vecAddProduct(x, x, y, kVectorLength);
    vecMaxAbs(y, kVectorLength, &figure);
    for (int i = 0; i < 10; ++i) redesignAndRun(&state, x, line, buffer);
    EXPECT_EQ(guard.allocations(), 0);
    EXPECT_EQ(guard.frees(), 0);
    EXPECT_EQ(guard.locks(), 0);
  }
  vecFree(buffer);
}

}  // namespace
}  // namespace orvantesco
