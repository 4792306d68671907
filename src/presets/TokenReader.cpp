#include "presets/TokenReader.h"

#include <charconv>
#include <limits>

namespace orvantesco {
namespace {

constexpr std::string_view kBlanks = " \t\n\v\f\r";

bool isDigit(char c) noexcept { return c >= '0' && c <= '9'; }

/// The text behind a sign, which `from_chars` takes only where it is a minus.
std::string_view withoutPlus(std::string_view text) noexcept {
  return text.starts_with('+') ? text.substr(1) : text;
}

/// Whether a number begins here: a sign at most, then a digit, perhaps behind a point.
bool beginsNumber(std::string_view text, bool pointAllowed) noexcept {
  if (text.starts_with('+') || text.starts_with('-')) text.remove_prefix(1);
  if (pointAllowed && text.starts_with('.')) text.remove_prefix(1);
  return !text.empty() && isDigit(text.front());
}

/// A number that a float cannot say: huge, or so small that it is 0.
float heldToFloat(std::string_view digits) noexcept {
  long double wide = 0.0L;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), wide);
  const bool isTiny = read.ec == std::errc{} && wide > -1.0L && wide < 1.0L;
  if (isTiny) return 0.0f;
  const float largest = std::numeric_limits<float>::max();
  return digits.starts_with('-') ? -largest : largest;
}

}  // namespace

void TokenReader::skipBlanks() noexcept {
  for (; position < text.size() && kBlanks.find(text[position]) != kBlanks.npos; ++position) {
    if (text[position] == '\n') ++lineNumber;
  }
}

int TokenReader::line() noexcept {
  skipBlanks();
  return lineNumber;
}

std::optional<std::string_view> TokenReader::word() noexcept {
  skipBlanks();
  if (position == text.size()) return std::nullopt;
  const std::string_view token = rest().substr(0, rest().find_first_of(kBlanks));
  position += token.size();
  return token;
}

std::optional<int> TokenReader::integer() noexcept {
  skipBlanks();
  if (!beginsNumber(rest(), false)) return std::nullopt;
  const std::string_view digits = withoutPlus(rest());
  int number = 0;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  position = static_cast<std::size_t>(read.ptr - text.data());
  return read.ec == std::errc{} ? std::optional(number) : std::nullopt;
}

std::optional<float> TokenReader::number() noexcept {
  skipBlanks();
  if (!beginsNumber(rest(), true)) return std::nullopt;
  const std::string_view digits = withoutPlus(rest());
  float number = 0.0f;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  position = static_cast<std::size_t>(read.ptr - text.data());
  return read.ec == std::errc{} ? number : heldToFloat(digits);
}

}  // namespace orvantesco
