#pragma once

#include <cstdint>

#include "cli/AudioWriter.h"
#include "cli/OutputLevels.h"
#include "cli/TailWatch.h"

namespace orvantesco::cli {

/// Takes what the engine puts out from the first input frame on: cuts the latency from the front,
/// writes the rest, and watches levels and the tail.
///
/// Frames are counted on the input's time line: frame 0 answers the first frame of the input, the
/// `latency` frames before it are negative.
class RenderOutput {
 public:
  struct Cut {
    std::int64_t latency = 0;  ///< samples
    bool keepLatency = false;
  };
  RenderOutput(AudioWriter& writer, const Cut& cut)
      : file(writer), writesLatency(cut.keepLatency), nextFrame(-cut.latency) {}

  void take(const double* left, const double* right, int frames);

  /// The tail begins at this frame of the time line.
  void beginTail(std::int64_t frame) { tailStart = frame; }

  /// The frame that comes next.
  std::int64_t position() const { return nextFrame; }

  /// Frames of the tail since the last one that was not quiet.
  std::int64_t quietTailFrames() const { return watch.quietFrames(); }

  const OutputLevels& levels() const { return measured; }

 private:
  AudioWriter& file;
  bool writesLatency;
  std::int64_t nextFrame;
  std::int64_t tailStart = INT64_MAX;
  TailWatch watch;
  OutputLevels measured;
};

}  // namespace orvantesco::cli
