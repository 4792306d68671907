#include "cli/OutputFile.h"

#include <fmt/format.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <csignal>
#include <cstdio>

#include "cli/Failure.h"

namespace orvantesco::cli {
namespace {

/// What the signal handler removes; empty for nothing. Written while the signals are blocked.
std::array<char, PATH_MAX + 1> unfinished{};

constexpr std::array endingSignals{SIGINT, SIGTERM, SIGHUP};

sigset_t endingSignalSet() {
  sigset_t set;
  sigemptyset(&set);
  for (const int signal : endingSignals) sigaddset(&set, signal);
  return set;
}

/// Keeps the ending signals off for its lifetime.
class SignalsHeld {
 public:
  SignalsHeld() {
    const sigset_t held = endingSignalSet();
    sigprocmask(SIG_BLOCK, &held, &before);
  }
  SignalsHeld(const SignalsHeld&) = delete;
  SignalsHeld& operator=(const SignalsHeld&) = delete;
  ~SignalsHeld() { sigprocmask(SIG_SETMASK, &before, nullptr); }

 private:
  sigset_t before{};
};

void setUnfinished(const std::string& path) {
  const SignalsHeld held;
  std::snprintf(unfinished.data(), unfinished.size(), "%s", path.c_str());
}

/// The handler is taken back by the kernel before it runs, so the second signal ends the program.
void removeAndEnd(int signal) {
  if (unfinished[0] != '\0') ::unlink(unfinished.data());
  ::raise(signal);
}

Failure cannotWrite(const std::string& name, const std::string& reason) {
  return workFailed(fmt::format("{}: cannot be written: {}", name, reason));
}

}  // namespace

OutputFile::OutputFile(const std::string& path) : name(path) {
  const FileTarget target = fileTargetOf(path);
  if (!target.fault.empty()) throw cannotWrite(name, target.fault);
  {
    // No signal comes between the making of the file and the noting of its name.
    const SignalsHeld held;
    file.emplace(target.path);
    setUnfinished(file->temporaryName());
  }
  if (failed()) throwFault();
}

OutputFile::~OutputFile() {
  if (file->temporaryName().empty()) return;
  file.reset();
  setUnfinished("");
}

void OutputFile::throwFault() const {
  throw cannotWrite(name, failed() ? file->faultText() : "the encoder failed");
}

void OutputFile::commit() {
  if (!file->replaceTarget()) throwFault();
  setUnfinished("");
}

void removeOutputOnSignals() {
  struct sigaction action {};
  action.sa_handler = removeAndEnd;
  action.sa_mask = endingSignalSet();
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  for (const int signal : endingSignals) {
    struct sigaction before {};
    ::sigaction(signal, nullptr, &before);
    if (before.sa_handler != SIG_IGN) ::sigaction(signal, &action, nullptr);
  }
}

}  // namespace orvantesco::cli
