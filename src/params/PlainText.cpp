#include "params/PlainText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <numeric>
#include <vector>

namespace orvantesco {
namespace {

bool isBlank(char c) noexcept { return c == ' ' || (c >= '\t' && c <= '\r'); }

char lower(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

std::string_view trimmed(std::string_view text) noexcept {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

std::string lowered(std::string_view text) {
  std::string result(text);
  std::ranges::transform(result, result.begin(), lower);
  return result;
}

std::string folded(std::string_view text) {
  std::string result = lowered(text);
  std::erase_if(result, isBlank);
  return result;
}

bool sameLetters(std::string_view a, std::string_view b) noexcept {
  return std::ranges::equal(a, b, {}, lower, lower);
}

/// The table of Wagner and Fischer (1974), one row at a time.
int editDistance(std::string_view from, std::string_view to) {
  std::vector<int> row(to.size() + 1);
  std::iota(row.begin(), row.end(), 0);
  for (const char wanted : from) {
    int diagonal = row[0]++;
    for (std::size_t j = 0; j < to.size(); ++j) {
      const int replaced = diagonal + (wanted == to[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
    }
  }
  return row.back();
}

std::optional<double> numberIn(std::string_view text) noexcept {
  if (text.find_first_not_of("0123456789.eE+-") != text.npos || text.starts_with("+-"))
    return std::nullopt;
  if (text.starts_with('+')) text.remove_prefix(1);
  // Read wider than a double, so that a tiny number becomes 0 and a huge one infinite.
  long double number = 0.0L;
  const char* const end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, number);
  if (read.ec != std::errc{} || read.ptr != end) return std::nullopt;
  return static_cast<double>(number);
}

std::string shortest(double number) {
  std::array<char, 32> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number);
  return std::string(digits.data(), end.ptr);
}

}  // namespace orvantesco
