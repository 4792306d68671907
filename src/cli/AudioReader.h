#pragma once

#include <sndfile.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace orvantesco::cli {

/// Reads a file of one or two channels in pieces of any length, as doubles, full scale 1.
///
/// Samples that are not finite are given as 0 and counted. Every fault throws a `Failure` that
/// names the file.
class AudioReader {
 public:
  static constexpr double lowestRateHz = 8000.0;
  static constexpr double highestRateHz = 768000.0;
  static constexpr int maxChannels = 2;

  explicit AudioReader(const std::string& path);

  const std::string& path() const noexcept { return name; }
  double sampleRate() const noexcept { return static_cast<double>(info.samplerate); }
  int channels() const noexcept { return info.channels; }

  /// Frames that the header promises; a stream without a length promises none and gives -1.
  std::int64_t frames() const noexcept;

  /// Reads up to `count` frames, each channel to its own buffer. Less than `count` come only at
  /// the end; the rest of the buffers is cleared.
  int read(double* const* buffers, int count);

  /// Samples so far that were not finite.
  std::int64_t nonFiniteSamples() const noexcept { return nonFinite; }

 private:
  void refuseWhatCannotPlay() const;
  void checkForEarlyEnd() const;
  void spread(double* const* buffers, int got, int count);

  struct Close {
    void operator()(SNDFILE* open) const { sf_close(open); }
  };

  std::string name;
  SF_INFO info{};
  std::unique_ptr<SNDFILE, Close> file;
  std::vector<double> interleaved;
  std::int64_t framesRead = 0;
  std::int64_t nonFinite = 0;
};

}  // namespace orvantesco::cli
