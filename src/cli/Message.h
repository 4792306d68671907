#pragma once

#include <string_view>

namespace orvantesco::cli {

/// One line on stderr that begins with the program's name.
void printError(std::string_view line);
void printWarning(std::string_view line);

/// Writes a result to stdout; throws a `Failure` where it cannot be written.
void printResult(std::string_view text);

}  // namespace orvantesco::cli
