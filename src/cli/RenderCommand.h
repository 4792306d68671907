#pragma once

#include "cli/Failure.h"
#include "cli/RenderArguments.h"

namespace CLI {
class App;
}

namespace orvantesco::cli {

/// `orvantesco render`: plays files through the plug-in as fast as the machine can.
class RenderCommand {
 public:
  /// Declares the command; the object must outlive the parsing.
  explicit RenderCommand(CLI::App& program);

  bool wasCalled() const;
  ExitCode run() const;

 private:
  CLI::App* command;
  RenderArguments arguments;
};

}  // namespace orvantesco::cli
