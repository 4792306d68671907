#pragma once

namespace orvantesco {

/// Two channels that are only read.
struct StereoInput {
  const double* left = nullptr;
  const double* right = nullptr;
};

/// Two channels that are worked on. Either may be null where one channel alone is meant.
struct StereoPointers {
  double* left = nullptr;
  double* right = nullptr;
};

}  // namespace orvantesco
