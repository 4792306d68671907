#pragma once

#include <array>
#include <optional>
#include <vector>

#include "params/ParamBank.h"
#include "presets/Preset.h"

namespace orvantesco {

/// The values of a preset by the index of their parameter, as they are meant today. Not yet held
/// to the parameters' ranges; what is no number stands for the lowest value.
struct MigratedValues {
  std::vector<std::optional<float>> byIndex;  ///< `kNumParams` long; nothing means the default
  std::vector<int> lineByIndex;  ///< of the file from which the value comes, 0 for none
  /// Slots whose feedback a tapped delay on the route "MIX" of an old preset needs quietened: it
  /// is multiplied by `kTappedMixLoss` when all parameters stand, or its default is.
  std::array<bool, 4> quietenFeedback{};
};

inline constexpr double kTappedMixLoss = 0.7;
inline constexpr int kTappedMode = 3;  ///< of "Delay Mode"
inline constexpr int kMixRoute = 6;    ///< of "Delay Route"

/// Finds each parameter's value by its key, first come first served where two parameters share a
/// key, and brings values of older versions up to date. `keys` are those of the bank.
MigratedValues migrated(const Preset& preset, const ParamKeys& keys);

/// Whether a preset is of an older version than the current one, so that it is worth rewriting.
constexpr bool isOldPreset(const Preset& preset) noexcept {
  return preset.version >= 0 && preset.version < kPresetVersion;
}

}  // namespace orvantesco
