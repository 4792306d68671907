#pragma once

#include <array>
#include <span>

#include "mod/WaveRecord.h"

namespace orvantesco {

inline constexpr int kWaveRecords = 33;
inline constexpr int kOfferedWaves = 27;

/// All waves, in constant data that every LFO of the process shares. Drawn by `draw-lfo-waves` when
/// the engine is built.
std::span<const WaveRecord, kWaveRecords> waveTable() noexcept;

/// The waves that are offered, in the order of their menu; the positions of `LfoWaveLabels`.
extern const std::array<const WaveRecord*, kOfferedWaves> waveList;

}  // namespace orvantesco
