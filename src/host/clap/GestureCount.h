#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

#include "params/ParamIndex.h"

namespace orvantesco {

/// How many hands the host knows of on each knob. An end whose beginning the host was never told,
/// because its queue was full, is none of its business: so ends never fill the queue either, and
/// what has begun always ends. Any thread.
class GestureCount {
 public:
  /// A beginning is on its way to the host.
  void begin(int paramIdx) noexcept { countOf(paramIdx).fetch_add(1, std::memory_order_relaxed); }

  /// Whether the host knows of a beginning that this ends.
  bool end(int paramIdx) noexcept {
    std::atomic<std::uint32_t>& hands = countOf(paramIdx);
    std::uint32_t before = hands.load(std::memory_order_relaxed);
    while (before > 0) {
      if (hands.compare_exchange_weak(before, before - 1, std::memory_order_relaxed)) return true;
    }
    return false;
  }

 private:
  std::atomic<std::uint32_t>& countOf(int paramIdx) noexcept {
    return counts[static_cast<std::size_t>(paramIdx)];
  }

  std::array<std::atomic<std::uint32_t>, kNumParams> counts{};
};

}  // namespace orvantesco
