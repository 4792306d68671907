#pragma once

#include <cstdint>

#include "core/Orvantesco.h"
#include "fx/Shared.h"
#include "host/binding/PluginBypass.h"
#include "host/binding/PluginPresets.h"
#include "host/dpf/DpfAudio.h"
#include "host/dpf/DpfHostPort.h"
#include "presets/PresetPrompts.h"

namespace orvantesco {

/// One instance of the effect with what it needs around it in the wrapper.
class DpfEngine {
 public:
  /// Control thread. Builds what the audio thread will only read.
  DpfEngine();
  DpfEngine(const DpfEngine&) = delete;
  DpfEngine& operator=(const DpfEngine&) = delete;

  /// Takes the memory for a rate in Hz and for blocks of some frames, and silences what still
  /// sounds. The first call lets a thread look after the preset library. No audio runs. Throws
  /// nothing: without the memory it says so and is false, and blocks are silent.
  bool activate(double rateHz, int frames);

  /// Silences what still sounds from the next block on. Any thread.
  void requestReset() noexcept { resetIsWanted = true; }

  /// One block of any length: three inputs (the side chain may be null) and two outputs. Audio
  /// thread.
  void run(const float* const* inputs, float* const* outputs, int frames) noexcept;

  /// Frames that it sounds on behind its input: the latency where it is bypassed, the largest
  /// number where it never fades. Any thread.
  std::uint32_t tailFrames() const;

  DpfHostPort host;
  Orvantesco effect{host};
  Shared<bool> bypassed{false};  ///< what the host wants; any thread

 private:
  void takeMemory(double rateHz, int frames);

  PluginBypass bypass{effect};
  DpfAudio audio;
  PresetPrompts noPerson;
  PluginPresets presets{effect, userPresetLibrary(), noPerson};
  Shared<bool> resetIsWanted{false};
  bool hasMemory = false;  ///< for blocks
  bool libraryIsPrepared = false;
};

}  // namespace orvantesco
