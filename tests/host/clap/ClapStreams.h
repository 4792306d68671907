#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "host/clap/ClapApi.h"

namespace orvantesco {

/// Takes bytes, no more than `atOnce` with one call, and fails where it would pass `room`.
class ClapSink {
 public:
  ClapSink() {
    stream.ctx = this;
    stream.write = [](const clap_ostream_t* of, const void* from, std::uint64_t size) {
      return static_cast<ClapSink*>(of->ctx)->take(static_cast<const std::uint8_t*>(from), size);
    };
  }
  ClapSink(const ClapSink&) = delete;
  ClapSink& operator=(const ClapSink&) = delete;

  const clap_ostream_t* handle() const { return &stream; }

  std::uint64_t atOnce = ~std::uint64_t{0};
  std::size_t room = std::size_t{1} << 24;
  std::vector<std::uint8_t> bytes;

 private:
  std::int64_t take(const std::uint8_t* from, std::uint64_t size) {
    const std::uint64_t taken = std::min(size, atOnce);
    if (bytes.size() + taken > room) return -1;
    bytes.insert(bytes.end(), from, from + taken);
    return static_cast<std::int64_t>(taken);
  }

  clap_ostream_t stream{};
};

/// Gives bytes, no more than `atOnce` with one call, and fails behind `failsAt`.
class ClapSource {
 public:
  explicit ClapSource(std::vector<std::uint8_t> content) : bytes(std::move(content)) {
    stream.ctx = this;
    stream.read = [](const clap_istream_t* of, void* to, std::uint64_t size) {
      return static_cast<ClapSource*>(of->ctx)->give(static_cast<std::uint8_t*>(to), size);
    };
  }
  ClapSource(const ClapSource&) = delete;
  ClapSource& operator=(const ClapSource&) = delete;

  const clap_istream_t* handle() const { return &stream; }

  std::uint64_t atOnce = ~std::uint64_t{0};
  std::size_t failsAt = ~std::size_t{0};

 private:
  std::int64_t give(std::uint8_t* to, std::uint64_t size) {
    if (done >= failsAt) return -1;
    const std::uint64_t given = std::min({size, atOnce, std::uint64_t{bytes.size() - done}});
    std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(done), given, to);
    done += given;
    return static_cast<std::int64_t>(given);
  }

  clap_istream_t stream{};
  std::vector<std::uint8_t> bytes;
  std::size_t done = 0;
};

}  // namespace orvantesco
