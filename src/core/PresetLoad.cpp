// Presets on their way into the engine and back: values that list what differs from the defaults.

#include <algorithm>
#include <cmath>

#include "core/Orvantesco.h"
#include "params/ParamBank.h"
#include "presets/PresetMigration.h"

namespace orvantesco {

namespace {

/// Held to the range that the parameter has now; what is no number becomes the minimum.
void storeHeld(IParam& param, double value) {
  param.setValue(std::isnan(value) ? param.min() : std::clamp(value, param.min(), param.max()));
}

/// Files hold single precision, so what differs beyond it does not differ for them.
bool isAtDefault(const IParam& param) {
  return static_cast<float>(param.value()) == static_cast<float>(param.defaultValue());
}

/// Files name parameters by their keys. Where two share one, a reader gives the first line of it
/// to the first, so the first is listed wherever the second is.
std::vector<PresetValue> listedValues(const ParamBank& bank) {
  const ParamKeys& keys = bank.keys();
  std::vector<PresetValue> values;
  for (int index = 0; index < kNumParams; ++index) {
    const std::string& key = keys[static_cast<std::size_t>(index)];
    bool isListed = !isAtDefault(*bank.getParam(index));
    for (int twin = index + 1; !isListed && twin < std::min(index + numSlots, kNumParams); ++twin) {
      isListed = keys[static_cast<std::size_t>(twin)] == key && !isAtDefault(*bank.getParam(twin));
    }
    if (isListed) values.push_back({key, bank.getParam(index)->value(), 0});
  }
  return values;
}

}  // namespace

void SettingsStore::applyPreset(const Preset& preset) {
  const std::lock_guard one(effect.gate.turn);
  select({});
  loadPreset(preset, nullptr);
}

void SettingsStore::applyPreset(const Preset& preset, const std::string& relativePath) {
  const std::lock_guard one(effect.gate.turn);
  select({});
  const PresetLabel label = presetLabelOf(relativePath);
  loadPreset(preset, &label);
}

/// Returns what a file of the loaded settings holds, taken before anybody else can change them.
Preset SettingsStore::loadPreset(const Preset& preset, const PresetLabel* label) {
  const std::lock_guard one(effect.gate.turn);
  ++bulkOperations;
  Preset loaded;
  {
    const BulkGate::Operation loading(effect.gate, BulkGate::Work::presetLoad);
    const std::lock_guard lock(effect.mutex);
    effect.fade.request();
    effect.touchedParam = -1;
    takeMasks(preset);
    takeParameters(preset);
    lastPageLoaded = preset.lastPage.value_or(lastPageLoaded);
    takePage(lastPageLoaded);
    showLoaded();
    if (label != nullptr) showPreset(label->name, label->folder);
    effect.touchedParam = -1;
    settle();
    loaded = currentPreset();
    editor().runDisplayTimers();
  }
  for (int slot = 0; slot < numSlots; ++slot) {
    editor().refreshSlot(slot);
    editor().refreshLanes(slot);
  }
  return loaded;
}

void SettingsStore::takeMasks(const Preset& preset) {
  for (int slot = 0; slot < numSlots; ++slot) {
    const auto s = static_cast<std::size_t>(slot);
    TapMasks masks = effect.tapMasks(slot);
    masks.left = preset.tapMask[2 * s].value_or(masks.left);
    masks.right = preset.tapMask[2 * s + 1].value_or(masks.right);
    effect.setTapMasks(slot, masks);
    effect.setStepFxMask(slot, preset.stepFxMask[s]);
    for (int row = 0; row < 2; ++row) {
      effect.setStepModMask(row, slot, preset.stepModMask[static_cast<std::size_t>(row)][s]);
    }
    for (auto& driven : effect.slots[s].controls.taps.fxParam) driven = 0;
  }
}

void SettingsStore::takeParameters(const Preset& preset) {
  const MigratedValues values = migrated(preset, effect.bank->keys());
  for (int index = 0; index < kNumParams; ++index) {
    IParam& param = *effect.GetParam(index);
    const auto& value = values.byIndex[static_cast<std::size_t>(index)];
    storeHeld(param, value ? double{*value} : param.defaultValue());
    effect.OnParamChange(index);
  }
  for (int slot = 0; slot < numSlots; ++slot) {
    if (!values.quietenFeedback[static_cast<std::size_t>(slot)]) continue;
    IParam& feedback = *effect.GetParam(kFeedback + slot);
    storeHeld(feedback, feedback.value() * kTappedMixLoss);
    effect.OnParamChange(kFeedback + slot);
  }
}

void SettingsStore::showLoaded() {
  EditorPort& port = editor();
  port.closeStepViews();
  effect.RedrawParamControls();
  port.showPage(editorState.currentPage);
  port.refreshStepGrids();
}

Preset SettingsStore::currentPreset() const {
  const std::lock_guard one(effect.gate.turn);
  Preset preset;
  for (int slot = 0; slot < numSlots; ++slot) {
    const auto s = static_cast<std::size_t>(slot);
    const TapControls& taps = effect.slots[s].controls.taps;
    for (std::size_t k = 0; k < 2; ++k) {
      preset.tapMask[2 * s + k] = taps.tapMask[k];
      preset.stepModMask[k][s] = taps.stepModMask[k];
    }
    preset.stepFxMask[s] = taps.stepFxMask;
  }
  preset.lastPage = editorState.currentPage;
  preset.values = listedValues(*effect.bank);
  return preset;
}

}  // namespace orvantesco
