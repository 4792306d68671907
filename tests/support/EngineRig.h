#pragma once

#include <cmath>
#include <cstdint>
#include <vector>

#include "core/Orvantesco.h"
#include "host/OfflineHost.h"
#include "params/IParam.h"

namespace orvantesco {

/// Two channels of audio of any length.
struct StereoBuffer {
  std::vector<double> left, right;
  explicit StereoBuffer(std::size_t frames = 0) : left(frames), right(frames) {}
  std::size_t size() const { return left.size(); }
};

/// An effect with an offline host around it, as tests and benchmarks drive it.
class EngineRig {
 public:
  explicit EngineRig(double rate = 48000.0, OrvantescoOptions options = seeded())
      : host(rate), effect(host, options) {}

  static OrvantescoOptions seeded() {
    OrvantescoOptions options;
    options.seed = 1;
    return options;
  }

  /// Sets a parameter in its own unit, as host automation does.
  void set(int paramIdx, double value) {
    effect.GetParam(paramIdx)->setValue(value);
    effect.OnParamChange(paramIdx);
  }

  /// Processes `frames` frames from `first` on in place, as one host block.
  void block(StereoBuffer& audio, std::size_t first, int frames) {
    double* channels[] = {audio.left.data() + first, audio.right.data() + first};
    effect.ProcessDoubleReplacing(channels, channels, frames);
    host.advance(frames);
  }

  /// Processes all of `audio` in place in host blocks of `blockLength`.
  void render(StereoBuffer& audio, int blockLength = 512) {
    for (std::size_t done = 0; done < audio.size();) {
      const auto left = audio.size() - done;
      const int count =
          left < static_cast<std::size_t>(blockLength) ? static_cast<int>(left) : blockLength;
      block(audio, done, count);
      done += static_cast<std::size_t>(count);
    }
  }

  /// Lets silence pass until the start-up fade is over.
  void warmUp(double seconds = 0.25) {
    StereoBuffer silence(static_cast<std::size_t>(std::lround(seconds * host.sampleRate())));
    render(silence);
  }

  OfflineHost host;
  Orvantesco effect;
};

/// White noise in -amplitude..amplitude from a fixed seed.
inline StereoBuffer noise(std::size_t frames, double amplitude = 0.5, std::uint32_t seed = 1) {
  StereoBuffer audio(frames);
  std::uint32_t state = seed;
  const auto draw = [&] {
    state = state * 1664525u + 1013904223u;
    return amplitude * (static_cast<double>(state) / 2147483648.0 - 1.0);
  };
  for (std::size_t i = 0; i < frames; ++i) {
    audio.left[i] = draw();
    audio.right[i] = draw();
  }
  return audio;
}

}  // namespace orvantesco
