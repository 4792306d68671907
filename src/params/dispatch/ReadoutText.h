#pragma once

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <string_view>

namespace orvantesco {

/// A short text on the stack, for read-outs that any thread composes without taking memory.
/// What does not fit is cut off. Numbers have a point, whatever locale the host has set.
class ReadoutText {
 public:
  ReadoutText() = default;
  ReadoutText(std::string_view text) noexcept { append(text); }  // NOLINT: reads like a text
  ReadoutText(const char* text) noexcept { append(text); }       // NOLINT

  std::string_view view() const noexcept { return {chars.data(), length}; }
  bool empty() const noexcept { return length == 0; }
  void clear() noexcept { length = 0; }

  ReadoutText& append(std::string_view text) noexcept {
    const std::size_t count = std::min(text.size(), chars.size() - length);
    std::copy_n(text.data(), count, chars.data() + length);
    length += count;
    return *this;
  }

  ReadoutText& append(int number) noexcept {
    return keep(std::to_chars(chars.data() + length, chars.data() + chars.size(), number));
  }

  /// A number with a fixed count of decimals, rounded as printf does.
  ReadoutText& appendFixed(double number, int decimals) noexcept {
    return keep(std::to_chars(chars.data() + length, chars.data() + chars.size(), number,
                              std::chars_format::fixed, decimals));
  }

 private:
  ReadoutText& keep(std::to_chars_result result) noexcept {
    if (result.ec == std::errc{}) length = static_cast<std::size_t>(result.ptr - chars.data());
    return *this;
  }

  std::array<char, 64> chars{};
  std::size_t length = 0;
};

/// How the value of a parameter is shown: what stands before it, its decimals and its unit.
struct ReadoutStyle {
  std::string_view caption{};  ///< empty: the parameter has no read-out
  int decimals = 2;
  std::string_view unit = " %";
};

}  // namespace orvantesco
