#include "mod/WaveTable.h"

// The drawn file becomes constant data of the program; ORVANTESCO_WAVE_FILE is its path.
asm(".section .rodata\n"
    ".balign 64\n"
    ".globl orvantescoWaveData\n"
    ".hidden orvantescoWaveData\n"
    "orvantescoWaveData:\n"
    ".incbin \"" ORVANTESCO_WAVE_FILE
    "\"\n"
    ".previous\n");

extern "C" const orvantesco::WaveRecord orvantescoWaveData[orvantesco::kWaveRecords]
    __attribute__((visibility("hidden")));

namespace orvantesco {

namespace {

/// Order of the menu. Ids are given once and kept, so they say nothing about the order.
constexpr std::array<int, kOfferedWaves> kOffered{0,  1,  2,  3,  4,  5,  6,  7,  9,
                                                  10, 11, 12, 13, 14, 15, 33, 32, 16,
                                                  17, 34, 35, 36, 37, 18, 19, 20, 38};

std::array<const WaveRecord*, kOfferedWaves> listWaves() noexcept {
  std::array<const WaveRecord*, kOfferedWaves> list{};
  for (std::size_t position = 0; position < kOffered.size(); ++position) {
    for (const WaveRecord& record : waveTable()) {
      if (record.id == kOffered[position]) list[position] = &record;
    }
  }
  return list;
}

}  // namespace

std::span<const WaveRecord, kWaveRecords> waveTable() noexcept { return orvantescoWaveData; }

const std::array<const WaveRecord*, kOfferedWaves> waveList = listWaves();

}  // namespace orvantesco
