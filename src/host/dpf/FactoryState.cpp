#include "host/dpf/FactoryState.h"

#include <stdexcept>
#include <utility>

#include "core/Orvantesco.h"
#include "host/OfflineHost.h"
#include "host/dpf/DpfState.h"
#include "presets/PresetReader.h"

namespace orvantesco {
namespace {

Preset presetOf(const FactoryPreset& shipped) {
  PresetResult result = parsePreset(shipped.text);
  if (const auto* error = std::get_if<PresetError>(&result)) {
    throw std::runtime_error(shipped.relativePath() + ": " + error->message);
  }
  return std::get<PresetReading>(std::move(result)).preset;
}

FactoryState stateOf(const FactoryPreset& shipped) {
  OfflineHost host;
  Orvantesco effect(host);
  effect.settings().applyPreset(presetOf(shipped), shipped.relativePath());
  FactoryState state{shipped.folder, shipped.name, stateText(effect)};
  if (state.stateText.empty()) throw std::runtime_error(shipped.relativePath() + ": no memory");
  return state;
}

}  // namespace

std::vector<FactoryState> factoryStatesOf(std::span<const FactoryPreset> presets) {
  std::vector<FactoryState> states;
  states.reserve(presets.size());
  for (const FactoryPreset& preset : presets) states.push_back(stateOf(preset));
  return states;
}

}  // namespace orvantesco
