#pragma once

#include <array>

#include "fx/Kernels.h"

namespace orvantesco {

/// One channel of a sub-block: exactly 32 doubles.
using AudioVector = std::array<double, kVectorLength>;

/// The two channels of a sub-block, kept apart.
struct StereoVector {
  AudioVector left{};
  AudioVector right{};
};

}  // namespace orvantesco
