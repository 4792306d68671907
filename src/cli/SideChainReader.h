#pragma once

#include <string>
#include <vector>

#include "cli/AudioReader.h"

namespace orvantesco::cli {

/// Reads a side chain as one channel: a stereo file is summed and halved. Behind its end it is
/// silent.
class SideChainReader {
 public:
  explicit SideChainReader(const std::string& path) : file(path) {}

  double sampleRate() const noexcept { return file.sampleRate(); }

  void read(double* samples, int frames);

  /// Samples so far that were not finite.
  std::int64_t nonFiniteSamples() const noexcept { return file.nonFiniteSamples(); }

 private:
  AudioReader file;
  std::vector<double> second;
};

}  // namespace orvantesco::cli
