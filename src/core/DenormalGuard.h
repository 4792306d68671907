#pragma once

#include <immintrin.h>

namespace orvantesco {

/// Switches flush-to-zero and denormals-are-zero on for its own lifetime and puts the thread's
/// mode back at its end: the host's other plug-ins keep theirs.
class DenormalGuard {
 public:
  DenormalGuard() noexcept : saved(_mm_getcsr()) { _mm_setcsr(saved | kFlushBits); }
  ~DenormalGuard() { _mm_setcsr(saved); }
  DenormalGuard(const DenormalGuard&) = delete;
  DenormalGuard& operator=(const DenormalGuard&) = delete;

 private:
  static constexpr unsigned kFlushBits = 0x8040;  // FTZ is bit 15, DAZ bit 6
  unsigned saved;
};

}  // namespace orvantesco
