#pragma once

#include <string>

#include "cli/Failure.h"
#include "cli/RenderArguments.h"
#include "cli/ScopeRun.h"

namespace CLI {
class App;
}

namespace orvantesco::cli {

/// `orvantesco scope`: shows what the modulators do over time, as numbers or as a picture. It knows
/// no `--block`: its blocks are the vectors of the engine.
class ScopeCommand {
 public:
  /// Declares the command; the object must outlive the parsing.
  explicit ScopeCommand(CLI::App& program);

  bool wasCalled() const;
  ExitCode run() const;

 private:
  ScopeCall toCall() const;

  CLI::App* command;
  RenderArguments playing;
  std::string input;
  std::string output;
  std::string seconds;
  std::string every = "32";
};

}  // namespace orvantesco::cli
