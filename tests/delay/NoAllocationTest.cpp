#include <array>
#include <cstdlib>
#include <new>

#include "DelayTestSupport.h"
#include "delay/QLMMultiDelay.h"
#include "delay/RingDelay.h"

#if !defined(__clang__)
// The replaced operators belong together; where g++ inlines one of them alone, it sees a mismatch.
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
#endif

namespace {

long allocations = 0;

void* countedMemory(std::size_t bytes, std::size_t alignment) {
  ++allocations;
  void* memory = nullptr;
  if (posix_memalign(&memory, alignment, bytes > 0 ? bytes : 1) != 0) throw std::bad_alloc();
  return memory;
}

constexpr std::size_t kUsualAlignment = alignof(std::max_align_t);

}  // namespace

void* operator new(std::size_t bytes) { return countedMemory(bytes, kUsualAlignment); }
void* operator new(std::size_t bytes, std::align_val_t alignment) {
  return countedMemory(bytes, static_cast<std::size_t>(alignment));
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void* memory, std::align_val_t) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept { std::free(memory); }

namespace orvantesco {
namespace {

using testing_support::noise;

TEST(NoAllocation, TheCounterSeesAllocations) {
  const long before = allocations;
  const std::vector<double> some(100);
  EXPECT_GT(allocations, before);
}

TEST(NoAllocation, DelaysReadWriteResetAndSwitchWithoutMemory) {
  const std::vector<double> signal = noise(10);
  QLMMultiDelay left, right(true);
  RingDelay line;
  const long before = allocations;
  for (int block = 0; block < 400; ++block) {
    if (block % 100 == 0) left.setDelayMode(block / 100);
    if (block % 90 == 0) left.reset();
    if (block % 40 == 0) right.setLowpass(0.001 * block);
    std::array<QLMMultiDelay::TapRead, 16> reads;
    for (int k = 0; k < 16; ++k) reads[static_cast<size_t>(k)] = {50.0 * k + block, k};
    left.readTaps(reads.data(), 16, kVectorLength);
    QLMMultiDelay::readTapPair(left, 500.5, right, 10.0 * block, kVectorLength);
    left.readRaw(100.0, kVectorLength);
    left.triggerReverse();
    for (QLMMultiDelay* delay : {&left, &right}) delay->writeBlock(signal.data(), kVectorLength);
    line.write(signal.data(), kVectorLength);
    line.read(block, kVectorLength);
    line.readModulated(block, kVectorLength);
  }
  line.clear();
  EXPECT_EQ(allocations, before);
}

}  // namespace
}  // namespace orvantesco
