#pragma once

#include <array>

#include "core/AudioVector.h"

namespace orvantesco {

/// The vectors that modulation sources point at. Written by the audio thread at the end of a
/// sub-block, read by the next one. An LFO or an envelope that is off leaves zeros, a gate or a
/// logic unit its last vector.
struct ModulatorOutputs {
  std::array<AudioVector, 4> lfo{};
  std::array<AudioVector, 4> gate{};
  std::array<AudioVector, 2> envelope{};
  std::array<AudioVector, 4> logic{};
  std::array<double, 4> mainMod{};  ///< the main modulator's four outputs, about -1..1
};

}  // namespace orvantesco
