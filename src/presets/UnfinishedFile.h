#pragma once

#include <cstdint>
#include <string>

namespace orvantesco {

/// Where a file that is to bear a path has to be renamed to.
struct FileTarget {
  std::string path;   ///< with a symbolic link at the end followed, which stays
  std::string fault;  ///< why nothing can be written there; empty where something can
};

/// What is there and is no regular file is refused.
FileTarget fileTargetOf(const std::string& path);

/// A file that is written under a temporary name in the folder of its target and takes the
/// target's name only when it is complete, so that a name never holds half a file. Destroyed
/// before that, it removes what it wrote. Control threads; not shared between them.
class UnfinishedFile {
 public:
  /// Opens it. A file that only its owner may read stays so when it is replaced.
  explicit UnfinishedFile(const std::string& target);
  UnfinishedFile(const UnfinishedFile&) = delete;
  UnfinishedFile& operator=(const UnfinishedFile&) = delete;
  ~UnfinishedFile();

  /// Reads or writes at the current place and moves it. Fewer bytes than asked for mean the end of
  /// the file or a fault; that of a write is kept.
  std::int64_t read(void* target, std::int64_t bytes);
  std::int64_t write(const void* source, std::int64_t bytes);

  /// As lseek.
  std::int64_t seek(std::int64_t offset, int whence);
  std::int64_t size() const;

  /// Brings everything to the disk and gives the file its name, in place of what bears it. False,
  /// and what was there stays, where this or anything before it failed.
  bool replaceTarget();

  /// The same for a name that nothing bears, even where another process takes it at the same
  /// moment: then the fault is EEXIST.
  bool becomeTarget();

  /// Error number of what failed first, opening included; 0 for nothing.
  int fault() const noexcept { return firstFault; }
  std::string faultText() const;

  /// Empty where there is none: not opened, or complete.
  const std::string& temporaryName() const noexcept { return name; }

 private:
  void open();
  void keepPermissions() const;
  bool finish();
  bool close();
  bool noted(bool succeeded);
  bool named(bool succeeded);

  std::string target;
  std::string name;
  int descriptor = -1;
  int firstFault = 0;
};

}  // namespace orvantesco
