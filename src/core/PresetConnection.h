#pragma once

#include <string>

#include "core/Orvantesco.h"
#include "presets/PresetBrowser.h"

namespace orvantesco {

/// Joins one effect to a preset library while it lives: the library's actions load into and save
/// from the effect, and a host's state selects in the library's menu.
///
/// Nothing is read before `browser().buildPresetMenu()`, which a plug-in format calls on a thread
/// that may wait for the disk, so that an effect without a person in front of it needs no folders.
/// A state that was restored before, or before that scan, selects its preset once the menu is
/// known.
class PresetConnection : private PresetTarget {
 public:
  PresetConnection(Orvantesco& effect, PresetLibrary& library, PresetPrompts& prompts);
  PresetConnection(const PresetConnection&) = delete;
  PresetConnection& operator=(const PresetConnection&) = delete;
  ~PresetConnection() override;

  PresetBrowser& browser() noexcept { return presetBrowser; }

 private:
  bool presetIsLoading() const override;
  bool loadPresetFile(const std::string& relativePath) override;
  bool writePresetFile(const std::string& fullPath) override;
  bool showSavedPreset(const std::string& relativePath) override;
  void showMessage(PresetMessage message) override;

  Orvantesco& engine;
  PresetBrowser presetBrowser;
};

}  // namespace orvantesco
