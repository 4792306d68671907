#include "host/binding/PluginPresets.h"

#include <cstdio>
#include <exception>
#include <system_error>

#include "presets/PresetInstall.h"
#include "presets/PresetLookup.h"
#include "presets/PresetReader.h"

namespace orvantesco {

PluginPresets::PluginPresets(Orvantesco& effect, PresetLibrary& library, PresetPrompts& prompts)
    : engine(effect), presetLibrary(library), connection(effect, library, prompts) {}

void PluginPresets::start() noexcept try {
  preparing = std::jthread([this](const std::stop_token& stop) { prepareLibrary(stop); });
} catch (const std::system_error& failure) {
  std::fprintf(stderr, "preset library: %s\n", failure.what());
}

PresetBrowser& PluginPresets::browser() {
  if (preparing.joinable()) {
    preparing.join();
  } else if (!isPrepared) {
    prepareLibrary({});
  }
  return connection.browser();
}

/// Nothing may leave the thread that it runs on: the host would end with it.
void PluginPresets::prepareLibrary(const std::stop_token& stop) try {
  isPrepared = true;
  const PresetInstallReport report = installPresets(presetLibrary.folders(), stop);
  for (const std::string& fault : report.faults) std::fprintf(stderr, "%s\n", fault.c_str());
  if (!stop.stop_requested()) connection.browser().buildPresetMenu();
} catch (const std::exception& failure) {
  std::fprintf(stderr, "preset library: %s\n", failure.what());
}

std::string PluginPresets::apply(const std::string& preset) {
  const auto found = findPreset(preset, presetLibrary.folders());
  if (!found) return preset + ": neither a file nor a preset of the library";
  const PresetResult result = readFound(*found);
  if (const auto* error = std::get_if<PresetError>(&result)) {
    return found->relativePath + ": " + error->message;
  }
  engine.settings().applyPreset(std::get<PresetReading>(result).preset, found->relativePath);
  return {};
}

}  // namespace orvantesco
