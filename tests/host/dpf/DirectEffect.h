#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <vector>

#include "host/OfflineHost.h"
#include "host/binding/PluginPresets.h"
#include "params/IParam.h"
#include "params/ParamIndex.h"

namespace orvantesco {

inline constexpr double rateHz = 48000.0;
inline constexpr int longestBlock = 256;

inline std::vector<float> noise(std::size_t frames, unsigned seed) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<float> sample(-0.5F, 0.5F);
  std::vector<float> out(frames);
  for (float& x : out) x = sample(random);
  return out;
}

/// An effect that is driven directly, to hold a plug-in against.
class DirectEffect {
 public:
  DirectEffect() : host(rateHz), effect(host) {
    effect.SetBlockSize(longestBlock);
    effect.startAnew();
  }

  /// Any block with channels `in`, `side` and `out`.
  template <class Block>
  void process(const Block& block) {
    for (std::size_t c = 0; c < 2; ++c) in[c].assign(block.in[c].begin(), block.in[c].end());
    side.assign(block.side.begin(), block.side.end());
    for (auto& channel : out) channel.assign(block.in[0].size(), 0.0);
    double* inputs[] = {in[0].data(), in[1].data()};
    double* outputs[] = {out[0].data(), out[1].data()};
    AudioBlock audio;
    audio.inputs = inputs;
    audio.inputCount = 2;
    audio.sideChain = side.empty() ? nullptr : side.data();
    audio.outputs = outputs;
    audio.outputCount = 2;
    audio.frames = static_cast<int>(block.in[0].size());
    effect.RenderAudio(audio);
    host.advance(audio.frames);
  }

  void set(int index, double value) {
    effect.GetParam(index)->setValue(value);
    effect.OnParamChange(index);
  }

  /// Echoes of the first slot every 20 ms, each half as loud, so that a short test hears them.
  void setQuickEchoes() {
    set(kTimebase, 0.0);
    set(kDelayTimeL, 20.0);
    set(kDelayTimeR, 20.0);
    set(kFeedback, 50.0);
  }

  void load(const char* preset) {
    PresetPrompts nobody;
    PluginPresets presets(effect, userPresetLibrary(), nobody);
    ASSERT_EQ(presets.apply(preset), "");
  }

  OfflineHost host;
  Orvantesco effect;
  std::array<std::vector<double>, 2> out;

 private:
  std::array<std::vector<double>, 2> in;
  std::vector<double> side;
};

inline double peakOf(const std::vector<float>& channel) {
  double peak = 0.0;
  for (const float x : channel) peak = std::max(peak, std::abs(static_cast<double>(x)));
  return peak;
}

inline double differenceOf(const std::vector<float>& a, const std::vector<double>& b) {
  double most = 0.0;
  for (std::size_t i = 0; i < a.size(); ++i) {
    most = std::max(most, std::abs(static_cast<double>(a[i]) - b[i]));
  }
  return most;
}

}  // namespace orvantesco
