#include "host/clap/ClapTestHost.h"

#include <string_view>

namespace orvantesco {
namespace {

thread_local bool audioThread = false;

ClapTestHost& self(const clap_host_t* host) { return *static_cast<ClapTestHost*>(host->host_data); }

constexpr clap_host_thread_check_t threadCheck{
    [](const clap_host_t* host) { return self(host).isMainThread(); },
    [](const clap_host_t*) { return audioThread; }};

constexpr ClapHostLog logging{
    [](const clap_host_t* host, std::int32_t severity, const char* message) {
      self(host).note(std::to_string(severity) + ": " + message);
    }};

constexpr clap_host_latency_t latency{[](const clap_host_t* host) { ++self(host).latencyChanges; }};

constexpr clap_host_params_t params{[](const clap_host_t* host, clap_param_rescan_flags flags) {
                                      self(host).rescanned |= flags;
                                      ++self(host).rescans;
                                    },
                                    [](const clap_host_t*, clap_id, clap_param_clear_flags) {},
                                    [](const clap_host_t* host) { ++self(host).flushRequests; }};

constexpr clap_host_state_t state{[](const clap_host_t* host) { ++self(host).dirtyMarks; }};

constexpr ClapHostTail tail{[](const clap_host_t* host) { ++self(host).tailChanges; }};

constexpr ClapHostPresetLoad presets{
    [](const clap_host_t* host, std::uint32_t, const char*, const char*, std::int32_t,
       const char* message) { self(host).note(std::string("preset: ") + message); },
    [](const clap_host_t* host, std::uint32_t, const char*, const char*) {
      ++self(host).presetsLoaded;
    }};

const void* extensionOf(const clap_host_t* host, const char* id) {
  const std::string_view name = id;
  if (self(host).isBare) return nullptr;
  if (name == CLAP_EXT_THREAD_CHECK) return &threadCheck;
  if (name == kClapLogId) return &logging;
  if (name == CLAP_EXT_LATENCY) return &latency;
  if (name == CLAP_EXT_PARAMS) return &params;
  if (name == CLAP_EXT_STATE) return &state;
  if (name == kClapTailId) return &tail;
  if (name == kClapPresetLoadId) return &presets;
  return nullptr;
}

}  // namespace

ClapTestHost::AudioRole::AudioRole() noexcept { audioThread = true; }
ClapTestHost::AudioRole::~AudioRole() { audioThread = false; }

ClapTestHost::ClapTestHost() {
  host.clap_version = CLAP_VERSION;
  host.host_data = this;
  host.name = "Test Host";
  host.vendor = "";
  host.url = "";
  host.version = "4.3.2";
  host.get_extension = extensionOf;
  host.request_restart = [](const clap_host_t* caller) { ++self(caller).restarts; };
  host.request_process = [](const clap_host_t* caller) { ++self(caller).processRequests; };
  host.request_callback = [](const clap_host_t* caller) { ++self(caller).callbacks; };
}

std::vector<std::string> ClapTestHost::lines() const {
  const std::lock_guard lock(mutex);
  return log;
}

void ClapTestHost::note(std::string line) {
  const std::lock_guard lock(mutex);
  log.push_back(std::move(line));
}

}  // namespace orvantesco
