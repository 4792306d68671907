#pragma once

#include <array>
#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "params/ParamIndex.h"

namespace orvantesco {

/// The parameters that the engine has moved because of others, and that the host has not been told
/// of yet. However often one moves in between, it is told once, as it then stands; so a set is
/// enough, and it never overflows.
///
/// Any number of threads note, one at a time tells. Nobody waits.
class FollowedSet {
 public:
  /// Whether the parameter was not in the set. Any thread.
  bool note(int paramIdx) noexcept {
    const auto place = static_cast<std::size_t>(paramIdx);
    const std::uint64_t bit = std::uint64_t{1} << (place % kBits);
    const std::uint64_t before = words[place / kBits].fetch_or(bit, std::memory_order_release);
    any.store(true, std::memory_order_release);
    return (before & bit) == 0;
  }

  bool isEmpty() const noexcept { return !any.load(std::memory_order_relaxed); }

  /// Takes out each parameter that `tell(paramIdx)` agrees to; the first that it does not, and all
  /// behind it, stay. The thread that tells.
  template <class Tell>
  void tellEach(Tell tell) noexcept {
    // Before the words: who notes one from here on raises the flag again.
    if (isEmpty() || !any.exchange(false, std::memory_order_acquire)) return;
    for (std::size_t w = 0; w < words.size(); ++w) {
      if (tellWord(w, tell)) continue;
      any.store(true, std::memory_order_release);
      return;
    }
  }

 private:
  static constexpr std::size_t kBits = 64;

  template <class Tell>
  bool tellWord(std::size_t w, Tell& tell) noexcept {
    if (words[w].load(std::memory_order_relaxed) == 0) return true;
    std::uint64_t waiting = words[w].exchange(0, std::memory_order_acquire);
    for (; waiting != 0; waiting &= waiting - 1) {
      if (tell(static_cast<int>(w * kBits) + std::countr_zero(waiting))) continue;
      words[w].fetch_or(waiting, std::memory_order_relaxed);
      return false;
    }
    return true;
  }

  std::array<std::atomic<std::uint64_t>, (kNumParams + kBits - 1) / kBits> words{};
  std::atomic<bool> any{false};
};

}  // namespace orvantesco
