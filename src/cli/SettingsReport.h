#pragma once

#include <string>
#include <vector>

#include "params/ParamBank.h"

namespace orvantesco::cli {

/// Indices of the parameters that differ from their defaults in single precision. LFOs in tempo
/// mode then speak of notes.
std::vector<int> changedIndices(ParamBank& bank);

/// A value as a person reads it: the menu name for an effect type, else the display text.
std::string shownValue(const ParamBank& bank, int index);

/// A line with index, name and value for each parameter that differs from its default.
std::string changedParameters(ParamBank& bank);

}  // namespace orvantesco::cli
