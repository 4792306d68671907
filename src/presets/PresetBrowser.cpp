#include "presets/PresetBrowser.h"

#include <cstdio>
#include <utility>

#include "presets/PresetNames.h"

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
  if (place) loadPresetByPath(choose(*place));
}

void PresetBrowser::stepPreset(bool forward) {
  followLibrary();
  if (target.presetIsLoading()) return;
  loadPresetByPath(chooseNext(forward));
}

/// Chooses the preset to step to and returns its file: read later, the selection may be that of a
/// state which a host has restored meanwhile. Empty where there is none.
std::string PresetBrowser::chooseNext(bool forward) {
  const std::lock_guard lock(mutex);
  const PresetEntry* const entry =
      stepFrom(catalogue->presetOrder, presetMenu.selectedPath(), forward);
  const bool isChosen = entry != nullptr && presetMenu.selectPath(entry->relativePath);
  return isChosen ? presetMenu.selectedFile() : "";
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
  const std::string path(withoutExtension(relativePath));
  target.showPreset(path.substr(path.rfind('/') + 1), presetFolderLabelOf(relativePath));
  // Other instances scan at their next action, this one at once.
  library.raiseGeneration();
  buildPresetMenu();
  const bool isListed = selectFile(relativePath);
  // A spelling that the tree is not known by, on a disk that tells letters' cases apart.
  if (!isListed) target.showMessage(PresetMessage::notInUserFolder);
}

void PresetBrowser::openPresetFolder() { prompts.openFolder(library.folders().presetRootPath); }

/// The same for an item of the menu.
std::string PresetBrowser::choose(PresetMenuPlace place) {
  const std::lock_guard lock(mutex);
  return presetMenu.choose(place) ? presetMenu.selectedFile() : "";
}

bool PresetBrowser::selectFile(const std::string& filePath) {
  const std::lock_guard lock(mutex);
  return presetMenu.selectFile(filePath);
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
