#pragma once

#include <array>
#include <cstdint>

#include "mod/ArpGate.h"
#include "mod/Envelope.h"
#include "mod/LogicUnit.h"
#include "mod/MultiLFO.h"
#include "mod/WaveLFO.h"

namespace orvantesco {

/// An LFO, an envelope and what the update has to remember of them from one sub-block to the next.
struct LfoUnit {
  WaveLFO block;
  int wave = -1;  ///< position in the menu that the block has taken
  bool running = false;
};

struct EnvelopeUnit {
  Envelope block;
  double previous = 0.0;  ///< value at the last update, for the pulse
  bool running = false;
};

struct GateUnit {
  ArpGate block;
  double previous = 0.0;  ///< first value of the last vector, within -1..1
};

/// The modulators themselves. They live as long as the effect, and the audio thread alone touches
/// them: it hands them their control words at each update.
struct ModulatorUnits {
  std::array<LfoUnit, 4> lfo;
  std::array<GateUnit, 4> gate;
  std::array<EnvelopeUnit, 2> envelope;
  std::array<LogicUnit, 4> logic;
  MultiLFO main;

  /// Gives each random source its own start.
  void seed(std::uint32_t start) noexcept;
  /// Puts all at their beginning: phases, steps, glides, levels and random draws.
  void restart(std::uint32_t seedStart) noexcept;
  /// Drops what the envelopes have heard.
  void clearSignals() noexcept;
  /// Takes all constants anew at another sample rate.
  void rateChanged() noexcept;
};

}  // namespace orvantesco
