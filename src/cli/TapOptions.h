#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "delay/TapPatterns.h"

namespace orvantesco::cli {

/// The texts of the options that set the masks of the taps, as they were typed.
struct TapOptionTexts {
  std::vector<std::string> taps;     ///< "SLOT:LEFT:RIGHT" or "SLOT:PATTERN"
  std::vector<std::string> stepFx;   ///< "SLOT:MASK"
  std::vector<std::string> stepMod;  ///< "ROW:SLOT:MASK"
};

struct TapMaskSetting {
  int slot = 0;  ///< 0..3
  TapMasks masks;
};

struct StepFxSetting {
  int slot = 0;
  std::uint16_t mask = 0xFFFF;
};

struct StepModSetting {
  int row = 0;  ///< 0, 1
  int slot = 0;
  std::uint16_t mask = 0;
};

/// What the options say; later settings of a slot stand above earlier ones.
struct TapSettings {
  std::vector<TapMaskSetting> taps;
  std::vector<StepFxSetting> stepFx;
  std::vector<StepModSetting> stepMod;
};

/// Reads the options. Slots count from 1, masks are hexadecimal with the first tap in bit 0, a
/// pattern is named as in the menu, in any case. `seed` is what "RANDOMIZE" draws from. Throws a
/// `Failure` that says what would have been accepted.
TapSettings parseTapOptions(const TapOptionTexts& texts, std::uint32_t seed);

}  // namespace orvantesco::cli
