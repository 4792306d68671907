#include "core/OpenedPreset.h"

#include <utility>

#include "presets/FileContent.h"
#include "presets/PresetBackup.h"
#include "presets/PresetNames.h"
#include "presets/PresetReader.h"
#include "presets/PresetWriter.h"

namespace orvantesco {
namespace {

bool isAsRead(const OpenedPreset& opened) {
  const auto content = readFile(opened.fullPath(), kLargestPresetBytes);
  const auto* text = std::get_if<std::string>(&content);
  return text != nullptr && *text == opened.text;
}

}  // namespace

PresetLabel presetLabelOf(const std::string& relativePath) {
  return {presetNameOf(relativePath), presetFolderLabelOf(relativePath)};
}

PresetOpening openPreset(const std::string& root, const std::string& relativePath) {
  auto content = readFile(root + relativePath, kLargestPresetBytes);
  auto* text = std::get_if<std::string>(&content);
  if (text == nullptr) return {std::nullopt, "NO FILE"};
  PresetResult result = parsePreset(*text);
  auto* reading = std::get_if<PresetReading>(&result);
  if (reading == nullptr) return {std::nullopt, "WRONG FILE"};
  return {OpenedPreset{root, relativePath, std::move(*text), presetLabelOf(relativePath),
                       std::move(reading->preset)},
          {}};
}

bool rewritePreset(const OpenedPreset& old, const Preset& present) {
  const std::string path = old.fullPath();
  if (!isAsRead(old)) return true;
  return keepPresetBackup(path, old.root).empty() && writeFile(path, presetText(present)).empty();
}

}  // namespace orvantesco
