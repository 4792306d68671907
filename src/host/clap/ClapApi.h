#pragma once

#include <clap/entry.h>
#include <clap/ext/audio-ports.h>
#include <clap/ext/latency.h>
#include <clap/ext/params.h>
#include <clap/ext/state.h>
#include <clap/ext/thread-check.h>
#include <clap/plugin-factory.h>
#include <clap/plugin.h>

// The C interface of CLAP, and those extensions of the standard that the packaged headers lack.
// Names and layouts are the standard's.
extern "C" {

// ---- "clap.log": any thread ----

enum ClapLogSeverity : std::int32_t {
  kClapLogInfo = 1,
  kClapLogWarning = 2,
  kClapLogHostMisbehaving = 5,
};

struct ClapHostLog {
  void (*log)(const clap_host_t* host, std::int32_t severity, const char* message);
};

// ---- "clap.tail" ----

struct ClapPluginTail {
  /// Frames; INT32_MAX and above mean that it never ends. Main thread and audio thread.
  std::uint32_t (*get)(const clap_plugin_t* plugin);
};

struct ClapHostTail {
  void (*changed)(const clap_host_t* host);  ///< audio thread
};

// ---- "clap.audio-ports-config": main thread ----

struct ClapAudioPortsConfig {
  clap_id id;
  char name[CLAP_NAME_SIZE];
  std::uint32_t input_port_count;
  std::uint32_t output_port_count;
  bool has_main_input;
  std::uint32_t main_input_channel_count;
  const char* main_input_port_type;
  bool has_main_output;
  std::uint32_t main_output_channel_count;
  const char* main_output_port_type;
};

struct ClapPluginAudioPortsConfig {
  std::uint32_t (*count)(const clap_plugin_t* plugin);
  bool (*get)(const clap_plugin_t* plugin, std::uint32_t index, ClapAudioPortsConfig* config);
  bool (*select)(const clap_plugin_t* plugin, clap_id configId);  ///< while deactivated
};

// ---- "clap.preset-load": main thread ----

enum ClapPresetLocation : std::uint32_t {
  kClapPresetInFile = 0,    ///< the location is the path of a file
  kClapPresetInPlugin = 1,  ///< no location; the load key names a preset that the plug-in carries
};

struct ClapPluginPresetLoad {
  bool (*from_location)(const clap_plugin_t* plugin, std::uint32_t locationKind,
                        const char* location, const char* loadKey);
};

struct ClapHostPresetLoad {
  void (*on_error)(const clap_host_t* host, std::uint32_t locationKind, const char* location,
                   const char* loadKey, std::int32_t osError, const char* message);
  void (*loaded)(const clap_host_t* host, std::uint32_t locationKind, const char* location,
                 const char* loadKey);
};

}  // extern "C"

namespace orvantesco {

inline constexpr const char* kClapLogId = "clap.log";
inline constexpr const char* kClapTailId = "clap.tail";
inline constexpr const char* kClapAudioPortsConfigId = "clap.audio-ports-config";
inline constexpr const char* kClapPresetLoadId = "clap.preset-load/2";
inline constexpr const char* kClapPresetLoadDraftId = "clap.preset-load.draft/2";

/// A flag of `clap_param_info`: the steps of a stepped parameter are names rather than numbers.
inline constexpr std::uint32_t kClapParamIsEnum = 1u << 16;

}  // namespace orvantesco
