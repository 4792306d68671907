#pragma once

#include <array>

#include "fx/VectorLength.h"

namespace orvantesco {

/// One channel of a sub-block: exactly 32 doubles.
struct alignas(64) AudioVector : std::array<double, kVectorLength> {};

/// The two channels of a sub-block, kept apart.
struct StereoVector {
  AudioVector left{};
  AudioVector right{};
};

}  // namespace orvantesco
