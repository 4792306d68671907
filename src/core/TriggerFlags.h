#pragma once

#include <array>

namespace orvantesco {

/// Bytes that are up for one sub-block. The audio thread writes them; slots, LFOs and gates read
/// them through pointers that the dispatch stores, so a trigger menu is one pointer write.
struct TriggerFlags {
  unsigned char off = 0;  ///< always 0: the target of "OFF"
  unsigned char quarterPulse = 0;
  unsigned char barPulse = 0;
  unsigned char twoBarPulse = 0;
  std::array<unsigned char, 2> envPulse{};
  std::array<unsigned char, 4> gateLevelPulse{};
  std::array<unsigned char, 4> gateStartPulse{};
};

}  // namespace orvantesco
