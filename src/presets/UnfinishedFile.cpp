#include "presets/UnfinishedFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

namespace orvantesco {
namespace {

namespace fs = std::filesystem;

std::string temporaryFor(const fs::path& target) {
  static std::atomic<unsigned> count{0};
  constexpr std::size_t longestBase = 200;  // of the 255 bytes that a name may have
  const std::string base = target.filename().string().substr(0, longestBase);
  const std::string tail = std::to_string(::getpid()) + "-" + std::to_string(count++);
  return (target.parent_path() / ("." + base + "." + tail + ".unfinished")).string();
}

bool isFree(const fs::path& target, fs::file_type kind) {
  std::error_code ignored;
  if (kind == fs::file_type::not_found) return !fs::is_symlink(target, ignored);
  return kind == fs::file_type::regular;
}

}  // namespace

FileTarget fileTargetOf(const std::string& path) {
  std::error_code missing;
  const fs::path followed = fs::canonical(path, missing);
  const fs::path target = missing ? fs::path(path) : followed;
  const auto kind = fs::status(target, missing).type();
  if (!isFree(target, kind)) {
    return {target.string(), "is there and no regular file, expected a file name"};
  }
  const bool isShut = kind == fs::file_type::regular && ::access(target.c_str(), W_OK) != 0;
  const std::string fault = isShut ? std::strerror(errno) : "";
  return {target.string(), fault};
}

UnfinishedFile::UnfinishedFile(const std::string& of) : target(of) { open(); }

/// A process that was ended leaves its file behind, and another one may get its number: such a name
/// is passed over.
void UnfinishedFile::open() {
  constexpr int flags = O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC;
  constexpr int mostNames = 1000;
  for (int attempt = 0; descriptor < 0 && attempt < mostNames; ++attempt) {
    const std::string free = temporaryFor(target);
    descriptor = ::open(free.c_str(), flags, 0666);
    if (descriptor >= 0) {
      name = free;
      keepPermissions();
    } else if (errno != EEXIST) {
      noted(false);
      return;
    }
  }
  if (descriptor < 0) firstFault = EBUSY;
}

void UnfinishedFile::keepPermissions() const {
  struct stat before {};
  if (::stat(target.c_str(), &before) != 0) return;
  (void)!::fchmod(descriptor, before.st_mode & 0777);
}

UnfinishedFile::~UnfinishedFile() {
  close();
  if (!name.empty()) ::unlink(name.c_str());
}

std::int64_t UnfinishedFile::read(void* to, std::int64_t bytes) {
  const ssize_t got = ::read(descriptor, to, static_cast<std::size_t>(bytes));
  return got < 0 ? 0 : got;
}

std::int64_t UnfinishedFile::write(const void* source, std::int64_t bytes) {
  std::int64_t done = 0;
  while (done < bytes) {
    const char* rest = static_cast<const char*>(source) + done;
    const ssize_t written = ::write(descriptor, rest, static_cast<std::size_t>(bytes - done));
    if (written < 0 && errno == EINTR) continue;
    if (written == 0) errno = ENOSPC;
    if (!noted(written > 0)) break;
    done += written;
  }
  return done;
}

std::int64_t UnfinishedFile::seek(std::int64_t offset, int whence) {
  return ::lseek(descriptor, offset, whence);
}

std::int64_t UnfinishedFile::size() const {
  struct stat status {};
  return ::fstat(descriptor, &status) == 0 ? status.st_size : -1;
}

bool UnfinishedFile::replaceTarget() {
  return finish() && named(::rename(name.c_str(), target.c_str()) == 0);
}

/// Disks that know no such rename know links.
bool UnfinishedFile::becomeTarget() {
  if (!finish()) return false;
  if (::renameat2(AT_FDCWD, name.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0) {
    return named(true);
  }
  const bool knowsSuchRename = errno != EINVAL && errno != ENOSYS;
  if (knowsSuchRename) return named(false);
  return noted(::link(name.c_str(), target.c_str()) == 0);
}

std::string UnfinishedFile::faultText() const {
  return firstFault == 0 ? "" : std::strerror(firstFault);
}

bool UnfinishedFile::finish() {
  if (firstFault != 0) return false;
  // Some disks know no such call.
  return noted(::fsync(descriptor) == 0 || errno == EINVAL) && close();
}

bool UnfinishedFile::close() {
  const bool isClosed = descriptor < 0 || ::close(descriptor) == 0;
  descriptor = -1;
  return noted(isClosed);
}

/// Keeps the error number of the first failure.
bool UnfinishedFile::noted(bool succeeded) {
  if (!succeeded && firstFault == 0) firstFault = errno;
  return succeeded;
}

bool UnfinishedFile::named(bool succeeded) {
  if (succeeded) name.clear();
  return noted(succeeded);
}

}  // namespace orvantesco
