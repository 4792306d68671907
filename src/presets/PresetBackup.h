#pragma once

#include <string>

namespace orvantesco {

/// Where the old file of a preset is kept: with its path relative to the presets' root below
/// "Preset Backups" beside the root, or, for a file that does not lie in the root, as
/// "NAME.txt.bak" beside it.
std::string presetBackupPath(const std::string& path, const std::string& root);

/// Copies a preset file to its place among the backups. What was kept before stays: a second copy
/// that differs gets a number. Returns the reason of a failure, an empty text for success.
std::string keepPresetBackup(const std::string& path, const std::string& root);

}  // namespace orvantesco
