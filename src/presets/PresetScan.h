#pragma once

#include <string>

#include "presets/PresetCatalogue.h"

namespace orvantesco {

/// A folder whose relative path has so many bytes or more is not opened.
inline constexpr std::size_t kLongestFolderPath = 260;

/// Entries beyond so many are not listed: a link that leads to a whole disk must not stop the
/// editor.
inline constexpr std::size_t kMostPresetEntries = 200'000;

/// Walks through the folders of the preset library.
///
/// Folders whose name begins with "." are passed over, and so are ".DS_Store", what is no regular
/// file, and the files that a save leaves when it is cut off. Any other file is listed, of any
/// extension. Links are followed, but each folder is listed once: where it is, or else under the
/// first link to it. So loops end, and the result does not depend on the order that the disk
/// gives. A folder that cannot be read is named in `unopened` and not listed. Control threads.
PresetCatalogue scanPresets(const std::string& presetRootPath);

}  // namespace orvantesco
