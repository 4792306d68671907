#include <CLI/CLI.hpp>
#include <csignal>
#include <exception>

#include "cli/Failure.h"
#include "cli/Message.h"
#include "cli/OutputFile.h"
#include "cli/Program.h"

int main(int argc, char** argv) {
  using namespace orvantesco::cli;
  // A write that fails is told by its error number, and does not end the program.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  removeOutputOnSignals();
  try {
    return static_cast<int>(runProgram(argc, argv));
  } catch (const Failure& failure) {
    printError(failure.what());
    return static_cast<int>(failure.exitCode());
  } catch (const std::exception& fault) {
    printError(fault.what());
    return static_cast<int>(ExitCode::workFailed);
  }
}
