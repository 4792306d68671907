#pragma once

#include <string>

#include "core/Orvantesco.h"

namespace orvantesco {

// The state block as the one text that the wrapper saves with a session. Control threads.

/// The key under which sessions hold it. It never changes.
inline constexpr const char* kDpfStateKey = "state";

/// Empty where there is no memory.
std::string stateText(Orvantesco& effect);

/// Restores what `stateText` gave. False, and nothing has changed, for a text that is none,
/// for a block that was cut off and for one of a version that cannot be read. Audio may run.
bool restoreStateText(Orvantesco& effect, const char* text);

}  // namespace orvantesco
