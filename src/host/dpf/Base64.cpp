#include "host/dpf/Base64.h"

#include <algorithm>
#include <array>

namespace orvantesco {
namespace {

constexpr std::string_view alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr char padding = '=';
constexpr std::size_t groupBytes = 3;
constexpr std::size_t groupCharacters = 4;
constexpr std::uint8_t foreign = 255;

constexpr std::array<std::uint8_t, 256> sixBitsOfCharacter() {
  std::array<std::uint8_t, 256> table{};
  table.fill(foreign);
  for (std::size_t i = 0; i < alphabet.size(); ++i) {
    table[static_cast<std::uint8_t>(alphabet[i])] = static_cast<std::uint8_t>(i);
  }
  return table;
}
constexpr auto sixBits = sixBitsOfCharacter();

/// Three bytes in one word, the first one highest; what is missing is 0.
std::uint32_t wordOf(std::span<const std::uint8_t> bytes) {
  std::uint32_t word = 0;
  for (std::size_t i = 0; i < groupBytes; ++i) {
    word = word << 8 | (i < bytes.size() ? bytes[i] : 0U);
  }
  return word;
}

std::size_t paddingAtEnd(std::string_view text) {
  if (!text.ends_with(padding)) return 0;
  return text.ends_with("==") ? 2 : 1;
}

}  // namespace

std::string toBase64(std::span<const std::uint8_t> bytes) {
  std::string text;
  text.reserve((bytes.size() + groupBytes - 1) / groupBytes * groupCharacters);
  for (std::size_t first = 0; first < bytes.size(); first += groupBytes) {
    const auto group = bytes.subspan(first, std::min(groupBytes, bytes.size() - first));
    const std::uint32_t word = wordOf(group);
    for (std::size_t i = 0; i < groupCharacters; ++i) {
      text += i <= group.size() ? alphabet[word >> (18 - 6 * i) & 63U] : padding;
    }
  }
  return text;
}

std::optional<std::vector<std::uint8_t>> fromBase64(std::string_view text) {
  if (text.size() % groupCharacters != 0) return std::nullopt;
  const std::size_t digits = text.size() - paddingAtEnd(text);
  std::vector<std::uint8_t> bytes;
  bytes.reserve(digits * groupBytes / groupCharacters);
  std::uint32_t word = 0;
  for (std::size_t i = 0; i < digits; ++i) {
    const std::uint8_t six = sixBits[static_cast<std::uint8_t>(text[i])];
    if (six == foreign) return std::nullopt;
    word = word << 6 | six;
    // The first character of four completes no byte, the others one each.
    const std::size_t place = i % groupCharacters;
    if (place > 0) bytes.push_back(static_cast<std::uint8_t>(word >> (6 - 2 * place) & 255U));
  }
  return bytes;
}

}  // namespace orvantesco
