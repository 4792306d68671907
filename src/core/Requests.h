#pragma once

#include <atomic>
#include <cstdint>

namespace orvantesco {

/// Requests that control threads post and the audio thread carries out at the start of its next
/// sub-block. A bit that is posted twice is carried out once. Any thread may post.
class Requests {
 public:
  void post(std::uint32_t bits) noexcept { word.fetch_or(bits, std::memory_order_release); }

  /// Takes all posted bits. Audio thread, or a bulk operation while the audio thread is out.
  std::uint32_t take() noexcept {
    if (word.load(std::memory_order_relaxed) == 0) return 0;
    return word.exchange(0, std::memory_order_acquire);
  }

 private:
  std::atomic<std::uint32_t> word{0};
};

}  // namespace orvantesco
