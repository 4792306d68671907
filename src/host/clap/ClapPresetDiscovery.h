#pragma once

#include "host/clap/ClapPresetDiscoveryApi.h"

namespace orvantesco {

/// Lets a host's browser find the presets that the plug-in carries and those that the user has
/// saved, without an instance. Constant; any thread.
///
/// The shipped presets that lie as files beside the user's are not offered again.
const ClapPresetDiscoveryFactory& clapPresetDiscovery() noexcept;

}  // namespace orvantesco
