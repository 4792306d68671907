#include "cli/OggSerial.h"

#include <array>
#include <cstdio>
#include <numeric>
#include <vector>

namespace orvantesco::cli {
namespace {

constexpr std::size_t headerBytes = 27;
constexpr std::size_t serialOffset = 14;
constexpr std::size_t checksumOffset = 22;
constexpr std::size_t segmentCountOffset = 26;
constexpr std::uint32_t fixedSerial = 1;

using Page = std::vector<std::uint8_t>;

constexpr std::array<std::uint32_t, 256> checksumTable = [] {
  std::array<std::uint32_t, 256> table{};
  for (std::uint32_t i = 0; i < 256; ++i) {
    std::uint32_t word = i << 24;
    for (int bit = 0; bit < 8; ++bit) {
      word = (word & 0x80000000U) != 0 ? word << 1 ^ 0x04C11DB7U : word << 1;
    }
    table[i] = word;
  }
  return table;
}();

std::uint32_t checksumOf(const Page& page) {
  std::uint32_t sum = 0;
  for (const std::uint8_t byte : page) sum = sum << 8 ^ checksumTable[sum >> 24 ^ byte];
  return sum;
}

void putWord(Page& page, std::size_t offset, std::uint32_t word) {
  for (std::size_t i = 0; i < 4; ++i) page[offset + i] = static_cast<std::uint8_t>(word >> 8 * i);
}

/// Appends bytes of the file to the page; false at the end of the file.
bool append(OutputFile& file, Page& page, std::size_t bytes) {
  const std::size_t before = page.size();
  page.resize(before + bytes);
  return file.read(page.data() + before, static_cast<std::int64_t>(bytes)) ==
         static_cast<std::int64_t>(bytes);
}

bool readPage(OutputFile& file, Page& page) {
  page.clear();
  if (!append(file, page, headerBytes) || page[0] != 'O') return false;
  const std::size_t segments = page[segmentCountOffset];
  if (!append(file, page, segments)) return false;
  const std::size_t body = std::accumulate(page.begin() + headerBytes, page.end(), std::size_t{0});
  return append(file, page, body);
}

}  // namespace

void fixOggSerial(OutputFile& file) {
  Page page;
  std::int64_t start = 0;
  while (file.seek(start, SEEK_SET) == start && readPage(file, page)) {
    putWord(page, serialOffset, fixedSerial);
    putWord(page, checksumOffset, 0);
    putWord(page, checksumOffset, checksumOf(page));
    file.seek(start, SEEK_SET);
    if (file.write(page.data(), static_cast<std::int64_t>(page.size())) <= 0) return;
    start += static_cast<std::int64_t>(page.size());
  }
}

}  // namespace orvantesco::cli
