#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace orvantesco {

/// Reads a text by tokens that white space delimits, and numbers as the classic locale writes them.
///
/// A number is the longest start of the next token that is one; what follows it is the next token.
/// Where there is none, nothing is given and nothing is consumed, so the token can be read as a
/// word: one bad place in a text costs no more than itself. Bytes are taken as they are, in any
/// encoding. The text must outlive the reader and the tokens.
class TokenReader {
 public:
  explicit TokenReader(std::string_view wholeText) noexcept : text(wholeText) {}

  /// The next token; nothing at the end of the text.
  std::optional<std::string_view> word() noexcept;

  /// A decimal integer. One beyond 32 bits is consumed and gives nothing.
  std::optional<int> integer() noexcept;

  /// A decimal number, rounded to single precision. One too small for a float is 0 with its sign,
  /// one too large, or without the digits of its exponent, is consumed and gives nothing. Words
  /// such as "inf" and "nan" are no numbers.
  std::optional<float> number() noexcept;

  /// Line (from 1) on which the next token begins.
  int line() noexcept;

 private:
  void skipBlanks() noexcept;
  std::string_view rest() const noexcept { return text.substr(position); }

  std::string_view text;
  std::size_t position = 0;
  int lineNumber = 1;
};

}  // namespace orvantesco
