#pragma once

#include <span>
#include <string>
#include <string_view>

namespace orvantesco {

/// A preset that is part of the program.
struct FactoryPreset {
  std::string_view folder;  ///< its folder in the tree of the shipped presets
  std::string_view name;    ///< without extension
  std::string_view text;    ///< of the file, byte by byte

  /// Path below the root of the preset library, with extension.
  std::string relativePath() const;
};

/// The presets that are shipped, sorted by folder and name: the files of Resources/presets, which
/// the build turns into constants. Any thread.
std::span<const FactoryPreset> factoryPresets() noexcept;

/// The one of a folder and a name, null where there is none.
const FactoryPreset* findFactoryPreset(std::string_view folder, std::string_view name) noexcept;

}  // namespace orvantesco
