#include "cli/OptionValue.h"

#include <fmt/format.h>

#include <cmath>

#include "cli/Text.h"
#include "params/PlainText.h"

namespace orvantesco::cli {
Failure unexpected(const ExpectedNumber& expected, std::string_view text) {
  return badCall(
      fmt::format("{}: '{}' given, expected {}", expected.option, oneLine(text), expected.words));
}

double numberFor(const ExpectedNumber& expected, std::string_view text) {
  const auto number = numberIn(text);
  const bool accepted = number && *number >= expected.least && *number <= expected.most;
  if (!accepted) throw unexpected(expected, text);
  return *number;
}

std::int64_t wholeFor(const ExpectedNumber& expected, std::string_view text) {
  const double number = numberFor(expected, text);
  if (number != std::floor(number)) throw unexpected(expected, text);
  return static_cast<std::int64_t>(number);
}

}  // namespace orvantesco::cli
