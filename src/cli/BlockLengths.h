#pragma once

#include <cstdint>
#include <random>

#include "cli/RenderCall.h"

namespace orvantesco::cli {

/// The lengths of the host's blocks, one after the other.
class BlockLengths {
 public:
  static constexpr int longestRandom = 4096;

  explicit BlockLengths(const BlockSettings& blocks)
      : fixed(blocks.frames), isRandom(blocks.randomSeed.has_value()) {
    if (isRandom) draw.seed(*blocks.randomSeed);
  }

  /// 1..4096 drawn anew, or always the same.
  int next() { return isRandom ? static_cast<int>(draw() % longestRandom) + 1 : fixed; }

  /// No block is longer.
  int longest() const { return isRandom ? longestRandom : fixed; }

 private:
  int fixed;
  bool isRandom;
  std::mt19937 draw;
};

}  // namespace orvantesco::cli
