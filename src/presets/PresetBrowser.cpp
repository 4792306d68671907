#include "presets/PresetBrowser.h"

#include <cstdio>
#include <utility>

namespace orvantesco {

PresetBrowser::PresetBrowser(PresetLibrary& from, PresetTarget& to, PresetPrompts& person)
    : library(from), target(to), prompts(person), catalogue(from.catalogue()) {}

void PresetBrowser::buildPresetMenu() {
  // Taken before the scan: what changes meanwhile is seen at the next action.
  seenGeneration = library.presetLibraryGeneration();
  const auto found = library.scan();
  for (const std::string& path : found->unopened) {
    std::fprintf(stderr, "could not open directory: %s\n", path.c_str());
  }
  {
    const std::lock_guard lock(mutex);
    presetMenu.build(*found);
    catalogue = found;
    if (!std::exchange(isBuilt, true)) presetMenu.select(awaited);
  }
  if (!found->unopened.empty()) target.showMessage(PresetMessage::noPresetsFolder);
}

void PresetBrowser::followLibrary() {
  if (library.presetLibraryGeneration() != seenGeneration) buildPresetMenu();
}

void PresetBrowser::choosePresetFromMenu() {
  followLibrary();
  const auto place = prompts.chooseFrom(menu());
  if (place) loadPresetByPath(fileAt(*place));
}

void PresetBrowser::stepPreset(bool forward) {
  followLibrary();
  if (target.presetIsLoading()) return;
  loadPresetByPath(nextFile(forward));
}

/// Empty where there is none.
std::string PresetBrowser::nextFile(bool forward) const {
  const std::lock_guard lock(mutex);
  const PresetEntry* const entry =
      stepFrom(catalogue->presetOrder, presetMenu.selectedPath(), forward);
  return entry != nullptr ? presetMenu.fileOf(entry->relativePath) : "";
}

void PresetBrowser::loadPresetByPath(const std::string& relativePath) {
  if (relativePath.empty()) return;
  if (!target.loadPresetFile(relativePath)) library.raiseGeneration();
}

void PresetBrowser::savePresetAs() {
  PresetSaveQuestion question;
  question.folder = library.folders().userPresetPath();
  const auto fullPath = prompts.askForFile(question);
  if (fullPath) savePreset(*fullPath);
  prompts.releaseSaveButton();
}

void PresetBrowser::savePreset(const std::string& fullPath) {
  const PresetSavePlace place = savePlaceOf(fullPath, library.folders());
  if (place == PresetSavePlace::factoryTree) {
    target.showMessage(PresetMessage::factoryFolder);
  } else if (target.writePresetFile(fullPath)) {
    target.showMessage(PresetMessage::cannotWrite);
  } else if (place == PresetSavePlace::elsewhere) {
    target.showMessage(PresetMessage::notInUserFolder);
  } else {
    listSaved(fullPath);
  }
}

void PresetBrowser::listSaved(const std::string& fullPath) {
  const std::string relativePath = relativePresetPath(fullPath, library.folders());
  // Other instances scan at their next action, this one at once.
  library.raiseGeneration();
  buildPresetMenu();
  // A spelling that the tree is not known by, on a disk that tells letters' cases apart.
  if (!target.showSavedPreset(relativePath)) target.showMessage(PresetMessage::notInUserFolder);
}

void PresetBrowser::openPresetFolder() { prompts.openFolder(library.folders().presetRootPath); }

/// Empty for what is no preset.
std::string PresetBrowser::fileAt(PresetMenuPlace place) const {
  const std::lock_guard lock(mutex);
  return presetMenu.fileAt(place);
}

bool PresetBrowser::selectFile(const std::string& relativePath) {
  const std::lock_guard lock(mutex);
  return presetMenu.selectFile(relativePath);
}

bool PresetBrowser::select(const PresetSelection& selection) {
  const std::lock_guard lock(mutex);
  if (isBuilt) return presetMenu.select(selection);
  awaited = selection;
  return true;
}

PresetSelection PresetBrowser::selection() const {
  const std::lock_guard lock(mutex);
  return isBuilt ? presetMenu.selection() : awaited;
}

PresetMenu PresetBrowser::menu() const {
  const std::lock_guard lock(mutex);
  return presetMenu;
}

}  // namespace orvantesco
