#pragma once

#include <cstdint>
#include <vector>

#include "host/clap/ClapInstance.h"
#include "support/EngineRig.h"

namespace orvantesco {

/// A value that a host sends at a frame of the whole render.
struct ClapMove {
  std::uint32_t frame = 0;
  clap_id id = 0;
  double value = 0.0;
};

/// How a host plays a sound through the plug-in.
struct ClapPlan {
  double rateHz = 48000.0;
  std::vector<int> blocks{512};  ///< lengths, around and around
  bool wide = true;              ///< 64 bits, else 32
  bool inPlace = false;
  bool mono = false;             ///< the main input has one channel
  const double* side = nullptr;  ///< as long as the sound; null leaves the port silent
  double tempo = 120.0;
  double startBeats = 0.0;
  std::vector<ClapMove> moves{};  ///< in the order of their frames

  int longest() const;
  int blockAt(std::size_t number) const { return blocks[number % blocks.size()]; }
};

/// Plays a sound through an instance that is processing. The side chain port is there.
StereoBuffer throughClap(ClapInstance& instance, const StereoBuffer& sound, const ClapPlan& plan);

/// Plays it through an effect without any format around it, with the same cuts, and with a
/// transport of its own reckoning.
StereoBuffer withoutClap(const std::vector<std::uint8_t>& state, const StereoBuffer& sound,
                         const ClapPlan& plan);

}  // namespace orvantesco
