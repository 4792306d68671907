#include "presets/TokenReader.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
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

/// Whether an exponent without digits stands here. The number before it was cut off: what it would
/// have been is not known.
bool beginsExponent(std::string_view text) noexcept {
  return text.starts_with('e') || text.starts_with('E');
}

/// The exponent that stands behind a mantissa; one that no word holds is as good as endless.
std::int64_t exponentOf(std::string_view number) noexcept {
  const std::size_t mark = number.find_first_of("eE");
  if (mark == number.npos) return 0;
  const std::string_view digits = withoutPlus(number.substr(mark + 1));
  std::int64_t exponent = 0;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
  constexpr std::int64_t endless = std::numeric_limits<std::int64_t>::max() / 2;
  if (read.ec != std::errc{}) return digits.starts_with('-') ? -endless : endless;
  return std::clamp(exponent, -endless, endless);
}

/// Whether a number is below 1 in magnitude, told by its digits, so that it may be of any size.
bool isFraction(std::string_view number) noexcept {
  const std::string_view mantissa = number.substr(0, number.find_first_of("eE"));
  const std::size_t first = mantissa.find_first_of("123456789");
  if (first == mantissa.npos) return true;
  const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
  const auto place = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);
  return place + exponentOf(number) <= 0;
}

/// A number beyond the range of a float: so small that it is 0, or too large.
std::optional<float> outOfRange(std::string_view number) noexcept {
  if (!isFraction(number)) return std::nullopt;
  return number.starts_with('-') ? -0.0f : 0.0f;
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
  if (beginsExponent(rest())) return std::nullopt;
  if (read.ec == std::errc{}) return number;
  return outOfRange(digits.substr(0, static_cast<std::size_t>(read.ptr - digits.data())));
}

}  // namespace orvantesco
