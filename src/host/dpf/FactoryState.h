#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "presets/FactoryPresets.h"

namespace orvantesco {

/// A shipped preset as a session would hold it.
struct FactoryState {
  std::string_view folder;
  std::string_view name;
  std::string stateText;  ///< see `stateText` of the effect
};

/// Loads presets, each into an effect of its own, and keeps the states that come of it. Takes some
/// milliseconds for each. Throws `std::runtime_error` for one that cannot be read. Control threads.
std::vector<FactoryState> factoryStatesOf(std::span<const FactoryPreset> presets);

}  // namespace orvantesco
