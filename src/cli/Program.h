#pragma once

#include "cli/Failure.h"

namespace orvantesco::cli {

/// Reads the command line and runs the command that it names. Throws a `Failure` for a call that
/// is wrong and for work that fails.
ExitCode runProgram(int argc, const char* const* argv);

}  // namespace orvantesco::cli
