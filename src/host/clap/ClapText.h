#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace orvantesco {

/// Writes a text as C hosts read it, ended by a zero and cut to the room, which may not be empty.
inline void putText(std::string_view text, std::span<char> room) noexcept {
  room[text.copy(room.data(), room.size() - 1)] = '\0';
}

}  // namespace orvantesco
