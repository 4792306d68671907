#pragma once

#include <array>

namespace orvantesco {

/// The re-blocking rings: the host's frames enter and leave one at a time, the engine takes and
/// gives them 32 at once. Together they cost exactly 32 samples of latency. Audio thread only.
struct Rings {
  static constexpr int kInputLength = 64;
  static constexpr int kOutputLength = 32;

  std::array<double, kInputLength> inRingL{}, inRingR{}, inRingSide{};
  alignas(64) std::array<double, kOutputLength> outRingL{};
  alignas(64) std::array<double, kOutputLength> outRingR{};
  int inWritePos = 0;  ///< next frame written, 0..63
  int inReadPos = 0;   ///< next frame taken, 0..63; trails by the 32 that are taken at once
  int outPos = 0;      ///< next frame given to the host, 0..31
};

}  // namespace orvantesco
