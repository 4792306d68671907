#include "host/clap/ClapHost.h"

#include <algorithm>
#include <cstdio>

namespace orvantesco {
namespace {

template <class Extension>
void find(const clap_host_t* host, const char* id, const Extension*& extension) noexcept {
  extension = static_cast<const Extension*>(host->get_extension(host, id));
}

/// Null where there is no table or a hole in it: a host may offer a part of an extension.
template <class Table, class Operation>
Operation operationOf(const Table* table, Operation Table::*member) noexcept {
  return table != nullptr ? table->*member : nullptr;
}

}  // namespace

void ClapHost::findExtensions() noexcept {
  if (host->get_extension == nullptr) return;
  find(host, kClapLogId, logging);
  find(host, kClapTailId, tail);
  find(host, kClapPresetLoadId, presets);
  if (presets == nullptr) find(host, kClapPresetLoadDraftId, presets);
  find(host, CLAP_EXT_LATENCY, latency);
  find(host, CLAP_EXT_PARAMS, parameters);
  find(host, CLAP_EXT_STATE, state);
  find(host, CLAP_EXT_THREAD_CHECK, threads);
  const bool whole = operationOf(threads, &clap_host_thread_check_t::is_main_thread) != nullptr &&
                     operationOf(threads, &clap_host_thread_check_t::is_audio_thread) != nullptr;
  if (!whole) threads = nullptr;
}

const char* ClapHost::name() const noexcept { return host->name != nullptr ? host->name : ""; }

int ClapHost::version() const noexcept {
  int parts[3] = {};
  if (host->version != nullptr) {
    (void)std::sscanf(host->version, "%d.%d.%d", &parts[0], &parts[1], &parts[2]);
  }
  for (int& part : parts) part = std::clamp(part, 0, 255);
  return parts[0] << 16 | parts[1] << 8 | parts[2];
}

void ClapHost::requestRestart() const noexcept {
  if (host->request_restart != nullptr) host->request_restart(host);
}

void ClapHost::requestCallback() const noexcept {
  if (host->request_callback != nullptr) host->request_callback(host);
}

void ClapHost::requestProcess() const noexcept {
  if (host->request_process != nullptr) host->request_process(host);
}

void ClapHost::log(std::int32_t severity, const char* message) const noexcept {
  if (const auto write = operationOf(logging, &ClapHostLog::log)) write(host, severity, message);
}

void ClapHost::requestFlush() const noexcept {
  if (const auto flush = operationOf(parameters, &clap_host_params_t::request_flush)) flush(host);
}

void ClapHost::latencyChanged() const noexcept {
  if (const auto changed = operationOf(latency, &clap_host_latency_t::changed)) changed(host);
}

void ClapHost::rescanParameters(clap_param_rescan_flags flags) const noexcept {
  if (const auto rescan = operationOf(parameters, &clap_host_params_t::rescan)) rescan(host, flags);
}

void ClapHost::markStateDirty() const noexcept {
  if (const auto mark = operationOf(state, &clap_host_state_t::mark_dirty)) mark(host);
}

void ClapHost::presetLoaded(std::uint32_t kind, const char* location,
                            const char* key) const noexcept {
  const auto loaded = operationOf(presets, &ClapHostPresetLoad::loaded);
  if (loaded != nullptr) loaded(host, kind, location, key);
}

void ClapHost::presetRefused(const PresetFault& fault) const noexcept {
  const auto report = operationOf(presets, &ClapHostPresetLoad::on_error);
  if (report == nullptr) return;
  report(host, fault.kind, fault.location, fault.key, 0, fault.message);
}

void ClapHost::tailChanged() const noexcept {
  if (const auto changed = operationOf(tail, &ClapHostTail::changed)) changed(host);
}

}  // namespace orvantesco
