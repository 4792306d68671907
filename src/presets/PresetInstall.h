#pragma once

#include <stop_token>
#include <string>
#include <vector>

#include "presets/PresetFolders.h"

namespace orvantesco {

/// What an installation did.
struct PresetInstallReport {
  int written = 0;                  ///< presets that were missing
  int kept = 0;                     ///< presets whose name was taken, whatever bears it
  std::vector<std::string> faults;  ///< what could not be made: its path and the reason
};

/// Makes the folders of the library and writes the shipped presets that are missing. What is there
/// stays as it is. Goes on after a failure. Control threads, any number of processes at once.
/// Ends between two presets when it is asked to stop.
PresetInstallReport installPresets(const PresetFolders& folders, const std::stop_token& stop = {});

}  // namespace orvantesco
