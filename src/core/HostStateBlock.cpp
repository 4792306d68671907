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

bool Orvantesco::SerializeState(StateChunk& chunk) {
  const std::lock_guard one(bulkMutex);
  const std::lock_guard lock(mutex);
  return putHostStateHead(chunk, stateOutsideTheBank()) && SerializeParams(chunk);
}

int Orvantesco::UnserializeState(const StateChunk& chunk, int startPos) {
  const auto reading = readHostState(chunk, startPos);
  if (!reading) return -1;
  restoreState(reading->state);
  return reading->end;
}

HostState Orvantesco::stateOutsideTheBank() {
  HostState state;
  state.colourSet = editorState.colourSet;
  state.currentPage = editorState.currentPage;
  state.attenuation = editorState.attenuation;
  state.presetName = editorState.presetName;
  state.presetFolderLabel = editorState.presetFolderLabel;
  const PresetSelection selected = presetSelection();
  state.presetFolderPath = selected.folderPath;
  state.presetItemIndex = selected.folderPath.empty() ? -1 : selected.itemIndex;
  state.touchedParam = touchedParam;
  state.dryLock = globals.dryMuted;
  for (std::size_t slot = 0; slot < slots.size(); ++slot) {
    const TapControls& taps = slots[slot].controls.taps;
    for (std::size_t k = 0; k < 2; ++k) {
      state.tapMask[2 * slot + k] = taps.tapMask[k];
      state.stepModMask[k][slot] = taps.stepModMask[k];
    }
    state.stepFxMask[slot] = taps.stepFxMask;
  }
  return state;
}

void Orvantesco::restoreState(const HostState& state) {
  if (state.stateVersion > kStateVersion) {
    showMessage(PresetMessage::newerState);
    return;
  }
  const std::lock_guard one(bulkMutex);
  takeColourSet(state);
  setParametersToDefaults();
  if (state.stateVersion < kOldestStateVersion) return;
  {
    const BulkOperation restoring(*this, restoringState);
    const std::lock_guard lock(mutex);
    takeEditorState(state);
    takeMasks(state);
    takeParameters(state);
    showRestored(state);
    settle();
  }
  for (int slot = 0; slot < kSlots; ++slot) editor().refreshSlot(slot);
}

void Orvantesco::takeColourSet(const HostState& state) {
  const int set = state.colourSet.value_or(-1);
  if (set >= 0 && set < kColourSets) editorState.colourSet = set;
}

void Orvantesco::setParametersToDefaults() {
  // Rates in Hz first: which values a record takes depends on what it speaks of.
  for (int lfo = 0; lfo < numLfos; ++lfo) bank->setLfoRateInNotes(lfo, false);
  for (IParam* param : params) param->setValue(param->defaultValue());
}

void Orvantesco::takeEditorState(const HostState& state) {
  takePage(state.currentPage);
  // Blocks without the control were saved when the input was never attenuated.
  const bool knowsAttenuation = state.stateVersion > kLastWithoutAttenuation;
  const double kept = knowsAttenuation ? editorState.attenuation.get() : 1.0;
  setAttenuation(heldPosition(state.attenuation.value_or(kept)));
  if (!state.presetName.empty()) editorState.presetName = state.presetName;
  if (!state.presetFolderLabel.empty()) editorState.presetFolderLabel = state.presetFolderLabel;
  if (state.presetFolderPath) select({*state.presetFolderPath, state.presetItemIndex.value_or(-1)});
}

void Orvantesco::takePage(std::optional<int> page) {
  if (!page || !isPage(*page)) return;
  editorState.currentPage = *page;
  editorState.lastSubPage = *page >= kFirstSubPage ? *page : kDelayPage;
}

void Orvantesco::takeMasks(const HostState& state) {
  for (int slot = 0; slot < kSlots; ++slot) {
    const auto s = static_cast<std::size_t>(slot);
    TapMasks masks = tapMasks(slot);
    masks.left = maskOf(state.tapMask[2 * s].value_or(masks.left));
    masks.right = maskOf(state.tapMask[2 * s + 1].value_or(masks.right));
    setTapMasks(slot, masks);
    if (state.stepFxMask[s]) setStepFxMask(slot, maskOf(*state.stepFxMask[s]));
    for (int row = 0; row < 2; ++row) {
      const auto& mask = state.stepModMask[static_cast<std::size_t>(row)][s];
      if (mask) setStepModMask(row, slot, maskOf(*mask));
    }
  }
}

void Orvantesco::takeParameters(const HostState& state) {
  const int touched = state.touchedParam.value_or(touchedParam);
  // Nobody moves a knob while values are brought as they were saved.
  touchedParam = -1;
  for (auto& flag : migration.wasTapped) flag = false;
  migration.version = versionToMigrate(state);
  selectRateForms(state.parameters);
  takeParamValues(state.parameters);
  migration.version = 0;
  setDryMute(state.dryLock.value_or(globals.dryMuted));
  RedrawParamControls();
  touchedParam = touched;
  if (touched >= 0) OnParamChange(touched);
  // A switch that hands the user's hand on to a knob does so for a gesture, not for a restore.
  touchedParam = touched;
}

/// A stored rate is held to the range that its LFO's stored mode gives it.
void Orvantesco::selectRateForms(const std::vector<double>& values) {
  for (int lfo = 0; lfo < numLfos; ++lfo) {
    const auto index = static_cast<std::size_t>(kLfoSync) + static_cast<std::size_t>(lfo);
    const bool inNotes = index < values.size() && std::round(values[index]) >= 1.0;
    bank->setLfoRateInNotes(lfo, inNotes);
  }
}

void Orvantesco::showRestored(const HostState& state) {
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
void Orvantesco::settle() {
  carryOutRequests();
  ResetDSP();
}

}  // namespace orvantesco
