#pragma once

#include "cli/Failure.h"
#include "cli/SettingsFile.h"

namespace CLI {
class App;
}

namespace orvantesco::cli {

/// `orvantesco state`: writes and shows what a host saves.
class StateCommand {
 public:
  /// Declares the commands; the object must outlive the parsing.
  explicit StateCommand(CLI::App& program);

  bool wasCalled() const;
  ExitCode run() const;

 private:
  void addSave();
  void addShow();
  void save() const;
  void show() const;

  CLI::App* command;
  CLI::App* saveCommand = nullptr;
  CLI::App* showCommand = nullptr;
  SettingsFile target;
  std::string file;
  bool json = false;
};

}  // namespace orvantesco::cli
