#include "cli/WorkerPool.h"

#include <fmt/format.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <map>

#include "cli/Message.h"

namespace orvantesco::cli {
namespace {

struct Worker {
  std::size_t task = 0;
  int output = -1;  ///< the end of the pipe that is read
};

/// While it lives, the signals of the end and of children wait to be fetched by `next`.
class FetchedSignals {
 public:
  FetchedSignals() {
    // Who inherits an ignored SIGCHLD would never hear of a worker's end.
    ::signal(SIGCHLD, SIG_DFL);
    sigemptyset(&fetched);
    sigaddset(&fetched, SIGCHLD);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
      struct sigaction action {};
      ::sigaction(signal, nullptr, &action);
      if (action.sa_handler != SIG_IGN) sigaddset(&fetched, signal);
    }
    sigprocmask(SIG_BLOCK, &fetched, &before);
  }
  FetchedSignals(const FetchedSignals&) = delete;
  FetchedSignals& operator=(const FetchedSignals&) = delete;
  ~FetchedSignals() { restore(); }

  int next() const {
    int signal = 0;
    sigwait(&fetched, &signal);
    return signal;
  }
  void restore() const { sigprocmask(SIG_SETMASK, &before, nullptr); }

 private:
  sigset_t fetched{};
  sigset_t before{};
};

void writeAll(int descriptor, const std::string& text) {
  std::size_t done = 0;
  while (done < text.size()) {
    const ssize_t written = ::write(descriptor, text.data() + done, text.size() - done);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    done += static_cast<std::size_t>(written);
  }
}

std::string readAll(int descriptor) {
  std::string text;
  std::array<char, 4096> piece{};
  for (;;) {
    const ssize_t got = ::read(descriptor, piece.data(), piece.size());
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return text;
    text.append(piece.data(), static_cast<std::size_t>(got));
  }
}

[[noreturn]] void runTask(const WorkerPool::Task& task, std::size_t number, int output) {
  auto code = ExitCode::done;
  try {
    writeAll(output, task(number));
  } catch (const Failure& failure) {
    printError(failure.what());
    code = failure.exitCode();
  } catch (const std::exception& fault) {
    printError(fault.what());
    code = ExitCode::workFailed;
  }
  ::_exit(static_cast<int>(code));
}

class Run {
 public:
  Run(std::size_t tasks, const WorkerPool::Task& work) : task(work), results(tasks) {}

  std::vector<WorkerResult> all(std::size_t most, const WorkerPool::Progress& progress) {
    std::size_t started = 0;
    std::size_t finished = 0;
    while (finished < results.size()) {
      while (started < results.size() && workers.size() < most) start(started++);
      const int signal = signals.next();
      if (signal != SIGCHLD) endAll(signal);
      while (reapOne()) progress(++finished);
    }
    return std::move(results);
  }

 private:
  void start(std::size_t number) {
    std::array<int, 2> pipe{};
    std::fflush(nullptr);
    const pid_t child = ::pipe(pipe.data()) == 0 ? ::fork() : -1;
    if (child < 0) {
      stopWorkers();
      throw workFailed(fmt::format("no worker process can be started: {}", std::strerror(errno)));
    }
    if (child == 0) {
      ::prctl(PR_SET_PDEATHSIG, SIGTERM);
      ::close(pipe[0]);
      signals.restore();
      runTask(task, number, pipe[1]);
    }
    ::close(pipe[1]);
    workers[child] = {number, pipe[0]};
  }

  /// Takes the result of one process that has ended; false where none has.
  bool reapOne() {
    int status = 0;
    const pid_t child = ::waitpid(-1, &status, WNOHANG);
    const auto found = workers.find(child);
    if (found == workers.end()) return false;
    WorkerResult& result = results[found->second.task];
    result.output = readAll(found->second.output);
    if (WIFEXITED(status)) result.exitCode = static_cast<ExitCode>(WEXITSTATUS(status));
    if (WIFSIGNALED(status)) result.signal = WTERMSIG(status);
    ::close(found->second.output);
    workers.erase(found);
    return true;
  }

  void stopWorkers() {
    for (const auto& [child, worker] : workers) ::kill(child, SIGTERM);
    for (const auto& [child, worker] : workers) ::waitpid(child, nullptr, 0);
    workers.clear();
  }

  [[noreturn]] void endAll(int signal) {
    stopWorkers();
    signals.restore();
    ::raise(signal);
    ::_exit(128 + signal);
  }

  FetchedSignals signals;
  const WorkerPool::Task& task;
  std::map<pid_t, Worker> workers;
  std::vector<WorkerResult> results;
};

}  // namespace

std::vector<WorkerResult> WorkerPool::run(std::size_t tasks, const Task& task,
                                          const Progress& progress) {
  return Run(tasks, task).all(static_cast<std::size_t>(std::max(most, 1)), progress);
}

}  // namespace orvantesco::cli
