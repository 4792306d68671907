#pragma once

#include <span>
#include <string>

#include "host/dpf/FactoryState.h"

namespace orvantesco {

// The shipped presets as an LV2 bundle beside the plug-in's: a manifest that hosts read when they
// look round, and a file for each preset, which they read when they offer presets. It holds the
// state alone: hosts read all files to list the presets, and the values of the ports that any of
// the presets moves would make that five times as long. Control threads.

/// The manifest: for each preset what it is called, its bank and where its file is.
std::string lv2PresetManifest(std::span<const FactoryState> presets);

/// A preset's own file, which holds the state.
std::string lv2PresetFile(const FactoryState& preset);

/// The name of that file, from letters, digits and hyphens.
std::string lv2PresetFileName(const FactoryState& preset);

/// By which sessions know the preset. It never changes.
std::string lv2PresetUri(const FactoryState& preset);

}  // namespace orvantesco
