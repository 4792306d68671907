#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "presets/UnfinishedFile.h"

namespace orvantesco::cli {

/// An `UnfinishedFile` of the program, which takes its name by `commit` and is removed by a signal
/// that ends the program too. One at a time in a process, since the signal handler knows one.
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
  std::int64_t read(void* target, std::int64_t bytes) { return file->read(target, bytes); }
  std::int64_t write(const void* source, std::int64_t bytes) { return file->write(source, bytes); }

  /// As lseek.
  std::int64_t seek(std::int64_t offset, int whence) { return file->seek(offset, whence); }
  std::int64_t size() const { return file->size(); }

  /// Whether a write has failed so far.
  bool failed() const noexcept { return file->fault() != 0; }

  /// Throws the `Failure` that tells why a write did not succeed.
  [[noreturn]] void throwFault() const;

  /// Brings everything to the disk and gives the file its name.
  void commit();

 private:
  std::string name;  ///< as the user wrote it
  std::optional<UnfinishedFile> file;
};

/// Ends the program by these signals only after the unfinished output is removed. Called once at
/// the start.
void removeOutputOnSignals();

}  // namespace orvantesco::cli
