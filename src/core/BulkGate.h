#pragma once

#include <atomic>
#include <mutex>
#include <thread>

namespace orvantesco {

/// Keeps the audio thread out of an effect while something works on all of it: the construction, a
/// state restore, a preset load. The audio thread never waits; it is silent meanwhile.
class BulkGate {
 public:
  BulkGate() = default;
  BulkGate(const BulkGate&) = delete;
  BulkGate& operator=(const BulkGate&) = delete;

  /// Taken by whoever begins a restore or a load, or saves, so that one follows the other. Before
  /// the `mutex` of the effect, never under it, and not held while a file is read or written. Not
  /// for the audio thread.
  std::recursive_mutex turn;

  // What runs. Any thread.
  bool constructing() const noexcept { return isConstructing.load(); }
  bool restoringState() const noexcept { return isRestoring.load(); }
  bool presetLoading() const noexcept { return isLoading.load(); }
  bool isShut() const noexcept { return constructing() || restoringState() || presetLoading(); }
  /// Whether it is a restore or a load, and runs on the calling thread.
  bool isMine() const noexcept;

  /// The construction is over.
  void open() noexcept { isConstructing = false; }

  /// Says for its lifetime that the audio thread is inside. Sequentially consistent, so that either
  /// a bulk operation sees it, or the audio thread sees the operation's flag.
  class AudioPresence {
   public:
    explicit AudioPresence(BulkGate& of) noexcept : gate(of) { gate.audioInside.store(true); }
    ~AudioPresence() { gate.audioInside.store(false); }
    AudioPresence(const AudioPresence&) = delete;
    AudioPresence& operator=(const AudioPresence&) = delete;

   private:
    BulkGate& gate;
  };

  enum class Work { restore, presetLoad };

  /// Shuts the gate for its lifetime: raises the flag of the work and waits until the audio thread
  /// has left the call that it may be in. One at a time, and never begun under the `mutex` of the
  /// effect: the audio thread may be waiting for that one.
  class Operation {
   public:
    Operation(BulkGate& shut, Work work);
    ~Operation();
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

   private:
    BulkGate& gate;
    std::atomic<bool>& flag;
  };

 private:
  std::atomic<bool> isConstructing{true};
  std::atomic<bool> isRestoring{false};
  std::atomic<bool> isLoading{false};
  std::atomic<bool> audioInside{false};   ///< the audio thread is in a block
  std::atomic<std::thread::id> worker{};  ///< thread of the restore or the load
};

}  // namespace orvantesco
