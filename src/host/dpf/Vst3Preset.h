#pragma once

#include <string>

#include "host/dpf/FactoryState.h"

namespace orvantesco {

// A preset as VST3 hosts keep it in a file of its own. Control threads.

/// The class of the plug-in as presets name it: 32 hexadecimal digits. It never changes.
std::string vst3ClassId();

/// What the plug-in itself writes for a session that holds this state, and no list of values: those
/// of the state are the better ones.
std::string vst3ComponentState(const std::string& stateText);

/// The content of a `.vstpreset` file: a header, the component's state, and the list of chunks at
/// the end. Numbers have their lowest byte first.
std::string vst3PresetFile(const std::string& stateText);

/// The name of a shipped preset's file, which is what hosts list. They look into no folder below
/// that of the plug-in.
std::string vst3PresetFileName(const FactoryState& preset);

}  // namespace orvantesco
