#pragma once

#include <string>
#include <vector>

#include "host/dpf/DirectEffect.h"
#include "host/dpf/FactoryState.h"

namespace orvantesco {

/// All shipped presets; some of them where a sanitizer makes each take long.
inline const std::vector<FactoryState>& everyPreset() {
#if defined(ORVANTESCO_UNDER_SANITIZER)
  static const auto states = factoryStatesOf(factoryPresets().first(8));
#else
  static const auto states = factoryStatesOf(factoryPresets());
#endif
  return states;
}

inline std::string pathOf(const FactoryState& preset) {
  return std::string(preset.folder) + "/" + std::string(preset.name);
}

/// Those that draw random numbers as soon as they sound: no two effects play them alike.
inline bool isDrawn(const FactoryState& preset) {
  constexpr std::array drawn{"Grain/Scattered Grains", "Modulated/Random Corners",
                             "Sound Design/Glitch Machine"};
  return std::ranges::count(drawn, pathOf(preset)) > 0;
}

/// Plays a quarter of a second of noise through a host that has loaded a preset, and through an
/// effect that is driven directly and has loaded it too. They have to agree. Returns the peak. The
/// transport stands still.
template <class Block, class Host>
double playThrough(Host& host, DirectEffect& direct, const FactoryState& preset) {
  direct.host.setRunning(false);
  double difference = 0.0;
  double peak = 0.0;
  for (unsigned b = 0; b < 48; ++b) {
    Block block(longestBlock);
    block.in = {noise(longestBlock, 2 * b), noise(longestBlock, 2 * b + 1)};
    direct.process(block);
    host.process(block);
    for (std::size_t c = 0; c < 2; ++c) {
      difference = std::max(difference, differenceOf(block.out[c], direct.out[c]));
      peak = std::max(peak, peakOf(block.out[c]));
    }
  }
  if (!isDrawn(preset)) {
    EXPECT_LT(difference, 1e-6) << pathOf(preset);
  }
  return peak;
}

}  // namespace orvantesco
