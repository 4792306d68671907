#pragma once

#include <atomic>

namespace orvantesco {

/// One control word that threads share: written by any control thread, read by the audio thread.
///
/// Loads and stores have relaxed order, so a word costs what a plain one costs; what must be
/// seen together with other words is handed over by a request or a pointer instead.
template <class T>
class Shared {
 public:
  constexpr Shared(T initial = T{}) noexcept : word(initial) {}  // NOLINT: reads like a plain word
  Shared(const Shared& other) noexcept : word(other.get()) {}
  Shared& operator=(const Shared& other) noexcept { return *this = other.get(); }
  Shared& operator=(T value) noexcept {
    word.store(value, std::memory_order_relaxed);
    return *this;
  }
  operator T() const noexcept { return get(); }  // NOLINT: reads like a plain word
  T get() const noexcept { return word.load(std::memory_order_relaxed); }

 private:
  static_assert(std::atomic<T>::is_always_lock_free);
  std::atomic<T> word;
};

}  // namespace orvantesco
