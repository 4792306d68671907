#include "presets/StateChunk.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <limits>
#include <new>

namespace orvantesco {
namespace {

constexpr std::int64_t largestSize = std::numeric_limits<std::int32_t>::max();

/// The bytes of a number from the lowest to the highest, whatever the processor's own order is.
template <class Word>
auto littleEndian(Word word) {
  std::array<std::uint8_t, sizeof(Word)> bytes{};
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    bytes[i] = static_cast<std::uint8_t>(word >> (8 * i));
  }
  return bytes;
}

template <class Word>
Word fromLittleEndian(const std::array<std::uint8_t, sizeof(Word)>& bytes) {
  Word word = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) word |= static_cast<Word>(bytes[i]) << (8 * i);
  return word;
}

}  // namespace

StateChunk::StateChunk(int granularityBytes) : granularity(std::max(granularityBytes, 1)) {}

int StateChunk::putBytes(const void* source, int count) {
  const std::int64_t needed = std::int64_t{size()} + std::max(count, 0);
  if (needed > largestSize) return 0;
  const std::int64_t pieces = (needed + granularity - 1) / granularity;
  const auto* first = static_cast<const std::uint8_t*>(source);
  try {
    bytes.reserve(static_cast<std::size_t>(pieces * granularity));
  } catch (const std::bad_alloc&) {
    return 0;
  }
  bytes.insert(bytes.end(), first, first + std::max(count, 0));
  return size();
}

int StateChunk::putInt32(std::int32_t value) {
  const auto word = littleEndian(std::bit_cast<std::uint32_t>(value));
  return putBytes(word.data(), sizeof(value));
}

int StateChunk::putDouble(double value) {
  const auto word = littleEndian(std::bit_cast<std::uint64_t>(value));
  return putBytes(word.data(), sizeof(value));
}

int StateChunk::putByte(std::uint8_t value) { return putBytes(&value, 1); }

int StateChunk::putString(std::string_view text) {
  const std::int64_t needed = std::int64_t{size()} + 4 + static_cast<std::int64_t>(text.size());
  if (needed > largestSize) return 0;
  const int length = static_cast<int>(text.size());
  return putInt32(length) > 0 ? putBytes(text.data(), length) : 0;
}

int StateChunk::getBytes(int position, void* target, int count) const {
  if (position < 0 || std::int64_t{position} + count > size()) return -1;
  std::memcpy(target, bytes.data() + position, static_cast<std::size_t>(count));
  return position + count;
}

int StateChunk::getInt32(int position, std::int32_t& value) const {
  std::array<std::uint8_t, 4> word{};
  const int next = getBytes(position, word.data(), 4);
  if (next >= 0) value = std::bit_cast<std::int32_t>(fromLittleEndian<std::uint32_t>(word));
  return next;
}

int StateChunk::getDouble(int position, double& value) const {
  std::array<std::uint8_t, 8> word{};
  const int next = getBytes(position, word.data(), 8);
  if (next >= 0) value = std::bit_cast<double>(fromLittleEndian<std::uint64_t>(word));
  return next;
}

int StateChunk::getByte(int position, std::uint8_t& value) const {
  return getBytes(position, &value, 1);
}

int StateChunk::getString(int position, std::string& text) const {
  std::int32_t length = 0;
  const int start = getInt32(position, length);
  if (start < 0) return -1;
  const std::int64_t end = std::int64_t{start} + length;
  if (length > 0 && end <= size()) {
    text.assign(reinterpret_cast<const char*>(bytes.data()) + start,
                static_cast<std::size_t>(length));
  }
  return end < 0 || end > largestSize ? -1 : static_cast<int>(end);
}

}  // namespace orvantesco
