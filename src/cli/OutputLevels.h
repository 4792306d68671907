#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace orvantesco::cli {

/// Peaks and faults of what was written.
struct OutputLevels {
  std::int64_t frames = 0;
  std::array<double, 2> peak{};  ///< linear, left and right, of the samples that are finite
  std::int64_t nonFinite = 0;    ///< samples

  void take(double left, double right) {
    ++frames;
    takeSample(0, left);
    takeSample(1, right);
  }

 private:
  void takeSample(std::size_t channel, double sample) {
    if (std::isfinite(sample)) {
      peak[channel] = std::max(peak[channel], std::abs(sample));
    } else {
      ++nonFinite;
    }
  }
};

}  // namespace orvantesco::cli
