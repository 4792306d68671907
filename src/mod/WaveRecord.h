#pragma once

#include <cstdint>

namespace orvantesco {

/// One cycle of an LFO's wave: 4096 values of -1..1 under a name. Constant data; the layout is that
/// of the table that the build embeds.
struct WaveRecord {
  static constexpr int kLength = 4096;

  std::int32_t id;
  char name[20];
  double samples[kLength];
};
static_assert(sizeof(WaveRecord) == 32792);

/// The wave whose values are drawn at random instead of read.
inline constexpr int kSampleAndHoldWave = 38;

}  // namespace orvantesco
