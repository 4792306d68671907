#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

#include "support/CutOff.h"

namespace orvantesco::cli {

/// What a run of the program left behind.
struct ProgramResult {
  int exitCode = -1;  ///< 128 + the signal where a signal ended it
  std::string out;
  std::string err;
};

/// A folder of its own for one test, gone at its end.
class TemporaryFolder {
 public:
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  std::string file(const std::string& name) const { return path + "/" + name; }
  const std::string& name() const { return path; }

  /// Names of everything in it, sorted, hidden files too.
  std::vector<std::string> entries() const;

 private:
  std::string path;
};

/// The built program, running in a folder with its streams in files beside it.
class ProgramRun {
 public:
  struct Limits {
    long fileBytes = -1;          ///< the largest file it may write, -1 for any
    std::optional<CutOff> cut{};  ///< a call to the kernel that ends it or fails
    bool ordinaryUser = false;    ///< with no more rights to files than any user
  };
  ProgramRun(const std::string& folder, const std::vector<std::string>& arguments,
             const Limits& limits);
  ProgramRun(const std::string& folder, const std::vector<std::string>& arguments)
      : ProgramRun(folder, arguments, Limits{}) {}
  ProgramRun(const ProgramRun&) = delete;
  ProgramRun& operator=(const ProgramRun&) = delete;
  ~ProgramRun();

  pid_t process() const { return child; }

  /// Waits for its end.
  ProgramResult finish();

 private:
  pid_t child = -1;
  int out = -1;
  int err = -1;
};

ProgramResult runProgramIn(const std::string& folder, const std::vector<std::string>& arguments);

}  // namespace orvantesco::cli
