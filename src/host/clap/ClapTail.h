#pragma once

#include <atomic>
#include <cstdint>
#include <utility>

#include "core/Orvantesco.h"
#include "fx/Shared.h"
#include "host/ChannelRecord.h"
#include "host/HostTimeInfo.h"
#include "host/clap/ClapApi.h"

namespace orvantesco {

/// Watches how long the input has been silent and what still sounds, and tells the host how long to
/// keep the effect awake.
class ClapTail {
 public:
  /// Below this a sample counts as silence: -180 dB, far under what a host can pass on, and well
  /// above the 1e-15 that the engine adds against denormals.
  static constexpr double silence = 1e-9;

  explicit ClapTail(const Orvantesco& owner) noexcept : effect(owner) {}

  /// Hz. No audio runs.
  void prepare(double rateHz) noexcept;

  /// Nothing sounds any more. Audio thread, or while no audio runs.
  void forget() noexcept { quietInput = quietOutput = 0; }

  /// A parameter has moved. Any thread.
  void settingsChanged() noexcept {
    moved = true;
    settings.fetch_add(1, std::memory_order_relaxed);
  }

  /// The tempo that the last block ended with, which the lengths of synced delays follow. Audio
  /// thread.
  void tempoIs(double beatsPerMinute) noexcept {
    if (std::exchange(lastTempo, beatsPerMinute) != beatsPerMinute) settingsChanged();
  }

  /// Whether the effect stands still, so that nothing sounds on but what the latency holds back.
  /// Audio thread.
  void bypassIs(bool on) noexcept {
    if (bypassed != on) settingsChanged();
    bypassed = on;
  }

  /// Frames, latency and all, until what sounds has faded, as the standard counts them: INT32_MAX
  /// for never. Any thread.
  std::uint32_t frames() noexcept;

  /// Whether the tail is another one than at the last such question. Audio thread.
  bool hasNews() noexcept;

  /// Looks at a part that has been rendered: its input before, its output after. Audio thread.
  void hear(const AudioBlock& block) noexcept;
  void look(const AudioBlock& block) noexcept {
    // Behind an input that sounds nobody asks for the output.
    if (quietInput == 0) {
      quietOutput = 0;
    } else {
      lookBehindSilence(block);
    }
  }

  /// What the host should do next. Audio thread.
  ///
  /// The tail is worked out where the input is silent and the settings stand still: automation
  /// that moves them in every block would pay for it in every block, and is no time to sleep.
  clap_process_status status() noexcept;

 private:
  void lookBehindSilence(const AudioBlock& block) noexcept;
  static void count(std::int64_t& quietFrames, bool isQuiet, int frames) noexcept;

  const Orvantesco& effect;
  double rate = 44100.0;
  Shared<bool> moved{false};  ///< settings changed since the last `status`
  std::atomic<std::uint32_t> settings{1};
  /// Frames, and above them the `settings` that they were counted for, in one word: who counts
  /// late for old settings is found out by the next question.
  Shared<std::uint64_t> counted{0};
  Shared<bool> bypassed{false};
  double lastTempo = HostTimeInfo{}.tempo;
  std::uint32_t lastNews = 0;
  std::int64_t quietInput = 0;
  std::int64_t quietOutput = 0;
};

}  // namespace orvantesco
