#pragma once

#include <string>
#include <vector>

#include "cli/Failure.h"

namespace orvantesco::cli {

/// Prints what is wrong with each file, "FILE: good" where nothing is. The exit code is 1 where
/// any file is bad.
ExitCode checkPresets(const std::vector<std::string>& paths);

/// Rewrites files of older versions in the current one, keeping each old file. What fails is said
/// on stderr and leaves its file as it is; the others are done all the same.
ExitCode upgradePresets(const std::vector<std::string>& paths);

}  // namespace orvantesco::cli
