#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orvantesco {

/// Version of the preset files that this program writes. Older ones are migrated when applied.
inline constexpr int kPresetVersion = 14;

/// Version of a file whose own one cannot be read: none of its values can be given a meaning.
inline constexpr int kUnknownPresetVersion = -1;

/// One parameter of a preset. A parameter that a preset does not list has its default.
struct PresetValue {
  std::string key;     ///< the parameter's name without white space
  double value = 0.0;  ///< in the unit of the file's version; single precision where it was read
  int line = 0;        ///< of the file, 0 where it comes from none
};

/// What a preset file says, of any version, before migration. It knows no bank and no engine.
///
/// A tap mask that is absent leaves that of the engine, each on its own; without a page the one
/// that the preset before brought is shown again. Bit t of a mask stands for tap t.
struct Preset {
  int version = kPresetVersion;
  std::array<std::optional<std::uint16_t>, 8> tapMask{};      ///< slot * 2 + side (0 left, 1 right)
  std::array<std::uint16_t, 4> stepFxMask{};                  ///< one for each slot
  std::array<std::array<std::uint16_t, 4>, 2> stepModMask{};  ///< row, slot
  std::optional<int> lastPage;
  std::vector<PresetValue> values;  ///< in the order of the file
};

}  // namespace orvantesco
