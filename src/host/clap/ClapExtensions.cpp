#include "host/clap/ClapExtensions.h"

#include <array>
#include <string_view>

#include "host/clap/ClapFactory.h"

namespace orvantesco {
namespace {

/// Runs an operation on the instance behind a call; `otherwise` where there is none, or where
/// memory ends on the way.
template <class Result, class Operation>
Result onInstance(const clap_plugin_t* plugin, Result otherwise, Operation operation) noexcept try {
  ClapPlugin* const instance = ClapPlugin::behind(plugin);
  return instance != nullptr ? operation(*instance) : otherwise;
} catch (...) {
  return otherwise;
}

/// The same on what exists once the instance is initialised.
template <class Result, class Operation>
Result onParts(const clap_plugin_t* plugin, Result otherwise, Operation operation) noexcept {
  return onInstance(plugin, otherwise, [&](ClapPlugin& instance) {
    ClapPlugin::Parts* const parts = instance.parts();
    return parts != nullptr ? operation(*parts) : otherwise;
  });
}

void expectMain(const clap_plugin_t* plugin, const char* operation) noexcept {
  const ClapPlugin* const instance = ClapPlugin::behind(plugin);
  if (instance != nullptr) instance->roles().expectMain(operation);
}

// ---- the life of an instance ----

bool init(const clap_plugin_t* plugin) {
  return onInstance(plugin, false, [](ClapPlugin& instance) { return instance.init(); });
}

void destroy(const clap_plugin_t* plugin) {
  expectMain(plugin, "destroy");
  delete ClapPlugin::behind(plugin);
}

bool activate(const clap_plugin_t* plugin, double rateHz, std::uint32_t minFrames,
              std::uint32_t maxFrames) {
  if (minFrames > maxFrames) return false;
  return onInstance(plugin, false,
                    [&](ClapPlugin& instance) { return instance.activate(rateHz, maxFrames); });
}

void deactivate(const clap_plugin_t* plugin) {
  if (auto* const instance = ClapPlugin::behind(plugin)) instance->deactivate();
}

bool startProcessing(const clap_plugin_t* plugin) {
  return onInstance(plugin, false, [](ClapPlugin& instance) { return instance.startProcessing(); });
}

void stopProcessing(const clap_plugin_t* plugin) {
  if (auto* const instance = ClapPlugin::behind(plugin)) instance->stopProcessing();
}

void reset(const clap_plugin_t* plugin) {
  if (auto* const instance = ClapPlugin::behind(plugin)) instance->reset();
}

clap_process_status process(const clap_plugin_t* plugin, const clap_process_t* block) {
  auto* const instance = ClapPlugin::behind(plugin);
  if (instance == nullptr || block == nullptr) return CLAP_PROCESS_ERROR;
  return instance->process(*block);
}

const void* getExtension(const clap_plugin_t* plugin, const char* id) {
  (void)plugin;
  return clapExtension(id);
}

void onMainThread(const clap_plugin_t* plugin) {
  onInstance(plugin, false, [](ClapPlugin& instance) {
    instance.runDuties();
    return true;
  });
}

// ---- audio ports ----

std::uint32_t countPorts(const clap_plugin_t* plugin, bool isInput) {
  expectMain(plugin, "audio_ports.count");
  return onInstance(
      plugin, 0u, [&](const ClapPlugin& instance) { return instance.audioPorts().count(isInput); });
}

bool getPort(const clap_plugin_t* plugin, std::uint32_t place, bool isInput,
             clap_audio_port_info_t* info) {
  expectMain(plugin, "audio_ports.get");
  return onInstance(plugin, false, [&](const ClapPlugin& instance) {
    return info != nullptr && instance.audioPorts().describe(place, isInput, *info);
  });
}

constexpr clap_plugin_audio_ports_t audioPorts{countPorts, getPort};

std::uint32_t countLayouts(const clap_plugin_t* plugin) {
  expectMain(plugin, "audio_ports_config.count");
  return static_cast<std::uint32_t>(ClapPorts::layouts.size());
}

bool getLayout(const clap_plugin_t* plugin, std::uint32_t place, ClapAudioPortsConfig* config) {
  expectMain(plugin, "audio_ports_config.get");
  return config != nullptr && ClapPorts::describeLayout(place, *config);
}

bool selectLayout(const clap_plugin_t* plugin, clap_id id) {
  return onInstance(plugin, false, [&](ClapPlugin& instance) { return instance.selectPorts(id); });
}

constexpr ClapPluginAudioPortsConfig audioPortsConfig{countLayouts, getLayout, selectLayout};

// ---- parameters ----

std::uint32_t countParameters(const clap_plugin_t* plugin) {
  expectMain(plugin, "params.count");
  return onParts(plugin, 0u, [](const auto& parts) { return parts.parameters.count(); });
}

bool getParameterInfo(const clap_plugin_t* plugin, std::uint32_t place, clap_param_info_t* info) {
  expectMain(plugin, "params.get_info");
  return onParts(plugin, false, [&](const auto& parts) {
    return info != nullptr && parts.parameters.describe(place, *info);
  });
}

/// Passes on a number that may be none.
bool give(const std::optional<double>& number, double* to) noexcept {
  if (!number || to == nullptr) return false;
  *to = *number;
  return true;
}

bool getParameterValue(const clap_plugin_t* plugin, clap_id id, double* value) {
  expectMain(plugin, "params.get_value");
  return onParts(plugin, false,
                 [&](const auto& parts) { return give(parts.parameters.value(id), value); });
}

// NOLINTNEXTLINE(readability-function-size): the standard's own arguments
bool valueToText(const clap_plugin_t* plugin, clap_id id, double value, char* text,
                 std::uint32_t size) {
  expectMain(plugin, "params.value_to_text");
  return onParts(plugin, false, [&](const auto& parts) {
    return text != nullptr && parts.parameters.writeText(id, value, {text, size});
  });
}

bool textToValue(const clap_plugin_t* plugin, clap_id id, const char* text, double* value) {
  expectMain(plugin, "params.text_to_value");
  return onParts(plugin, false, [&](const auto& parts) {
    return give(parts.parameters.valueOfText(id, text), value);
  });
}

void flush(const clap_plugin_t* plugin, const clap_input_events_t* in,
           const clap_output_events_t* out) {
  if (auto* const instance = ClapPlugin::behind(plugin)) instance->flush(in, out);
}

constexpr clap_plugin_params_t params{countParameters, getParameterInfo, getParameterValue,
                                      valueToText,     textToValue,      flush};

// ---- state, presets ----

bool saveState(const clap_plugin_t* plugin, const clap_ostream_t* stream) {
  expectMain(plugin, "state.save");
  return onParts(plugin, false,
                 [&](const auto& parts) { return stream != nullptr && parts.state.save(*stream); });
}

bool loadState(const clap_plugin_t* plugin, const clap_istream_t* stream) {
  return onInstance(plugin, false, [&](ClapPlugin& instance) {
    return stream != nullptr && instance.loadState(*stream);
  });
}

constexpr clap_plugin_state_t state{saveState, loadState};

bool loadPreset(const clap_plugin_t* plugin, std::uint32_t kind, const char* location,
                const char* key) {
  return onInstance(plugin, false,
                    [&](ClapPlugin& instance) { return instance.loadPreset(kind, location, key); });
}

constexpr ClapPluginPresetLoad presetLoad{loadPreset};

// ---- latency, tail ----

std::uint32_t getLatency(const clap_plugin_t* plugin) {
  expectMain(plugin, "latency.get");
  return onParts(plugin, 0u, [](const auto& parts) {
    return static_cast<std::uint32_t>(parts.effect.latency.get());
  });
}

constexpr clap_plugin_latency_t latency{getLatency};

std::uint32_t getTail(const clap_plugin_t* plugin) {
  return onParts(plugin, 0u, [](auto& parts) { return parts.tail.frames(); });
}

constexpr ClapPluginTail tail{getTail};

struct Extension {
  std::string_view id;
  const void* functions;
};

constexpr std::array extensions{Extension{CLAP_EXT_AUDIO_PORTS, &audioPorts},
                                Extension{kClapAudioPortsConfigId, &audioPortsConfig},
                                Extension{CLAP_EXT_PARAMS, &params},
                                Extension{CLAP_EXT_STATE, &state},
                                Extension{kClapPresetLoadId, &presetLoad},
                                Extension{kClapPresetLoadDraftId, &presetLoad},
                                Extension{CLAP_EXT_LATENCY, &latency},
                                Extension{kClapTailId, &tail}};

}  // namespace

const void* clapExtension(const char* id) noexcept {
  if (id == nullptr) return nullptr;
  for (const Extension& extension : extensions) {
    if (extension.id == id) return extension.functions;
  }
  return nullptr;
}

clap_plugin_t clapTableOf(ClapPlugin& plugin) noexcept {
  clap_plugin_t table{};
  table.desc = &clapDescriptor();
  table.plugin_data = &plugin;
  table.init = init;
  table.destroy = destroy;
  table.activate = activate;
  table.deactivate = deactivate;
  table.start_processing = startProcessing;
  table.stop_processing = stopProcessing;
  table.reset = reset;
  table.process = process;
  table.get_extension = getExtension;
  table.on_main_thread = onMainThread;
  return table;
}

}  // namespace orvantesco
