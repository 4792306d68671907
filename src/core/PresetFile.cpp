// Preset files. The turn is held while settings are taken or brought, never while a file is read or
// written: a host that saves its project does not wait for a slow disk.

#include <utility>

#include "core/Orvantesco.h"
#include "presets/FileContent.h"
#include "presets/PresetBackup.h"
#include "presets/PresetMigration.h"
#include "presets/PresetNames.h"
#include "presets/PresetSaving.h"
#include "presets/PresetWriter.h"

namespace orvantesco {

bool SettingsStore::readPresetFile(const std::string& relativePath) {
  PresetOpening opening = openPreset(presetRoot(), relativePath);
  const std::lock_guard one(effect.gate.turn);
  return takeOpening(std::move(opening), relativePath);
}

void SettingsStore::applyLoadedPreset() {
  if (const auto loaded = applyOpened()) bringUpToDate(*loaded);
}

bool SettingsStore::loadPresetFile(const std::string& relativePath) {
  PresetOpening opening = openPreset(presetRoot(), relativePath);
  std::optional<LoadedPreset> loaded;
  {
    const std::lock_guard one(effect.gate.turn);
    if (!takeOpening(std::move(opening), relativePath)) return false;
    loaded = applyOpened();
  }
  if (loaded) bringUpToDate(*loaded);
  return true;
}

/// Whoever has the turn. A file that is none is selected all the same: the next step in the menu
/// goes on behind it.
bool SettingsStore::takeOpening(PresetOpening opening, const std::string& relativePath) {
  if (opening.preset) {
    opened = std::move(opening.preset);
    showPreset(opened->label.name, opened->label.folder);
    return true;
  }
  if (presetMenu != nullptr) presetMenu->selectFile(relativePath);
  const std::lock_guard lock(effect.mutex);
  editorState.presetName = opening.refusal;
  editor().showPresetName(editorState.presetName);
  return false;
}

std::optional<SettingsStore::LoadedPreset> SettingsStore::applyOpened() {
  const std::lock_guard one(effect.gate.turn);
  if (!opened) return {};
  // What the editor shows may come back here and open another one.
  LoadedPreset loaded{*opened, {}};
  selectFile(loaded.file.relativePath);
  loaded.settings = loadPreset(loaded.file.preset, &loaded.file.label);
  return loaded;
}

void SettingsStore::bringUpToDate(const LoadedPreset& loaded) {
  if (!isOldPreset(loaded.file.preset)) return;
  // A folder that cannot be written keeps its old file, which loads just as well the next time.
  if (!rewritePreset(loaded.file, loaded.settings)) showMessage(PresetMessage::cannotWrite);
}

bool SettingsStore::writePresetFile(const std::string& fullPath, bool rewriteAfterMigration) {
  if (fullPath.empty()) return false;
  std::string text;
  {
    const std::lock_guard one(effect.gate.turn);
    text = presetText(currentPreset());
    writtenAt = bulkOperations;
  }
  if (rewriteAfterMigration && !keepPresetBackup(fullPath, presetRoot()).empty()) return true;
  return !writeFile(fullPath, text).empty();
}

bool SettingsStore::showSavedPreset(const std::string& relativePath) {
  const std::lock_guard one(effect.gate.turn);
  // What was loaded or restored while the file was written has a name of its own.
  if (writtenAt != bulkOperations) return true;
  const std::string path(withoutExtension(relativePath));
  showPreset(path.substr(path.rfind('/') + 1), presetFolderLabelOf(relativePath));
  return presetMenu == nullptr || presetMenu->selectFile(relativePath);
}

void SettingsStore::setPresetRoot(const std::string& path) {
  const std::lock_guard one(effect.gate.turn);
  presetRootPath = path;
}

std::string SettingsStore::presetRoot() {
  const std::lock_guard one(effect.gate.turn);
  return presetRootPath;
}

}  // namespace orvantesco
