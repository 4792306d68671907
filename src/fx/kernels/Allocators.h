#pragma once

#include <cstdint>

namespace orvantesco {

/// Storage aligned to 64 bytes, not cleared; null for n below 1, for sizes of 2^31 bytes and
/// more, and when memory is out. For construction and destruction only, never the audio thread.
float* allocFloats(int n) noexcept;
double* allocDoubles(int n) noexcept;
std::uint8_t* allocBytes(int n) noexcept;

/// Gives back what one of the three allocators returned; null is ignored.
void vecFree(void* storage) noexcept;

}  // namespace orvantesco
