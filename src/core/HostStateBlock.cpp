// The state that a host saves with its project: everything that a user can change, as one block.

#include <algorithm>
#include <cmath>

#include "core/Orvantesco.h"
#include "params/ParamBank.h"
#include "presets/PresetMessages.h"
#include "presets/StateChunk.h"

namespace orvantesco {

namespace {

/// Above 0 and not below the current version there is nothing to migrate.
int versionToMigrate(const HostState& state) {
  return state.stateVersion < kStateVersion ? state.stateVersion : 0;
}

/// Only the low bits of what a block says count.
std::uint16_t maskOf(std::int32_t word) { return static_cast<std::uint16_t>(word); }

double heldPosition(double position) {
  return std::isnan(position) ? 1.0 : std::clamp(position, 0.0, 1.0);
}

}  // namespace

bool SettingsStore::saveState(StateChunk& chunk) {
  const std::lock_guard one(effect.gate.turn);
  const std::lock_guard lock(effect.mutex);
  return putHostStateHead(chunk, stateOutsideTheBank()) && effect.SerializeParams(chunk);
}

int Orvantesco::UnserializeState(const StateChunk& chunk, int startPos) {
  const auto reading = readHostState(chunk, startPos);
  if (!reading) return -1;
  settingsStore.restoreState(reading->state);
  return reading->end;
}

HostState SettingsStore::stateOutsideTheBank() {
  HostState state;
  state.colourSet = editorState.colourSet;
  state.currentPage = editorState.currentPage;
  state.attenuation = editorState.attenuation;
  state.presetName = editorState.presetName;
  state.presetFolderLabel = editorState.presetFolderLabel;
  const PresetSelection selected = presetSelection();
  state.presetFolderPath = selected.folderPath;
  state.presetItemIndex = selected.folderPath.empty() ? -1 : selected.itemIndex;
  state.touchedParam = effect.touchedParam;
  state.dryLock = effect.globals.dryMuted;
  for (std::size_t slot = 0; slot < effect.slots.size(); ++slot) {
    const TapControls& taps = effect.slots[slot].controls.taps;
    for (std::size_t k = 0; k < 2; ++k) {
      state.tapMask[2 * slot + k] = taps.tapMask[k];
      state.stepModMask[k][slot] = taps.stepModMask[k];
    }
    state.stepFxMask[slot] = taps.stepFxMask;
  }
  return state;
}

void SettingsStore::restoreState(const HostState& state) {
  if (state.stateVersion > kStateVersion) {
    showMessage(PresetMessage::newerState);
    return;
  }
  const std::lock_guard one(effect.gate.turn);
  ++bulkOperations;
  takeColourSet(state);
  setParametersToDefaults();
  if (state.stateVersion < kOldestStateVersion) return;
  {
    const BulkGate::Operation restoring(effect.gate, BulkGate::Work::restore);
    const std::lock_guard lock(effect.mutex);
    takeEditorState(state);
    takeMasks(state);
    takeParameters(state);
    showRestored(state);
    effect.fade.request();
    settle();
  }
  for (int slot = 0; slot < numSlots; ++slot) editor().refreshSlot(slot);
}

void SettingsStore::takeColourSet(const HostState& state) {
  const int set = state.colourSet.value_or(-1);
  if (set >= 0 && set < kColourSets) editorState.colourSet = set;
}

void SettingsStore::setParametersToDefaults() {
  // Rates in Hz first: which values a record takes depends on what it speaks of.
  for (int lfo = 0; lfo < numLfos; ++lfo) effect.bank->setLfoRateInNotes(lfo, false);
  for (IParam* param : effect.params) param->setValue(param->defaultValue());
}

void SettingsStore::takeEditorState(const HostState& state) {
  takePage(state.currentPage);
  // Blocks without the control were saved when the input was never attenuated.
  const bool knowsAttenuation = state.stateVersion > kLastWithoutAttenuation;
  const double kept = knowsAttenuation ? editorState.attenuation.get() : 1.0;
  setAttenuation(heldPosition(state.attenuation.value_or(kept)));
  if (!state.presetName.empty()) editorState.presetName = state.presetName;
  if (!state.presetFolderLabel.empty()) editorState.presetFolderLabel = state.presetFolderLabel;
  if (state.presetFolderPath) select({*state.presetFolderPath, state.presetItemIndex.value_or(-1)});
}

void SettingsStore::takePage(std::optional<int> page) {
  if (!page || !isPage(*page)) return;
  editorState.currentPage = *page;
  editorState.lastSubPage = *page >= kFirstSubPage ? *page : kDelayPage;
}

void SettingsStore::takeMasks(const HostState& state) {
  for (int slot = 0; slot < numSlots; ++slot) {
    const auto s = static_cast<std::size_t>(slot);
    TapMasks masks = effect.tapMasks(slot);
    masks.left = maskOf(state.tapMask[2 * s].value_or(masks.left));
    masks.right = maskOf(state.tapMask[2 * s + 1].value_or(masks.right));
    effect.setTapMasks(slot, masks);
    if (state.stepFxMask[s]) effect.setStepFxMask(slot, maskOf(*state.stepFxMask[s]));
    for (int row = 0; row < 2; ++row) {
      const auto& mask = state.stepModMask[static_cast<std::size_t>(row)][s];
      if (mask) effect.setStepModMask(row, slot, maskOf(*mask));
    }
  }
}

void SettingsStore::takeParameters(const HostState& state) {
  const int touched = state.touchedParam.value_or(effect.touchedParam);
  // Nobody moves a knob while values are brought as they were saved.
  effect.touchedParam = -1;
  for (auto& flag : effect.migration.wasTapped) flag = false;
  effect.migration.version = versionToMigrate(state);
  selectRateForms(state.parameters);
  effect.takeParamValues(state.parameters);
  effect.migration.version = 0;
  setDryMute(state.dryLock.value_or(effect.globals.dryMuted));
  effect.RedrawParamControls();
  effect.touchedParam = touched;
  if (touched >= 0) effect.OnParamChange(touched);
  // A switch that hands the user's hand on to a knob does so for a gesture, not for a restore.
  effect.touchedParam = touched;
}

/// A stored rate is held to the range that its LFO's stored mode gives it.
void SettingsStore::selectRateForms(const std::vector<double>& values) {
  for (int lfo = 0; lfo < numLfos; ++lfo) {
    const auto index = static_cast<std::size_t>(kLfoSync) + static_cast<std::size_t>(lfo);
    const bool inNotes = index < values.size() && std::round(values[index]) >= 1.0;
    effect.bank->setLfoRateInNotes(lfo, inNotes);
  }
}

void SettingsStore::showRestored(const HostState& state) {
  EditorPort& port = editor();
  if (!state.presetName.empty()) port.showPresetName(editorState.presetName);
  if (!state.presetFolderLabel.empty()) port.showPresetFolder(editorState.presetFolderLabel);
  port.showColourSet(editorState.colourSet);
  port.showPage(editorState.currentPage);
  port.refreshStepGrids();
  port.runDisplayTimers();
}

/// The last step of a bulk operation: what the dispatches have asked for is done, and nothing of
/// the signal before is left.
void SettingsStore::settle() {
  effect.carryOutRequests();
  effect.ResetDSP();
}

}  // namespace orvantesco
