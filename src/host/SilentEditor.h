#pragma once

#include "host/EditorPort.h"

namespace orvantesco {

/// Stands in where there is no editor: it ignores everything.
inline constinit EditorPort silentEditor;

/// The editor, or one that ignores everything for null.
inline EditorPort& editorOrSilence(EditorPort* port) noexcept {
  return port != nullptr ? *port : silentEditor;
}

}  // namespace orvantesco
