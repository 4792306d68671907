#pragma once

#include <cstdint>

#include "host/clap/ClapPresetDiscoveryApi.h"

namespace orvantesco {

/// Tells a receiver what a host's browser shows of the presets at a location: of every one that the
/// plug-in carries, or of one file. Its folder is a preset's feature and description. What cannot
/// be read is told as an error; returns whether all went well.
///
/// Looks at the disk; any control thread.
bool tellPresetMetadata(std::uint32_t locationKind, const char* location,
                        const ClapPresetMetadataReceiver& receiver);

}  // namespace orvantesco
