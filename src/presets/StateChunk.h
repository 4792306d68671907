#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvantesco {

/// A growable byte buffer that carries the host's state block. Values are little-endian, unpadded,
/// appended at the end and read at a position that the caller keeps.
///
/// A `get` returns the position behind the value, or -1 where the position is negative or the
/// value would pass the end; its target is then left as it was. So a reader that hands each result
/// on falls softly through a block that ends early: what is missing keeps what it held.
///
/// A `put` returns the new size in bytes, or 0 where the buffer could not grow: its size is a
/// signed 32-bit number in every host. Control threads; not shared between them.
class StateChunk {
 public:
  explicit StateChunk(int granularityBytes = 4096);

  int putInt32(std::int32_t value);
  int putDouble(double value);
  int putByte(std::uint8_t value);
  /// A length of 32 bits, then the bytes, without a terminator.
  int putString(std::string_view text);

  /// Any bytes as they are, to fill a chunk with what a host stored.
  int putBytes(const void* bytes, int count);

  int getInt32(int position, std::int32_t& value) const;
  int getDouble(int position, double& value) const;
  int getByte(int position, std::uint8_t& value) const;
  /// A text of length 0 leaves the target as it was, as does a length that passes the end: then
  /// the position still moves by what the length says, and the next read fails.
  int getString(int position, std::string& text) const;

  const std::uint8_t* data() const noexcept { return bytes.data(); }
  int size() const noexcept { return static_cast<int>(bytes.size()); }
  void clear() noexcept { bytes.clear(); }

 private:
  int getBytes(int position, void* target, int count) const;

  std::vector<std::uint8_t> bytes;
  int granularity = 4096;
};

}  // namespace orvantesco
