#pragma once

#include <string>

#include "presets/HostState.h"

namespace orvantesco::cli {

/// The fields of a state block as one JSON document. What the block's version does not have is
/// null, as is a parameter that is no number.
std::string stateJson(const HostState& state);

/// The same for reading, with the parameters that differ from their defaults.
std::string stateTable(const HostState& state);

}  // namespace orvantesco::cli
