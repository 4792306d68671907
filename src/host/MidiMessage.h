#pragma once

#include <cstdint>

namespace orvantesco {

/// A short MIDI message at a frame of the current block.
struct MidiMessage {
  int offset = 0;
  std::uint8_t status = 0;
  std::uint8_t data1 = 0;
  std::uint8_t data2 = 0;
};

}  // namespace orvantesco
