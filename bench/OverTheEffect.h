#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "presets/FactoryPresets.h"
#include "presets/PresetReader.h"
#include "support/EngineRig.h"

namespace orvantesco {

// What a plug-in format costs over the bare effect, with every parameter standing still.

inline constexpr double kBenchRate = 48000.0;

/// Blocks of noise in and out, the same for both sides. `Sample` is what the format takes.
template <class Sample>
class Blocks {
 public:
  explicit Blocks(int blockFrames) : frames(blockFrames) {
    const StereoBuffer sound = noise(1u << 15);
    source[0].assign(sound.left.begin(), sound.left.end());
    source[1].assign(sound.right.begin(), sound.right.end());
    for (auto& channel : out) channel.resize(4096);
  }

  /// The next block; its pointers lie in `in` (the side chain is the last) and `to`.
  void next() {
    in = {&source[0][at], &source[1][at], &source[0][at]};
    to = {out[0].data(), out[1].data()};
    at = (at + static_cast<std::size_t>(frames)) % source[0].size();
  }

  int frames;
  std::array<Sample*, 3> in{};
  std::array<Sample*, 2> to{};

 private:
  std::array<std::vector<Sample>, 2> source, out;
  std::size_t at = 0;
};

/// Nanoseconds a frame of some 4096 frames.
template <class Blocks, class PlayBlock>
double timeOf(Blocks& blocks, PlayBlock play) {
  constexpr int framesAtOnce = 4096;
  const auto start = std::chrono::steady_clock::now();
  for (int done = 0; done < framesAtOnce; done += blocks.frames) {
    blocks.next();
    play();
  }
  const std::chrono::duration<double, std::nano> spent = std::chrono::steady_clock::now() - start;
  return spent.count() / framesAtOnce;
}

/// The bare effect with a factory preset, "FOLDER/NAME" or none, in a host that stands still.
class BareEffect {
 public:
  explicit BareEffect(const std::string& preset) : rig(kBenchRate, withSideChain()) {
    rig.host.setRunning(false);
    if (preset.empty()) return;
    const std::size_t slash = preset.find('/');
    const auto* const found = findFactoryPreset(preset.substr(0, slash), preset.substr(slash + 1));
    const PresetResult read = parsePreset(found->text);
    rig.effect.settings().applyPreset(std::get<PresetReading>(read).preset, found->relativePath());
  }

  void play(Blocks<double>& blocks) {
    AudioBlock block;
    block.inputs = blocks.in.data();
    block.inputCount = 2;
    block.sideChain = blocks.in[2];
    block.outputs = blocks.to.data();
    block.outputCount = 2;
    block.frames = blocks.frames;
    rig.effect.RenderAudio(block);
  }

  EngineRig rig;

 private:
  static OrvantescoOptions withSideChain() {
    OrvantescoOptions options = EngineRig::seeded();
    options.sideChain = true;
    return options;
  }
};

inline double medianOf(std::vector<double>& values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

/// Both take turns, each as often behind the other as before it. The fastest turn of each counts,
/// since all else was somebody else's; beside it stands the ratio of the middle one of all rounds,
/// in which both had the same neighbours.
template <class Plugin, class Sample>
void overTheEffect(benchmark::State& state, BareEffect& bare, Plugin& plugin,
                   Blocks<Sample> given) {
  Blocks<double> blocks(given.frames);
  const auto playEffect = [&] { return timeOf(blocks, [&] { bare.play(blocks); }); };
  const auto playPlugin = [&] { return timeOf(given, [&] { plugin.play(given); }); };
  double ofEffect = 1e9;
  double ofPlugin = 1e9;
  std::vector<double> ratios;
  for (auto _ : state) {
    const double before = playEffect();
    const double first = playPlugin();
    const double second = playPlugin();
    const double behind = playEffect();
    ofEffect = std::min({ofEffect, before, behind});
    ofPlugin = std::min({ofPlugin, first, second});
    ratios.push_back((first + second) / (before + behind));
  }
  state.counters["effect_ns_per_frame"] = ofEffect;
  state.counters["plugin_ns_per_frame"] = ofPlugin;
  state.counters["ratio"] = ofPlugin / ofEffect;
  state.counters["middle_ratio"] = medianOf(ratios);
}

/// Settings that a musician plays.
inline constexpr const char* kPresetAtWork = "Rhythm Taps/Swung Ping Pong";

}  // namespace orvantesco
