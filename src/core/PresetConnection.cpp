#include "core/PresetConnection.h"

namespace orvantesco {

PresetConnection::PresetConnection(Orvantesco& effect, PresetLibrary& library,
                                   PresetPrompts& prompts)
    : engine(effect), presetBrowser(library, *this, prompts) {
  engine.settings().setPresetRoot(library.folders().presetRootPath);
  engine.settings().setPresetMenu(&presetBrowser);
}

PresetConnection::~PresetConnection() { engine.settings().setPresetMenu(nullptr); }

bool PresetConnection::presetIsLoading() const { return engine.presetIsLoading(); }

bool PresetConnection::loadPresetFile(const std::string& relativePath) {
  return engine.loadPresetFile(relativePath);
}

bool PresetConnection::writePresetFile(const std::string& fullPath) {
  return engine.writePresetFile(fullPath, false);
}

bool PresetConnection::showSavedPreset(const std::string& relativePath) {
  return engine.settings().showSavedPreset(relativePath);
}

void PresetConnection::showMessage(PresetMessage message) { engine.showMessage(message); }

}  // namespace orvantesco
