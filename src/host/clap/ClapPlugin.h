#pragma once

#include <memory>

#include "core/Orvantesco.h"
#include "host/binding/PluginBypass.h"
#include "host/clap/ClapBuffers.h"
#include "host/clap/ClapEditorPort.h"
#include "host/clap/ClapEvents.h"
#include "host/clap/ClapHost.h"
#include "host/clap/ClapHostPort.h"
#include "host/clap/ClapParameters.h"
#include "host/clap/ClapPorts.h"
#include "host/clap/ClapPresets.h"
#include "host/clap/ClapState.h"
#include "host/clap/ClapTail.h"
#include "host/clap/ClapThreads.h"

namespace orvantesco {

/// One instance as a CLAP host holds it: its life from creation over activation to destruction, and
/// its blocks of audio. What an extension does stands in a class of its own; ClapExtensions.cpp
/// leads the host's calls to it.
///
/// A call out of order does nothing and returns false. Threads are those of the standard.
class ClapPlugin {
 public:
  /// Throws where there is no memory.
  explicit ClapPlugin(const clap_host_t& clapHost);
  ClapPlugin(const ClapPlugin&) = delete;
  ClapPlugin& operator=(const ClapPlugin&) = delete;

  /// What the host is given. It lives as long as the instance.
  const clap_plugin_t* handle() const noexcept { return &table; }

  /// The instance behind what a host holds, null where it holds none of ours.
  static ClapPlugin* behind(const clap_plugin_t* plugin) noexcept;

  // Main thread.
  bool init();
  bool activate(double rateHz, std::uint32_t maxFrames);
  void deactivate() noexcept;
  void runDuties();
  bool selectPorts(clap_id layout) noexcept;
  bool loadState(const clap_istream_t& stream);
  bool loadPreset(std::uint32_t kind, const char* location, const char* key);

  // Audio thread.
  bool startProcessing() noexcept;
  void stopProcessing() noexcept;
  void reset() noexcept;
  clap_process_status process(const clap_process_t& process) noexcept;

  /// Takes and gives parameter values without audio: on the audio thread while active, else on the
  /// main thread.
  void flush(const clap_input_events_t* in, const clap_output_events_t* out) noexcept;

  bool isActive() const noexcept { return stage >= Stage::active; }

  /// All that exists once the instance is initialised.
  struct Parts {
    explicit Parts(ClapPlugin& owner);

    Orvantesco effect;
    ClapParameters parameters;
    ClapState state;
    ClapPresets presets;
    ClapTail tail;
    PluginBypass bypass;
  };
  /// Null before.
  Parts* parts() const noexcept { return initialised.get(); }

  const ClapHost& clapHost() const noexcept { return host; }
  const ClapThreads& roles() const noexcept { return threads; }
  const ClapPorts& audioPorts() const noexcept { return ports; }

 private:
  enum class Stage { created, initialised, active, processing };

  void prepare(double rateHz, int longest);
  void renderBetween(ClapEvents& events, const clap_process_t& block) noexcept;
  clap_process_status advice() noexcept;
  void take(const clap_event_header_t& event, int frame) noexcept;
  void takeValue(const clap_event_param_value_t& event) noexcept;
  void render(int first, int frames) noexcept;
  void askToComeAgain() const noexcept;
  void tell(const clap_output_events_t* list) noexcept;
  void tellOfLoad() noexcept;

  clap_plugin_t table;
  ClapHost host;
  ClapThreads threads{host};
  ClapHostPort port{host};
  ClapEditorPort editor{port, host};
  ClapPorts ports;
  ClapBuffers buffers;
  Shared<Stage> stage{Stage::created};
  std::unique_ptr<Parts> initialised;
};

}  // namespace orvantesco
