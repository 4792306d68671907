#include "cli/Text.h"

#include <algorithm>

#include "params/PlainText.h"

namespace orvantesco::cli {

std::vector<std::string_view> split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  for (std::size_t end = 0; (end = text.find(separator)) != std::string_view::npos;) {
    parts.push_back(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  parts.push_back(text);
  return parts;
}

std::string oneLine(std::string_view text) {
  std::string result(trimmed(text));
  const auto breaksLine = [](char c) { return c == '\n' || c == '\r'; };
  std::replace_if(result.begin(), result.end(), breaksLine, ' ');
  return result;
}

}  // namespace orvantesco::cli
