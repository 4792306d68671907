#pragma once

#include <optional>
#include <string>

#include "presets/PresetMenu.h"
#include "presets/PresetSaving.h"

namespace orvantesco {

/// What the preset library asks of the person in front of the editor. This one is nobody and turns
/// away from every question. Editor's thread.
class PresetPrompts {
 public:
  virtual ~PresetPrompts() = default;

  /// Opens the menu at its control; nothing where the person turns away.
  virtual std::optional<PresetMenuPlace> chooseFrom(const PresetMenu& menu) {
    (void)menu;
    return {};
  }

  /// Asks for a file to save as: its full path with the extension. The dialog has asked whether a
  /// file that is there may be replaced. Nothing where the person turns away.
  virtual std::optional<std::string> askForFile(const PresetSaveQuestion& question) {
    (void)question;
    return {};
  }

  /// Opens a folder in the system's file browser, if there is one.
  virtual void openFolder(const std::string& path) { (void)path; }

  /// Releases the button that called for saving.
  virtual void releaseSaveButton() {}
};

}  // namespace orvantesco
