// Loading and saving presets: text files that list what differs from the defaults.

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/Orvantesco.h"
#include "params/ParamBank.h"
#include "presets/FileContent.h"
#include "presets/PresetBackup.h"
#include "presets/PresetMigration.h"
#include "presets/PresetNames.h"
#include "presets/PresetReader.h"
#include "presets/PresetWriter.h"

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

PresetLabel labelOf(const std::string& relativePath) {
  return {presetNameOf(relativePath), presetFolderLabelOf(relativePath)};
}

/// Whether the file still holds what was read of it.
bool isAsRead(const OpenedPreset& opened) {
  const auto content = readFile(opened.fullPath, kLargestPresetBytes);
  const auto* text = std::get_if<std::string>(&content);
  return text != nullptr && *text == opened.text;
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
  const PresetLabel label = labelOf(relativePath);
  loadPreset(preset, &label);
}

/// Returns what a file of the loaded settings holds, taken before anybody else can change them.
Preset SettingsStore::loadPreset(const Preset& preset, const PresetLabel* label) {
  const std::lock_guard one(effect.gate.turn);
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
  for (int slot = 0; slot < kSlots; ++slot) {
    editor().refreshSlot(slot);
    editor().refreshLanes(slot);
  }
  return loaded;
}

void SettingsStore::takeMasks(const Preset& preset) {
  for (int slot = 0; slot < kSlots; ++slot) {
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
  for (int slot = 0; slot < kSlots; ++slot) {
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
  for (int slot = 0; slot < kSlots; ++slot) {
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

bool SettingsStore::readPresetFile(const std::string& relativePath) {
  const std::lock_guard one(effect.gate.turn);
  const std::string fullPath = presetRootPath + relativePath;
  auto content = readFile(fullPath, kLargestPresetBytes);
  auto* text = std::get_if<std::string>(&content);
  if (text == nullptr) return refusePreset("NO FILE");
  PresetResult result = parsePreset(*text);
  auto* reading = std::get_if<PresetReading>(&result);
  if (reading == nullptr) return refusePreset("WRONG FILE");
  opened =
      OpenedPreset{fullPath, std::move(*text), labelOf(relativePath), std::move(reading->preset)};
  showPreset(opened->label.name, opened->label.folder);
  return true;
}

/// Always false: there is no preset.
bool SettingsStore::refusePreset(std::string_view reason) {
  const std::lock_guard lock(effect.mutex);
  editorState.presetName = reason;
  editor().showPresetName(editorState.presetName);
  return false;
}

void SettingsStore::applyLoadedPreset() {
  const std::lock_guard one(effect.gate.turn);
  if (!opened) return;
  // What the editor shows may come back here and open another one.
  const OpenedPreset applied = *opened;
  const Preset loaded = loadPreset(applied.preset, &applied.label);
  if (isOldPreset(applied.preset)) rewrite(applied, loaded);
}

/// What somebody has written there meanwhile is not what was loaded, and stays.
void SettingsStore::rewrite(const OpenedPreset& old, const Preset& loaded) {
  if (!isAsRead(old)) return;
  // A folder that cannot be written keeps its old file, which loads just as well the next time.
  const bool isRewritten =
      keepBackup(old.fullPath) && writeFile(old.fullPath, presetText(loaded)).empty();
  if (!isRewritten) showMessage(PresetMessage::cannotWrite);
}

bool SettingsStore::loadPresetFile(const std::string& relativePath) {
  const std::lock_guard one(effect.gate.turn);
  if (!readPresetFile(relativePath)) return false;
  applyLoadedPreset();
  return true;
}

bool SettingsStore::writePresetFile(const std::string& fullPath, bool rewriteAfterMigration) {
  if (fullPath.empty()) return false;
  const std::lock_guard one(effect.gate.turn);
  if (rewriteAfterMigration && !keepBackup(fullPath)) return true;
  return !writeFile(fullPath, presetText(currentPreset())).empty();
}

bool SettingsStore::keepBackup(const std::string& fullPath) const {
  return keepPresetBackup(fullPath, presetRootPath).empty();
}

}  // namespace orvantesco
