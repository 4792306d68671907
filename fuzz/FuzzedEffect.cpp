#include "fuzz/FuzzedEffect.h"

#include <array>
#include <cmath>
#include <functional>

#include "core/Orvantesco.h"
#include "fuzz/Require.h"
#include "host/OfflineHost.h"
#include "presets/HostState.h"
#include "presets/PresetCheck.h"
#include "presets/PresetWriter.h"
#include "presets/StateChunk.h"

namespace orvantesco {
namespace {

constexpr int kFrames = 64;
constexpr double kRateHz = 48000.0;

class FuzzedEffect {
 public:
  FuzzedEffect() {
    for (std::size_t i = 0; i < kFrames; ++i) input[i] = i % 3 == 0 ? 0.5 : -0.25;
  }

  Orvantesco& get() { return effect; }

  void play() {
    std::array<double, kFrames> left = input;
    std::array<double, kFrames> right = input;
    std::array<double*, 2> channels{left.data(), right.data()};
    effect.ProcessDoubleReplacing(channels.data(), channels.data(), kFrames);
    host.advance(kFrames);
    for (const auto* side : {&left, &right}) {
      for (const double sample : *side) require(std::isfinite(sample), "what is heard is finite");
    }
  }

  void checkParameters() {
    for (int index = 0; index < kNumParams; ++index) {
      const IParam& param = *effect.GetParam(index);
      require(param.value() >= param.min() && param.value() <= param.max(),
              "every parameter is in its range");
    }
  }

 private:
  static OrvantescoOptions seeded() {
    OrvantescoOptions options;
    options.seed = 1;
    return options;
  }

  OfflineHost host{kRateHz};
  Orvantesco effect{host, seeded()};
  std::array<double, kFrames> input{};
};

FuzzedEffect& theEffect() {
  static FuzzedEffect effect;
  return effect;
}

const ParamBank& bank() {
  static ParamBank built;
  [[maybe_unused]] static const bool once = (built.buildParameterBank(), true);
  return built;
}

void checkSavedPreset() {
  const PresetResult saved = parsePreset(presetText(theEffect().get().settings().currentPreset()));
  const auto* reading = std::get_if<PresetReading>(&saved);
  require(reading != nullptr, "what is saved is a preset");
  for (const PresetProblem& problem : presetProblems(*reading, bank())) {
    require(false, problem.message.c_str());
  }
}

void checkSavedState() {
  StateChunk chunk;
  require(theEffect().get().SerializeState(chunk), "a state can be saved");
  const auto reading = readHostState(chunk, 0);
  require(reading && reading->end == chunk.size(), "what is saved reads to its end");
}

}  // namespace

bool isPlayed(std::string_view bytes) { return std::hash<std::string_view>{}(bytes) % 16 == 0; }

void checkPresetPlays(std::string_view bytes) {
  const PresetResult result = parsePreset(bytes);
  const auto* reading = std::get_if<PresetReading>(&result);
  if (reading == nullptr) return;
  theEffect().get().settings().applyPreset(reading->preset);
  theEffect().play();
  theEffect().checkParameters();
  checkSavedPreset();
}

void checkStatePlays(std::string_view bytes) {
  StateChunk chunk;
  chunk.putBytes(bytes.data(), static_cast<int>(bytes.size()));
  theEffect().get().UnserializeState(chunk, 0);
  theEffect().play();
  theEffect().checkParameters();
  checkSavedState();
}

}  // namespace orvantesco
