#pragma once

#include <cstdint>

namespace orvantesco::cli {

/// Counts how long both outputs have stayed below -90 dBFS.
class TailWatch {
 public:
  static constexpr double threshold = 3.1622776601683795e-5;  ///< 10^(-90 / 20)

  void take(double left, double right) {
    const bool quiet = isQuiet(left) && isQuiet(right);
    quietRun = quiet ? quietRun + 1 : 0;
  }

  /// Frames since the last one that was not quiet.
  std::int64_t quietFrames() const { return quietRun; }

 private:
  /// What is no number is not quiet.
  static bool isQuiet(double sample) { return sample < threshold && sample > -threshold; }

  std::int64_t quietRun = 0;
};

}  // namespace orvantesco::cli
