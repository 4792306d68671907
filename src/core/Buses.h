#pragma once

#include <array>

#include "core/AudioVector.h"

namespace orvantesco {

/// The signal of one sub-block between the rings and the slots. Audio thread only.
struct Buses {
  AudioVector inL{}, inR{};   ///< input after fade and input filter
  AudioVector inMono{};       ///< inL + inR, unscaled
  AudioVector sideIn{};       ///< side chain, not faded
  StereoVector dry;           ///< dry signal, already scaled, full bandwidth
  StereoVector wet;           ///< sum of the slots' outputs
  StereoVector masterSend;    ///< sum of the slots' sends to the master effect
  StereoVector masterReturn;  ///< unscaled output of the master effect, kept for the next sub-block
  StereoVector scratch;
  AudioVector silence{};  ///< what a slot without a source reads
};

/// Sums of the slots' direct outs that later slots can listen to. Audio thread only.
struct RouteSums {
  StereoVector sum12, sum13, sum23, sum123;
};

}  // namespace orvantesco
