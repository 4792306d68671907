#pragma once

#include <string>

#include "presets/Preset.h"

namespace orvantesco {

/// The text of a preset file of the current version, whatever `preset.version` says: the values
/// must have the meaning that they have today. A tap mask or page that is absent is written as all
/// taps on and as the delay page. Values have six significant digits, in every locale.
std::string presetText(const Preset& preset);

}  // namespace orvantesco
