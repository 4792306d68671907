#include "delay/TapPatterns.h"

#include <array>
#include <cstddef>

namespace orvantesco {

namespace {

constexpr std::array<TapMasks, kTapPatterns - 1> kPatterns{{
    {0xFFFF, 0xFFFF},  // "ALL ON"
    {0x0000, 0x0000},  // "ALL OFF"
    {0xFFFF, 0x0000},  // "LEFT"
    {0x0000, 0xFFFF},  // "RIGHT"
    {0x5555, 0xAAAA},  // "PING PONG"
    {0xCCCC, 0xCCCC},  // "SYNCOPED"
    {0x8888, 0x4444},  // "SYNCOPED ST"
    {0x0888, 0x2082},  // "TWO-ONE"
    {0x31CD, 0xCE32},  // "BOUNCER"
    {0x1A95, 0xC2A5},  // "RHYTHM I"
    {0xD092, 0xB212},  // "RHYTHM II"
}};

/// The highest draw gives 65536, of which the sixteen bits of the mask keep nothing.
std::uint16_t drawMask(RandomDraw& draw) {
  return static_cast<std::uint16_t>(static_cast<int>(draw.next() * 65536.0 / RandomDraw::kMax));
}

}  // namespace

TapMasks tapPatternMasks(TapPattern pattern, RandomDraw& draw) {
  if (pattern != TapPattern::Randomize) return kPatterns[static_cast<std::size_t>(pattern)];
  const std::uint16_t left = drawMask(draw);
  return {left, drawMask(draw)};
}

}  // namespace orvantesco
