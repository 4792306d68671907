#pragma once

#include <atomic>

namespace orvantesco {

/// Silence followed by a square-law rise over 100 ms, which covers the refilling of cleared delay
/// lines. `request` may be called on any thread, the rest on the audio thread.
class Fade {
 public:
  void request() noexcept { requested.store(true, std::memory_order_relaxed); }

  /// Length of the rise at a sample rate in Hz.
  void setRate(double rate) noexcept { step = 32.0 / (rate * 100.0 * 0.001); }

  /// Gain of the next sub-block: 0 at the request, 1 outside a fade. The last step of a rise is
  /// taken as it falls and may lie slightly above 1.
  double nextGain() noexcept {
    if (requested.load(std::memory_order_relaxed)) {
      requested.store(false, std::memory_order_relaxed);
      running = true;
      position = 0.0;
      return 0.0;
    }
    if (!running) return 1.0;
    position += step;
    running = position < 1.0;
    return position * position;
  }

 private:
  std::atomic<bool> requested{false};
  bool running = false;
  double position = 0.0;
  double step = 0.0;
};

}  // namespace orvantesco
