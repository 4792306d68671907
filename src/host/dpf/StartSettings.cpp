#include "host/dpf/StartSettings.h"

#include "presets/FileContent.h"
#include "presets/HostState.h"
#include "presets/PresetLookup.h"
#include "presets/StateChunk.h"

namespace orvantesco {
namespace {

constexpr std::size_t largestFile = 16 * 1024 * 1024;

}  // namespace

std::string StartSettings::takePreset(const std::string& name) {
  const auto found = findPreset(name, presetFolders());
  if (!found) return name + ": neither a file nor a preset of the library";
  const PresetResult result = readFound(*found);
  if (const auto* error = std::get_if<PresetError>(&result)) {
    return found->relativePath + ": " + error->message;
  }
  preset = std::get<PresetReading>(result).preset;
  presetPath = found->relativePath;
  return {};
}

std::string StartSettings::takeState(const std::string& file) {
  const auto content = readFile(file, largestFile);
  if (const auto* error = std::get_if<FileError>(&content)) return file + ": " + error->message;
  const auto& bytes = std::get<std::string>(content);
  StateChunk chunk;
  chunk.putBytes(bytes.data(), static_cast<int>(bytes.size()));
  const auto reading = readHostState(chunk, 0);
  if (!reading || !isWhole(*reading)) return file + ": holds no state block that can be read";
  state = reading->state;
  return {};
}

void StartSettings::applyTo(Orvantesco& effect) const {
  if (state) effect.settings().restoreState(*state);
  if (preset) effect.settings().applyPreset(*preset, presetPath);
}

StartSettings& startSettings() {
  static StartSettings settings;
  return settings;
}

}  // namespace orvantesco
