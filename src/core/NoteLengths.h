#pragma once

#include <array>
#include <cstddef>

namespace orvantesco {

/// Length in quarter notes of a position in the timebase menu: "MS" counts as 1, then 1/8, 1/16,
/// 1/32, 1/64, 1/8d, 1/16d, 1/32d, 1/8t, 1/16t, 1/32t.
constexpr double timebaseFactor(int timebase) {
  constexpr std::array<double, 11> kFactors{1.0,   0.5,    0.25,      0.125,     0.0625,    0.75,
                                            0.375, 0.1875, 1.0 / 3.0, 1.0 / 6.0, 1.0 / 12.0};
  return kFactors[static_cast<std::size_t>(timebase)];
}

inline constexpr int kTimebases = 11;

}  // namespace orvantesco
