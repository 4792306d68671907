#pragma once

#include <algorithm>
#include <cmath>

#include "host/binding/PluginBypass.h"
#include "params/ParamIndex.h"
#include "support/EngineRig.h"

namespace orvantesco {

inline constexpr double rate = 48000.0;
inline constexpr int fadeFrames = 480;

/// An effect behind a bypass, and a host that drives both.
struct BypassRig {
  explicit BypassRig(int longestBlock = 512, bool bypassed = false) {
    bypass.prepare(longestBlock, rate, bypassed);
    rig.set(kDryLevel, 100.0);
  }

  /// Plays a part of `audio` in place in blocks.
  void play(StereoBuffer& audio, std::size_t first, std::size_t end, bool bypassed,
            std::size_t length = 100) {
    for (std::size_t at = first; at < end; at += length) {
      block(audio, at, std::min(length, end - at), bypassed);
    }
  }

  void block(StereoBuffer& audio, std::size_t at, std::size_t frames, bool bypassed) {
    double* channels[] = {audio.left.data() + at, audio.right.data() + at};
    AudioBlock block;
    block.inputs = channels;
    block.inputCount = 2;
    block.outputs = channels;
    block.outputCount = 2;
    block.frames = static_cast<int>(frames);
    block.bypass = bypassed;
    bypass.process(block);
    rig.host.advance(block.frames);
  }

  int latency() const { return rig.effect.latency; }

  EngineRig rig{rate};
  PluginBypass bypass{rig.effect};
};

/// Largest difference between `out` and `in` as it is `delay` frames late, in [first, end).
inline double differenceFrom(const StereoBuffer& in, const StereoBuffer& out, int delay,
                             std::size_t first, std::size_t end) {
  double largest = 0.0;
  for (std::size_t i = first; i < end; ++i) {
    const auto from = i - static_cast<std::size_t>(delay);
    largest = std::max(largest, std::abs(out.left[i] - in.left[from]));
    largest = std::max(largest, std::abs(out.right[i] - in.right[from]));
  }
  return largest;
}

}  // namespace orvantesco
