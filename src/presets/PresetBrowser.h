#pragma once

#include <memory>
#include <mutex>
#include <string>

#include "presets/PresetLibrary.h"
#include "presets/PresetMenu.h"
#include "presets/PresetMenuPort.h"
#include "presets/PresetPrompts.h"
#include "presets/PresetTarget.h"

namespace orvantesco {

/// The actions of one instance on the preset library: what the editor's preset menu, its arrows and
/// its save and folder buttons do.
///
/// What is loaded becomes the selected one with its values, by the target's hand. Actions run on
/// the editor's thread, one after the other; what selects or tells the selection, and `menu`, on
/// any control thread. No lock is held while target or prompts are called.
class PresetBrowser : public PresetMenuPort {
 public:
  /// Library, target and prompts outlive the browser. Reads nothing yet.
  PresetBrowser(PresetLibrary& from, PresetTarget& to, PresetPrompts& person);
  PresetBrowser(const PresetBrowser&) = delete;
  PresetBrowser& operator=(const PresetBrowser&) = delete;

  /// Scans the folders and builds the menu. A folder that cannot be read gives a message to the
  /// user and a line on the error stream.
  void buildPresetMenu();

  /// Opens the menu and loads what was chosen.
  void choosePresetFromMenu();

  /// Loads the preset behind the selected one, or before it, around the ends.
  void stepPreset(bool forward);

  /// Loads a file below the library's root, given with its extension. An empty path does nothing.
  /// Where the file is no preset, the menu is scanned again at the next action.
  void loadPresetByPath(const std::string& relativePath);

  /// Asks for a file and writes the present settings to it. What is saved in the user's tree is
  /// selected in the menu.
  void savePresetAs();

  void openPresetFolder();

  /// Takes a selection over from a host's state; false where the menu has no such folder. Before
  /// the first scan nobody knows, so any is taken and then looked for.
  bool select(const PresetSelection& selection) override;
  bool selectFile(const std::string& relativePath) override;
  PresetSelection selection() const override;

  /// A copy of the menu as it stands.
  PresetMenu menu() const;

 private:
  void followLibrary();
  std::string fileAt(PresetMenuPlace place) const;
  std::string nextFile(bool forward) const;
  void savePreset(const std::string& fullPath);
  void listSaved(const std::string& fullPath);

  PresetLibrary& library;
  PresetTarget& target;
  PresetPrompts& prompts;
  int seenGeneration = -1;   ///< of the library, when the menu was built; editor's thread
  mutable std::mutex mutex;  ///< guards what follows, never held over a call to somebody else
  std::shared_ptr<const PresetCatalogue> catalogue;
  PresetMenu presetMenu;
  bool isBuilt = false;
  PresetSelection awaited;  ///< to be selected once the menu is built
};

}  // namespace orvantesco
