#include "host/clap/ClapPresets.h"

#include <variant>

#include "host/clap/ClapApi.h"
#include "presets/FactoryPresets.h"
#include "presets/PresetLibrary.h"
#include "presets/PresetReader.h"

namespace orvantesco {

ClapPresets::ClapPresets(Orvantesco& owner)
    : effect(owner), library(owner, userPresetLibrary(), nobody) {}

std::string ClapPresets::load(std::uint32_t kind, const char* location, const char* key) {
  if (kind == kClapPresetInFile && location != nullptr) return library.apply(location);
  if (kind == kClapPresetInPlugin && key != nullptr) return loadCarried(key);
  return "presets are named by the path of a file or by FOLDER/NAME of the plug-in";
}

std::string ClapPresets::loadCarried(const std::string& key) {
  const std::size_t slash = key.find('/');
  const bool named = slash != std::string::npos;
  const FactoryPreset* const found =
      named ? findFactoryPreset(key.substr(0, slash), key.substr(slash + 1)) : nullptr;
  if (found == nullptr) return key + ": no preset of the plug-in";
  const PresetResult result = parsePreset(found->text);
  if (const auto* error = std::get_if<PresetError>(&result)) return error->message;
  effect.settings().applyPreset(std::get<PresetReading>(result).preset, found->relativePath());
  return {};
}

}  // namespace orvantesco
