#pragma once

#include <string>
#include <vector>

#include "cli/Failure.h"
#include "cli/PresetLibraryCommand.h"
#include "cli/SettingsFile.h"

namespace CLI {
class App;
}

namespace orvantesco::cli {

/// `orvantesco preset`: installs and lists the library; writes, shows, checks and brings up to date
/// preset files.
class PresetCommand {
 public:
  /// Declares the commands; the object must outlive the parsing.
  explicit PresetCommand(CLI::App& program);

  bool wasCalled() const;
  ExitCode run() const;

 private:
  void addSave();
  void addShow();
  void addFiles(CLI::App& subcommand);
  ExitCode save() const;
  ExitCode show() const;

  CLI::App* command;
  PresetLibraryCommand library;
  CLI::App* saveCommand = nullptr;
  CLI::App* showCommand = nullptr;
  CLI::App* upgradeCommand = nullptr;
  CLI::App* checkCommand = nullptr;
  SettingsFile target;
  std::string file;
  bool json = false;
  std::vector<std::string> files;
};

}  // namespace orvantesco::cli
