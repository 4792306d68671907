#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>

namespace orvantesco {

/// Why a file could not be read or written: a line without its end that does not name the file.
struct FileError {
  std::string message;
  bool isTooLong = false;  ///< it could be read, but is longer than whoever asks wants to know
};

/// The whole content of a regular file of at most `limitBytes`. Control threads.
std::variant<std::string, FileError> readFile(const std::string& path, std::size_t limitBytes);

/// Writes a file under a temporary name in its own folder and renames it when it is complete, so
/// that a name never holds half a file: a full disk or a crash leaves what was there. A symbolic
/// link stays, and the file that it leads to is replaced; what is there and is no regular file is
/// refused. Returns the reason of a failure, an empty text for success. Control threads.
std::string writeFile(const std::string& path, std::string_view content);

/// What became of a file that was to be added.
struct NewFileResult {
  bool isWritten = false;
  std::string fault;  ///< empty too where the name was taken already
};

/// The same for a name that nothing bears yet: what is there, whatever it is, stays as it is, even
/// where another process takes the name at the same moment. Control threads.
NewFileResult writeNewFile(const std::string& path, std::string_view content);

}  // namespace orvantesco
