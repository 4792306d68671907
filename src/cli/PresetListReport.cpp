#include "cli/PresetListReport.h"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>

#include "cli/Text.h"
#include "presets/FactoryPresets.h"

namespace orvantesco::cli {
namespace {

using Json = nlohmann::ordered_json;

/// "Factory Presets/Echo" for "/Factory Presets/Echo/Slap".
std::string folderOf(std::string_view relativePath) {
  const std::string_view parent = parentOf(relativePath);
  return std::string(parent.substr(1, parent.size() - 2));
}

Json jsonOf(const ListedPreset& preset) {
  return {{"folder", preset.folder},
          {"name", preset.name},
          {"path", preset.path.empty() ? Json() : Json(preset.path)}};
}

}  // namespace

std::vector<ListedPreset> listedPresets(const PresetCatalogue& catalogue,
                                        const PresetFolders& folders) {
  std::vector<ListedPreset> presets;
  std::set<std::string> files;
  for (const PresetEntry& entry : catalogue.presetOrder) {
    const std::string relativePath = entry.relativePath + entry.extension;
    files.insert(relativePath);
    presets.push_back(
        {folderOf(entry.relativePath), entry.name, folders.presetRootPath + relativePath});
  }
  for (const FactoryPreset& preset : factoryPresets()) {
    const std::string relativePath = preset.relativePath();
    if (files.contains(relativePath)) continue;
    presets.push_back({folderOf(relativePath), std::string(preset.name), {}});
  }
  return presets;
}

std::string presetListJson(const std::vector<ListedPreset>& presets, const PresetFolders& folders) {
  Json list = Json::array();
  for (const ListedPreset& preset : presets) list.push_back(jsonOf(preset));
  const Json document{{"root", folders.presetRootPath}, {"presets", list}};
  return document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string presetListTable(const std::vector<ListedPreset>& presets) {
  std::size_t width = 0;
  const auto nameOf = [](const ListedPreset& preset) { return preset.folder + "/" + preset.name; };
  for (const ListedPreset& preset : presets) width = std::max(width, nameOf(preset).size());
  std::string table;
  for (const ListedPreset& preset : presets) {
    const std::string path = preset.path.empty() ? "(in the program)" : preset.path;
    const std::string name = nameOf(preset);
    table += oneLine(name + std::string(width + 2 - name.size(), ' ') + path) + "\n";
  }
  return table;
}

}  // namespace orvantesco::cli
