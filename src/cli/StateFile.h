#pragma once

#include <string>

#include "presets/HostState.h"

namespace orvantesco::cli {

/// Reads a file that holds a host's state block. Throws a `Failure` where it is no block, of a
/// version that this program cannot read, or cut off.
HostState readStateFile(const std::string& path);

/// A version as people write it: "1.2.0".
std::string versionText(int stateVersion);

}  // namespace orvantesco::cli
