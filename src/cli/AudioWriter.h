#pragma once

#include <sndfile.h>

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "cli/AudioFormat.h"
#include "cli/OutputFile.h"

namespace orvantesco::cli {

/// Writes stereo frames to an audio file that takes its name when `commit` succeeds. The same
/// frames always give the same bytes. Every fault throws a `Failure` that names the file.
class AudioWriter {
 public:
  struct Plan {
    AudioFormat format;
    double sampleRateHz = 44100.0;
    std::int64_t mostFrames = 0;  ///< that may come, -1 where nobody knows
  };
  AudioWriter(const std::string& path, const Plan& plan);
  AudioWriter(const AudioWriter&) = delete;
  AudioWriter& operator=(const AudioWriter&) = delete;

  /// Appends frames. Full scale is 1; integer formats clip what lies beyond.
  void write(const double* left, const double* right, int frames);

  /// Completes the file and gives it its name.
  void commit();

  /// Samples so far that an integer format had to clip.
  std::int64_t clippedSamples() const noexcept { return clipped; }

 private:
  struct Close {
    void operator()(SNDFILE* sound) const { sf_close(sound); }
  };
  void open(const Plan& plan, bool large);
  void refuseLengthBeyondContainer(std::int64_t frames) const;

  OutputFile output;
  AudioFormat format;
  std::unique_ptr<SNDFILE, Close> file;
  std::vector<double> interleaved;
  std::int64_t framesWritten = 0;
  std::int64_t clipped = 0;
};

}  // namespace orvantesco::cli
