#pragma once

#include <vector>

namespace orvantesco {

/// Holds the bypassed signal back by the latency that was reported, so that a host's compensation
/// fits it too. An integer delay: out[n] = in[n - latency], silence before the first sample.
class LatencyBuffer {
 public:
  /// Latencies up to this one never take memory after construction.
  static constexpr int reservedFrames = 256;

  explicit LatencyBuffer(int channels);

  /// Sets the delay in samples and drops what is held; allocates only beyond `reservedFrames`.
  void resize(int latencySamples);

  void clear() noexcept;

  /// Delays one channel; `in` and `out` may be the same. Audio thread.
  void process(int channel, const double* in, double* out, int frames) noexcept;

 private:
  struct Ring {
    std::vector<double> held;
    std::size_t next = 0;
  };
  std::vector<Ring> rings;
};

}  // namespace orvantesco
