// What an editor shows and sets beside the parameters.

#include "core/Orvantesco.h"
#include "host/SilentEditor.h"
#include "params/ParamIndex.h"

namespace orvantesco {

EditorPort& SettingsStore::editor() const noexcept { return editorOrSilence(effect.graphics); }

void SettingsStore::setAttenuation(double position) {
  editorState.attenuation = position;
  effect.globals.inputAttenuation = attenuationGain(position);
  editor().showAttenuation(position);
}

void SettingsStore::setDryMute(bool muted) {
  effect.globals.dryMuted = muted;
  editor().showDryLock(muted);
  effect.OnParamChange(kDryLevel);
}

void SettingsStore::setCurrentPage(int page) {
  if (!isPage(page)) return;
  if (!effect.gate.presetLoading()) editorState.currentPage = page;
  if (page >= kFirstSubPage || page == kDelayPage) editorState.lastSubPage = page;
}

void SettingsStore::setColourSet(int set) {
  if (set < 0 || set >= kColourSets) return;
  editorState.colourSet = set;
  editor().showColourSet(set);
}

void SettingsStore::showPreset(const std::string& name, const std::string& folderLabel) {
  const std::lock_guard lock(effect.mutex);
  editorState.presetName = name;
  editorState.presetFolderLabel = folderLabel;
  editor().showPresetName(editorState.presetName);
  editor().showPresetFolder(editorState.presetFolderLabel);
}

void SettingsStore::showMessage(PresetMessage message) { editor().showMessage(textOf(message)); }

std::string SettingsStore::presetName() {
  const std::lock_guard lock(effect.mutex);
  return editorState.presetName;
}

std::string SettingsStore::presetFolderLabel() {
  const std::lock_guard lock(effect.mutex);
  return editorState.presetFolderLabel;
}

PresetSelection SettingsStore::presetSelection() {
  const std::lock_guard one(effect.gate.turn);
  return presetMenu != nullptr ? presetMenu->selection() : editorState.selection;
}

void SettingsStore::select(const PresetSelection& selection) {
  if (presetMenu != nullptr) {
    presetMenu->select(selection);
  } else {
    editorState.selection = selection;
  }
}

/// Nothing is selected where the menu does not list the file.
void SettingsStore::selectFile(const std::string& relativePath) {
  const bool isListed = presetMenu != nullptr && presetMenu->selectFile(relativePath);
  if (!isListed) select({});
}

void SettingsStore::setPresetMenu(PresetMenuPort* menu) {
  const std::lock_guard one(effect.gate.turn);
  const PresetSelection selected = presetSelection();
  presetMenu = menu;
  select(selected);
}

}  // namespace orvantesco
