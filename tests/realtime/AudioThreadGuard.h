#pragma once

namespace orvantesco {

/// Counts what the calling thread asks of the heap, of locks and of the scheduler while an object
/// of this class lives: in this program the allocator and the lock operations are replaced by ones
/// that report to it. Under a sanitizer, which replaces the same functions, nothing is counted.
class AudioThreadGuard {
 public:
  AudioThreadGuard();
  ~AudioThreadGuard();
  AudioThreadGuard(const AudioThreadGuard&) = delete;
  AudioThreadGuard& operator=(const AudioThreadGuard&) = delete;

  static bool works();  ///< false under a sanitizer
  int allocations() const;
  int frees() const;
  int locks() const;
};

}  // namespace orvantesco
