#pragma once

#include <string>
#include <vector>

#include "cli/GestureEditor.h"
#include "cli/ParameterSetting.h"
#include "cli/RenderCall.h"
#include "core/Orvantesco.h"
#include "host/OfflineHost.h"
#include "presets/StateChunk.h"

namespace orvantesco::cli {

/// The effect with its host, as a render drives it: settings, then blocks, in one thread.
class RenderEngine {
 public:
  /// What the engine has to know of the input before it is built.
  struct Input {
    double sampleRateHz = 44100.0;
    int channels = 2;
    bool sideChain = false;
  };
  RenderEngine(const Input& input, const RenderSettings& settings);

  const ParamBank& bank() const noexcept { return *effect.bank; }

  /// Sets a parameter as a gesture of the user in the editor does, or as a host's automation does.
  void setAsUser(const ParameterSetting& setting);
  void automate(const ParameterSetting& setting);

  /// Brings what a call asks for: the state, the preset on top of it, every "NAME=VALUE" in order,
  /// each as a gesture, and the masks of the taps. Throws the `Failure` of a file or value that is
  /// not taken.
  void apply(const RenderSettings& settings);

  /// What a user should read about the preset that was applied, each as one line.
  const std::vector<std::string>& presetWarnings() const noexcept { return presetNotes; }

  /// Everything, as a host would save it, and as a preset file.
  StateChunk stateBlock();
  Preset preset() const { return effect.settings().currentPreset(); }

  /// Effects that were chosen but that this build cannot make, as "NAME at PARAMETER".
  std::vector<std::string> missingEffects() const;

  /// Comes to rest as a plug-in does that its host activates, so that both sound the same.
  void startAnew() { effect.startAnew(); }

  /// The transport stands at the start, or runs from where it stands.
  void stopAtStart();
  void startTransport();

  /// Renders one block and moves the transport on.
  void render(const AudioBlock& block);

  /// Samples; known after the first block.
  int latency() const noexcept { return host.latencySamples(); }

  /// What the modulators gave in the last vector of 32 samples.
  const ModulatorOutputs& modulators() const { return effect.modulatorOutputs(); }

  double longestDelaySeconds() const { return effect.longestDelayInUse(); }

 private:
  void setTaps(const TapSettings& taps);
  void loadPreset(const std::string& preset);

  const TransportSettings transport;
  OfflineHost host;
  GestureEditor editor;
  Orvantesco effect;
  std::vector<std::string> presetNotes;
};

}  // namespace orvantesco::cli
