#include "cli/StateReport.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "cli/SettingsReport.h"
#include "cli/StateFile.h"

namespace orvantesco::cli {
namespace {

using Json = nlohmann::ordered_json;

template <class Value>
Json orNull(const std::optional<Value>& field) {
  return field ? Json(*field) : Json();
}

template <class List>
Json arrayOf(const List& fields) {
  Json array = Json::array();
  for (const auto& field : fields) array.push_back(orNull(field));
  return array;
}

Json jsonOf(const HostState& state) {
  return Json{{"stateVersion", state.stateVersion},
              {"colourSet", orNull(state.colourSet)},
              {"currentPage", orNull(state.currentPage)},
              {"attenuation", orNull(state.attenuation)},
              {"presetName", state.presetName},
              {"presetFolderLabel", state.presetFolderLabel},
              {"presetItemIndex", orNull(state.presetItemIndex)},
              {"presetFolderPath", orNull(state.presetFolderPath)},
              {"touchedParam", orNull(state.touchedParam)},
              {"tapMask", arrayOf(state.tapMask)},
              {"stepFxMask", arrayOf(state.stepFxMask)},
              {"stepModMask", {arrayOf(state.stepModMask[0]), arrayOf(state.stepModMask[1])}},
              {"dryLock", orNull(state.dryLock)},
              {"parameters", state.parameters}};
}

}  // namespace

std::string stateJson(const HostState& state) {
  return jsonOf(state).dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string stateTable(const HostState& state) {
  Json fields = jsonOf(state);
  fields.erase("parameters");
  std::string table;
  for (const auto& [name, value] : fields.items()) {
    const bool isVersion = name == "stateVersion";
    const std::string text = isVersion ? versionText(state.stateVersion)
                                       : value.dump(-1, ' ', false, Json::error_handler_t::replace);
    table += fmt::format("{:<20}{}\n", name, text);
  }
  ParamBank bank;
  bank.buildParameterBank();
  for (std::size_t i = 0; i < state.parameters.size(); ++i) {
    bank.getParam(static_cast<int>(i))->setValue(state.parameters[i]);
  }
  return table + changedParameters(bank);
}

}  // namespace orvantesco::cli
