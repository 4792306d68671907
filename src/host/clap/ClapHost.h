#pragma once

#include "host/clap/ClapApi.h"

namespace orvantesco {

/// The host's side of the interface, safe to call whatever the host offers: what it lacks does
/// nothing. Threads are those of the standard, said with each operation.
class ClapHost {
 public:
  explicit ClapHost(const clap_host_t* clapHost) noexcept : host(clapHost) {}

  /// Asks the host for its extensions. Once, as the instance is initialised. Main thread.
  void findExtensions() noexcept;

  const char* name() const noexcept;
  /// Major, minor and patch of the host in bytes 2, 1 and 0.
  int version() const noexcept;

  // Any thread.
  void requestRestart() const noexcept;
  void requestCallback() const noexcept;
  /// Wakes the plug-in where it sleeps.
  void requestProcess() const noexcept;
  void log(std::int32_t severity, const char* message) const noexcept;
  /// Whether the host can tell its threads apart, and which one this is.
  bool knowsThreads() const noexcept { return threads != nullptr; }
  bool isMainThread() const noexcept { return threads->is_main_thread(host); }
  bool isAudioThread() const noexcept { return threads->is_audio_thread(host); }

  /// Any thread but an audio thread.
  void requestFlush() const noexcept;

  // Main thread.
  void latencyChanged() const noexcept;
  void rescanParameters(clap_param_rescan_flags flags) const noexcept;
  void markStateDirty() const noexcept;
  void presetLoaded(std::uint32_t kind, const char* location, const char* key) const noexcept;
  struct PresetFault {
    std::uint32_t kind = kClapPresetInFile;
    const char* location = nullptr;
    const char* key = nullptr;
    const char* message = "";
  };
  void presetRefused(const PresetFault& fault) const noexcept;

  /// Audio thread.
  void tailChanged() const noexcept;

 private:
  const clap_host_t* host;
  const ClapHostLog* logging = nullptr;
  const ClapHostTail* tail = nullptr;
  const ClapHostPresetLoad* presets = nullptr;
  const clap_host_latency_t* latency = nullptr;
  const clap_host_params_t* parameters = nullptr;
  const clap_host_state_t* state = nullptr;
  const clap_host_thread_check_t* threads = nullptr;
};

}  // namespace orvantesco
