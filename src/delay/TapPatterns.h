#pragma once

#include <cstdint>

#include "fx/RandomDraw.h"

namespace orvantesco {

/// The patterns of the tap menu, in its order.
enum class TapPattern {
  AllOn,
  AllOff,
  Left,
  Right,
  PingPong,
  Syncoped,
  SyncopedStereo,
  TwoOne,
  Bouncer,
  Rhythm1,
  Rhythm2,
  Randomize
};

inline constexpr int kTapPatterns = 12;

/// Which taps of a slot sound, bit t for tap t.
struct TapMasks {
  std::uint16_t left = 0xFFFF;
  std::uint16_t right = 0xFFFF;
};

/// The masks of a pattern; `draw` is used by `Randomize` alone. Control threads.
TapMasks tapPatternMasks(TapPattern pattern, RandomDraw& draw);

}  // namespace orvantesco
