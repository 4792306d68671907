#pragma once

#include <stdexcept>
#include <string>

namespace orvantesco::cli {

/// What the program tells its caller when it ends.
enum class ExitCode : int {
  done = 0,
  workFailed = 1,  ///< file missing, not audio, disk full, cannot write
  badCall = 2,     ///< unknown option or parameter, a value that is none
};

/// Ends a command: one line that says what failed, on what, and what was expected.
class Failure : public std::runtime_error {
 public:
  Failure(ExitCode exitCode, const std::string& line) : std::runtime_error(line), code(exitCode) {}
  ExitCode exitCode() const noexcept { return code; }

 private:
  ExitCode code;
};

inline Failure workFailed(const std::string& line) { return {ExitCode::workFailed, line}; }
inline Failure badCall(const std::string& line) { return {ExitCode::badCall, line}; }

}  // namespace orvantesco::cli
