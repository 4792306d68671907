#include "presets/FileContent.h"

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

std::string lastFault() { return std::strerror(errno); }

/// A file descriptor that is closed in any case.
class Descriptor {
 public:
  explicit Descriptor(int opened) noexcept : number(opened) {}
  ~Descriptor() { close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int get() const noexcept { return number; }
  bool close() noexcept {
    const bool closed = number < 0 || ::close(number) == 0;
    number = -1;
    return closed;
  }

 private:
  int number;
};

bool isRegular(int descriptor) {
  struct stat status {};
  return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

/// Bytes of the next piece, -1 for a fault.
ssize_t readPiece(int descriptor, char* target, std::size_t bytes) {
  for (;;) {
    const ssize_t got = ::read(descriptor, target, bytes);
    if (got >= 0 || errno != EINTR) return got;
  }
}

bool writeAll(int descriptor, std::string_view content) {
  while (!content.empty()) {
    const ssize_t written = ::write(descriptor, content.data(), content.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    content.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

/// Where the rename has to go.
fs::path followed(const std::string& path) {
  std::error_code missing;
  const fs::path target = fs::canonical(path, missing);
  return missing ? fs::path(path) : target;
}

fs::path temporaryFor(const fs::path& target) {
  static std::atomic<unsigned> count{0};
  constexpr std::size_t longestBase = 200;  // of the 255 bytes that a name may have
  const std::string base = target.filename().string().substr(0, longestBase);
  const std::string tail = std::to_string(::getpid()) + "-" + std::to_string(count++);
  return target.parent_path() / ("." + base + "." + tail + ".unfinished");
}

/// A complete file that bears no name of its own yet; without a new one it goes again.
class TemporaryFile {
 public:
  explicit TemporaryFile(const fs::path& name) : target(name) {}
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    if (!path.empty()) ::unlink(path.c_str());
  }

  /// The reason of a failure.
  std::string write(std::string_view content);

  /// Gives it the name of the target, in place of what bears it.
  bool replaceTarget() { return named(::rename(path.c_str(), target.c_str()) == 0); }

  /// The same where the name is free; otherwise false with EEXIST.
  bool becomeTarget();

 private:
  int open();
  bool named(bool succeeded) {
    if (succeeded) path.clear();
    return succeeded;
  }

  fs::path target;
  fs::path path;
};

/// A process that was ended leaves its file behind, and another one may get its number: such a name
/// is passed over.
int TemporaryFile::open() {
  constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
  constexpr int mostNames = 1000;
  for (int attempt = 0; attempt < mostNames; ++attempt) {
    const fs::path name = temporaryFor(target);
    const int opened = ::open(name.c_str(), flags, 0666);
    if (opened >= 0) path = name;
    if (opened >= 0 || errno != EEXIST) return opened;
  }
  return -1;
}

std::string TemporaryFile::write(std::string_view content) {
  Descriptor file(open());
  if (file.get() < 0) return lastFault();
  struct stat before {};
  // A file that only its owner may read stays so.
  if (::stat(target.c_str(), &before) == 0) (void)!::fchmod(file.get(), before.st_mode & 0777);
  if (!writeAll(file.get(), content)) return lastFault();
  if (::fsync(file.get()) != 0 && errno != EINVAL) return lastFault();
  return file.close() ? std::string() : lastFault();
}

/// Disks that know no such rename know links.
bool TemporaryFile::becomeTarget() {
  if (::renameat2(AT_FDCWD, path.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0) {
    return named(true);
  }
  const bool knowsNoSuchRename = errno == EINVAL || errno == ENOSYS;
  return knowsNoSuchRename && ::link(path.c_str(), target.c_str()) == 0;
}

}  // namespace

std::variant<std::string, FileError> readFile(const std::string& path, std::size_t limitBytes) {
  // Without blocking: a pipe that nobody writes to must not hold up the caller.
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (file.get() < 0) return FileError{lastFault()};
  if (!isRegular(file.get())) return FileError{"is no regular file"};
  std::string content;
  std::string piece(65536, '\0');
  for (;;) {
    const ssize_t got = readPiece(file.get(), piece.data(), piece.size());
    if (got < 0) return FileError{lastFault()};
    if (got == 0) return content;
    content.append(piece, 0, static_cast<std::size_t>(got));
    if (content.size() > limitBytes) {
      return FileError{"is longer than " + std::to_string(limitBytes) + " bytes", true};
    }
  }
}

std::string writeFile(const std::string& path, std::string_view content) {
  std::error_code ignored;
  const fs::path target = followed(path);
  const auto kind = fs::status(target, ignored).type();
  const bool isFree = kind == fs::file_type::not_found || kind == fs::file_type::regular;
  if (!isFree || (fs::is_symlink(target, ignored) && kind == fs::file_type::not_found)) {
    return "is there and no regular file";
  }
  if (kind == fs::file_type::regular && ::access(target.c_str(), W_OK) != 0) return lastFault();
  TemporaryFile temporary(target);
  std::string fault = temporary.write(content);
  if (fault.empty() && !temporary.replaceTarget()) fault = lastFault();
  return fault;
}

NewFileResult writeNewFile(const std::string& path, std::string_view content) {
  std::error_code ignored;
  if (fs::exists(fs::symlink_status(path, ignored))) return {};
  TemporaryFile temporary{fs::path(path)};
  const std::string fault = temporary.write(content);
  if (!fault.empty()) return {false, fault};
  if (temporary.becomeTarget()) return {true, {}};
  return {false, errno == EEXIST ? std::string() : lastFault()};
}

}  // namespace orvantesco
