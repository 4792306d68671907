#pragma once

#include <optional>
#include <string>

#include "core/Orvantesco.h"

namespace orvantesco {

/// What the standalone program was told to begin with. In a workstation it stays empty, since
/// there the session says what is loaded. Control threads.
class StartSettings {
 public:
  /// Reads a preset, named by its file or as "FOLDER/NAME" of the library or of those that the
  /// program carries. Returns why there is none, one line without its end; empty for success.
  std::string takePreset(const std::string& preset);

  /// Reads a file with a state block. The same.
  std::string takeState(const std::string& file);

  /// The state, and the preset on top of it.
  void applyTo(Orvantesco& effect) const;

 private:
  std::optional<HostState> state;
  std::optional<Preset> preset;
  std::string presetPath;
};

/// Those of the process.
StartSettings& startSettings();

}  // namespace orvantesco
