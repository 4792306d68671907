#pragma once

#include "cli/Failure.h"

namespace CLI {
class App;
}

namespace orvantesco::cli {

/// `orvantesco preset install` and `orvantesco preset list`: the preset library of the user.
class PresetLibraryCommand {
 public:
  /// Declares the commands below `preset`; the object must outlive the parsing.
  explicit PresetLibraryCommand(CLI::App& preset);

  bool wasCalled() const;
  ExitCode run() const;

 private:
  ExitCode install() const;
  ExitCode list() const;

  CLI::App* installCommand;
  CLI::App* listCommand;
  bool json = false;
};

}  // namespace orvantesco::cli
