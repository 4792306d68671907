#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "presets/Preset.h"

namespace orvantesco {

/// A longer file is no preset: all 1095 parameters take less than 60 000 bytes. It bounds the time
/// that a foreign file may cost.
inline constexpr std::size_t kLargestPresetBytes = 1'000'000;

/// Something in a preset file that does not read as it should. The rest of the file still counts.
struct PresetProblem {
  int line = 0;         ///< from 1; 0 where the file as a whole is meant
  std::string message;  ///< what was found and what was expected, one line without its end
};

/// A preset file as it was read.
struct PresetReading {
  Preset preset;
  std::vector<PresetProblem> problems;
};

/// Why there is no preset. Nothing has changed anywhere.
struct PresetError {
  enum class Kind {
    noFile,     ///< cannot be opened or read
    wrongFile,  ///< is no preset file
  };
  Kind kind = Kind::wrongFile;
  std::string message;  ///< one line without its end, without the name of the file
};

using PresetResult = std::variant<PresetReading, PresetError>;

/// Reads the text of a preset file of any version. Any thread; takes any bytes.
PresetResult parsePreset(std::string_view text);

/// Reads a file of at most `kLargestPresetBytes` and parses it. Control threads.
PresetResult readPreset(const std::string& path);

}  // namespace orvantesco
