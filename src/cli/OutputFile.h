#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace orvantesco::cli {

/// A file that takes its name only when it is complete.
///
/// It is written under a temporary name in the folder of its final one and renamed by `commit`.
/// Destroyed before that, or ended by a signal, it removes what it wrote, so what bore the name
/// before is still there. One at a time in a process, since the signal handler knows one.
class OutputFile {
 public:
  /// Throws a `Failure` where the name is taken by something that is no regular file, or where
  /// its folder cannot be written.
  explicit OutputFile(const std::string& path);
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  ~OutputFile();

  const std::string& path() const noexcept { return name; }

  /// Reads or writes at the current place and moves it; fewer bytes than asked for mean a fault,
  /// whose error number is kept.
  std::int64_t read(void* target, std::int64_t bytes);
  std::int64_t write(const void* source, std::int64_t bytes);

  /// As lseek.
  std::int64_t seek(std::int64_t offset, int whence);
  std::int64_t size() const;

  /// Whether a write has failed so far.
  bool failed() const noexcept { return fault != 0; }

  /// Throws the `Failure` that tells why a write did not succeed.
  [[noreturn]] void throwFault() const;

  /// Brings everything to the disk and gives the file its name.
  void commit();

 private:
  void refuseSpecialFile();
  void openTemporary();
  void keepPermissions() const;

  std::string name;       ///< as the user wrote it
  std::string finalName;  ///< with a symbolic link at its end followed
  std::string temporaryName;
  int descriptor = -1;
  int fault = 0;
};

/// Ends the program by these signals only after the unfinished output is removed. Called once at
/// the start.
void removeOutputOnSignals();

}  // namespace orvantesco::cli
