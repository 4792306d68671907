#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "host/clap/ClapApi.h"

namespace orvantesco {

/// A CLAP host as small as one can be: it offers every extension that the plug-in asks for and
/// writes down what it is told. The thread that makes it is its main thread; a thread is an audio
/// thread for as long as an `AudioRole` lives on it.
class ClapTestHost {
 public:
  ClapTestHost();
  ClapTestHost(const ClapTestHost&) = delete;
  ClapTestHost& operator=(const ClapTestHost&) = delete;

  class AudioRole {
   public:
    AudioRole() noexcept;
    ~AudioRole();
    AudioRole(const AudioRole&) = delete;
    AudioRole& operator=(const AudioRole&) = delete;
  };

  const clap_host_t* handle() const noexcept { return &host; }

  /// A host without any extension.
  bool isBare = false;

  std::atomic<int> restarts{0};
  std::atomic<int> callbacks{0};
  std::atomic<int> processRequests{0};
  std::atomic<int> flushRequests{0};
  std::atomic<int> latencyChanges{0};
  std::atomic<int> dirtyMarks{0};
  std::atomic<int> tailChanges{0};
  std::atomic<int> presetsLoaded{0};
  std::atomic<unsigned> rescanned{0};  ///< all flags so far
  std::atomic<int> rescans{0};         ///< requests to read parameters again

  /// What was logged, and why presets were refused, each "SEVERITY: text". Any thread.
  std::vector<std::string> lines() const;
  void note(std::string line);

  bool isMainThread() const { return std::this_thread::get_id() == mainThread; }

 private:
  clap_host_t host{};
  std::thread::id mainThread = std::this_thread::get_id();
  mutable std::mutex mutex;
  std::vector<std::string> log;
};

}  // namespace orvantesco
