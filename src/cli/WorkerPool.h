#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cli/Failure.h"

namespace orvantesco::cli {

/// How one task of a pool ended.
struct WorkerResult {
  ExitCode exitCode = ExitCode::workFailed;
  int signal = 0;      ///< that ended its process, 0 for none
  std::string output;  ///< what the task returned
};

/// Runs each task in a process of its own, at most so many at a time: the engine keeps values for
/// the whole process, and a file that brings one process down leaves the others alone.
///
/// A task returns a text of at most 60 kB, which comes back as its output; a `Failure` that it
/// throws is printed by its process and gives its exit code. Where the program is told to end, the
/// processes are told first, and it ends when they have cleaned up. Only for a program that has no
/// other thread.
class WorkerPool {
 public:
  using Task = std::function<std::string(std::size_t number)>;
  using Progress = std::function<void(std::size_t finished)>;

  explicit WorkerPool(int workers) : most(workers) {}

  std::vector<WorkerResult> run(std::size_t tasks, const Task& task, const Progress& progress);

 private:
  int most;
};

}  // namespace orvantesco::cli
