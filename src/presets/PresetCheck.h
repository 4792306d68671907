#pragma once

#include <vector>

#include "params/ParamBank.h"
#include "presets/PresetReader.h"

namespace orvantesco {

/// Everything that is wrong with a preset file, in the order of its lines: what does not read, keys
/// that no parameter has, values out of range (after migration).
std::vector<PresetProblem> presetProblems(const PresetReading& reading, const ParamBank& bank);

}  // namespace orvantesco
