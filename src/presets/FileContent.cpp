#include "presets/FileContent.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "presets/UnfinishedFile.h"

namespace orvantesco {
namespace {

std::string lastFault() { return std::strerror(errno); }

/// A file descriptor that is closed in any case.
class Descriptor {
 public:
  explicit Descriptor(int opened) noexcept : number(opened) {}
  ~Descriptor() {
    if (number >= 0) ::close(number);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int get() const noexcept { return number; }

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
  const FileTarget target = fileTargetOf(path);
  if (!target.fault.empty()) return target.fault;
  UnfinishedFile file(target.path);
  file.write(content.data(), static_cast<std::int64_t>(content.size()));
  file.replaceTarget();
  return file.faultText();
}

NewFileResult writeNewFile(const std::string& path, std::string_view content) {
  std::error_code ignored;
  if (std::filesystem::exists(std::filesystem::symlink_status(path, ignored))) return {};
  UnfinishedFile file(path);
  file.write(content.data(), static_cast<std::int64_t>(content.size()));
  if (file.becomeTarget()) return {true, {}};
  return {false, file.fault() == EEXIST ? std::string() : file.faultText()};
}

}  // namespace orvantesco
