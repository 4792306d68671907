#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvantesco {

/// Bytes as text and back, in the alphabet and with the padding of RFC 4648, section 4. Control
/// threads.
std::string toBase64(std::span<const std::uint8_t> bytes);

/// Nothing for a text that is no base64: a foreign character, a wrong length, padding inside.
std::optional<std::vector<std::uint8_t>> fromBase64(std::string_view text);

}  // namespace orvantesco
