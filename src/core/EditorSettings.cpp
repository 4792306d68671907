// What an editor shows and sets beside the parameters.

#include "core/Orvantesco.h"
#include "params/ParamIndex.h"
#include "presets/PresetNames.h"

namespace orvantesco {

namespace {

constinit EditorPort silentEditor;

}  // namespace

EditorPort& Orvantesco::editor() const noexcept {
  EditorPort* const port = graphics;
  return port != nullptr ? *port : silentEditor;
}

void Orvantesco::setAttenuation(double position) {
  editorState.attenuation = position;
  globals.inputAttenuation = attenuationGain(position);
  editor().showAttenuation(position);
}

void Orvantesco::setDryMute(bool muted) {
  globals.dryMuted = muted;
  editor().showDryLock(muted);
  OnParamChange(kDryLevel);
}

void Orvantesco::setCurrentPage(int page) {
  if (!isPage(page)) return;
  if (!presetLoading) editorState.currentPage = page;
  if (page >= kFirstSubPage || page == kDelayPage) editorState.lastSubPage = page;
}

void Orvantesco::setColourSet(int set) {
  if (set < 0 || set >= kColourSets) return;
  editorState.colourSet = set;
  editor().showColourSet(set);
}

void Orvantesco::showPreset(const std::string& relativePath) {
  showPreset(presetNameOf(relativePath), presetFolderLabelOf(relativePath));
}

void Orvantesco::showPreset(const std::string& name, const std::string& folderLabel) {
  const std::lock_guard lock(mutex);
  editorState.presetName = name;
  editorState.presetFolderLabel = folderLabel;
  editor().showPresetName(editorState.presetName);
  editor().showPresetFolder(editorState.presetFolderLabel);
}

void Orvantesco::showMessage(PresetMessage message) { editor().showMessage(textOf(message)); }

std::string Orvantesco::presetName() {
  const std::lock_guard lock(mutex);
  return editorState.presetName;
}

std::string Orvantesco::presetFolderLabel() {
  const std::lock_guard lock(mutex);
  return editorState.presetFolderLabel;
}

void Orvantesco::setPresetRoot(const std::string& path) {
  const std::lock_guard one(bulkMutex);
  presetRootPath = path;
}

PresetSelection Orvantesco::presetSelection() {
  const std::lock_guard one(bulkMutex);
  return presetMenu != nullptr ? presetMenu->selection() : editorState.selection;
}

void Orvantesco::select(const PresetSelection& selection) {
  if (presetMenu != nullptr) {
    presetMenu->select(selection);
  } else {
    editorState.selection = selection;
  }
}

void Orvantesco::setPresetMenu(PresetMenuPort* menu) {
  const std::lock_guard one(bulkMutex);
  const PresetSelection selected = presetSelection();
  presetMenu = menu;
  select(selected);
}

}  // namespace orvantesco
