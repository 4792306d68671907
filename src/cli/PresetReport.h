#pragma once

#include <string>

#include "presets/Preset.h"

namespace orvantesco::cli {

/// What a preset sets once it is loaded, as one JSON document: `version` (of the file), `page`,
/// `tapMask` (slot * 2 + side), `stepFxMask`, `stepModMask` (two rows of four) and `parameters`,
/// those that differ from their defaults. What the file does not say of taps and page is null.
std::string presetJson(const Preset& preset);

/// The same for reading; masks are hexadecimal.
std::string presetTable(const Preset& preset);

}  // namespace orvantesco::cli
