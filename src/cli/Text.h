#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvantesco::cli {

/// The parts between separators; always at least one.
std::vector<std::string_view> split(std::string_view text, char separator);

/// Line breaks become blanks, so that a message stays one line.
std::string oneLine(std::string_view text);

}  // namespace orvantesco::cli
