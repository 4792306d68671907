#include "cli/OutputFile.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

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

void setUnfinished(const std::string& path) {
  const sigset_t blocked = endingSignalSet();
  sigset_t before;
  sigprocmask(SIG_BLOCK, &blocked, &before);
  std::snprintf(unfinished.data(), unfinished.size(), "%s", path.c_str());
  sigprocmask(SIG_SETMASK, &before, nullptr);
}

/// The handler is taken back by the kernel before it runs, so the second signal ends the program.
void removeAndEnd(int signal) {
  if (unfinished[0] != '\0') ::unlink(unfinished.data());
  ::raise(signal);
}

Failure cannotWrite(const std::string& name, const std::string& reason) {
  return workFailed(fmt::format("{}: cannot be written: {}", name, reason));
}

/// Where a rename has to go: a symbolic link stays, and the file that it leads to is replaced.
std::string followLink(const std::string& path) {
  std::error_code ignored;
  const auto target = std::filesystem::canonical(path, ignored);
  return ignored ? path : target.string();
}

std::string temporaryFor(const std::string& finalName) {
  const std::filesystem::path path(finalName);
  const std::string base = path.filename().string().substr(0, NAME_MAX - 40);
  const std::string hidden = fmt::format(".{}.{}.unfinished", base, ::getpid());
  return (path.parent_path() / hidden).string();
}

}  // namespace

OutputFile::OutputFile(const std::string& path) : name(path) {
  refuseSpecialFile();
  finalName = followLink(path);
  temporaryName = temporaryFor(finalName);
  openTemporary();
}

void OutputFile::refuseSpecialFile() {
  struct stat entry {};
  if (::lstat(name.c_str(), &entry) != 0) return;
  struct stat target {};
  const bool leadsToFile = ::stat(name.c_str(), &target) == 0 && S_ISREG(target.st_mode);
  if (!leadsToFile) throw cannotWrite(name, "is there and no regular file, expected a file name");
  if (::access(name.c_str(), W_OK) != 0) throw cannotWrite(name, std::strerror(errno));
}

void OutputFile::openTemporary() {
  setUnfinished(temporaryName);
  constexpr int flags = O_RDWR | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC;
  descriptor = ::open(temporaryName.c_str(), flags, 0666);
  if (descriptor >= 0) {
    keepPermissions();
    return;
  }
  const int error = errno;
  setUnfinished("");
  throw cannotWrite(name, std::strerror(error));
}

/// A file that only its owner may read stays so when it is replaced.
void OutputFile::keepPermissions() const {
  struct stat before {};
  if (::stat(finalName.c_str(), &before) != 0) return;
  (void)!::fchmod(descriptor, before.st_mode & 0777);
}

OutputFile::~OutputFile() {
  if (descriptor < 0) return;
  ::close(descriptor);
  ::unlink(temporaryName.c_str());
  setUnfinished("");
}

std::int64_t OutputFile::read(void* target, std::int64_t bytes) {
  const ssize_t got = ::read(descriptor, target, static_cast<std::size_t>(bytes));
  return got < 0 ? 0 : got;
}

std::int64_t OutputFile::write(const void* source, std::int64_t bytes) {
  std::int64_t done = 0;
  while (done < bytes) {
    const char* rest = static_cast<const char*>(source) + done;
    const ssize_t written = ::write(descriptor, rest, static_cast<std::size_t>(bytes - done));
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) {
      if (fault == 0) fault = written < 0 ? errno : ENOSPC;
      break;
    }
    done += written;
  }
  return done;
}

std::int64_t OutputFile::seek(std::int64_t offset, int whence) {
  return ::lseek(descriptor, offset, whence);
}

std::int64_t OutputFile::size() const {
  struct stat status {};
  return ::fstat(descriptor, &status) == 0 ? status.st_size : -1;
}

void OutputFile::throwFault() const {
  throw cannotWrite(name, fault != 0 ? std::strerror(fault) : "the encoder failed");
}

void OutputFile::commit() {
  if (failed()) throwFault();
  const bool onDisk = ::fsync(descriptor) == 0 || errno == EINVAL;
  if (!onDisk || ::rename(temporaryName.c_str(), finalName.c_str()) != 0) {
    throw cannotWrite(name, std::strerror(errno));
  }
  ::close(descriptor);
  descriptor = -1;
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
