#include "fx/kernels/Allocators.h"

#include <cstddef>
#include <cstdlib>

namespace orvantesco {

namespace {

constexpr std::size_t kAlignment = 64;
constexpr std::size_t kSizeLimit = std::size_t{1} << 31;

void* alignedStorage(int n, std::size_t elementBytes) noexcept {
  if (n < 1) return nullptr;
  const std::size_t bytes = static_cast<std::size_t>(n) * elementBytes;
  if (bytes >= kSizeLimit) return nullptr;
  return std::aligned_alloc(kAlignment, (bytes + kAlignment - 1) / kAlignment * kAlignment);
}

}  // namespace

float* allocFloats(int n) noexcept { return static_cast<float*>(alignedStorage(n, sizeof(float))); }

double* allocDoubles(int n) noexcept {
  return static_cast<double*>(alignedStorage(n, sizeof(double)));
}

std::uint8_t* allocBytes(int n) noexcept {
  return static_cast<std::uint8_t*>(alignedStorage(n, 1));
}

void vecFree(void* storage) noexcept { std::free(storage); }

}  // namespace orvantesco
